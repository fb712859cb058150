// Calls and the pre-order alarm of the main window.
#include "common/Clock.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "common/RunTimeError.h"
#include "desks/CallerListDesk.h"
#include "desks/OrderDesk.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/line/TelephoneLine.h"
#include "shell/WaitingCall.h"
#include "shell/frmMDI.h"
#include "store/ServerState.h"
#include "store/SystemSettings.h"
#include "telephony/modTelefonie.h"
#include "telephony/modVerwaltungAnruferListe.h"
#include "ui_frmMDI.h"
#include <QApplication>

using namespace Qt::StringLiterals;

namespace {

QString missedText(qint64 missed) {
    return missed > 0 ? frmMDI::tr("Anrufer (%1)").arg(missed) : frmMDI::tr("Anrufer");
}

} // namespace

void frmMDI::startTelephony(platform::BasicCAPI32* line, int keptCalls) {
    m_keptCalls = keptCalls;
    m_line = line;
    if (line)
        startLine(*line);
    showMissedCalls();
    showHints();
}

void frmMDI::startLine(platform::BasicCAPI32& line) {
    try {
        common::connectGuarded(common::Origin::Call, &line, &platform::BasicCAPI32::IncomingCall, this,
                               [this](const QString& called, const QString& caller, const QString& format) {
                                   BasicCAPI32_IncomingCall(called, caller, format);
                               });
        line.IsAvailable();
        line.Start();
        m_ui->ShowTelefonListeCommand->show();
    } catch (const std::exception& failure) {
        qWarning("Start ohne Telefonie: %s", failure.what());
        const auto* told = dynamic_cast<const common::RunTimeError*>(&failure);
        showMessage(
            tr("Start ohne Telefonie: %1").arg(told ? told->sentence() : tr("die Leitung ist gestört")));
    }
}

bool frmMDI::hasTelephony() const {
    return !m_ui->ShowTelefonListeCommand->isHidden();
}

void frmMDI::setUpCallPanel() {
    m_call = new shell::WaitingCall({*m_ui->ShowISDNNr,
                                     *m_ui->ISDNAnrufer,
                                     *m_ui->ISDNTaste,
                                     {m_ui->DisplayISDNAmpel1, m_ui->DisplayISDNAmpel2}},
                                    this);
    common::connectGuarded(common::Origin::User, m_call, &shell::WaitingCall::clicked, this,
                           [this] { ShowISDNNr_Click(); });
    // The way to the list keeps its width with the count of missed calls.
    QPushButton& list = *m_ui->ShowTelefonListeCommand;
    const QString caption = list.text();
    list.setText(missedText(99));
    list.setMinimumWidth(list.sizeHint().width());
    list.setText(caption);
}

void frmMDI::BasicCAPI32_IncomingCall(const QString&, const QString& AnrufNr, const QString&) {
    m_call->show(AnrufNr);
    callAttention();
    store::ifServerAnswers([&] { recordCall(AnrufNr); });
}

void frmMDI::recordCall(const QString& number) {
    modTelefonie::CallRingsAgain(number);
    modTelefonie::RecordCall(number, m_keptCalls);
    m_call->setCaller(modTelefonie::CallerName(number));
    showMissedCalls();
    if (auto* list = dynamic_cast<desks::CallerList*>(m_screens->open(desks::CallerList::kScreen)))
        list->callCame();
}

void frmMDI::callAttention() {
    if (isMinimized())
        setWindowState(windowState() & ~Qt::WindowMinimized);
    if (isActiveWindow())
        return;
    QApplication::alert(this);
    beep();
}

void frmMDI::ShowISDNNr_Click() {
    const QString number = m_call->number();
    if (!common::isNumeric(number)) {
        m_call->clear();
        return showMissedCalls();
    }
    if (const QString station = takenElsewhere(number); !station.isEmpty()) {
        m_call->setTaken(station);
        if (!takesAllTheSame(station))
            return;
    }
    tellCallTaken(number);
    auto* desk = platform::showDesk<desks::OrderDesk>(m_services.navigation);
    m_call->clear();
    showMissedCalls();
    // Taken in a window beside this one.
    if (!isActiveWindow()) {
        raise();
        activateWindow();
    }
    try {
        if (desk)
            desk->takeCall(number);
    } catch (...) {
        // It was not taken; nobody has called since, or that one shows.
        if (!callWaits())
            m_call->show(number);
        throw;
    }
}

/// Marks the call as taken; where another station was first, gives its name.
QString frmMDI::takenElsewhere(const QString& number) const {
    if (!m_call->takenBy().isEmpty())
        return m_call->takenBy();
    return modTelefonie::MarkCallTaken(number) ? QString() : modTelefonie::CallTakenBy(number);
}

void frmMDI::takeWaitingCall() {
    if (callWaits())
        ShowISDNNr_Click();
}

bool frmMDI::callWaits() const {
    return m_call->waits();
}

void frmMDI::showMissedCalls() {
    if (!hasTelephony())
        return;
    qint64 missed = 0;
    // The one that waits is not missed yet.
    const bool waits = callWaits() && m_call->takenBy().isEmpty();
    const bool known = store::ifServerAnswers(
        [&] { missed = modVerwaltungAnruferListe::MissedCalls(common::clock::now() - 1) - (waits ? 1 : 0); });
    if (!known)
        return;
    m_ui->ShowTelefonListeCommand->setText(missedText(missed));
    m_ui->ShowTelefonListeCommand->setAccessibleName(
        missed > 0 ? tr("Anrufer Liste, verpasst in den letzten 24 Stunden: %1").arg(missed)
                   : tr("Anrufer Liste"));
}

void frmMDI::openAnruferListe() {
    if (!hasTelephony())
        return;
    m_screens->show(desks::CallerList::kScreen);
    showMissedCalls();
}

void frmMDI::beep() {
    if (m_procedures.beep)
        m_procedures.beep();
    else
        QApplication::beep();
}

void frmMDI::VorbestellungTimer_Timer() {
    if (SysVorbestellungAutomatischStatus == 1)
        store::ifServerAnswers(
            [this] { modAuftragswesenVorbestellungen::CheckVorbestellungAlarm(m_services.navigation); });
}
