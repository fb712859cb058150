// What the system's server tells in the main window: a newer program, a message.
#include "common/Guard.h"
#include "maintenance/PackageFetch.h"
#include "maintenance/SystemNews.h"
#include "maintenance/frmSystemMessagesService.h"
#include "maintenance/mod_SoftwareUpdate.h"
#include "platform/UserWatch.h"
#include "platform/net/Internet.h"
#include "shell/frmMDI.h"
#include "ui_frmMDI.h"

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;
using maintenance::systemNews;
using platform::Inet;

void frmMDI::setUpSystemPanels() {
    m_ui->lbl_SoftwareUpdate->hide();
    connectGuarded(Origin::User, m_ui->lbl_SoftwareUpdate, &QPushButton::clicked, this, [this] {
        mod_SoftwareUpdate::ShowSoftwareUpdate(m_services);
        m_ui->lbl_SoftwareUpdate->hide();
    });
    m_ui->lbl_SystemMessage->hide();
    connectGuarded(Origin::User, m_ui->lbl_SystemMessage, &QPushButton::clicked, this,
                   [this] { openSystemMessage(); });
}

void frmMDI::openSystemMessage() {
    // It may stand open since before the message came.
    if (auto* screen =
            qobject_cast<frmSystemMessagesService*>(m_screens->show(u"frmSystemMessagesService"_s)))
        screen->showSystemMessage();
    m_ui->lbl_SystemMessage->hide();
}

void frmMDI::systemMessageWasRead() {
    m_ui->lbl_SystemMessage->hide();
}

void frmMDI::checkForUpdates() {
    if (!mod_SoftwareUpdate::CheckForUpdates(m_services))
        return;
    m_newsWereTold = true;
    m_newsUntold = false;
}

void frmMDI::startSystemNews() {
    maintenance::PackageFetch::removeLeftovers();
    if (!m_services.internet.endpoints().hasSystem())
        return;
    m_startRequest = m_services.internet.inet();
    connectGuarded(Origin::Answer, m_startRequest.get(), &Inet::StateChanged, this,
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
    m_newsUntold = !m_newsWereTold;
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
    if (isDue && !platform::mayInterrupt())
        return m_newsTimer.start();
    m_newsTimer.stop();
    if (!isDue)
        return;
    m_newsUntold = false;
    mod_SoftwareUpdate::OfferSoftwareUpdate(m_services, *systemNews().newest);
}
