#include "shell/frmEinstellungenSystem.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "orders/modAuftragswesenBestellschein.h"
#include "orders/modBestellNummern.h"
#include "platform/form/FieldHelpers.h"
#include "platform/report/Reports.h"
#include "shell/modEinstellungenSystem.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include "ui_frmEinstellungenSystem.h"
#include <QCloseEvent>
#include <limits>

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::formatNumber;
using common::Origin;

namespace {

QString rateText(double rate) {
    return formatNumber(rate, u"0.0");
}

/// The rate in the field; what is no number gives back `before`.
QString judgedRate(const QString& text, double before) {
    return common::isNumeric(text) ? text : rateText(before);
}

/// A number that the store's column can hold; anything else gives back the one in memory.
qint32 judgedTrxNr(const QString& text) {
    bool whole = false;
    const qint32 number = text.trimmed().toInt(&whole);
    return whole ? number : SysInitTrxNr;
}

void fillSteps(QComboBox& list, int first, int last, int step, QStringView form) {
    for (int number = first; number <= last; number += step)
        list.addItem(formatNumber(number, form));
}

} // namespace

frmEinstellungenSystem::frmEinstellungenSystem(const platform::Services& services, QWidget* parent) :
    QWidget(parent), m_services(services), m_ui(std::make_unique<Ui::frmEinstellungenSystem>()) {
    m_ui->setupUi(this);
    fillLists();
    addPrinters();
    addSlip();
    addTimes();
    addPreOrders();
    addSystem();
    for (const Setting& setting : m_settings)
        setting.show();
    restrictEditierung();
    connectGuarded(Origin::User, m_ui->combo_DruckVorlage, &QComboBox::currentIndexChanged, this,
                   [](int position) { SysVorlageBestellung = qint16(position); });
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
    common::guarded(common::Origin::User, [this] {
        for (const Setting& setting : m_settings)
            setting.take();
        modEinstellungenSystem::SaveSystemSettings();
        // Another first number is the next one as long as nothing is booked.
        modBestellNummern::GetNextTrxNr(m_services.dialogs, m_services.navigation);
    });
}

void frmEinstellungenSystem::add(std::function<void()> show, std::function<void()> take) {
    m_settings.push_back({std::move(show), std::move(take)});
}

void frmEinstellungenSystem::addText(QLineEdit& field, QString& global) {
    add([&field, &global] { field.setText(global); }, [&field, &global] { global = field.text(); });
}

void frmEinstellungenSystem::addRate(QLineEdit& field, double& global) {
    platform::selectAllOnFocus(field);
    platform::reformatOnLeave(field, [&global](const QString& text) { return judgedRate(text, global); });
    add([&field, &global] { field.setText(rateText(global)); },
        [&field, &global] {
            const double rate = common::parseNumber(judgedRate(field.text(), global)).value_or(global);
            global = rateText(rate).toDouble();
        });
}

void frmEinstellungenSystem::addWord(QComboBox& list, QString& global) {
    add(
        [&list, &global] {
            list.setCurrentIndex(-1);
            if (!global.isEmpty())
                platform::chooseText(list, global);
        },
        [&list, &global] { global = list.currentText(); });
}

void frmEinstellungenSystem::addPrinter(QComboBox& list, QString& global) {
    for (const platform::Printer& printer : m_services.printers.all())
        list.addItem(printer.DeviceName);
    // A printer that is gone is not chosen, and its name lost when the screen closes.
    add([&list, &global] { list.setCurrentIndex(global.isEmpty() ? -1 : list.findText(global)); },
        [&list, &global] { global = list.currentText(); });
}

template <typename Number> void frmEinstellungenSystem::addFlag(QCheckBox& box, Number& global) {
    add([&box, &global] { box.setChecked(global != 0); },
        [&box, &global] { global = Number(box.isChecked()); });
}

template <typename Number>
void frmEinstellungenSystem::addNumber(QComboBox& list, Number& global, const QString& form) {
    add([&list, &global, form] { platform::chooseText(list, formatNumber(global, form)); },
        [&list, &global] { global = Number(list.currentText().toInt()); });
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
}

void frmEinstellungenSystem::addPrinters() {
    addPrinter(*m_ui->combo_Printer1_Name, SysPrinter1Name);
    addNumber(*m_ui->combo_Printer1_Copies, SysPrinter1Copies, u"00"_s);
    addFlag(*m_ui->check_Printer1_Status, SysPrinter1Status);
    addPrinter(*m_ui->combo_Printer2_Name, SysPrinter2Name);
    addNumber(*m_ui->combo_Printer2_Copies, SysPrinter2Copies, u"00"_s);
    addFlag(*m_ui->check_Printer2_Status, SysPrinter2Status);
}

void frmEinstellungenSystem::addSlip() {
    add([this] { m_ui->combo_DruckVorlage->setCurrentIndex(SysVorlageBestellung); }, [] {});
    add([this] { m_ui->txt_Werbetext->setPlainText(SysWerbetext); },
        [this] { SysWerbetext = m_ui->txt_Werbetext->toPlainText(); });
    addRate(*m_ui->txt_MWST1, SysMWStSatz1);
    addRate(*m_ui->txt_MWST3, SysMWStSatz3);
    addText(*m_ui->txt_VATNummer, SysVATNummer);
    addFlag(*m_ui->check_NoVAT, SysNoVATStatus);
}

void frmEinstellungenSystem::addTimes() {
    addFiktiverTag();
    addNumber(*m_ui->combo_StandardLieferzeit, SysStandardLieferzeit);
}

void frmEinstellungenSystem::addFiktiverTag() {
    add([this] { m_ui->combo_FiktiverTag->setCurrentIndex(modEinstellungenSystem::FiktiverTagStunde()); },
        [this] { SysFiktiverTag = m_ui->combo_FiktiverTag->currentIndex() / 24.0; });
}

void frmEinstellungenSystem::addPreOrders() {
    addFlag(*m_ui->check_VorbestellungAutomatisch, SysVorbestellungAutomatischStatus);
    addNumber(*m_ui->combo_VorbestellungAutomatisch, SysVorbestellungAutomatischZeit, u"00"_s);
    addFlag(*m_ui->check_VorbestellungBuchung, SysVorbestellungBuchungStatus);
    addNumber(*m_ui->combo_VorbestellungBuchung, SysVorbestellungBuchungZeit, u"00"_s);
}

void frmEinstellungenSystem::addSystem() {
    addTrxNr();
    addWord(*m_ui->combo_Currency, SysCurrency);
    addWord(*m_ui->combo_Language, SysSprache);
    addFlag(*m_ui->check_EditierungBestellungen, SysEditierungBestellungen);
    addFlag(*m_ui->check_AnmeldungUser, SysAnmeldungBenutzer);
}

void frmEinstellungenSystem::addTrxNr() {
    QLineEdit& field = *m_ui->txt_TrxNr;
    field.setMaxLength(int(std::numeric_limits<qint32>::digits10) + 1);
    platform::selectAllOnFocus(field);
    platform::digitsOnly(field);
    platform::reformatOnLeave(field, [](const QString& text) { return QString::number(judgedTrxNr(text)); });
    add([&field] { field.setText(QString::number(SysInitTrxNr)); },
        [&field] { SysInitTrxNr = judgedTrxNr(field.text()); });
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
