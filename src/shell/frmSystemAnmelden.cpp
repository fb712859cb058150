#include "shell/frmSystemAnmelden.h"
#include "common/Guard.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/form/FieldHelpers.h"
#include "shell/frmMDI.h"
#include "shell/modEinstellungenBenutzer.h"
#include "ui_frmSystemAnmelden.h"

using common::connectGuarded;
using common::Origin;

namespace {

constexpr int kRefused = 1;

} // namespace

frmSystemAnmelden::frmSystemAnmelden(const platform::Services& services, frmMDI& window) :
    QDialog(&window), m_ui(std::make_unique<Ui::frmSystemAnmelden>()), m_services(services),
    m_window(window) {
    m_ui->setupUi(this);
    setFixedSize(sizeHint().expandedTo({400, 160}));
    for (QLineEdit* field : {m_ui->txt_Benutzernamen, m_ui->txt_Passwort})
        platform::selectAllOnFocus(*field);
    platform::enterChain({m_ui->txt_Benutzernamen, m_ui->txt_Passwort});
    m_ui->txt_Benutzernamen->setFocus();
    connectGuarded(Origin::User, m_ui->txt_Passwort, &QLineEdit::returnPressed, this,
                   [this] { cmdAnmelden_Click(); });
    connectGuarded(Origin::User, m_ui->cmdAnmelden, &QPushButton::clicked, this,
                   [this] { cmdAnmelden_Click(); });
    connectGuarded(Origin::User, m_ui->cmdEnd, &QPushButton::clicked, this, [this] { cmdEnd_Click(); });
}

frmSystemAnmelden::~frmSystemAnmelden() = default;

void frmSystemAnmelden::done(int result) {
    m_window.screens().closeAll();
    QDialog::done(result);
}

void frmSystemAnmelden::reject() {
    if (m_window.userIsLoggedIn())
        return QDialog::reject();
    common::guarded(common::Origin::User, [this] { cmdEnd_Click(); });
}

void frmSystemAnmelden::cmdAnmelden_Click() {
    const bool accepted =
        modEinstellungenBenutzer::CheckLogin(m_ui->txt_Benutzernamen->text(), m_ui->txt_Passwort->text());
    if (accepted)
        m_window.setUserLoggedIn();
    m_window.ApplyUserRights();
    if (accepted)
        return accept();
    m_refused = true;
    if (--m_attempts == 0)
        return endProgram();
    m_services.dialogs.MsgBox(tr("Ihre Anmeldung konnte nicht verifiziert werden.\r\n"
                                 "Überprüfen Sie Ihre Anmeldedaten.\r\n"
                                 "Sie haben noch %1 Versuch(e).")
                                  .arg(m_attempts),
                              platform::kOk, tr("Anmeldung gescheitert"));
    m_ui->txt_Passwort->setFocus();
    m_ui->txt_Passwort->selectAll();
}

void frmSystemAnmelden::cmdEnd_Click() {
    if (m_services.dialogs.MsgBox(tr("Möchten Sie das Programm wirklich beenden?"), platform::kYesNo,
                                  tr("Programm Beenden")) == platform::kAnswerYes)
        endProgram();
}

void frmSystemAnmelden::endProgram() {
    // Nobody knows who sits here: what the former user left open is not taken over.
    m_services.navigation.endProgram(m_refused ? kRefused : 0);
    // Where the process is still there, the log-in is over all the same; the databases are closed by then.
    QDialog::done(Rejected);
}
