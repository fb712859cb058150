#include "maintenance/frmSystemMessagesService.h"
#include "common/Guard.h"
#include "maintenance/SystemNews.h"
#include "platform/Dialogs.h"
#include "platform/net/Internet.h"
#include "platform/net/PostURL.h"
#include "ui_frmSystemMessagesService.h"
#include <QRandomGenerator>
#include <QUrl>

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;
using maintenance::systemNews;

frmSystemMessagesService::frmSystemMessagesService(const platform::Services& services, QWidget* parent) :
    QWidget(parent), m_ui(std::make_unique<Ui::frmSystemMessagesService>()), m_services(services) {
    m_ui->setupUi(this);
    m_ui->txt_SystemMessage->setPlainText(systemNews().SystemMessageText);
    m_ui->cmdReadMessage->setEnabled(systemNews().SystemMessageStatus != 0);
    m_ui->lbl_Random->setText(QString::number(QRandomGenerator::global()->bounded(1000, 10'000)));
    connectGuarded(Origin::User, m_ui->cmdReadMessage, &QPushButton::clicked, this,
                   [this] { cmdReadMessage_Click(); });
    connectGuarded(Origin::User, m_ui->cmdSend, &QPushButton::clicked, this, [this] { cmdSend_Click(); });
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this] { close(); });
}

frmSystemMessagesService::~frmSystemMessagesService() = default;

void frmSystemMessagesService::cmdReadMessage_Click() {
    const bool confirmed = request(u"TavolinoNet_NachrichtGelesen.asp"_s, u"id1"_s,
                                   m_services.internet.endpoints().installation, tr("Nachricht lesen"));
    m_ui->cmdReadMessage->setEnabled(false);
    // Unconfirmed it can be confirmed the next time.
    if (confirmed)
        systemNews().SystemMessageStatus = 0;
}

void frmSystemMessagesService::cmdSend_Click() {
    const QString title = tr("Nachricht senden");
    if (m_ui->txt_Code->text() != m_ui->lbl_Random->text()) {
        m_services.dialogs.MsgBox(tr("Bitte geben Sie den korrekten Code ein."), platform::kInformation,
                                  tr("Fehlerhafter Code"));
        return;
    }
    if (request(u"TavolinoNet_NachrichtSenden.asp"_s, u"Nachricht"_s,
                m_ui->txt_SendSystemMessage->toPlainText(), title))
        m_services.dialogs.MsgBox(tr("Die Nachricht wurde an den System Verwalter gesendet."),
                                  platform::kInformation, title);
}

bool frmSystemMessagesService::request(const QString& script, const QString& key, const QString& value,
                                       const QString& title) {
    const platform::Endpoints& ends = m_services.internet.endpoints();
    QString problem = ends.missingForSystem();
    QString answer;
    if (problem.isEmpty()) {
        const QString query = u'?' + key + u'=' + QString::fromLatin1(QUrl::toPercentEncoding(value));
        answer = platform::PostURL(m_services, ends.systemAddress(script) + query, &problem);
    }
    if (problem.isEmpty() && answer.trimmed() == u"OK"_s)
        return true;
    const QString cause = problem.isEmpty() ? QString() : u"\r\n"_s + problem;
    m_services.dialogs.MsgBox(tr("Der Server hat die Anfrage nicht bestätigt.") + cause, platform::kStop,
                              title);
    return false;
}
