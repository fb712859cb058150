#include "shell/frmEinstellungenBenutzer.h"
#include "common/Guard.h"
#include "shell/OwnerAccount.h"
#include "shell/modEinstellungenBenutzer.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include "ui_frmEinstellungenBenutzer.h"
#include <QSignalBlocker>

using common::connectGuarded;
using common::Origin;
using namespace modEinstellungenBenutzer;

namespace {

constexpr int kAdministrator = int(shell::kAdministrator);
constexpr int kLongestName = 20;
constexpr int kShortestName = 3;

} // namespace

frmEinstellungenBenutzer::frmEinstellungenBenutzer(const platform::Services& services, QWidget* parent) :
    MasterDataForm(services, ConnMain, parent), m_ui(std::make_unique<Ui::frmEinstellungenBenutzer>()) {
    m_ui->setupUi(this);
    setUpForm({m_ui->txt_PWD, m_ui->txt_PWDConfirm}, {9000, 7800});
    // What only tells does not look as if it could be typed into.
    QPalette told;
    told.setColor(QPalette::Base, Qt::transparent);
    for (QLineEdit* name : {m_ui->txt_Administrator_Username, m_ui->txt_Username})
        name->setPalette(told);
    m_ui->txt_Administrator_Username->setText(shell::OwnerAccount::read(store::appPath()).name());
    fillPermissions();
    const auto showAnmeldung = [this] { m_ui->check_AnmeldungUser->setChecked(SysAnmeldungBenutzer != 0); };
    showAnmeldung();
    connect(&store::settingsNews(), &store::SettingsNews::changed, this, showAnmeldung);
    connectGuarded(Origin::User, m_ui->cmdNewUser, &QPushButton::clicked, this,
                   [this] { cmdNewUser_Click(); });
    connectGuarded(
        Origin::User, m_ui->list_UserPermission, &QListWidget::itemChanged, this,
        [this](QListWidgetItem* item) { list_UserPermission_Click(m_ui->list_UserPermission->row(item)); });
    connectGuarded(Origin::User, m_ui->check_AnmeldungUser, &QCheckBox::clicked, this,
                   [this] { SaveAnmeldung(m_ui->check_AnmeldungUser->isChecked()); });
    follow(store::Topic::Users);
    FormatGrid();
    CleanMask();
}

frmEinstellungenBenutzer::~frmEinstellungenBenutzer() = default;

void frmEinstellungenBenutzer::fillPermissions() {
    for (const shell::Right& right : shell::rights())
        (new QListWidgetItem(tr(right.text), m_ui->list_UserPermission))->setCheckState(Qt::Unchecked);
}

void frmEinstellungenBenutzer::FormatGrid() {
    showRows(BenutzerListe(), {{{}, 0}, {tr("Benutzer"), 2500}});
}

void frmEinstellungenBenutzer::CleanMask() {
    const qint64 stays = key();
    MasterDataForm::CleanMask();
    setKey(stays);
    for (QLineEdit* field : {m_ui->txt_Username, m_ui->txt_PWD, m_ui->txt_PWDConfirm})
        field->clear();
    tickPermissions([](int) { return false; });
    m_ui->list_UserPermission->setCurrentRow(-1);
    m_ui->cmdNewUser->setEnabled(true);
    m_ui->cmdNewUser->setFocus();
    enableMask(false);
}

void frmEinstellungenBenutzer::enableMask(bool on) {
    for (QWidget* part :
         {static_cast<QWidget*>(m_ui->cmdSave), static_cast<QWidget*>(m_ui->txt_PWD),
          static_cast<QWidget*>(m_ui->txt_PWDConfirm), static_cast<QWidget*>(m_ui->list_UserPermission)})
        part->setEnabled(on);
}

void frmEinstellungenBenutzer::chooseRow(int row) {
    MasterDataForm::chooseRow(row);
    enableMask(true);
    // Cleaning the mask has moved the focus to cmdNewUser.
    m_ui->BenutzerGrid->setFocus();
}

