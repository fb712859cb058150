#include "telephony/frmVerwaltungAnruferListe.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "desks/OrderDesk.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/form/FieldHelpers.h"
#include "store/StoreGlobals.h"
#include "telephony/modTelefonie.h"
#include "telephony/modVerwaltungAnruferListe.h"
#include "ui_frmVerwaltungAnruferListe.h"
#include <QScreen>

using common::connectGuarded;
using common::Origin;
using namespace modVerwaltungAnruferListe;

namespace {

/// Gives the engine time to show the emptied table to the list's own query.
constexpr int kPauseAfterWrite = 1000;

enum Column : int { kID = 0, kTelefon = 1, kDatumLong = 4, kStatus = 5 };

} // namespace

frmVerwaltungAnruferListe::frmVerwaltungAnruferListe(const platform::Services& services, QWidget* parent) :
    QDialog(parent), m_ui(std::make_unique<Ui::frmVerwaltungAnruferListe>()), m_services(services) {
    m_ui->setupUi(this);
    setFixedSize(QSize(460, 560).boundedTo(screen()->availableSize()));
    DataControl.setObjectName(QStringLiteral("DataControl"));
    DataControl.setConnection(ConnMain);
    DataControl.setRecordSource(AnruferListe());
    setUpGrid();
    connectGuarded(Origin::User, m_ui->cmdDelete, &QPushButton::clicked, this, [this] { cmdDelete_Click(); });
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this] { reject(); });
    FormatGrid();
    markRow(0);
}

void frmVerwaltungAnruferListe::setUpGrid() {
    platform::DataGrid* grid = m_ui->TelefonListeGrid;
    grid->setDataControl(DataControl);
    grid->setEmptyText(tr("Keine Anrufe"));
    grid->setRowLook(
        {.isBold = [grid](int row) { return !grid->value(row, kStatus).isTrue(); },
         .note = [grid](int row) { return modTelefonie::CallerName(grid->text(row, kTelefon)); }});
    connectGuarded(Origin::User, grid, &platform::DataGrid::rowActivated, this,
                   [this](int row) { SelectKundeVonAnruferListe(row); });
    connectGuarded(Origin::User, grid, &platform::DataGrid::rowChosen, this, [this] { showCaller(); });
}

frmVerwaltungAnruferListe::~frmVerwaltungAnruferListe() = default;

void frmVerwaltungAnruferListe::FormatGrid() {
    DataControl.Refresh();
    // A received call holds -1, the stored truth value.
    m_ui->TelefonListeGrid->formatColumns(
        {{{}, 0},
         {tr("Kunde"), 2400},
         {tr("Zeit"), 1100},
         {tr("Datum"), 1400},
         {tr("DatumLong"), 0},
         {tr("Status"), 1100, Qt::AlignLeft, tr("\"verpasst\";\"empfangen\"")}});
    m_ui->TelefonListeGrid->stretchColumn(kTelefon);
}

void frmVerwaltungAnruferListe::markRow(int row) {
    m_ui->TelefonListeGrid->setRow(row);
    m_ui->TelefonListeGrid->setFocus();
    showCaller();
}

void frmVerwaltungAnruferListe::showCaller() {
    const platform::DataGrid& grid = *m_ui->TelefonListeGrid;
    const QString name = modTelefonie::CallerName(grid.text(grid.row(), kTelefon));
    const QString hint = tr("Auswahl mit Enter oder Doppelklick");
    m_ui->AuswahlHinweis->setText(name.isEmpty() ? hint : QStringLiteral("%1: %2").arg(name, hint));
}

void frmVerwaltungAnruferListe::callCame() {
    const platform::DataGrid& grid = *m_ui->TelefonListeGrid;
    const qint64 marked = grid.value(grid.row(), kID).toLong();
    FormatGrid();
    // Enter must not take another caller than the one that was marked; the new ones stand above it.
    int row = 0;
    while (row < grid.rowCount() && grid.value(row, kID).toLong() != marked)
        ++row;
    markRow(row < grid.rowCount() ? row : 0);
}

void frmVerwaltungAnruferListe::SelectKundeVonAnruferListe(int row) {
    const QString number = m_ui->TelefonListeGrid->text(row, kTelefon);
    MarkCallReceived(m_ui->TelefonListeGrid->value(row, kDatumLong));
    accept();
    if (common::isNumeric(number))
        if (auto* orders = platform::showDesk<desks::OrderDesk>(m_services.navigation))
            orders->searchNumber(number);
}

void frmVerwaltungAnruferListe::cmdDelete_Click() {
    if (m_services.dialogs.MsgBox(tr("Möchten Sie die Anruferliste wirklich löschen?"), platform::kYesNo,
                                  tr("Liste Löschen")) != platform::kAnswerYes)
        return;
    DeleteAnruferListe();
    platform::waitMilliseconds(kPauseAfterWrite);
    FormatGrid();
    markRow(0);
}
