#include "orders/frmAuftragswesenAuftragserfassung.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "desks/CustomerDesk.h"
#include "masterdata/Artikel.h"
#include "masterdata/modVerwaltungKunden.h"
#include "menus/frmPopUpMenu.h"
#include "orders/WebOrderMemory.h"
#include "orders/modBestellNummern.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/form/CompactTabStyle.h"
#include "platform/form/FieldHelpers.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include "ui_frmAuftragswesenAuftragserfassung.h"
#include <QScopedValueRollback>
#include <QShortcut>

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;
using orders::Col;
using platform::CellPlace;

namespace {

constexpr int kQuantities = 100;

} // namespace

frmAuftragswesenAuftragserfassung::frmAuftragswesenAuftragserfassung(const platform::Services& services,
                                                                     telephony::PhoneBook& phoneBook,
                                                                     QWidget* parent) :
    QWidget(parent),
    m_ui(std::make_unique<Ui::frmAuftragswesenAuftragserfassung>()), m_services(services),
    m_phoneBook(phoneBook), m_menus(new frmPopUpMenu(this)),
    m_draft(m_order, orders::OrderDraft::defaultFile()) {
    m_ui->setupUi(this);
    m_order.SetUp();
    showSettings();
    setUpGrids();
    setUpFields();
    setUpButtons();
    setUpLetzteBestellungen();
    setUpShortcuts();
    m_ui->TabStripArtikel->setStyle(new platform::CompactTabStyle(m_ui->TabStripArtikel));
    combo_PreisGruppe_Click();
    showAddress();
    m_ui->box_SchnellerfassungKunde->hide();
    showButtons();
}

frmAuftragswesenAuftragserfassung::~frmAuftragswesenAuftragserfassung() {
    // They go later and still tell what happens to them.
    for (platform::DataGrid* grid : {m_ui->ProdukteGrid, m_ui->ExtrasGrid})
        grid->disconnect(this);
}

void frmAuftragswesenAuftragserfassung::showSettings() {
    for (QWidget* change : {m_ui->cmdVerwaltungSave, m_ui->cmdVerwaltungDelete})
        change->setVisible(modAuftragswesenAuftragserfassung::MayChangeBooked());
    m_order.SetLabels();
    for (const auto& [button, rate] : {std::pair{m_ui->cmdMWStSatz0, SysMWStSatz2},
                                       {m_ui->cmdMWStSatz1, SysMWStSatz1},
                                       {m_ui->cmdMWStSatz3, SysMWStSatz3}})
        button->setText(u'&' + orders::RateCaption(rate));
}

void frmAuftragswesenAuftragserfassung::setUpGrids() {
    auto* details = m_ui->BestellungDetailsGrid;
    details->setTable(m_order.BestellungDetailsGrid);
    details->openEditorOnEnter({1, 3, 5});
    for (const int label : {0, 2, 4})
        details->horizontalHeader()->setSectionResizeMode(label, QHeaderView::ResizeToContents);
    const auto widthOf = [details](const QString& text) {
        constexpr int kCellMargins = 8;
        return details->fontMetrics().horizontalAdvance(text) + kCellMargins;
    };
    details->setColumnWidth(1, widthOf(u"000000"_s));
    details->setColumnWidth(3, widthOf(u"30/Nov/2000"_s));
    details->horizontalHeader()->hide();
    // On a small screen the VAT number takes two lines.
    details->horizontalHeader()->setSectionResizeMode(5, QHeaderView::Stretch);
    details->setWordWrap(true);
    details->verticalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    connectGuarded(Origin::User, details, &platform::CellGrid::cellContextMenu, this,
                   [this](int row, int column, const QPoint& pos) { detailsMenu(row, column, pos); });
    auto* totals = m_ui->BestellungTotalGrid;
    totals->setTable(m_order.BestellungTotalGrid);
    totals->horizontalHeader()->hide();
    totals->horizontalHeader()->setStretchLastSection(true);
    totals->verticalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    totals->setColumnTwips(0, 2100);
    totals->setColumnTwips(1, 900);
    totals->setStrongRow(orders::TotalRow::Total);
    setUpLinesGrid();
    setUpCatalogueGrids();
}

