#include "shop/frmInternetEMailConfo.h"
#include "common/Guard.h"
#include "common/modFunctions.h"
#include "desks/WebOrderDesk.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/net/Internet.h"
#include "platform/net/PostURL.h"
#include "shop/modInternetBestellungen.h"
#include "ui_frmInternetEMailConfo.h"

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;

frmInternetEMailConfo::frmInternetEMailConfo(const platform::Services& services, QWidget* parent) :
    QDialog(parent), m_ui(std::make_unique<Ui::frmInternetEMailConfo>()), m_services(services) {
    m_ui->setupUi(this);
    connectGuarded(Origin::User, m_ui->cmdSend, &QPushButton::clicked, this, [this] { cmdSend_Click(); });
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this] { reject(); });
    LoadDefaultMessage();
}

frmInternetEMailConfo::~frmInternetEMailConfo() = default;

void frmInternetEMailConfo::LoadDefaultMessage() {
    const auto stored = modInternetBestellungen::LoadEMailConfo();
    m_ui->txt_Betreff->setText(stored ? stored->betreff : tr("Online Shop Bestellung"));
    m_ui->txt_Body->setPlainText(
        stored ? stored->body
               : tr("Dankend haben wir Ihre Bestellung erhalten. Wir werden Ihren Auftrag \n"
                    "gemäss Ihren Bestellinformation ausführen. Für Ihre Bestellung möchten wir \n"
                    "uns noch einmal bedanken."));
    if (const auto* list = platform::showDesk<desks::WebOrderList>(m_services.navigation))
        m_ui->txt_EMail->setText(list->EMail());
}

void frmInternetEMailConfo::cmdSend_Click() {
    const QString title = tr("Kundenbestätigung");
    QString problem;
    if (!modFunctions::IsValidEmailAddress(m_ui->txt_EMail->text(), problem)) {
        m_services.dialogs.MsgBox(tr("Bitte geben Sie eine gültige E-Mail Adresse ein."),
                                  platform::kInformation, tr("Ungültige E-Mail"));
        return;
    }
    const auto encoded = [](QString text) { return modFunctions::TextToURL(text.replace(u'\n', u"\r\n"_s)); };
    if (platform::isConfirmed(m_services, {.missing = m_services.internet.endpoints().missingForSystem(),
                                           .script = u"TavolinoNet_EMailConfo.asp?id1="_s +
                                                     encoded(m_ui->txt_Betreff->text()) + u"&id2="_s +
                                                     encoded(m_ui->txt_Body->toPlainText()) + u"&id3="_s +
                                                     encoded(m_ui->txt_EMail->text()),
                                           .failed = tr("Die Bestätigung ist fehlgeschlagen!"),
                                           .title = title}))
        m_services.dialogs.MsgBox(tr("Die Nachricht wurde dem Kunden übermittelt"), platform::kInformation,
                                  title);
}
