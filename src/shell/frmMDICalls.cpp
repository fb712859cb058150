// Calls, web shop and pre-order alarm of the main window.
#include "common/Convert.h"
#include "common/Guard.h"
#include "common/RunTimeError.h"
#include "desks/OrderDesk.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/line/TelephoneLine.h"
#include "shell/frmMDI.h"
#include "store/SystemSettings.h"
#include "telephony/modTelefonie.h"
#include "ui_frmMDI.h"
#include <QAccessible>
#include <QApplication>

using namespace Qt::StringLiterals;

void frmMDI::startTelephony(platform::BasicCAPI32* line, int keptCalls) {
    m_keptCalls = keptCalls;
    if (line)
        startLine(*line);
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

void frmMDI::BasicCAPI32_IncomingCall(const QString&, const QString& AnrufNr, const QString&) {
    showWaitingCall(true, AnrufNr);
    modTelefonie::RecordCall(AnrufNr, m_keptCalls);
}

void frmMDI::ShowISDNNr_Click() {
    const QString number = m_ui->ShowISDNNr->text();
    if (!common::isNumeric(number))
        return showWaitingCall(false, {});
    modTelefonie::MarkCallTaken(number);
    auto* desk = platform::showDesk<desks::OrderDesk>(m_services.navigation);
    showWaitingCall(false, {});
    if (desk)
        desk->takeCall(number);
}

bool frmMDI::callWaits() const {
    return !m_ui->ShowISDNNr->isHidden();
}

void frmMDI::showWaitingCall(bool waits, const QString& number) {
    m_ui->ShowISDNNr->setText(number);
    for (QWidget* part :
         {static_cast<QWidget*>(m_ui->ShowISDNNr), static_cast<QWidget*>(m_ui->DisplayISDNAmpel1),
          static_cast<QWidget*>(m_ui->DisplayISDNAmpel2), static_cast<QWidget*>(m_ui->ISDNTaste)})
        part->setVisible(waits);
    m_ui->ShowISDNNr->setAccessibleDescription(number);
    if (waits) {
        QAccessibleEvent alert(m_ui->ShowISDNNr, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

void frmMDI::openAnruferListe() {
    if (hasTelephony())
        m_screens->show(u"frmVerwaltungAnruferListe"_s);
}

void frmMDI::startWebShop() {
    m_ui->ShowInternetListeCommand->show();
    InternetLinkTimer.start();
    InternetLinkTimer_Timer();
}

void frmMDI::InternetLinkTimer_Timer() {
    // The web shop is not part of the program yet; without it there is nothing to poll.
    if (m_procedures.pollWebShop)
        m_procedures.pollWebShop();
}

void frmMDI::ShowInternetListeCommand_Click() {
    if (m_procedures.fetchWebShop)
        m_procedures.fetchWebShop();
    m_screens->show(u"frmInternetBestellungen"_s);
    setInternetAttention(0);
}

void frmMDI::setInternetAttention(int state) {
    m_internetAttention = state;
    m_ui->ShowInternetListeCommand->setStyleSheet(
        state == 0
            ? QString()
            : u"QPushButton { background: #2e9e44; color: white; font-weight: bold; border-radius: 6px; "
              "padding: 0 10px; }"_s);
}

void frmMDI::TimerBeep_Timer() {
    if (m_internetAttention != 3)
        return;
    if (m_procedures.beep)
        m_procedures.beep();
    else
        QApplication::beep();
}

void frmMDI::VorbestellungTimer_Timer() {
    if (SysVorbestellungAutomatischStatus == 1)
        modAuftragswesenVorbestellungen::CheckVorbestellungAlarm(m_services.navigation);
}