void frmAuftragswesenAuftragserfassung::setUpLinesGrid() {
    auto* lines = m_ui->BestellungGrid;
    lines->setTable(m_order.BestellungGrid);
    lines->setZebra(true);
    lines->openEditorOnEnter({Col::Bezeichnung});
    lines->NextCell = [this](CellPlace from) { return nextLineCell(from); };
    lines->Offers = [this](CellPlace at, const QString& typed) { return offers(at, typed); };
    lines->EnterLeadsOn = [this](CellPlace at) {
        return at.column == Col::Anzahl && !m_order.BestellungGrid.text(at.row, Col::Ccy).isEmpty() &&
               m_order.BestellungGrid.number(at.row, Col::Anzahl) != 0;
    };
    lines->Indented = [this](CellPlace at) {
        return at.column == Col::Bezeichnung && m_order.BestellungGrid.number(at.row, Col::ExtraID) > 0;
    };
    lines->BlankRow = [this](int row) {
        return m_order.BestellungGrid.text(row, Col::Ccy).isEmpty() &&
               m_order.BestellungGrid.text(row, Col::Bezeichnung).isEmpty() &&
               m_order.BestellungGrid.number(row, Col::Preis) == 0;
    };
    const std::pair<int, int> twips[] = {
        {Col::Kurzzeichen, 1650}, {Col::Anzahl, 750},  {Col::Einheit, 900}, {Col::Ccy, 750},
        {Col::Preis, 1150},       {Col::Rabatt, 1050}, {Col::MWSt, 850},    {Col::Bezeichnung, 3600}};
    for (const auto& [column, width] : twips)
        lines->setColumnTwips(column, width);
    lines->horizontalHeader()->setSectionResizeMode(Col::Bezeichnung, QHeaderView::Stretch);
    connectGuarded(Origin::User, lines, &platform::CellGrid::cellContextMenu, this,
                   [this](int row, int, const QPoint& pos) { linesMenu(row, pos); });
    QFont larger = lines->font();
    larger.setPointSizeF(larger.pointSizeF() + 1);
    for (QWidget* grid : {static_cast<QWidget*>(lines), static_cast<QWidget*>(m_ui->ProdukteGrid),
                          static_cast<QWidget*>(m_ui->ExtrasGrid)})
        grid->setFont(larger);
}

void frmAuftragswesenAuftragserfassung::setUpCatalogueGrids() {
    struct Pick {
        platform::DataGrid* grid;
        platform::DataControl* control;
        const char16_t* empty;
        void (frmAuftragswesenAuftragserfassung::*pick)(int);
    };

    const Pick picks[] = {{m_ui->ProdukteGrid, &DataControlProdukte, u"Keine Produkte",
                           &frmAuftragswesenAuftragserfassung::ProdukteGrid_Pick},
                          {m_ui->ExtrasGrid, &DataControlExtras, u"Keine Extras",
                           &frmAuftragswesenAuftragserfassung::ExtrasGrid_Pick}};
    for (const Pick& p : picks) {
        p.control->setConnection(ConnMain);
        p.grid->setDataControl(*p.control);
        p.grid->setEmptyText(QString::fromUtf16(p.empty));
        // A pointer that passes is not yet an act of the user's.
        connectGuarded(Origin::Timer, p.grid, &platform::DataGrid::rowNoticed, this,
                       [this, p](int row) { showArtikel(p.grid == m_ui->ProdukteGrid, row); });
        connectGuarded(Origin::User, p.grid, &platform::DataGrid::rowClicked, this,
                       [this, p](int row) { (this->*p.pick)(row); });
        // A double click has picked by its first click already.
        connectGuarded(Origin::User, p.grid, &platform::DataGrid::rowActivated, this, [this, p](int row) {
            if (QGuiApplication::mouseButtons() == Qt::NoButton)
                (this->*p.pick)(row);
        });
    }
    connectGuarded(Origin::User, &m_order, &orders::WorkingOrder::ExtrasOffered, this,
                   [this](qint64 produktId) { FormatGridExtras(produktId); });
    m_ui->ExtrasGrid->formatColumns({{}, {tr("Extra"), 1800}});
    m_ui->ExtrasGrid->stretchColumn(1);
    FormatGridExtras(-1);
    m_ui->lbl_Artikel->setMinimumHeight(m_ui->lbl_Artikel->fontMetrics().height());
}

