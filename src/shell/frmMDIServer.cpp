// The main window while no database server answers, and when one is back.
#include "common/Guard.h"
#include "shell/ServerWatch.h"
#include "shell/WaitingCall.h"
#include "shell/frmMDI.h"
#include "store/ServerState.h"
#include "telephony/modTelefonie.h"
#include "ui_frmMDI.h"
#include <QAccessible>
#include <QTimer>

void frmMDI::setUpServerPanel() {
    m_serverWatch = std::make_unique<shell::ServerWatch>(m_procedures.askServer);
    m_ui->MDIServer->setVisible(store::isServerAway());
    // Not guarded: it comes out of work that is being guarded, and what it does is.
    connect(m_serverWatch.get(), &shell::ServerWatch::turned, this,
            [this](bool away) { serverTurned(away); });
}

void frmMDI::serverTurned(bool away) {
    m_ui->MDIServer->setVisible(away);
    QAccessibleEvent alert(m_ui->MDIServer, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    if (away)
        return;
    // What was left out meanwhile.
    QTimer::singleShot(0, this, [this] {
        common::guarded(common::Origin::Timer, [this] {
            if (callWaits())
                m_call->setCaller(modTelefonie::CallerName(m_call->number()));
            showMissedCalls();
            VorbestellungTimer_Timer();
        });
    });
}
