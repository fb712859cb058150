#pragma once
#include "desks/OrderDesk.h"
#include "orders/Ausgelassen.h"
#include "orders/OrderDraft.h"
#include "orders/WorkingOrder.h"
#include "orders/modAuftragswesenAuftragserfassung.h"
#include "platform/Services.h"
#include "platform/form/CellGrid.h"
#include "platform/form/DataControl.h"
#include "store/Stations.h"
#include "telephony/PhoneBook.h"
#include <QAbstractButton>
#include <QWidget>
#include <functional>
#include <memory>

class frmPopUpMenu;

namespace Ui {
class frmAuftragswesenAuftragserfassung;
}

/// The screen on which an order is taken: a view on the working order, with the catalogue beside it.
/// Everything can be done by keyboard: F3 telephone number, F4 what the customer had last time, F5 head, F6
/// lines, F7 products, F8 extras, Shift+F11 the order given up last, F12 book, Ctrl+1 to Ctrl+9 a category,
/// Alt+Left and Alt+Right step through the orders.
class frmAuftragswesenAuftragserfassung : public QWidget, public desks::OrderDesk {
    Q_OBJECT
  public:
    /// Reads the catalogue: the databases are open and the settings loaded. The services and the phone book
    /// outlive the screen.
    frmAuftragswesenAuftragserfassung(const platform::Services& services, telephony::PhoneBook& phoneBook,
                                      QWidget* parent = nullptr);
    ~frmAuftragswesenAuftragserfassung() override;

    void takeCall(const QString& number) override;
    void searchNumber(const QString& number) override;
    void loadBooking(qint64 trxNr) override;
    void restoreDraft() override;
    void keyWebOrder(const desks::WebOrder& order) override;
    void loadPreOrder(qint64 trxNr) override;

    /// The keys of the telephone field that the program acts on: 13 searches. Digits pass by the field's own
    /// filter, any other key is refused there.
    void txt_SucheTelefonNummer_KeyPress(int key);
    /// Empties the screen for the next order.
    void ClearBestellungMaske();

    orders::WorkingOrder& order() { return m_order; }

  protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    /// What was added to the catalogue on another screen, and changed in the settings, is there when this one
    /// is in front again.
    void changeEvent(QEvent* event) override;

  private:
    /// While one lives, address and buttons stay as they are: a call that is taken clears and fills the order
    /// twice, and only what comes out of it is worth laying out.
    class Settling {
      public:
        explicit Settling(frmAuftragswesenAuftragserfassung& screen);
        ~Settling();
        Settling(const Settling&) = delete;
        Settling& operator=(const Settling&) = delete;

      private:
        frmAuftragswesenAuftragserfassung& m_screen;
    };

    // Set-up
    void setUpGrids();
    void setUpLinesGrid();
    void setUpCatalogueGrids();
    void setUpFields();
    void setUpButtons();
    void setUpLetzteBestellungen();
    void setUpShortcuts();
    void showSettings();
    void onClick(QAbstractButton* button, void (frmAuftragswesenAuftragserfassung::*handler)());
    /// For a button that acts on the order as it stands, see actOnOrder.
    void onOrder(QAbstractButton* button, std::function<void()> act);
    /// What an open editor holds belongs to the order first; an edit that is refused stops the act. One such
    /// act runs at a time.
    void actOnOrder(const std::function<void()>& act);
    std::optional<platform::CellPlace> nextLineCell(platform::CellPlace from) const;

    // Customer
    void showAddress();
    void showButtons();
    void search(const QString& number);
    void fillFromPhoneBook(const QString& number);
    void cmdKundeSchnellerfassung_Click();
    void cmd_ClientSave_Click();
    void cmd_ClientAbort_Click();
    void ClearMaskSchnellsuche();
    void cmdZurueckholen_Click();
    void showRestored();
    void cmdKundeEditierung_Click();
    void cmdSimulationISDNCall_Click();
    void cmdWieLetztesMal_Click();
    void wieLetztesMal(qint64 trxNr);
    void tellLeftOut(const orders::Ausgelassen& leftOut, const QString& title);

    // Catalogue
    void combo_PreisGruppe_Click();
    void refreshCatalogue();
    void followStations(store::Topic topic);
    /// Behind the user: what he has marked stays marked, and the order as it is.
    void followCatalogue();
    void TabStripArtikel_Click();
    void FormatGridProdukte();
    void FormatGridExtras(qint64 produktId);
    /// Name and price of the article in a row of the catalogue; row -1 shows none.
    void showArtikel(bool isProdukt, int row);
    std::vector<platform::CellOffer> offers(platform::CellPlace at, const QString& typed);
    void ProdukteGrid_Pick(int row);
    void ExtrasGrid_Pick(int row);
    void picked(int row, class QComboBox* quantity);
    void showLine(int row);
    void goOn();
    void stepQuantity(class QComboBox* combo, int step);

    // Cells
    void detailsMenu(int row, int column, const QPoint& globalPos);
    void linesMenu(int row, const QPoint& globalPos);
    void cmdRabatt_Click();

    // Booking
    void cmdSave_Click();
    /// False where the user gave up waiting for a server: the order stands on the screen as before.
    bool stores(const QString& meanwhile, const std::function<void()>& work);
    void book();
    void storePreOrder();
    void cmdVerwaltungSave_Click();
    void cmdVerwaltungDelete_Click();
    void cmdVerwaltungLoad_Click();
    void cmdNextTrx_Click();
    void cmdPreviousTrx_Click();
    void cmdPrint_Click();
    qint64 shownTrxNr() const;
    /// Otherwise the user was told.
    bool isAsRead();
    void loadIntoScreen(qint64 trxNr);
    void stepTo(qint64 trxNr);
    bool ask(const QString& question, const QString& title);
    /// Shows it in the status line.
    void note(const QString& message);
    /// The order stands in the store: nothing is kept of it, and the status line tells what became of it; the
    /// number takes the place of %1.
    void finished(const QString& what, qint64 number);
    void tell(const QString& text, const QString& title, int style);
    /// `note` goes into the message that a slip did not come out.
    void printSlip(int target, const QString& note = {});
    bool finishEdits();

    std::unique_ptr<Ui::frmAuftragswesenAuftragserfassung> m_ui;
    platform::Services m_services;
    telephony::PhoneBook& m_phoneBook;
    orders::WorkingOrder m_order;
    frmPopUpMenu* m_menus;
    orders::OrderDraft m_draft;
    platform::DataControl DataControlProdukte;
    platform::DataControl DataControlExtras;
    int m_MenuZeile = -1;
    QString m_shownAddress;
    int m_settling = 0;
    bool m_acting = false;
    bool m_wasInFront = false;
};
