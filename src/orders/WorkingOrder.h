#pragma once
#include "desks/WebOrder.h"
#include "orders/OrderCells.h"
#include "orders/rules/LineMoney.h"
#include "platform/form/CellTable.h"
#include "store/RowMark.h"
#include <QObject>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

namespace orders {

/// How the next lookup of BestellungGrid_Change is meant. It falls back to Keyed after every lookup.
enum class SucheModus : int { Keyed = 0, Produkt = 1, Extra = 2 };

/// Which buttons of the order screen are enabled.
struct OrderButtons {
    bool cmdKundeSchnellerfassung = true;
    bool cmdKundeEditierung = false;
    bool cmdSave = false;
    bool cmdPrint = false;
    bool cmdVerwaltungSave = false;
    bool cmdVerwaltungDelete = false;
    friend bool operator==(const OrderButtons&, const OrderButtons&) = default;
};

/// A product or an extra at the prices of a price group.
struct Artikel {
    bool isProdukt = true;
    qint64 lng_ID = 0;
    QString kurzzeichen; ///< "" for an extra
    QString name, einheit;
    qint64 lng_Einheit = 0;
    double preis = 0, mwst = 0;
};

struct Lookup;

/// The order while it is keyed or viewed: its cells are the only working copy, and booking, slip and totals
/// read them. Owns the cell tables, the two keys and the rules of the lines; the order screen is a view on
/// it.
///
/// Reads the catalogue through RsMain, so no procedure may call in here while it holds RsMain open. Throws
/// common::RunTimeError where the store does.
class WorkingOrder : public QObject {
    Q_OBJECT
  public:
    explicit WorkingOrder(QObject* parent = nullptr);

    // The cells. The tables' hooks are connected; what a user types goes through their endEdit.
    platform::CellTable BestellungDetailsGrid; ///< 3 rows, 6 columns, see Detail
    platform::CellTable BestellungTotalGrid;   ///< 4 rows, 3 columns, see TotalRow
    platform::CellTable BestellungGrid;        ///< always 100 rows between two calls, see Col

    /// The keys that are stored; the text cells are not.
    qint64 lng_KundenID = 0;
    qint64 lng_KurierID = 0;
    /// The web order that was keyed, until the order is cleared.
    std::optional<desks::WebOrderId> webBestellung{};

    /// The booked order that was read into the cells, as it stood then, until the order is cleared.
    store::RowMark gelesen{};

    /// 1 to 10. Changes what the catalogue offers from then on; lines in the order keep their prices.
    int PreisGruppe = 1;
    SucheModus suche = SucheModus::Keyed;

    QString detail(DetailCell cell) const { return BestellungDetailsGrid.text(cell.row, cell.column); }

    void setDetail(DetailCell cell, const common::Value& value);

    double total(int totalRow) const { return BestellungTotalGrid.number(totalRow, kTotalAmount); }

    /// Tells this order from every other one that is keyed, also from one that looks the same: its draft
    /// bears it, and the mark that it was stored. Drawn when it is first asked for after
    /// ClearBestellungMaske, since most orders that are looked at are never kept.
    const QString& Kennung() const;

    void setKennung(const QString& kennung) { m_kennung = kennung; }

    /// What was read from the store stands in the cells: nothing of it was keyed.
    void TellReadFromStore() { m_asRead = true; }

    /// Whether nothing was changed since.
    bool IsAsRead() const { return m_asRead; }

    class Attempt;

    LineMoney money(int row) const;
    void setMoney(int row, const LineMoney& money);

    // Head
    // ----------------------------------------------------------------------------------------------------

    /// The screen's load: labels, captions, default courier, today, VAT number, currency. Needs the settings
    /// in memory and the databases open.
    void SetUp();
    /// Kinds of the cells: labels, grey ones, fields.
    void SettingUpBestellungDetailGrid();
    /// Empties lines, totals, head and address; the courier stays unless the order shown was a deleted one.
    /// Whatever replaces the order goes through here first, and what stands in an open editor goes with it.
    void ClearBestellungMaske();
    /// The labels of head and totals, with the rates and the currency of the settings.
    void SetLabels();
    /// Order date and time, both of that moment.
    void SetBestellzeit(double moment);
    /// Cell (0,1) := last booked number + 1. On an empty journal that is one more than the first booking will
    /// get; meant so. Empty while no database server answers.
    void ShowComingTrxNr();

    /// The search by phone number: clears the order; when a customer has the number, fills head and address
    /// and returns true. Otherwise quick capture is enabled, the address stays hidden, and false. A text that
    /// is no number belongs to nobody. Nothing happens for a blank text (false).
    bool SucheTelefonNummer(const QString& number);
    /// What taking a call adds for a known customer: clears the order and fills the head anew, VAT number
    /// included.
    void FillFromCall(qint64 kundenId);

    /// Courier chosen in the menu. A code typed in its cell is checked, but keeps the key chosen before.
    void ChooseKurier(qint64 kurierId, const QString& kurzzeichen);
    void ChooseKonditionen(const QString& text);

    const QString& KundenAdresse() const { return m_address; }

    bool KundenAdresseShown() const { return m_addressShown; }

    void ShowKundenAdresse(const QString& text);
    void HideKundenAdresse();

    const OrderButtons& buttons() const { return m_buttons; }

    void setButtons(const OrderButtons& buttons);