void frmAuftragswesenAuftragserfassung::setUpFields() {
    for (QLineEdit* field : findChildren<QLineEdit*>())
        platform::selectAllOnFocus(*field);
    platform::digitsOnly(*m_ui->txt_SucheTelefonNummer);
    platform::digitsOnly(*m_ui->txt_AuftragsNr);
    platform::enterChain({m_ui->txt_KundenName, m_ui->txt_KundenVorname, m_ui->txt_KundenStrasse,
                          m_ui->txt_KundenPLZ, m_ui->txt_KundenOrt, m_ui->txt_KundenZusatz,
                          m_ui->cmd_ClientSave});
    connectGuarded(Origin::User, m_ui->txt_SucheTelefonNummer, &QLineEdit::returnPressed, this,
                   [this] { txt_SucheTelefonNummer_KeyPress(13); });
    connectGuarded(Origin::User, m_ui->txt_AuftragsNr, &QLineEdit::returnPressed, this,
                   [this] { cmdVerwaltungLoad_Click(); });
    for (int i = 1; i <= kQuantities; ++i)
        for (QComboBox* combo : {m_ui->combo_ProduktAnzahl, m_ui->combo_ExtraAnzahl})
            combo->addItem(QString::number(i));
    for (int i = 1; i <= masterdata::kPriceGroups; ++i)
        m_ui->combo_PreisGruppe->addItem(tr("Gruppe %1").arg(i));
    connectGuarded(Origin::User, m_ui->combo_PreisGruppe, &QComboBox::currentIndexChanged, this,
                   [this](int) { combo_PreisGruppe_Click(); });
    connectGuarded(Origin::User, m_ui->TabStripArtikel, &QTabBar::currentChanged, this,
                   [this](int) { TabStripArtikel_Click(); });
    connectGuarded(Origin::User, &m_order, &orders::WorkingOrder::KundenAdresseChanged, this,
                   [this] { showAddress(); });
    connectGuarded(Origin::User, &m_order, &orders::WorkingOrder::ButtonsChanged, this,
                   [this] { showButtons(); });
    connectGuarded(Origin::User, &m_order, &orders::WorkingOrder::Cleared, this, [this] {
        m_ui->box_SchnellerfassungKunde->hide();
        // A new order needs no pause of the user's.
        if (store::stationNews().waits(store::Topic::Catalogue))
            followCatalogue();
    });
    connectGuarded(Origin::Timer, &store::stationNews(), &store::StationNews::shown, this,
                   [this](store::Topic topic) { followStations(topic); });
    connectGuarded(Origin::Timer, &m_draft, &orders::OrderDraft::failed, this,
                   [this](const QString& why) { note(tr("Der Auftrag wird nicht festgehalten. ") + why); });
    connectGuarded(Origin::Timer, &m_draft, &orders::OrderDraft::mended, this,
                   [this] { note(tr("Der Auftrag wird wieder festgehalten.")); });
}

void frmAuftragswesenAuftragserfassung::onClick(QAbstractButton* button,
                                                void (frmAuftragswesenAuftragserfassung::*handler)()) {
    connectGuarded(Origin::User, button, &QAbstractButton::clicked, this,
                   [this, handler](bool) { (this->*handler)(); });
}

void frmAuftragswesenAuftragserfassung::onOrder(QAbstractButton* button, std::function<void()> act) {
    connectGuarded(Origin::User, button, &QAbstractButton::clicked, this,
                   [this, act = std::move(act)](bool) { actOnOrder(act); });
}

void frmAuftragswesenAuftragserfassung::actOnOrder(const std::function<void()>& act) {
    if (m_acting)
        return;
    const QScopedValueRollback acting(m_acting, true);
    if (finishEdits())
        act();
}

bool frmAuftragswesenAuftragserfassung::finishEdits() {
    bool taken = true;
    for (platform::CellGrid* grid :
         {m_ui->BestellungGrid, m_ui->BestellungDetailsGrid, m_ui->BestellungTotalGrid})
        taken &= grid->finishEdit();
    m_draft.flush();
    return taken;
}

