#include "orders/frmAuftragswesenVorbestellungen.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "common/modFunctions.h"
#include "desks/MainDesks.h"
#include "desks/OrderDesk.h"
#include "masterdata/modVerwaltungKunden.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "store/StoreGlobals.h"
#include "ui_frmAuftragswesenVorbestellungen.h"
#include <QLineEdit>
#include <cmath>

using namespace modAuftragswesenVorbestellungen;
using common::connectGuarded;
using common::Origin;

namespace {

constexpr int kDaysBack = 10;
constexpr int kDaysAhead = 22;

enum Column : int { kTrxNr, kLieferDatum, kLieferzeit, kKundenID };

} // namespace

frmAuftragswesenVorbestellungen::frmAuftragswesenVorbestellungen(const platform::Services& services,
                                                                 QWidget* parent) :
    QWidget(parent),
    m_ui(std::make_unique<Ui::frmAuftragswesenVorbestellungen>()), m_services(services) {
    m_ui->setupUi(this);
    DataControl.setObjectName(QStringLiteral("DataControl"));
    DataControl.setConnection(ConnMain);
    m_ui->VorbestellungGrid->setDataControl(DataControl);
    m_ui->VorbestellungGrid->setEmptyText(tr("Keine Vorbestellungen"));
    m_ui->VorbestellungGrid->setRowLook({.note = [this](int row) { return kundeIn(row); }});
    fillDates();
    setUpControls();
    cmdLoad_Click();
}

frmAuftragswesenVorbestellungen::~frmAuftragswesenVorbestellungen() = default;

void frmAuftragswesenVorbestellungen::fillDates() {
    const double today = common::clock::today();
    for (int day = -kDaysBack; day <= kDaysAhead; ++day)
        m_ui->combo_AuftragsDatum->addItem(modFunctions::FormatDateDDMMYYYY(common::Serial{today + day}));
    m_ui->combo_AuftragsDatum->setCurrentIndex(kDaysBack);
}

void frmAuftragswesenVorbestellungen::setUpControls() {
    const auto onClick = [this](QPushButton* button, void (frmAuftragswesenVorbestellungen::*handler)()) {
        connectGuarded(Origin::User, button, &QPushButton::clicked, this,
                       [this, handler](bool) { (this->*handler)(); });
    };
    onClick(m_ui->cmdLoad, &frmAuftragswesenVorbestellungen::cmdLoad_Click);
    onClick(m_ui->cmdShowAll, &frmAuftragswesenVorbestellungen::cmdShowAll_Click);
    onClick(m_ui->cmdDelete, &frmAuftragswesenVorbestellungen::cmdDelete_Click);
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this](bool) { close(); });
    connectGuarded(Origin::User, m_ui->combo_AuftragsDatum->lineEdit(), &QLineEdit::returnPressed, this,
                   [this] { cmdLoad_Click(); });
    connectGuarded(Origin::User, m_ui->VorbestellungGrid, &platform::DataGrid::rowActivated, this,
                   [this](int) { VorbestellungGrid_DblClick(); });
    connectGuarded(Origin::User, m_ui->VorbestellungGrid, &platform::DataGrid::rowChosen, this,
                   [this](int) { showKunde(); });
    connectGuarded(Origin::Timer, &store::stationNews(), &store::StationNews::shown, this,
                   [this](store::Topic topic) {
                       if (topic == store::Topic::PreOrders)
                           refresh();
                   });
}

/// Behind the user, who goes on from where he was.
void frmAuftragswesenVorbestellungen::refresh() {
    m_ui->VorbestellungGrid->refreshInPlace([this] {
        DataControl.Refresh();
        FormatGrid();
    });
    showKunde();
}

void frmAuftragswesenVorbestellungen::FormatGrid() {
    m_ui->VorbestellungGrid->formatColumns(
        {{tr("Auftrags-Nr."), 1500, Qt::AlignRight},
         {tr("Lieferdatum"), 1800, Qt::AlignHCenter},
         {tr("Lieferzeit"), 1500, Qt::AlignHCenter, QStringLiteral("HH:MM")},
         {tr("Kunden-Nr."), 1500, Qt::AlignRight}});
    m_ui->VorbestellungGrid->stretchColumn(kLieferDatum);
}

void frmAuftragswesenVorbestellungen::showRows(const QString& query) {
    DataControl.setRecordSource(query);
    DataControl.Refresh();
    FormatGrid();
    showKunde();
}

QString frmAuftragswesenVorbestellungen::kundeIn(int row) const {
    return modVerwaltungKunden::GetKundeName(m_ui->VorbestellungGrid->value(row, kKundenID).toLong());
}

void frmAuftragswesenVorbestellungen::showKunde() {
    m_ui->lbl_Kunde->setText(kundeIn(m_ui->VorbestellungGrid->row()));
}

void frmAuftragswesenVorbestellungen::cmdLoad_Click() {
    if (const auto day = common::parseDate(m_ui->combo_AuftragsDatum->currentText()))
        showRows(ListeAmTag(qint64(std::floor(*day))));
}

void frmAuftragswesenVorbestellungen::cmdShowAll_Click() {
    showRows(ListeAlle());
}

void frmAuftragswesenVorbestellungen::ShowVorbestellung(qint64 trxNr) {
    showRows(ListeEine(trxNr));
    // Enter leads on from here.
    m_ui->VorbestellungGrid->setRow(0);
    m_ui->VorbestellungGrid->setFocus();
    showKunde();
}

std::optional<qint64> frmAuftragswesenVorbestellungen::chosen() const {
    const platform::DataGrid& grid = *m_ui->VorbestellungGrid;
    const qint64 trxNr = grid.value(grid.row(), kTrxNr).toLong();
    return grid.row() >= 0 && trxNr > 0 ? std::optional(trxNr) : std::nullopt;
}

void frmAuftragswesenVorbestellungen::cmdDelete_Click() {
    const auto trxNr = chosen();
    if (!trxNr || m_services.dialogs.MsgBox(tr("Möchten Sie diese Vorbestellung löschen?"), platform::kYesNo,
                                            tr("Vorbestellung Löschen")) != platform::kAnswerYes)
        return;
    DeleteVorbestellung(*trxNr);
    desks::showMessage(m_services.navigation, tr("Vorbestellung %1 gelöscht").arg(*trxNr));
    DataControl.Refresh();
    FormatGrid();
    showKunde();
}

void frmAuftragswesenVorbestellungen::VorbestellungGrid_DblClick() {
    const auto trxNr = chosen();
    if (!trxNr || !TakeOnVorbestellung(*trxNr, m_services.dialogs))
        return;
    if (auto* orders = platform::showDesk<desks::OrderDesk>(m_services.navigation))
        orders->loadPreOrder(*trxNr);
}
