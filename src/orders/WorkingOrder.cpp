#include "orders/WorkingOrder.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "common/modFunctions.h"
#include "masterdata/modVerwaltungKunden.h"
#include "masterdata/modVerwaltungKuriere.h"
#include "orders/modBestellNummern.h"
#include "store/ServerState.h"
#include "store/SystemSettings.h"
#include <QRegularExpression>
#include <QUuid>
#include <cmath>

using common::Serial;
using common::Value;
using platform::CellColumn;
using platform::CellKind;

namespace orders {
namespace {

constexpr double kMinutesOfDay = 1440;
const QString kGeloescht = QStringLiteral(u"gelöscht");
const QString kBar = QStringLiteral("Bar");

CellColumn text(const QString& name, const QString& caption = {}) {
    return {name, caption, CellColumn::Type::Text, {}, true, 0};
}

CellColumn number(const QString& name, const QString& caption, const QString& form = {}) {
    return {name, caption, CellColumn::Type::Number, form, true, 0};
}

CellColumn hidden(const QString& name, double blank = 0) {
    return {name, {}, CellColumn::Type::Number, {}, false, blank};
}

/// "1830", "18.30" and "18:30" as "18:30"; "" for anything else.
QString timeOf(const QString& typed) {
    static const QRegularExpression shortHand(QStringLiteral("^\\s*([0-9]{1,2})[.:]?([0-9]{2})\\s*$"));
    const QRegularExpressionMatch match = shortHand.match(typed);
    const QString time =
        match.captured(1).rightJustified(2, QLatin1Char('0')) + QLatin1Char(':') + match.captured(2);
    return match.hasMatch() && common::isDate(time) ? time : QString();
}

std::vector<CellColumn> detailColumns() {
    return std::vector<CellColumn>(6, text(QString()));
}

std::vector<CellColumn> totalColumns() {
    return {text(QString()), text(QString()), number(QString(), QString(), QStringLiteral("0.00"))};
}

/// In the order of Col.
std::vector<CellColumn> lineColumns() {
    const QString amount = QStringLiteral("0.00");
    return {text(QStringLiteral("Kurzzeichen"), QStringLiteral("Kurzzeichen")),
            number(QStringLiteral("Anzahl"), QStringLiteral("Mg")),
            hidden(QStringLiteral("AnzahlIntern")),
            text(QStringLiteral("Einheit"), QStringLiteral("Einheit")),
            hidden(QStringLiteral("EinheitAnzahl"), 1),
            text(QStringLiteral("Bezeichnung"), QStringLiteral("Bezeichnung")),
            text(QStringLiteral("Ccy"), QStringLiteral("W")),
            number(QStringLiteral("Preis"), QStringLiteral("Preis"), amount),
            number(QStringLiteral("Rabatt"), QStringLiteral("Rabatt"), amount),
            number(QStringLiteral("MWSt"), QStringLiteral("MWSt"), QStringLiteral("0.0")),
            hidden(QStringLiteral("PreisOhneMWSt")),
            hidden(QStringLiteral("ProduktID")),
            hidden(QStringLiteral("IsProdukt")),
            hidden(QStringLiteral("ExtraID"))};
}

} // namespace

QString RateCaption(double satz) {
    return common::numberToText(satz) + QLatin1Char('%');
}

WorkingOrder::WorkingOrder(QObject* parent) :
    QObject(parent), BestellungDetailsGrid(detailColumns(), 3),
    BestellungTotalGrid(totalColumns(), TotalRow::Count), BestellungGrid(lineColumns(), kOrderRows) {
    BestellungDetailsGrid.BeforeEdit = [this](int row, int col) { return DetailsMayEdit(row, col); };
    BestellungDetailsGrid.BeforeEndEdit = [this](int row, int col, Value& editor, bool& cancel) {
        DetailsBeforeEndEdit(row, col, editor, cancel);
    };
    BestellungTotalGrid.BeforeEdit = [](int row, int col) {
        return row == TotalRow::MWSt3 || col == kTotalAmount;
    };
    BestellungTotalGrid.Change = [this](int, int) { CalculateTotalBestellung(); };
    BestellungGrid.BeforeEdit = [this](int row, int col) { return LinesMayEdit(row, col); };
    BestellungGrid.BeforeEndEdit = [this](int row, int col, Value& editor, bool& cancel) {
        BestellungGrid_BeforeEndEdit(row, col, editor, cancel);
    };
    BestellungGrid.Change = [this](int row, int col) { BestellungGrid_Change(row, col); };
    BestellungGrid.BeforeDelete = [this](int row) { RemoveLine(row); };
    for (const platform::CellTable* table : {&BestellungDetailsGrid, &BestellungGrid}) {
        connect(table, &QAbstractItemModel::dataChanged, this, [this] { m_asRead = false; });
        connect(table, &QAbstractItemModel::rowsRemoved, this, [this] { m_asRead = false; });
    }
    SettingUpBestellungDetailGrid();
}

void WorkingOrder::setDetail(DetailCell cell, const Value& value) {
    BestellungDetailsGrid.setCell(cell.row, cell.column, value);
}

void WorkingOrder::SetUp() {
    SetLabels();
    ShowComingTrxNr();
    setDetail(Detail::KundenNr, QString());
    SetDefaultKurier();
    setDetail(Detail::Datum, common::formatDate(common::clock::today(), u"DD/MMM/YYYY"));
    for (const DetailCell cell : {Detail::Bestellzeit, Detail::Lieferzeit, Detail::Lieferung})
        setDetail(cell, QString());
    setDetail(Detail::MWStNr, SysVATNummer);
    setDetail(Detail::Konditionen, kBar);
}

const QString& WorkingOrder::Kennung() const {
    if (m_kennung.isEmpty())
        m_kennung = QUuid::createUuid().toString(QUuid::Id128);
    return m_kennung;
}

void WorkingOrder::SetLabels() {
    const std::vector<std::pair<DetailCell, QString>> labels = {
        {{0, 0}, QStringLiteral("Auftrags-Nr")}, {{0, 2}, QStringLiteral("Datum")},
        {{0, 4}, QStringLiteral("MWSt-Nr.")},    {{1, 0}, QStringLiteral("Kunden-Nr")},
        {{1, 2}, QStringLiteral("Bestellzeit")}, {{1, 4}, QStringLiteral("Konditionen")},
        {{2, 0}, QStringLiteral("Kurier")},      {{2, 2}, QStringLiteral("Lieferzeit ca.")},
        {{2, 4}, QStringLiteral("Lieferung")}};
    for (const auto& [cell, label] : labels)
        setDetail(cell, label);
    const std::vector<QString> totals = {
        QStringLiteral("Summe"), QStringLiteral("MWSt: ") + RateCaption(SysMWStSatz1),
        QStringLiteral("MWSt: ") + RateCaption(SysMWStSatz3), QStringLiteral("Total")};
    for (int row = 0; row < TotalRow::Count; ++row) {
        BestellungTotalGrid.setCell(row, 0, totals[size_t(row)]);
        BestellungTotalGrid.setCell(row, 1, SysCurrency);
    }
}

void WorkingOrder::SetDefaultKurier() {
    const QString kurzzeichen = modVerwaltungKuriere::GetFirstKurier();
    setDetail(Detail::Kurier, kurzzeichen);
    lng_KurierID = modVerwaltungKuriere::FindKurierByKurzzeichen(kurzzeichen);
}

void WorkingOrder::SettingUpBestellungDetailGrid() {
    for (int row = 0; row < BestellungDetailsGrid.rows(); ++row)
        for (const int label : {0, 2, 4})
            BestellungDetailsGrid.setKind(row, label, CellKind::Label);
    for (const DetailCell cell :
         {Detail::AuftragsNr, Detail::KundenNr, Detail::Datum, Detail::Bestellzeit, Detail::MWStNr})
        BestellungDetailsGrid.setKind(cell.row, cell.column, CellKind::ReadOnly);
    // The third row's may be edited, and looks like the others.
    for (const int row : {TotalRow::Summe, TotalRow::MWSt1, TotalRow::Total})
        for (const int col : {0, 1})
            BestellungTotalGrid.setKind(row, col, CellKind::Label);
}

void WorkingOrder::ClearBestellungMaske() {
    Q_EMIT AboutToClear();
    m_kennung.clear();
    webBestellung.reset();
    gelesen = {};
    for (platform::CellTable* table : {&BestellungDetailsGrid, &BestellungTotalGrid, &BestellungGrid})
        table->dropEdits();
    BestellungGrid.setRows(kOrderRows);
    for (int row = 0; row < kOrderRows; ++row)
        BestellungGrid.clearRow(row);
    for (int row = 0; row < TotalRow::Count; ++row)
        BestellungTotalGrid.setCell(row, kTotalAmount, 0);
    m_address.clear();
    HideKundenAdresse();
    ShowComingTrxNr();
    for (const DetailCell cell :
         {Detail::KundenNr, Detail::Datum, Detail::Bestellzeit, Detail::Lieferzeit, Detail::Lieferung})
        setDetail(cell, QString());
    setDetail(Detail::Konditionen, kBar);
    if (detail(Detail::Kurier) == kGeloescht && !store::ifServerAnswers([this] { SetDefaultKurier(); }))
        ChooseKurier(-1, {});
    setButtons({});
    Q_EMIT Cleared();
}

void WorkingOrder::ShowComingTrxNr() {
    const bool known = store::ifServerAnswers(
        [this] { setDetail(Detail::AuftragsNr, modBestellNummern::GetLastTrxNr() + 1); });
    if (!known)
        setDetail(Detail::AuftragsNr, QString());
}

bool WorkingOrder::SucheTelefonNummer(const QString& number) {
    if (number.trimmed().isEmpty())
        return false;
    const Attempt attempt(*this);
    const std::optional<double> telefon = common::parseNumber(number);
    const qint64 kundenId = telefon ? modVerwaltungKunden::FindKundeByTelefon(*telefon) : -1;
    ClearBestellungMaske();
    if (kundenId == -1)
        return false;
    lng_KundenID = kundenId;
    ShowKundenAdresse(modVerwaltungKunden::GetKundeAdresse(kundenId));
    FillHead(kundenId);
    OrderButtons known = m_buttons;
    known.cmdKundeSchnellerfassung = false;
    known.cmdKundeEditierung = known.cmdSave = true;
    setButtons(known);
    return true;
}

void WorkingOrder::FillFromCall(qint64 kundenId) {
    const Attempt attempt(*this);
    ClearBestellungMaske();
    lng_KundenID = kundenId;
    ShowKundenAdresse(modVerwaltungKunden::GetKundeAdresse(kundenId));
    FillHead(kundenId);
    setDetail(Detail::MWStNr, SysVATNummer);
    OrderButtons taken = m_buttons;
    taken.cmdSave = true;
    setButtons(taken);
}

void WorkingOrder::FillHead(qint64 kundenId) {
    const double delay = SysStandardLieferzeit / kMinutesOfDay;
    ShowComingTrxNr();
    setDetail(Detail::KundenNr, kundenId);
    const double now = common::clock::now();
    SetBestellzeit(now);
    setDetail(Detail::Lieferzeit, common::formatDate(now + delay, u"HH:MM"));
    // Counted from midnight, so the date stays today also when the time before passes midnight: the firm's
    // practice.
    setDetail(Detail::Lieferung, modFunctions::FormatDateDDMMYYYY(Serial{std::floor(now) + delay}));
}

void WorkingOrder::SetBestellzeit(double moment) {
    setDetail(Detail::Datum, common::formatDate(moment, u"DD/MMM/YYYY"));
    setDetail(Detail::Bestellzeit, common::formatDate(moment, u"HH:MM"));
}

void WorkingOrder::ChooseKurier(qint64 kurierId, const QString& kurzzeichen) {
    setDetail(Detail::Kurier, kurzzeichen);
    lng_KurierID = kurierId;
}

void WorkingOrder::ChooseKonditionen(const QString& conditions) {
    setDetail(Detail::Konditionen, conditions);
}

void WorkingOrder::ShowKundenAdresse(const QString& address) {
    m_address = address;
    m_addressShown = true;
    Q_EMIT KundenAdresseChanged();
}

void WorkingOrder::HideKundenAdresse() {
    m_addressShown = false;
    Q_EMIT KundenAdresseChanged();
}

void WorkingOrder::setButtons(const OrderButtons& buttons) {
    if (buttons == m_buttons)
        return;
    m_buttons = buttons;
    Q_EMIT ButtonsChanged();
}

bool WorkingOrder::DetailsMayEdit(int row, int col) const {
    if (col == Detail::Konditionen.column)
        return row > 0;
    return (col == Detail::Kurier.column || col == Detail::Lieferzeit.column) && row == Detail::Kurier.row;
}

void WorkingOrder::DetailsBeforeEndEdit(int row, int col, Value& editor, bool& cancel) {
    const QString typed = editor.toText();
    const auto isAt = [&](DetailCell cell) { return cell.row == row && cell.column == col; };
    if (isAt(Detail::Kurier)) {
        // Only the menu sets the key: a code typed books the courier chosen before, the firm's practice.
        editor = modVerwaltungKuriere::CheckKurierKurzzeichen(typed);
    } else if (isAt(Detail::Lieferzeit)) {
        if (const QString time = timeOf(typed); !time.isEmpty())
            editor = time;
        else
            cancel = !common::isDate(typed);
    } else if (isAt(Detail::Lieferung)) {
        cancel = !common::isDate(typed);
        if (!cancel)
            editor = modFunctions::FormatDateDDMMYYYY(typed);
    }
}

} // namespace orders
