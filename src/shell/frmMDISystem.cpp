// What the system's server tells in the main window: a newer program, a message.
#include "common/Guard.h"
#include "maintenance/SystemNews.h"
#include "maintenance/mod_SoftwareUpdate.h"
#include "platform/net/Internet.h"
#include "shell/frmMDI.h"
#include "ui_frmMDI.h"
#include <QApplication>

using namespace Qt::StringLiterals;
using maintenance::systemNews;
using platform::Inet;

void frmMDI::startSystemNews() {
    if (!m_services.internet.endpoints().hasSystem())
        return;
    m_startRequest = m_services.internet.inet();
    common::connectGuarded(common::Origin::Answer, m_startRequest.get(), &Inet::StateChanged, this,
                           [this](int state) { systemAnswered(state); });
    // The start is over by then.
    QTimer::singleShot(0, m_startRequest.get(), [this] {
        m_startRequest->Execute(mod_SoftwareUpdate::startAddress(m_services.internet.endpoints()));
    });
}

void frmMDI::systemAnswered(int state) {
    if (state != Inet::icResponseCompleted && state != Inet::icError)
        return;
    const QString problem = m_startRequest->Problem() + m_startRequest->Refusal();
    if (!problem.isEmpty())
        return qWarning("Server: %s", qUtf8Printable(problem));
    systemNews() = maintenance::readSystemNews(m_startRequest->Answer());
    m_newsUntold = true;
    showUpdatePanels();
    tellSystemNews();
}

void frmMDI::showUpdatePanels() {
    const auto& newest = systemNews().newest;
    m_ui->lbl_SoftwareUpdate->setVisible(isFree() && newest && mod_SoftwareUpdate::isBehind(*newest));
    m_ui->lbl_SystemMessage->setVisible(isFree() && systemNews().SystemMessageStatus != 0);
}

void frmMDI::tellSystemNews() {
    const bool isDue = m_newsUntold && isFree() && systemNews().newest;
    if (isDue && QApplication::activeModalWidget())
        return m_newsTimer.start();
    m_newsTimer.stop();
    if (!isDue)
        return;
    m_newsUntold = false;
    mod_SoftwareUpdate::OfferSoftwareUpdate(m_services, *systemNews().newest);
}
