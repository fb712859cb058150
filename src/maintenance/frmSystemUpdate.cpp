#include "maintenance/frmSystemUpdate.h"
#include "common/Guard.h"
#include "common/Version.h"
#include "maintenance/SystemNews.h"
#include "maintenance/mod_SoftwareUpdate.h"
#include "orders/OrderDraft.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/UserWatch.h"
#include "platform/form/KeepPlace.h"
#include "platform/net/Internet.h"
#include "store/StoreGlobals.h"
#include "ui_frmSystemUpdate.h"
#include <QCloseEvent>
#include <QDir>

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;
using maintenance::PackageFetch;

namespace {

constexpr qint64 kMegabyte = 1024LL * 1024;
constexpr int kMillisecondsToWait = 250;

bool isNewerProgram(const QString& version) {
    const auto offered = common::Version::parse(version);
    return offered && mod_SoftwareUpdate::isBehind(*offered);
}

bool isNewerPhoneBook(const QString& version) {
    const auto offered = common::parseDigits(version, common::kPhoneBookVersions);
    return offered && !mod_SoftwareUpdate::IsPhoneBookCurrent(*offered);
}

Update softwareUpdate() {
    return {.package = {maintenance::kProgramPackage, 512 * kMegabyte, isNewerProgram},
            .screen = mod_SoftwareUpdate::kSoftwareScreen,
            .windowTitle = frmSystemUpdate::tr("System: Software Aktualisierung"),
            .button = frmSystemUpdate::tr("&Software aktualisieren"),
            .hint =
                frmSystemUpdate::tr("Installiert ist die Version %1. Die neue Version wird heruntergeladen "
                                    "und geprüft. Danach wird Tavolino beendet und die Installation "
                                    "gestartet.")
                    .arg(common::kProgramVersion.text()),
            .farewell = frmSystemUpdate::tr("Das Programm wird jetzt beendet und die Software Installation "
                                            "durchgeführt.")};
}

Update phoneBookUpdate() {
    return {.package = {maintenance::kPhoneBookPackage, 2048 * kMegabyte, isNewerPhoneBook},
            .screen = mod_SoftwareUpdate::kPhoneBookScreen,
            .windowTitle = frmSystemUpdate::tr("System: Telefonbuch Aktualisierung"),
            .button = frmSystemUpdate::tr("&Telefonbuch aktualisieren"),
            .hint = frmSystemUpdate::tr("Installiert ist das Telefonbuch %1. Das neue wird heruntergeladen "
                                        "und geprüft. Danach wird Tavolino beendet und die Installation "
                                        "gestartet.")
                        .arg(mod_SoftwareUpdate::phoneBookVersion()),
            .farewell =
                frmSystemUpdate::tr("Das Programm wird jetzt beendet und die Telefonbuch Installation "
                                    "durchgeführt.")};
}

} // namespace

frmSystemUpdate::frmSystemUpdate(const platform::Services& services, const maintenance::Publisher& publisher,
                                 Update update, QWidget* parent) :
    QWidget(parent),
    m_ui(std::make_unique<Ui::frmSystemUpdate>()), m_services(services), m_publisher(publisher),
    m_update(std::move(update)) {
    m_ui->setupUi(this);
    setWindowTitle(m_update.windowTitle);
    m_ui->lbl_Hint->setText(m_update.hint);
    m_ui->cmdUpdate->setText(m_update.button);
    platform::keepPlaceWhenHidden(*m_ui->ProgressBar);
    platform::keepPlaceWhenHidden(*m_ui->cmdAbort);
    platform::keepPlaceWhenHidden(*m_ui->lbl_SoftwareDownload);
    showFetching(false);
    m_closeDown.setInterval(kMillisecondsToWait);
    connectGuarded(Origin::User, m_ui->cmdUpdate, &QPushButton::clicked, this, [this] { cmdUpdate_Click(); });
    connectGuarded(Origin::User, m_ui->cmdAbort, &QPushButton::clicked, this, [this] { giveUp(); });
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this] { close(); });
    connect(&m_closeDown, &QTimer::timeout, this, [this] {
        if (!common::guarded(Origin::Answer, [this] { closeDown(); }))
            giveUp();
    });
}

frmSystemUpdate::~frmSystemUpdate() = default;

void frmSystemUpdate::closeEvent(QCloseEvent* event) {
    giveUp();
    QWidget::closeEvent(event);
}

void frmSystemUpdate::giveUp() {
    m_closeDown.stop();
    m_fetch.reset();
    showFetching(false);
}

