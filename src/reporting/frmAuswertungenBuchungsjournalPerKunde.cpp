#include "reporting/frmAuswertungenBuchungsjournalPerKunde.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "desks/OrderDesk.h"
#include "masterdata/modVerwaltungKunden.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/chart/ChartView.h"
#include "reporting/frmKundenWahl.h"
#include "reporting/modAuswertungenBuchungsjournalPerKunde.h"
#include "store/SystemSettings.h"
#include "ui_frmAuswertungenBuchungsjournalPerKunde.h"

using namespace Qt::StringLiterals;
using namespace modAuswertungenBuchungsjournalPerKunde;
using common::connectGuarded;
using common::Origin;
using platform::Chart;

namespace {

enum Column : int { kDatum, kKunde, kAuftragsNr, kCcy, kBetrag };

} // namespace

frmAuswertungenBuchungsjournalPerKunde::frmAuswertungenBuchungsjournalPerKunde(
    const platform::Services& services, QWidget* parent) :
    frmAuswertung(services, parent),
    m_ui(std::make_unique<Ui::frmAuswertungenBuchungsjournalPerKunde>()) {
    m_ui->setupUi(this);
    setUpControls();
    m_kunde = new frmKundenWahl(*this);
    setUpGrid(*m_ui->KundenStatsGrid, m_rows);
    FormatGrid();
    m_ui->Bild->setServices(this->services());
    m_ui->Bild->setEmptyText(m_ui->KundenStatsGrid->emptyText());
    m_ui->lbl_Ccy->setText(tr("Total Umsatz: ") + SysCurrency);
    connectGuarded(Origin::User, m_ui->cmdTop20Clients, &QPushButton::clicked, this,
                   [this] { LoadTopKundenStatistik(); });
    connectGuarded(Origin::User, m_ui->KundenStatsGrid, &platform::DataGrid::rowActivated, this,
                   [this](int row) { openBooking(row); });
}

frmAuswertungenBuchungsjournalPerKunde::~frmAuswertungenBuchungsjournalPerKunde() = default;

void frmAuswertungenBuchungsjournalPerKunde::FormatGrid() {
    m_ui->KundenStatsGrid->formatColumns({{tr("Datum"), 1500, Qt::AlignLeft, u"DD/MM/YYYY"_s},
                                          {tr("Kunden-Nummer"), 1700, Qt::AlignRight},
                                          {tr("Auftrags-Nr."), 1500, Qt::AlignRight},
                                          {tr("Währung"), 900, Qt::AlignHCenter},
                                          {tr("Betrag"), 1700, Qt::AlignRight, u"#,##0.00"_s, {}, true}});
    m_ui->KundenStatsGrid->stretchColumn(kDatum);
    m_ui->KundenStatsGrid->setRowLook({.note = [this](int row) {
        return m_gezeigt < 0
                   ? modVerwaltungKunden::GetKundeName(m_ui->KundenStatsGrid->value(row, kKunde).toLong())
                   : QString();
    }});
}

bool frmAuswertungenBuchungsjournalPerKunde::hasKunde() {
    if (m_kunde->lng_KundenID() >= 0)
        return true;
    services().dialogs.MsgBox(tr("Keine gültige Kunden-Nr."), platform::kInformation,
                              tr("Ungültige Kunden-Nr."));
    return false;
}

void frmAuswertungenBuchungsjournalPerKunde::showFigures() {
    LoadKundenStatistik(m_kunde->lng_KundenID());
}

void frmAuswertungenBuchungsjournalPerKunde::LoadKundenStatistik(qint64 lng_KundenID) {
    if (!hasKunde())
        return;
    reading([&](const platform::Progress& progress) {
        const double sum = TotalKunde(lng_KundenID, progress);
        m_rows.show(KundenStatistikSql(lng_KundenID), progress);
        m_gezeigt = lng_KundenID;
        m_ui->lbl_TotalPreis->setText(total(sum));
        m_ui->cmdPrint->setEnabled(modVerwaltungKunden::KundeExists(lng_KundenID));
        showPicture();
    });
}

void frmAuswertungenBuchungsjournalPerKunde::LoadTopKundenStatistik() {
    reading([&](const platform::Progress& progress) {
        const double sum = TotalTopKunden(progress);
        m_rows.show(TopKundenSql(), progress);
        m_gezeigt = -1;
        m_ui->lbl_TotalPreis->setText(total(sum));
        m_kunde->leer();
        showPicture();
    });
}

void frmAuswertungenBuchungsjournalPerKunde::showPicture() {
    const platform::DataGrid& grid = *m_ui->KundenStatsGrid;
    Chart chart{.title = tr("Top Kunden"), .unit = SysCurrency, .series = {{tr("Umsatz"), {}}}};
    auto& values = chart.series[0].values;
    const bool top = m_gezeigt < 0;
    for (int row = 0; row < grid.rowCount(); ++row) {
        const double amount = grid.value(row, kBetrag).toDouble();
        const QString number = grid.text(row, kKunde);
        const QString label =
            top ? number + u' ' + modVerwaltungKunden::GetKundeName(grid.value(row, kKunde).toLong())
                : grid.text(row, kDatum);
        // The orders of a day are one value.
        if (!top && !chart.labels.isEmpty() && chart.labels.last() == label) {
            values.back() += amount;
            continue;
        }
        chart.labels << label;
        values.push_back(amount);
    }
    constexpr qsizetype kColumns = 24;
    if (!top)
        chart.title = tr("Bestellungen von %1").arg(modVerwaltungKunden::GetKundeName(m_gezeigt));
    chart.kind = top ? Chart::Ranked : chart.labels.size() > kColumns ? Chart::Line : Chart::Columns;
    m_ui->Bild->setChart(std::move(chart));
}

void frmAuswertungenBuchungsjournalPerKunde::openBooking(int row) {
    const qint64 number = m_ui->KundenStatsGrid->value(row, kAuftragsNr).toLong();
    if (number <= 0)
        return;
    if (auto* desk = platform::showDesk<desks::OrderDesk>(services().navigation))
        desk->loadBooking(number);
}

void frmAuswertungenBuchungsjournalPerKunde::printFigures() {
    if (!hasKunde())
        return;
    if (m_gezeigt != m_kunde->lng_KundenID())
        LoadKundenStatistik(m_kunde->lng_KundenID());
    if (m_gezeigt != m_kunde->lng_KundenID())
        return;
    print(u"rep_KundenBuchungsjournal.rpt"_s, tr("Buchungsjournal per Kunde"),
          [this](const platform::Progress& progress) {
              FillPrintKundenUmsatz(m_rows.Recordset(), m_kunde->adresse(), progress);
          });
}

std::vector<platform::SheetTable> frmAuswertungenBuchungsjournalPerKunde::sheets() const {
    const bool top = m_gezeigt < 0;
    auto table = platform::sheetOf(*m_ui->KundenStatsGrid, top ? tr("Top Kunden") : tr("Buchungen"),
                                   top ? tr("Top Kunden") : modVerwaltungKunden::GetKundeName(m_gezeigt));
    // The delivery date is stored as a text.
    table.value = [stored = table.value](int row, int column) {
        const common::Value value = stored(row, column);
        const auto day = column == kDatum ? common::parseDate(value.toText()) : std::nullopt;
        return day ? common::Value(common::Serial{*day}) : value;
    };
    return {table};
}