    // Lines
    // ---------------------------------------------------------------------------------------------------

    /// Puts a product into the first empty row (Ccy ""), with its extras offered, and gives the row. -1, and
    /// nothing done, when all rows are full.
    int PickProdukt(qint64 produktId, const QString& kurzzeichen, double anzahl);
    /// Puts an extra into the first empty row, under the line above, and gives the row. -1, and nothing done,
    /// while row 0 is empty.
    int PickExtra(qint64 extraId, const QString& extra, double anzahl);
    /// The same into a row, whatever stands there. An extra needs a line above.
    void PutProdukt(int row, qint64 produktId, const QString& kurzzeichen, double anzahl);
    void PutExtra(int row, qint64 extraId, const QString& extra, double anzahl);
    /// In the quantity of a package.
    void PutProdukt(int row, qint64 produktId, const QString& kurzzeichen);
    /// An extra that is looked up by its key and not by its name; the product is told as well.
    void PutExtraByKey(int row, qint64 produktId, qint64 extraId, const QString& extra);
    /// Puts what FindAngebote found into the row in place of the text that is keyed there.
    void PutAngebot(int row, const Artikel& angebot);
    /// Removes the line; a product takes the extras that follow it along. Closes the gap, keeps 100 rows.
    void RemoveLine(int row);

    /// Fills a row from the catalogue by what was entered in `col` (ProduktID, Kurzzeichen or Bezeichnung).
    /// Several products may begin with the text keyed; the one that is called exactly so comes first.
    void FindArtikelForBestellung(int row, int col);
    /// The same for `col` = ExtraID.
    void FindExtraForBestellung(int row, int col);
    /// What a text keyed into `col` (Kurzzeichen or Bezeichnung) may mean, `most` articles at most: the one
    /// that it would be taken for comes first.
    std::vector<Artikel> FindAngebote(int row, int col, const QString& typed, size_t most) const;
    /// The product or the extra of this key, if it has a price in the present price group.
    std::optional<Artikel> FindArtikel(bool isProdukt, qint64 id) const;
    /// Before an edited cell is taken over: a new quantity scales the price. `editor` null means no value.
    /// Refused are numbers that a till cannot mean (common/Bounds.h), and an emptied code or name of a filled
    /// line, which would leave a price behind that nobody stores: a line goes by RemoveLine.
    void BestellungGrid_BeforeEndEdit(int row, int col, common::Value& editor, bool& cancel);
    /// After a cell was taken over: derives the line anew. Call it after writing a cell by setCell.
    void BestellungGrid_Change(int row, int col);
    void CalculateTotalBestellung();
    /// Spreads a percentage over all lines that have a price; replaces earlier discounts. False, with nothing
    /// changed, when a line's discount would be none that a till can mean.
    bool SetRabattBestellung(double prozent);
    /// Sets the rate (percent) of all lines.
    void SetMWStSatzBestellung(double satz);

    /// First row with Ccy ""; -1 when the order is full.
    int FirstEmptyRow() const;
    /// Last row with a Bezeichnung; -1 in an order without lines.
    int LastFilledRow() const;

  Q_SIGNALS:
    /// ExtrasGrid shall offer the extras of this product.
    void ExtrasOffered(qint64 produktId);
    void KundenAdresseChanged();
    void ButtonsChanged();
    /// ClearBestellungMaske ran: the screen hides its quick capture box.
    void Cleared();
    /// ClearBestellungMaske begins: the order that is given up still stands in the cells.
    void AboutToClear();

  private:
    void SetDefaultKurier();
    bool DetailsMayEdit(int row, int col) const;
    void DetailsBeforeEndEdit(int row, int col, common::Value& editor, bool& cancel);
    void FillHead(qint64 kundenId);
    bool LinesMayEdit(int row, int col) const;
    bool IsFilled(int row) const;
    void TakeAnzahl(int row, common::Value& editor, bool& cancel);
    void RederiveLine(int row);
    /// Whether an extra finds a line above to hang under.
    bool MayHoldExtra(int row) const;
    void PutExtra(int row, qint64 extraId, const QString& extra);
    void SetProduktKeys(int row, qint64 produktId);
    void SetExtraKeys(int row, qint64 produktId, qint64 extraId);
    bool FindProduktLine(int row, int col);
    void HangUnderLineAbove(int row, qint64 extraId);
    void FindExtraLine(int row, const Lookup& lookup);
    void FillArtikel(int row, const Artikel& artikel, qint64 anzahlIntern);

    struct State;
    State state() const;
    void putBack(const State& before);

    mutable QString m_kennung;
    bool m_asRead = false;
    bool m_attempting = false;
    QString m_address;
    bool m_addressShown = false;
    OrderButtons m_buttons;
    bool m_ZeileLoeschen = false;
};

/// While one lives, an exception that leaves the scope puts the order back as it was: what the store cuts off
/// is not half done.
class WorkingOrder::Attempt {
  public:
    explicit Attempt(WorkingOrder& order);
    ~Attempt();
    Attempt(const Attempt&) = delete;
    Attempt& operator=(const Attempt&) = delete;

  private:
    WorkingOrder& m_order;
    const int m_exceptions;
    /// Null inside another attempt.
    std::unique_ptr<State> m_before;
};

/// "7.7%": a rate as the captions of the VAT buttons show it.
QString RateCaption(double satz);

} // namespace orders