void frmSystemUpdate::showFetching(bool fetching) {
    m_ui->cmdUpdate->setEnabled(!fetching);
    m_ui->cmdClose->setEnabled(!fetching);
    m_ui->cmdAbort->setEnabled(fetching);
    for (QWidget* widget : {static_cast<QWidget*>(m_ui->ProgressBar), static_cast<QWidget*>(m_ui->cmdAbort),
                            static_cast<QWidget*>(m_ui->lbl_SoftwareDownload)})
        widget->setVisible(fetching);
    m_ui->lbl_SoftwareDownload->setText(tr("Software download......"));
    showProgress(0, 0);
}

void frmSystemUpdate::showChecking() {
    m_ui->lbl_SoftwareDownload->setText(tr("Die heruntergeladene Datei wird geprüft."));
    m_ui->ProgressBar->setMaximum(0);
}

void frmSystemUpdate::showProgress(qint64 done, qint64 total) {
    constexpr int kPercent = 100;
    // Without a total the bar only moves.
    m_ui->ProgressBar->setMaximum(total > 0 || done == 0 ? kPercent : 0);
    m_ui->ProgressBar->setValue(total > 0 ? int(done * kPercent / total) : 0);
}

void frmSystemUpdate::cmdUpdate_Click() {
    const platform::Endpoints& ends = m_services.internet.endpoints();
    const QString missing = ends.missingForSystem();
    if (!missing.isEmpty()) {
        m_services.dialogs.MsgBox(missing, platform::kInformation, windowTitle());
        return;
    }
    showFetching(true);
    m_fetch = std::make_unique<PackageFetch>(m_update.package, ends, m_publisher.publicKey);
    connectGuarded(Origin::Answer, m_fetch.get(), &PackageFetch::progressed, this,
                   [this](qint64 done, qint64 total) { showProgress(done, total); });
    connectGuarded(Origin::Answer, m_fetch.get(), &PackageFetch::checking, this, [this] { showChecking(); });
    connectGuarded(Origin::Answer, m_fetch.get(), &PackageFetch::ended, this, [this] { fetched(); });
    m_fetch->start();
}

void frmSystemUpdate::fetched() {
    const QString problem = m_fetch->problem();
    if (problem.isEmpty()) {
        m_ui->lbl_SoftwareDownload->setText(tr("Die Installation beginnt, sobald Sie einige Sekunden nichts "
                                               "eingeben und kein anderes Fenster mehr beschäftigt ist."));
        return m_closeDown.start();
    }
    m_fetch.release()->deleteLater();
    showFetching(false);
    m_services.dialogs.MsgBox(problem, platform::kStop, windowTitle());
}

void frmSystemUpdate::closeDown() {
    // Whoever asks something in a dialog still needs his screen.
    if (!platform::mayInterrupt(window()))
        return;
    orders::OrderDraft::Keeping keeping;
    if (m_services.navigation.closeScreensBut(m_update.screen))
        return install();
    keeping.giveUp();
}

void frmSystemUpdate::install() {
    m_closeDown.stop();
    m_ui->cmdAbort->setEnabled(false);
    m_services.navigation.standStill();
    // Nothing works any more from here on: what fails ends the program, too.
    common::guardedApart(Origin::Answer, [this] {
        store::CloseDatabases();
        startInstallation(m_fetch->take());
    });
    m_services.navigation.endProgram();
}

void frmSystemUpdate::startInstallation(const QString& file) {
    const QString title = tr("Aktualisierung starten");
    m_services.dialogs.MsgBox(m_update.farewell, platform::kInformation, title);
    if (m_publisher.startProgram && m_publisher.startProgram(file))
        return;
    qWarning("%s could not be started", qUtf8Printable(m_update.package.name));
    m_services.dialogs.MsgBox(tr("Die Installation konnte nicht gestartet werden. Die Datei liegt unter:\n%1")
                                  .arg(QDir::toNativeSeparators(file)),
                              platform::kStop, title);
}

frmSystemSoftwareUpdate::frmSystemSoftwareUpdate(const platform::Services& services,
                                                 const maintenance::Publisher& publisher, QWidget* parent) :
    frmSystemUpdate(services, publisher, softwareUpdate(), parent) {
}

frmSystemTelefonbuchUpdate::frmSystemTelefonbuchUpdate(const platform::Services& services,
                                                       const maintenance::Publisher& publisher,
                                                       QWidget* parent) :
    frmSystemUpdate(services, publisher, phoneBookUpdate(), parent) {
}