void frmAuftragswesenAuftragserfassung::setUpButtons() {
    using Screen = frmAuftragswesenAuftragserfassung;
    onClick(m_ui->cmdSimulationISDNCall, &Screen::cmdSimulationISDNCall_Click);
    onClick(m_ui->cmdKundeSchnellerfassung, &Screen::cmdKundeSchnellerfassung_Click);
    onClick(m_ui->cmdKundeEditierung, &Screen::cmdKundeEditierung_Click);
    onClick(m_ui->cmd_ClientSave, &Screen::cmd_ClientSave_Click);
    onClick(m_ui->cmd_ClientAbort, &Screen::cmd_ClientAbort_Click);
    onClick(m_ui->cmdCleanMask, &Screen::ClearBestellungMaske);
    onOrder(m_ui->cmdZurueckholen, [this] { cmdZurueckholen_Click(); });
    m_ui->cmdZurueckholen->setEnabled(m_draft.canTakeBack());
    connect(&m_draft, &orders::OrderDraft::canTakeBackChanged, m_ui->cmdZurueckholen, &QWidget::setEnabled);
    onOrder(m_ui->cmdRabatt, [this] { cmdRabatt_Click(); });
    onOrder(m_ui->cmdSave, [this] { cmdSave_Click(); });
    onOrder(m_ui->cmdPrint, [this] { cmdPrint_Click(); });
    onClick(m_ui->cmdVerwaltungLoad, &Screen::cmdVerwaltungLoad_Click);
    onOrder(m_ui->cmdVerwaltungSave, [this] { cmdVerwaltungSave_Click(); });
    onOrder(m_ui->cmdVerwaltungDelete, [this] { cmdVerwaltungDelete_Click(); });
    onClick(m_ui->cmdNextTrx, &Screen::cmdNextTrx_Click);
    onClick(m_ui->cmdPreviousTrx, &Screen::cmdPreviousTrx_Click);
    connectGuarded(Origin::User, m_ui->cmdClose, &QAbstractButton::clicked, this, [this](bool) {
        (parentWidget() && qobject_cast<QMdiSubWindow*>(parentWidget()) ? parentWidget() : this)->close();
    });
    onOrder(m_ui->cmdMWStSatz0, [this] { m_order.SetMWStSatzBestellung(SysMWStSatz2); });
    onOrder(m_ui->cmdMWStSatz1, [this] { m_order.SetMWStSatzBestellung(SysMWStSatz1); });
    onOrder(m_ui->cmdMWStSatz3, [this] { m_order.SetMWStSatzBestellung(SysMWStSatz3); });
    const std::tuple<QPushButton*, QComboBox*, int> steps[] = {
        {m_ui->cmd_ProduktAnzahlPlus, m_ui->combo_ProduktAnzahl, 1},
        {m_ui->cmd_ProduktAnzahlMinus, m_ui->combo_ProduktAnzahl, -1},
        {m_ui->cmd_ExtraAnzahlPlus, m_ui->combo_ExtraAnzahl, 1},
        {m_ui->cmd_ExtraAnzahlMinus, m_ui->combo_ExtraAnzahl, -1}};
    for (const auto& [button, combo, step] : steps)
        connectGuarded(Origin::User, button, &QAbstractButton::clicked, this,
                       [this, box = combo, by = step](bool) { stepQuantity(box, by); });
    connectGuarded(Origin::User, m_menus, &frmPopUpMenu::konditionenChosen, this,
                   [this](const QString& text) { m_order.ChooseKonditionen(text); });
    connectGuarded(Origin::User, m_menus, &frmPopUpMenu::kurierChosen, this,
                   [this](qint64 id, const QString& code) { m_order.ChooseKurier(id, code); });
    connectGuarded(Origin::User, m_menus, &frmPopUpMenu::bestellungLoschenLoschen, this, [this] {
        if (m_MenuZeile >= 0)
            m_order.BestellungGrid.requestDelete(m_MenuZeile);
    });
}

