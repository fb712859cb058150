#include "shell/frmMDI.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "desks/CallerListDesk.h"
#include "desks/CustomerDesk.h"
#include "desks/OrderDesk.h"
#include "desks/PreOrderDesk.h"
#include "maintenance/DailyCopy.h"
#include "maintenance/SystemNews.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/UserWatch.h"
#include "platform/line/TelephoneLine.h"
#include "platform/net/Inet.h"
#include "shell/ContextHelp.h"
#include "shell/MenuTree.h"
#include "shell/ServerWatch.h"
#include "store/StoreGlobals.h"
#include "ui_frmMDI.h"
#include <QAccessible>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QShortcut>

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;
using shell::MenuEntry;
using shell::MenuKind;

namespace {

constexpr Qt::Key kWebOrdersKey = Qt::Key_F11;

/// A screen reader tells caption and value.
void showValue(QLabel& value, const QLabel& caption, const QString& text) {
    value.setText(text);
    value.setAccessibleName(u"%1: %2"_s.arg(caption.text(), text));
}

} // namespace

frmMDI::frmMDI(const platform::Services& services, const shell::ScreenRegistry& registry,
               Procedures procedures) :
    m_ui(std::make_unique<Ui::frmMDI>()),
    m_services(services), m_procedures(std::move(procedures)) {
    m_ui->setupUi(this);
    // Un-maximised it fits on the screen with its frame, and still shows the order whole.
    constexpr QSize kFrame(10, 36);
    resize(size().boundedTo(screen()->availableSize() - kFrame));
    m_screens = new shell::ScreenManager(*m_ui->MdiArea, registry, this);
    setUpMenu();
    m_screens->setGate([this](const QString& screen) { return mayReach(screen); });
    setUpToolBar();
    setUpPanels();
    setUpServerPanel();
    setUpKeys();
    new shell::ContextHelp(m_services, *m_screens, *this);
    setUpHints();
    setUpTimers();
    setUpStations();
    maintenance::systemNews() = {};
    m_dailyCopy = new maintenance::DailyCopy(m_services, this);
    qApp->installEventFilter(this);
    // Sees what the filter above takes, too.
    new platform::UserWatch(this);
}

frmMDI::~frmMDI() {
    qApp->removeEventFilter(this);
}

void frmMDI::setUpMenu() {
    const auto leadsSomewhere = [this](const MenuEntry& entry) {
        return entry.kind == MenuKind::SoftwareUpdate || entry.kind == MenuKind::Beenden ||
               m_screens->has(entry.screen);
    };
    m_menu = new shell::MenuTree(
        *m_ui->menubar, leadsSomewhere, [this](const MenuEntry& entry) { choose(entry); }, this);
}

void frmMDI::choose(const MenuEntry& entry) {
    switch (entry.kind) {
    case MenuKind::Beenden:
        return m_services.navigation.endProgram();
    case MenuKind::Anmeldung:
        m_screens->show(entry.screen);
        return ApplyUserRights();
    case MenuKind::AnruferListe:
        return openAnruferListe();
    case MenuKind::SoftwareUpdate:
        return checkForUpdates();
    default:
        m_screens->show(entry.screen);
    }
}

void frmMDI::showHints() {
    std::vector<shell::Room::Hint> hints;
    const auto add = [&](const char* name) {
        const QAction* action = menuAction(QLatin1String(name));
        if (action->isEnabled())
            hints.push_back({action->shortcut(), action->text().remove(u'&')});
    };
    for (const char* name :
         {"mnAuftragswesenBestellungen", "mnAuftragswesenVorbestellungen", "mnVerwaltungKunden"})
        add(name);
    if (hasTelephony()) {
        hints.push_back({QKeySequence(Qt::Key_F9), tr("Wartenden Anruf annehmen")});
        add("mnAuftragswesenISDNListe");
    }
    hints.push_back({QKeySequence(Qt::Key_F1), tr("Handbuch")});
    m_ui->MdiArea->setHints(std::move(hints));
}

void frmMDI::setUpHints() {
    const auto withKey = [](QWidget* panel, const QKeySequence& key) {
        panel->setToolTip(u"%1 (%2)"_s.arg(panel->toolTip(), key.toString(QKeySequence::NativeText)));
    };
    withKey(m_ui->ShowTelefonListeCommand, menuAction(u"mnAuftragswesenISDNListe"_s)->shortcut());
    withKey(m_ui->ShowInternetListeCommand, kWebOrdersKey);
}

QAction* frmMDI::menuAction(const QString& name) const {
    return m_menu->action(name);
}

void frmMDI::setUpToolBar() {
    toolButton(m_ui->ToolBarKunden, desks::CustomerDesk::kScreen);
    toolButton(m_ui->ToolBarBestellung, desks::OrderDesk::kScreen);
    toolButton(m_ui->ToolBarVorbestellung, desks::PreOrderList::kScreen);
    toolButton(m_ui->ToolBarInternetTransfer, u"frmOnlineShopTransfer"_s);
    toolButton(m_ui->ToolBarKurier, u"frmVerwaltungKuriere"_s);
    // Unlike the menu entry it does not apply the rights itself: the log-in does that in any case.
    toolButton(m_ui->ToolBarAnmeldung, u"frmSystemAnmelden"_s);
    m_ui->ToolBarExit->installEventFilter(this);
    connectGuarded(Origin::User, m_ui->ToolBarExit, &QToolButton::clicked, this,
                   [this] { m_services.navigation.endProgram(); });
    for (QWidget* background : {static_cast<QWidget*>(m_ui->ToolBarBox), m_ui->MdiArea->viewport()})
        background->setMouseTracking(true);
}

