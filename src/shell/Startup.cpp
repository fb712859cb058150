#include "shell/Startup.h"
#include "desks/OrderDesk.h"
#include "masterdata/modVerwaltungKunden.h"
#include "orders/OrderDraft.h"
#include "orders/OrderStorage.h"
#include "orders/modBestellNummern.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/OperatingSystem.h"
#include "platform/RegistryStore.h"
#include "shell/frmMDI.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include <QDir>
#include <QFile>
#include <QLocale>
#include <clocale>

using namespace Qt::StringLiterals;

namespace shell {
namespace {

bool writeTest(const QString& path) {
    if (QFile::exists(path) && !QFile::remove(path))
        return false;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write("OK\r\n") < 0)
        return false;
    file.close();
    if (file.error() != QFile::NoError || !file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray line = file.readLine().trimmed();
    file.close();
    return file.remove() && line == "OK";
}

} // namespace

Startup::Startup(frmMDI& window, const platform::Services& services, platform::BasicCAPI32* line) :
    m_window(window), m_services(services), m_line(line) {
}

bool Startup::run() {
    if (!refuseSecondInstance() || !WriteTestApplicationFolder())
        return false;
    SetRegionalSettings();
    PfadWindows = platform::systemFolder();
    if (!OpenDatabases())
        return false;
    m_window.showMaximized();
    store::LoadSystemSettings();
    EnableInterfaces();
    if (!login())
        return false;
    m_window.showKundenTotal(modVerwaltungKunden::GetTotalKunden());
    m_window.VorbestellungTimer_Timer();
    offerDraft();
    showGuide();
    return true;
}

bool Startup::refuseSecondInstance() {
    m_lock = std::make_unique<QLockFile>(store::appPath() + u"/tavolino.lock"_s);
    // The lock counts as long as its owner lives; one left behind by a crash does not.
    m_lock->setStaleLockTime(0);
    if (m_lock->tryLock(0) || m_lock->error() != QLockFile::LockFailedError)
        // A folder that cannot be written is the next step's to tell.
        return true;
    m_services.navigation.endProgram();
    return false;
}

bool Startup::WriteTestApplicationFolder() {
    if (writeTest(store::appPath() + u"/WriteTest.tmp"_s))
        return true;
    m_services.dialogs.MsgBox(
        frmMDI::tr(
            "Dieser Benutzer hat keine Schreibzugriff. Geben Sie dem Benutzer die nötigen Berechtigungen "
            "oder starten Sie die Applikation als Administrator. Das Programm wird nun beendet."),
        platform::kInformation, frmMDI::tr("Keine Benutzerberechtigung"));
    m_services.navigation.endProgram();
    return false;
}

void Startup::SetRegionalSettings() {
    // The program reads and writes dates and numbers by its own forms; this fixes what the toolkit shows by
    // itself. The user's profile stays as it is.
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Switzerland));
    std::setlocale(LC_NUMERIC, "C");
}

bool Startup::OpenDatabases() {
    store::OpenDatabases([this] {
        const QString root = QDir::toNativeSeparators(store::appPath() + u'/');
        m_services.registry.SaveSetting(u"TavolinoSettings"_s, u"DB"_s, u"Root"_s,
                                        QDir::toNativeSeparators(root + u"Data/"_s));
        m_services.registry.SaveSetting(u"TavolinoSettings"_s, u"Runnable"_s, u"Root"_s, root);
    });
    orders::PrepareFinished();
    return modBestellNummern::GetNextTrxNr(m_services.dialogs, m_services.navigation).has_value();
}

void Startup::EnableInterfaces() {
    m_window.startTelephony(m_line);
    m_window.startWebShop();
}

bool Startup::login() {
    if (!m_window.loginIsOn())
        m_window.disableAnmeldung();
    // With the log-in on, everything that needs a right is shut until somebody has one.
    m_window.ApplyUserRights();
    if (!m_window.loginIsOn())
        return true;
    m_window.screens().show(u"frmSystemAnmelden"_s);
    return m_window.userIsLoggedIn();
}

/// An order that was being keyed when the program ended the last time.
void Startup::offerDraft() {
    const QString file = orders::OrderDraft::defaultFile();
    const auto found = orders::OrderDraft::look(file);
    if (!found.putAside.isEmpty())
        m_services.dialogs.MsgBox(
            frmMDI::tr(
                "Ein angefangener Auftrag wurde gefunden, lässt sich aber nicht lesen. Die Datei liegt "
                "jetzt unter:\n%1")
                .arg(QDir::toNativeSeparators(found.putAside)),
            platform::kInformation, frmMDI::tr("Auftragserfassung"));
    if (!found.order)
        return;
    const QString question =
        frmMDI::tr("Ein angefangener Auftrag wurde gefunden. Möchten Sie ihn weiter bearbeiten?");
    if (m_services.dialogs.MsgBox(question, platform::kYesNo, frmMDI::tr("Auftragserfassung")) !=
        platform::kAnswerYes)
        return orders::OrderDraft::decline(file);
    if (auto* desk = platform::showDesk<desks::OrderDesk>(m_services.navigation))
        desk->restoreDraft();
}

void Startup::showGuide() {
    if (m_services.registry.GetSetting(u"TavolinoHelp"_s, u"StepByStep"_s, u"ID"_s) != u"0")
        m_window.screens().show(u"frmHelpStepByStep"_s);
}

} // namespace shell