void frmAuftragswesenAuftragserfassung::setUpShortcuts() {
    const auto shortcutOf = [this](const QKeySequence& keys) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        return shortcut;
    };
    const auto add = [&](const QKeySequence& keys, std::function<void()> action) {
        auto* shortcut = shortcutOf(keys);
        connectGuarded(Origin::User, shortcut, &QShortcut::activated, this, std::move(action));
        return shortcut;
    };
    const auto focus = [](QWidget* widget) {
        return [widget] { widget->setFocus(Qt::ShortcutFocusReason); };
    };
    add(Qt::Key_F3, [this] {
        // Also with the focus there already: the next number replaces the last one.
        m_ui->txt_SucheTelefonNummer->setFocus(Qt::ShortcutFocusReason);
        m_ui->txt_SucheTelefonNummer->selectAll();
    });
    // Held down it would order the same again and again.
    add(Qt::Key_F4, [this] { cmdWieLetztesMal_Click(); })->setAutoRepeat(false);
    add(Qt::SHIFT | Qt::Key_F4, [this] { m_ui->box_LetzteBestellungen->goToList(); });
    add(Qt::Key_F5, [this] {
        m_ui->BestellungDetailsGrid->goTo({2, 1});
        m_ui->BestellungDetailsGrid->setFocus();
    });
    add(Qt::Key_F6, [this] { showLine(qMax(0, m_order.FirstEmptyRow())); });
    add(Qt::Key_F7, focus(m_ui->ProdukteGrid));
    add(Qt::Key_F8, focus(m_ui->ExtrasGrid));
    // What a button does is guarded there: an error must not travel through the toolkit's click.
    QShortcut* zurueckholen = shortcutOf(Qt::SHIFT | Qt::Key_F11);
    zurueckholen->setAutoRepeat(false);
    connect(zurueckholen, &QShortcut::activated, m_ui->cmdZurueckholen, &QAbstractButton::click);
    connect(shortcutOf(Qt::Key_F12), &QShortcut::activated, m_ui->cmdSave, &QAbstractButton::click);
    add(Qt::ALT | Qt::Key_Left, [this] { cmdPreviousTrx_Click(); });
    add(Qt::ALT | Qt::Key_Right, [this] { cmdNextTrx_Click(); });
    for (int i = 0; i < 9; ++i)
        add(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + i)), [this, i] {
            if (i < m_ui->TabStripArtikel->count())
                m_ui->TabStripArtikel->setCurrentIndex(i);
            m_ui->ProdukteGrid->setFocus(Qt::ShortcutFocusReason);
        });
}

/// Enter leads from the code to the quantity of a line that was found, and from there to the next line's
/// code.
std::optional<CellPlace> frmAuftragswesenAuftragserfassung::nextLineCell(CellPlace from) const {
    const bool found = !m_order.BestellungGrid.text(from.row, Col::Ccy).isEmpty();
    if (from.column == Col::Kurzzeichen || from.column == Col::Bezeichnung)
        return found ? CellPlace{from.row, Col::Anzahl}
                     : CellPlace{from.row, from.column == Col::Kurzzeichen ? int(Col::Bezeichnung)
                                                                           : int(Col::Kurzzeichen)};
    return CellPlace{qMin(from.row + 1, orders::kOrderRows - 1), Col::Kurzzeichen};
}

void frmAuftragswesenAuftragserfassung::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!event->spontaneous() && !focusWidget())
        m_ui->txt_SucheTelefonNummer->setFocus();
}

/// Closing the screen gives the order on it up, as every screen drops what is not saved. The end of the
/// program does not come here.
void frmAuftragswesenAuftragserfassung::closeEvent(QCloseEvent* event) {
    m_draft.giveUp();
    QWidget::closeEvent(event);
}

void frmAuftragswesenAuftragserfassung::ClearBestellungMaske() {
    m_order.ClearBestellungMaske();
    m_draft.flush();
    m_ui->txt_SucheTelefonNummer->setFocus();
}

frmAuftragswesenAuftragserfassung::Settling::Settling(frmAuftragswesenAuftragserfassung& screen) :
    m_screen(screen) {
    ++m_screen.m_settling;
}

frmAuftragswesenAuftragserfassung::Settling::~Settling() {
    if (--m_screen.m_settling > 0)
        return;
    m_screen.showAddress();
    m_screen.showButtons();
}

void frmAuftragswesenAuftragserfassung::showAddress() {
    if (m_settling > 0)
        return;
    if (m_shownAddress != m_order.KundenAdresse()) {
        m_shownAddress = m_order.KundenAdresse();
        m_ui->txt_KundenAdresse->setPlainText(m_shownAddress);
    }
    m_ui->txt_KundenAdresse->setVisible(m_order.KundenAdresseShown());
    m_ui->box_LetzteBestellungen->setKunde(m_order.KundenAdresseShown() ? m_order.lng_KundenID : -1);
}

