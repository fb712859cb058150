#include "shell/frmEinstellungenSystem.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "orders/modAuftragswesenBestellschein.h"
#include "orders/modBestellNummern.h"
#include "platform/form/FieldHelpers.h"
#include "platform/report/Reports.h"
#include "shell/modEinstellungenSystem.h"
#include "store/ServerState.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include "ui_frmEinstellungenSystem.h"
#include <QCloseEvent>
#include <limits>

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::formatNumber;
using common::Origin;
using store::SettingKind;

namespace {

void fillSteps(QComboBox& list, int first, int last, int step, QStringView form) {
    for (int number = first; number <= last; number += step)
        list.addItem(formatNumber(number, form));
}

QString textOf(const QWidget& control, SettingKind kind) {
    if (const auto* box = qobject_cast<const QCheckBox*>(&control))
        return box->isChecked() ? u"1"_s : u"0"_s;
    if (const auto* text = qobject_cast<const QPlainTextEdit*>(&control))
        return text->toPlainText();
    if (const auto* field = qobject_cast<const QLineEdit*>(&control))
        return field->text();
    const auto& list = *qobject_cast<const QComboBox*>(&control);
    return kind == SettingKind::Position || kind == SettingKind::Hour ? QString::number(list.currentIndex())
                                                                      : list.currentText();
}

void choose(QComboBox& list, SettingKind kind, const QString& text) {
    if (kind == SettingKind::Position || kind == SettingKind::Hour)
        return list.setCurrentIndex(text.toInt());
    // A printer that is gone is not chosen, and its name lost when the screen closes.
    if (kind == SettingKind::Printer || text.isEmpty())
        return list.setCurrentIndex(text.isEmpty() ? -1 : list.findText(text));
    platform::chooseText(list, text);
}

} // namespace

frmEinstellungenSystem::frmEinstellungenSystem(const platform::Services& services, QWidget* parent) :
    QWidget(parent), m_services(services), m_ui(std::make_unique<Ui::frmEinstellungenSystem>()) {
    m_ui->setupUi(this);
    fillLists();
    setUpRows();
    restrictEditierung();
    connectGuarded(Origin::User, m_ui->combo_DruckVorlage, &QComboBox::currentIndexChanged, this,
                   [](int position) { SysVorlageBestellung = qint16(position); });
    connect(&store::settingsNews(), &store::SettingsNews::changed, this, [this] { follow(); });
    connectGuarded(Origin::User, m_ui->cmdPreview, &QPushButton::clicked, this,
                   [this] { cmdPreview_Click(); });
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this] { close(); });
    setFixedSize(sizeHint().expandedTo({620, 480}));
}

frmEinstellungenSystem::~frmEinstellungenSystem() = default;

void frmEinstellungenSystem::closeEvent(QCloseEvent* event) {
    event->accept();
    // The frame around the screen closes it once more.
    if (std::exchange(m_taken, true))
        return;
    const bool stored = common::guardedApart(common::Origin::User, [this] {
        takeOver();
        // Another first number is the next one as long as nothing is booked.
        modBestellNummern::GetNextTrxNr(m_services.dialogs, m_services.navigation);
    });
    // What is not stored stays on the screen, where there will be a server again to store it.
    if (stored || !store::isServerAway())
        return;
    m_taken = false;
    event->ignore();
}

void frmEinstellungenSystem::takeOver() {
    std::vector<modEinstellungenSystem::Change> changes;
    for (const Row& row : m_rows)
        if (const QString text = textOf(row.control, row.setting.kind); text != row.stored)
            changes.push_back({row.setting, row.stored, text});
    const QStringList refused = modEinstellungenSystem::SaveSystemSettings(changes);
    if (!refused.isEmpty())
        m_services.dialogs.MsgBox(tr("Dieser Datensatz wurde inzwischen an einer anderen Station "
                                     "geändert.\n\nNicht gespeichert, es "
                                     "gelten die Angaben der anderen Station: %1")
                                      .arg(refused.join(u", "_s)),
                                  platform::kInformation, tr("Speichern"));
}

