// What other stations on the same database do, in the main window.
#include "common/Guard.h"
#include "desks/CallerListDesk.h"
#include "desks/PreOrderDesk.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "platform/Dialogs.h"
#include "platform/UserWatch.h"
#include "shell/WaitingCall.h"
#include "shell/frmMDI.h"
#include "shell/modEinstellungenBenutzer.h"
#include "shop/modInternetBestellungen.h"
#include "store/ServerState.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include "telephony/modTelefonie.h"

using namespace std::chrono_literals;
using common::connectGuarded;
using common::Origin;
using store::Topic;

namespace {

constexpr auto kUsual = 3s;
constexpr auto kWhileACallWaits = 1s;

} // namespace

void frmMDI::setUpStations() {
    StationTimer.setObjectName(QStringLiteral("StationTimer"));
    StationTimer.setInterval(kUsual);
    connectGuarded(Origin::Timer, &StationTimer, &QTimer::timeout, this, [this] { StationTimer_Timer(); });
    connectGuarded(Origin::Timer, &store::stationNews(), &store::StationNews::heard, this,
                   [this](Topic topic) { takeIn(topic); });
    connectGuarded(Origin::Timer, m_call, &shell::WaitingCall::left, this, [this] { showMissedCalls(); });
}

void frmMDI::startStations() {
    store::ifServerAnswers([] { store::stationNews().start(); });
    StationTimer.start();
}

void frmMDI::StationTimer_Timer() {
    if (!ConnMain.IsOpen())
        return;
    const bool waits = callWaits() && m_call->takenBy().isEmpty();
    StationTimer.start(waits ? kWhileACallWaits : kUsual);
    if (const QString station = waits ? modTelefonie::CallTakenBy(m_call->number()) : QString();
        !station.isEmpty())
        m_call->setTaken(station);
    store::stationNews().look();
    if (platform::mayInterrupt())
        store::stationNews().show();
}

/// At once, so only what is in memory or cannot be in anybody's way.
void frmMDI::takeIn(Topic topic) {
    switch (topic) {
    case Topic::Settings:
        store::LoadSystemSettings();
        Q_EMIT store::settingsNews().changed();
        [[fallthrough]];
    case Topic::Users:
        modEinstellungenBenutzer::RefreshRights();
        // Who works without a log-in goes on until the next start.
        if (!loginIsOn() || m_userLoggedIn)
            ApplyUserRights();
        return;
    case Topic::Calls:
        return followCallers();
    case Topic::PreOrders:
        return followPreOrders();
    case Topic::WebOrders:
        return followWebOrders();
    case Topic::Catalogue:
        return;
    }
}

void frmMDI::followCallers() {
    showMissedCalls();
    if (auto* list = dynamic_cast<desks::CallerList*>(m_screens->open(desks::CallerList::kScreen)))
        list->callCame();
}

void frmMDI::followPreOrders() {
    using namespace modAuftragswesenVorbestellungen;
    UpdateVorbestellungCount(m_services.navigation);
    QWidget* const screen = m_screens->open(desks::PreOrderAlarm::kScreen);
    const auto* alarm = dynamic_cast<desks::PreOrderAlarm*>(screen);
    if (!alarm || !screen->isVisible())
        return;
    const qint64 told = alarm->Faellig();
    const auto due = FindFaelligeVorbestellung();
    if (due == told)
        return;
    if (const QString station = BeiStation(told); !station.isEmpty())
        showMessage(tr("%1 bearbeitet die Vorbestellung %2").arg(station).arg(told));
    screen->close();
    if (due)
        CheckVorbestellungAlarm(m_services.navigation);
}

void frmMDI::followWebOrders() {
    const qint64 open = modInternetBestellungen::Offene() - modInternetBestellungen::BeiAnderen();
    if (open > m_webOrders)
        ordersWait(open);
    else if (m_internetAttention != 0 && open == 0)
        setInternetAttention(0);
    m_webOrders = open;
}

bool frmMDI::takesAllTheSame(const QString& station) {
    const QString question = tr("%1 nimmt diesen Anruf bereits an. Möchten Sie ihn trotzdem annehmen?");
    return m_services.dialogs.MsgBox(question.arg(station), platform::kYesNo, tr("Anruf")) ==
           platform::kAnswerYes;
}

void frmMDI::tellCallTaken(const QString& number) {
    QTimer::singleShot(
        0, this, [number] { common::guarded(Origin::Timer, [&] { modTelefonie::TellCallTaken(number); }); });
}