void frmAuftragswesenAuftragserfassung::showButtons() {
    if (m_settling > 0)
        return;
    const orders::OrderButtons& on = m_order.buttons();
    m_ui->cmdKundeSchnellerfassung->setEnabled(on.cmdKundeSchnellerfassung);
    m_ui->cmdKundeEditierung->setEnabled(on.cmdKundeEditierung &&
                                         m_services.navigation.hasScreen(desks::CustomerDesk::kScreen));
    m_ui->cmdSave->setEnabled(on.cmdSave);
    m_ui->cmdPrint->setEnabled(on.cmdPrint);
    m_ui->cmdVerwaltungSave->setEnabled(on.cmdVerwaltungSave);
    m_ui->cmdVerwaltungDelete->setEnabled(on.cmdVerwaltungDelete);
}

// What other screens ask
// ---------------------------------------------------------------------------------------

void frmAuftragswesenAuftragserfassung::searchNumber(const QString& number) {
    const orders::WorkingOrder::Attempt attempt(m_order);
    // Not left to the search, which does nothing for a customer without a number.
    m_order.ClearBestellungMaske();
    search(number);
}

void frmAuftragswesenAuftragserfassung::search(const QString& number) {
    m_ui->txt_SucheTelefonNummer->setText(number);
    txt_SucheTelefonNummer_KeyPress(13);
}

void frmAuftragswesenAuftragserfassung::loadBooking(qint64 trxNr) {
    m_ui->txt_AuftragsNr->setText(QString::number(trxNr));
    cmdVerwaltungLoad_Click();
}

void frmAuftragswesenAuftragserfassung::restoreDraft() {
    if (!orders::OrderDraft::restore(orders::OrderDraft::defaultFile(), m_order))
        return;
    showRestored();
}

void frmAuftragswesenAuftragserfassung::cmdZurueckholen_Click() {
    const Settling settling(*this);
    if (!m_draft.takeBack())
        return;
    showRestored();
    note(tr("Der letzte unfertige Auftrag ist wieder da"));
}

void frmAuftragswesenAuftragserfassung::showRestored() {
    // It is the number of whoever stood there before.
    m_ui->txt_SucheTelefonNummer->clear();
    m_ui->combo_PreisGruppe->setCurrentIndex(m_order.PreisGruppe - 1);
    goOn();
    // Taken over a second time meanwhile.
    const auto booked = m_order.webBestellung ? orders::BookedWebOrder(*m_order.webBestellung) : std::nullopt;
    if (booked && !booked->isPreOrder)
        tell(tr("Diese Internet Bestellung wurde bereits als Auftrag %1 verbucht.").arg(booked->trxNr),
             tr("Internet Bestellung"), platform::kInformation);
}

/// Behind the last line, whose product's extras are offered.
void frmAuftragswesenAuftragserfassung::goOn() {
    if (const int last = m_order.LastFilledRow(); last >= 0)
        FormatGridExtras(m_order.BestellungGrid.cell(last, Col::ProduktID).toLong());
    showLine(qMax(0, m_order.FirstEmptyRow()));
}

void frmAuftragswesenAuftragserfassung::takeCall(const QString& number) {
    const std::optional<double> value = common::parseNumber(number);
    if (!value)
        return tell(tr("Diese Telefonnummer ist ungültig und kann nicht verarbeitete werden."),
                    tr("Ungültige Telefonnummer"), platform::kOk);
    const orders::WorkingOrder::Attempt attempt(m_order);
    const qint64 id = modVerwaltungKunden::FindKundeByTelefon(*value);
    // What was captured of another caller and not saved is not this one's.
    ClearMaskSchnellsuche();
    // Not for an unknown number, whose search in the directory may stop at a dialog.
    std::optional<Settling> settling;
    if (id != -1)
        settling.emplace(*this);
    search(number);
    m_ui->box_SchnellerfassungKunde->hide();
    if (modVerwaltungKunden::KundeExists(id)) {
        m_order.FillFromCall(id);
        return showLine(0);
    }
    m_order.HideKundenAdresse();
    m_ui->box_SchnellerfassungKunde->show();
    m_ui->txt_KundenTelefonnummer->setText(number);
    m_ui->txt_KundenName->setFocus();
}