void frmEinstellungenSystem::fillLists() {
    for (QComboBox* copies : {m_ui->combo_Printer1_Copies, m_ui->combo_Printer2_Copies})
        fillSteps(*copies, 1, 9, 1, u"00");
    for (int number = 1; number <= 4; ++number)
        m_ui->combo_DruckVorlage->addItem(tr("Vorlage Nr. %1").arg(number));
    for (int hour = 0; hour < 24; ++hour)
        m_ui->combo_FiktiverTag->addItem(u"%1:00 - %1:00"_s.arg(hour, 2, 10, QChar(u'0')));
    fillSteps(*m_ui->combo_StandardLieferzeit, 10, 90, 5, u"0");
    fillSteps(*m_ui->combo_StandardLieferzeit, 100, 240, 10, u"0");
    fillSteps(*m_ui->combo_StandardLieferzeit, 270, 360, 30, u"0");
    fillSteps(*m_ui->combo_VorbestellungAutomatisch, 0, 180, 10, u"00");
    fillSteps(*m_ui->combo_VorbestellungBuchung, 0, 6, 1, u"00");
    m_ui->combo_Currency->addItems({u"CHF"_s, u"EUR"_s});
    m_ui->combo_Language->addItems({u"Deutsch"_s});
    for (const platform::Printer& printer : m_services.printers.all())
        for (QComboBox* printers : {m_ui->combo_Printer1_Name, m_ui->combo_Printer2_Name})
            printers->addItem(printer.DeviceName);
}

void frmEinstellungenSystem::setUpRows() {
    for (const store::Setting& setting : store::settings()) {
        auto* control = findChild<QWidget*>(QString::fromUtf16(setting.control));
        if (auto* field = qobject_cast<QLineEdit*>(control))
            setUpField(setting, *field);
        m_rows.push_back({setting, *control, {}, {}});
        showRow(m_rows.back());
    }
}

void frmEinstellungenSystem::setUpField(const store::Setting& setting, QLineEdit& field) {
    if (setting.kind == SettingKind::Text)
        return;
    platform::selectAllOnFocus(field);
    platform::reformatOnLeave(
        field, [&setting](const QString& text) { return setting.accepts(text) ? text : setting.text(); });
    if (setting.kind != SettingKind::Typed)
        return;
    field.setMaxLength(int(std::numeric_limits<qint32>::digits10) + 1);
    platform::digitsOnly(field);
}

void frmEinstellungenSystem::showRow(Row& row) {
    const QString text = row.setting.text();
    if (auto* box = qobject_cast<QCheckBox*>(&row.control))
        box->setChecked(text == u"1");
    else if (auto* lines = qobject_cast<QPlainTextEdit*>(&row.control))
        lines->setPlainText(text);
    else if (auto* field = qobject_cast<QLineEdit*>(&row.control))
        field->setText(text);
    else
        choose(*qobject_cast<QComboBox*>(&row.control), row.setting.kind, text);
    row.shown = textOf(row.control, row.setting.kind);
    row.stored = text;
}

void frmEinstellungenSystem::follow() {
    for (Row& row : m_rows)
        if (textOf(row.control, row.setting.kind) == row.shown)
            showRow(row);
    SysVorlageBestellung = qint16(m_ui->combo_DruckVorlage->currentIndex());
    restrictEditierung();
}

/// A restriction that is on can be lifted by an administrator only, while anybody may set it.
void frmEinstellungenSystem::restrictEditierung() {
    const bool visible =
        SysEditierungBestellungen == 0 || UserAdministrator != 0 || SysAnmeldungBenutzer == 0;
    m_ui->check_EditierungBestellungen->setVisible(visible);
    m_ui->Frame_EditierungBestellungen->setVisible(visible);
}

void frmEinstellungenSystem::cmdPreview_Click() {
    // As they are typed: they are taken over only when the screen closes.
    modAuftragswesenBestellschein::PreviewVorlage(m_services.reports, m_services.printers,
                                                  m_ui->txt_Werbetext->toPlainText(),
                                                  m_ui->txt_VATNummer->text());
}