void frmMDI::toolButton(QToolButton* button, const QString& screen) {
    button->setEnabled(m_screens->has(screen));
    connectGuarded(Origin::User, button, &QToolButton::clicked, this,
                   [this, screen] { m_screens->show(screen); });
}

void frmMDI::setUpPanels() {
    setUpCallPanel();
    m_ui->ShowTelefonListeCommand->hide();
    m_ui->ShowTelefonListeCommand->setEnabled(m_screens->has(desks::CallerList::kScreen));
    connectGuarded(Origin::User, m_ui->ShowTelefonListeCommand, &QPushButton::clicked, this,
                   [this] { openAnruferListe(); });
    m_ui->ShowInternetListeCommand->hide();
    m_ui->ShowInternetListeCommand->setEnabled(m_screens->has(u"frmInternetBestellungen"_s));
    connectGuarded(Origin::User, m_ui->ShowInternetListeCommand, &QPushButton::clicked, this,
                   [this] { ShowInternetListeCommand_Click(); });
    setUpSystemPanels();
}

/// In every window of the program, so also in a preview.
void frmMDI::setUpKeys() {
    const auto key = [this](Qt::Key pressed, void (frmMDI::*act)()) {
        auto* shortcut = new QShortcut(QKeySequence(pressed), this);
        shortcut->setContext(Qt::ApplicationShortcut);
        connectGuarded(Origin::User, shortcut, &QShortcut::activated, this, [this, act] { (this->*act)(); });
    };
    key(Qt::Key_F9, &frmMDI::takeWaitingCall);
    key(kWebOrdersKey, &frmMDI::openWebOrders);
}

void frmMDI::setUpTimers() {
    const auto every = [this](QTimer& timer, const char* name, int milliseconds, void (frmMDI::*tick)()) {
        timer.setObjectName(QLatin1String(name));
        timer.setInterval(milliseconds);
        connectGuarded(Origin::Timer, &timer, &QTimer::timeout, this, [this, tick] { (this->*tick)(); });
    };
    every(TimerBeep, "TimerBeep", 1000, &frmMDI::TimerBeep_Timer);
    every(VorbestellungTimer, "VorbestellungTimer", 60000, &frmMDI::VorbestellungTimer_Timer);
    every(InternetLinkTimer, "InternetLinkTimer", 60000, &frmMDI::InternetLinkTimer_Timer);
    every(TimerZeit, "TimerZeit", 1000, &frmMDI::TimerZeit_Timer);
    every(m_newsTimer, "NewsTimer", 250, &frmMDI::tellSystemNews);
    TimerBeep.start();
    VorbestellungTimer.start();
    TimerZeit.start();
    TimerZeit_Timer();
}

void frmMDI::standStill() {
    for (QTimer* timer : {&TimerBeep, &VorbestellungTimer, &InternetLinkTimer, &m_newsTimer, &StationTimer})
        timer->stop();
    if (m_line)
        m_line->Stop();
    for (const auto* inet : {&Inet1, &m_startRequest})
        if (*inet)
            (*inet)->disconnect(this);
    m_dailyCopy->giveUp();
}

void frmMDI::showAuftragsNummer(const QString& number) {
    showValue(*m_ui->MDIAuftragsNummer, *m_ui->AuftragsNrLabel, number);
}

void frmMDI::showVorbestellungCount(qint64 count) {
    showValue(*m_ui->MDIVorbestellung, *m_ui->VorbestellungLabel, QString::number(count));
}

void frmMDI::showKundenTotal(qint64 count) {
    showValue(*m_ui->MDIKundenTotal, *m_ui->KundenLabel, QString::number(count));
}

void frmMDI::showMessage(const QString& message) {
    m_ui->MDIMeldung->setText(message);
    const bool isCut = m_ui->MDIMeldung->sizeHint().width() > m_ui->MDIMeldung->width();
    m_ui->MDIMeldung->setToolTip(isCut ? message : QString());
    QAccessibleEvent alert(m_ui->MDIMeldung, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void frmMDI::TimerZeit_Timer() {
    showValue(*m_ui->MDIZeitAnzeige, *m_ui->DatumLabel,
              common::formatDate(common::clock::now(), u"DD/MM/YYYY HH:MM:SS"));
}

void frmMDI::closeEvent(QCloseEvent* event) {
    event->accept();
    common::guarded(Origin::User, [this] { m_services.navigation.endProgram(); });
}

bool frmMDI::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Enter:
        if (auto* button = qobject_cast<QToolButton*>(watched);
            button && button->parent() == m_ui->ToolBarBox)
            m_ui->ToolBarToolTip->setText(button->toolTip());
        break;
    case QEvent::MouseMove:
        if (watched == m_ui->ToolBarBox || watched == m_ui->MdiArea->viewport())
            m_ui->ToolBarToolTip->clear();
        break;
    case QEvent::ShortcutOverride:
        // Text fields would take some of the menu's keys for their own editing.
        if (isMenuShortcut(*static_cast<QKeyEvent*>(event))) {
            event->ignore();
            return true;
        }
        break;
    default:
        break;
    }
    return QMainWindow::eventFilter(watched, event);
}

bool frmMDI::isMenuShortcut(const QKeyEvent& key) const {
    // In a text field Ctrl+X cuts, as everywhere else; it must not end the program there.
    if (key.modifiers() != Qt::ControlModifier || key.key() == Qt::Key_X)
        return false;
    const QKeySequence pressed(key.keyCombination());
    const auto& entries = shell::menuEntries();
    return std::any_of(entries.begin(), entries.end(), [&](const MenuEntry& entry) {
        return *entry.shortcut && m_menu->action(QLatin1String(entry.name))->shortcut() == pressed;
    });
}
