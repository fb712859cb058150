#include "reporting/frmAuswertungenBuchungsjournal.h"
#include "common/Guard.h"
#include "desks/OrderDesk.h"
#include "menus/frmPopUpMenu.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/report/PrintTable.h"
#include "reporting/modAuswertungenBuchungsjournal.h"
#include "store/SystemSettings.h"
#include "ui_frmAuswertungenBuchungsjournal.h"

using namespace modAuswertungenBuchungsjournal;
using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;

frmAuswertungenBuchungsjournal::frmAuswertungenBuchungsjournal(const platform::Services& services,
                                                               QWidget* parent) :
    frmAuswertung(services, parent),
    m_ui(std::make_unique<Ui::frmAuswertungenBuchungsjournal>()), m_menus(new frmPopUpMenu(this)) {
    m_ui->setupUi(this);
    setUpControls();
    setUpFilters();
    setUpGrid();
    setUpMenu();
    DataControl.show(Buchungen({.tage = Zeitraum{von(), bis()}}));
    FormatGrid();
    fillKurierCombo(*m_ui->combo_Kurier, false);
    m_ui->lbl_Ccy->setText(tr("Total Umsatz: ") + SysCurrency);
    m_heading = heading();
}

frmAuswertungenBuchungsjournal::~frmAuswertungenBuchungsjournal() = default;

void frmAuswertungenBuchungsjournal::setUpGrid() {
    platform::DataGrid* grid = m_ui->JournalGrid;
    DataControl.setObjectName(u"DataControl"_s);
    DataControl.setKey(kKey);
    frmAuswertung::setUpGrid(*grid, DataControl);
    grid->setRowLook({.isQuiet = [grid](int row) { return IstStorniert(grid->text(row, kBuchungstext)); }});
    connectGuarded(Origin::User, grid, &platform::DataGrid::rowActivated, this,
                   [this](int row) { openBuchung(row); });
}

void frmAuswertungenBuchungsjournal::setUpMenu() {
    QMenu& menu = m_menus->mnBuchungJournal;
    menu.addSeparator();
    QAction* save = menu.addAction(tr("Als &Tabelle speichern …"));
    save->setObjectName(u"mnExport"_s);
    connectGuarded(Origin::User, save, &QAction::triggered, this, [this] { exportFigures(); });
    connectGuarded(Origin::User, m_menus, &frmPopUpMenu::buchungJournalSorted, this,
                   [this](const QString& order) { mnBuchungJournal_Click(order); });
    connectGuarded(Origin::User, m_ui->JournalGrid, &platform::DataGrid::rowContextMenu, this,
                   [&menu](int, const QPoint& position) { menu.popup(position); });
}

void frmAuswertungenBuchungsjournal::setUpFilters() {
    connectGuarded(Origin::User, m_ui->check_AlleBuchungen, &QCheckBox::clicked, this,
                   [this] { check_AlleBuchungen_Click(); });
    for (QCheckBox* filter : {m_ui->check_Datum, m_ui->check_Kurier})
        connectGuarded(Origin::User, filter, &QCheckBox::clicked, this, [this] { check_Filter_Click(); });
}

void frmAuswertungenBuchungsjournal::FormatGrid() {
    m_ui->JournalGrid->formatColumns({{tr("Datum"), 1200, Qt::AlignHCenter, u"DD/MM/YYYY"_s},
                                      {{}, 0},
                                      {tr("Auftrags-Nr."), 1200, Qt::AlignHCenter},
                                      {tr("Buchungstext"), 2500},
                                      {tr("Kurier"), 1200, Qt::AlignHCenter},
                                      {tr("Auftragstotal"), 1500, Qt::AlignRight, u"0.00 "_s, {}, true}});
    m_ui->JournalGrid->stretchColumn(kBuchungstext);
}

void frmAuswertungenBuchungsjournal::check_AlleBuchungen_Click() {
    if (m_ui->check_AlleBuchungen->isChecked()) {
        m_ui->check_Datum->setChecked(false);
        m_ui->check_Kurier->setChecked(false);
    } else {
        check_Filter_Click();
    }
}

void frmAuswertungenBuchungsjournal::check_Filter_Click() {
    m_ui->check_AlleBuchungen->setChecked(!m_ui->check_Datum->isChecked() &&
                                          !m_ui->check_Kurier->isChecked());
}

void frmAuswertungenBuchungsjournal::showFigures() {
    const Zeitraum tage{von(), bis()};
    const auto before = std::tuple(m_stateDatum, m_stateKurier, m_ui->lbl_TotalPreis->text());
    m_stateDatum = qint16(m_ui->check_Datum->isChecked());
    m_stateKurier = qint16(m_ui->check_Kurier->isChecked());
    Auswahl auswahl;
    if (m_stateDatum == 1)
        auswahl.tage = tage;
    if (m_stateKurier == 1) {
        auswahl.lng_KurierID = kurierOf(*m_ui->combo_Kurier);
        if (!auswahl.lng_KurierID) {
            services().dialogs.MsgBox(tr("Sie müssen zuerst einen Kurier auswählen."), platform::kInformation,
                                      tr("Kurier"));
            return;
        }
    }
    const bool isShown = reading([&](const platform::Progress& progress) {
        // The list last: it shows nothing when it is given up.
        DisplayTotalBetrag(TotalBuchungen(auswahl), progress);
        DataControl.show(Buchungen(auswahl), progress);
        FormatGrid();
        m_heading = heading();
    });
    if (isShown)
        return;
    m_stateDatum = std::get<0>(before);
    m_stateKurier = std::get<1>(before);
    m_ui->lbl_TotalPreis->setText(std::get<2>(before));
}

void frmAuswertungenBuchungsjournal::DisplayTotalBetrag(const QString& sql,
                                                        const platform::Progress& progress) {
    m_ui->lbl_TotalPreis->setText(total(TotalBetrag(sql, progress)));
}

void frmAuswertungenBuchungsjournal::mnBuchungJournal_Click(const QString& order) {
    reading([&](const platform::Progress& progress) {
        DataControl.Sort(order, progress);
        FormatGrid();
    });
}

void frmAuswertungenBuchungsjournal::openBuchung(int row) {
    const platform::DataGrid& grid = *m_ui->JournalGrid;
    if (grid.text(row, kTrxNr).isEmpty() || IstStorniert(grid.text(row, kBuchungstext)))
        return;
    const qint64 trxNr = grid.value(row, kTrxNr).toLong();
    if (auto* orders = platform::showDesk<desks::OrderDesk>(services().navigation))
        orders->loadBooking(trxNr);
}

QString frmAuswertungenBuchungsjournal::heading() const {
    return Ueberschrift(m_stateDatum == 1, m_stateKurier == 1, vonBis(), m_ui->combo_Kurier->currentText());
}

void frmAuswertungenBuchungsjournal::printFigures() {
    print(u"rep_Buchungsjournal.rpt"_s, tr("Buchungsjournal"), [this](const platform::Progress& progress) {
        FillPrintBuchungsJournal(DataControl.RecordSource(), progress);
        platform::setPrintHeading(u"BuchungsJournalVonBis"_s, heading());
    });
}

std::vector<platform::SheetTable> frmAuswertungenBuchungsjournal::sheets() const {
    return {platform::sheetOf(*m_ui->JournalGrid, tr("Buchungsjournal"), m_heading)};
}
