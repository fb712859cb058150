#include "maintenance/frmSystemMessagesService.h"
#include "common/Guard.h"
#include "desks/SystemDesk.h"
#include "maintenance/SystemNews.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/net/Internet.h"
#include "platform/net/PostURL.h"
#include "ui_frmSystemMessagesService.h"
#include <QRandomGenerator>
#include <QUrl>

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;
using maintenance::systemNews;

namespace {

/// Servers refuse an address of more than 8 KB; the script's own part is short.
constexpr qsizetype kMostOfAddress = 7500;

QString encoded(const QString& value) {
    return QString::fromLatin1(QUrl::toPercentEncoding(value));
}

} // namespace

frmSystemMessagesService::frmSystemMessagesService(const platform::Services& services, QWidget* parent) :
    QWidget(parent), m_ui(std::make_unique<Ui::frmSystemMessagesService>()), m_services(services) {
    m_ui->setupUi(this);
    showSystemMessage();
    drawCode();
    connectGuarded(Origin::User, m_ui->cmdReadMessage, &QPushButton::clicked, this,
                   [this] { cmdReadMessage_Click(); });
    connectGuarded(Origin::User, m_ui->cmdSend, &QPushButton::clicked, this, [this] { cmdSend_Click(); });
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this] { close(); });
}

frmSystemMessagesService::~frmSystemMessagesService() = default;

void frmSystemMessagesService::showEvent(QShowEvent* event) {
    showSystemMessage();
    QWidget::showEvent(event);
}

void frmSystemMessagesService::showSystemMessage() {
    m_ui->txt_SystemMessage->setPlainText(systemNews().SystemMessageText);
    m_ui->cmdReadMessage->setEnabled(systemNews().SystemMessageStatus != 0);
}

void frmSystemMessagesService::drawCode() {
    m_ui->lbl_Random->setText(QString::number(QRandomGenerator::global()->bounded(1000, 10'000)));
    m_ui->txt_Code->clear();
}

void frmSystemMessagesService::cmdReadMessage_Click() {
    const bool confirmed =
        request(u"TavolinoNet_NachrichtGelesen.asp?id1="_s,
                encoded(m_services.internet.endpoints().installation), tr("Nachricht lesen"));
    m_ui->cmdReadMessage->setEnabled(false);
    // Unconfirmed it can be confirmed the next time.
    if (!confirmed)
        return;
    systemNews().SystemMessageStatus = 0;
    if (auto* desk = platform::mainDesk<desks::SystemDesk>(m_services.navigation))
        desk->systemMessageWasRead();
}

void frmSystemMessagesService::cmdSend_Click() {
    const QString title = tr("Nachricht senden");
    const QString text = m_ui->txt_SendSystemMessage->toPlainText();
    const QString value = encoded(text);
    if (m_ui->txt_Code->text() != m_ui->lbl_Random->text())
        return tell(tr("Bitte geben Sie den korrekten Code ein."), tr("Fehlerhafter Code"));
    if (text.trimmed().isEmpty())
        return tell(tr("Bitte geben Sie eine Nachricht ein."), title);
    if (value.size() > kMostOfAddress)
        return tell(tr("Die Nachricht ist zu lang. Bitte kürzen Sie sie."), title);
    if (!request(u"TavolinoNet_NachrichtSenden.asp?Nachricht="_s, value, title))
        return;
    tell(tr("Die Nachricht wurde an den System Verwalter gesendet."), title);
    // The next one is not sent by mistake either.
    drawCode();
}

bool frmSystemMessagesService::request(const QString& script, const QString& value, const QString& title) {
    return platform::isConfirmed(m_services, {.missing = m_services.internet.endpoints().missingForMessages(),
                                              .script = script + value,
                                              .failed = tr("Der Server hat die Anfrage nicht bestätigt."),
                                              .title = title});
}

void frmSystemMessagesService::tell(const QString& text, const QString& title) {
    m_services.dialogs.MsgBox(text, platform::kInformation, title);
}