bool frmEinstellungenBenutzer::showRecord(qint64 key) {
    const auto benutzer = LoadBenutzer(key);
    if (!benutzer)
        return false;
    m_ui->txt_Username->setText(benutzer->txt_Username);
    m_ui->txt_PWD->setText(benutzer->txt_Passwort);
    m_ui->txt_PWDConfirm->setText(benutzer->txt_Passwort);
    tickPermissions([&](int row) { return benutzer->rights[size_t(row)]; });
    return true;
}

void frmEinstellungenBenutzer::tickPermissions(const std::function<bool(int row)>& ticked) {
    const QSignalBlocker silent(m_ui->list_UserPermission);
    for (int row = 0; row < int(shell::kRights); ++row)
        m_ui->list_UserPermission->item(row)->setCheckState(ticked(row) ? Qt::Checked : Qt::Unchecked);
}

bool frmEinstellungenBenutzer::permission(int row) const {
    return m_ui->list_UserPermission->item(row)->checkState() == Qt::Checked;
}

void frmEinstellungenBenutzer::list_UserPermission_Click(int row) {
    if (row == kAdministrator && permission(row))
        return tickPermissions([](int) { return true; });
    if (row != kAdministrator && !permission(row))
        tickPermissions([this](int other) { return other != kAdministrator && permission(other); });
}

void frmEinstellungenBenutzer::cmdNewUser_Click() {
    const QString name = services().dialogs.InputBox(
        tr("Bitte geben Sie einen neuen Benutzer Namen ein. (Maximal 20 Zeichen lang und keine "
           "Sonderzeichen)"),
        tr("Neuer Benutzer"));
    if (!checkNewName(name))
        return;
    // The key stays on purpose: after a user was loaded, the new name takes that user's row.
    m_ui->txt_Username->setText(name);
    enableMask(true);
    m_ui->txt_PWD->setFocus();
}

bool frmEinstellungenBenutzer::checkNewName(const QString& name) {
    const QString title = tr("Ungültiger Benutzer Name");
    if (name.size() > kLongestName)
        return refuse(tr("Der Benutzer Name ist zu lang. Es sind maximal 20 Zeichen erlaubt"), title);
    if (name.trimmed().size() < kShortestName)
        return refuse(tr("Der Benutzer Name muss mindestenz 3 Zeichen lang sein."), title);
    if (name.contains(u'%') || name.contains(u'&'))
        return refuse(tr("Der Benutzer Name darf keine Sonderzeichen beinhalten."), title);
    if (!FindBenutzer(name))
        return refuse(tr("Dieser Benutzername existiert bereits."), title);
    return true;
}

store::RowMark frmEinstellungenBenutzer::markRecord(qint64 key) const {
    return MarkBenutzer(key);
}

bool frmEinstellungenBenutzer::checkInput() {
    if (m_ui->txt_Username->text().trimmed().isEmpty())
        return refuse(*m_ui->BenutzerGrid, tr("Bitte wählen Sie einen Benutzer."), tr("Benutzer"));
    if (m_ui->txt_PWD->text() != m_ui->txt_PWDConfirm->text())
        return refuse(*m_ui->txt_PWD, tr("Die Passwörter stimmen nicht überein."), tr("Benutzer"));
    return true;
}

void frmEinstellungenBenutzer::saveRecord() {
    Benutzer benutzer{m_ui->txt_Username->text(), m_ui->txt_PWD->text(), {}};
    for (int row = 0; row < int(shell::kRights); ++row)
        benutzer.rights[size_t(row)] = permission(row);
    SaveBenutzer(benutzer, key(), mark());
}

bool frmEinstellungenBenutzer::mayDelete() {
    return true;
}

void frmEinstellungenBenutzer::deleteRecord() {
    DeleteBenutzer(key(), mark());
}
