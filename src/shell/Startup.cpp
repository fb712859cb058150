#include "shell/Startup.h"
#include "common/RunTimeError.h"
#include "desks/OrderDesk.h"
#include "maintenance/DailyCopy.h"
#include "maintenance/modHelpStepByStep.h"
#include "maintenance/modTagessicherung.h"
#include "masterdata/modVerwaltungKunden.h"
#include "orders/OrderDraft.h"
#include "orders/modBestellNummern.h"
#include "platform/DatabaseSettings.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/OperatingSystem.h"
#include "platform/RegistryStore.h"
#include "platform/net/Internet.h"
#include "shell/frmMDI.h"
#include "store/SchemaSteps.h"
#include "store/ServerState.h"
#include "store/Stations.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QStorageInfo>
#include <clocale>

using namespace Qt::StringLiterals;

namespace shell {
namespace {

/// By then the window stands and the first call has come.
constexpr auto kBeforeDailyCopy = std::chrono::seconds(30);

enum class WriteTest { Passed, NoRights, NoRoom };

WriteTest writeTest(const QString& path) {
    if (QFile::exists(path) && !QFile::remove(path))
        return WriteTest::NoRights;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return QStorageInfo(QFileInfo(path).path()).bytesAvailable() == 0 ? WriteTest::NoRoom
                                                                          : WriteTest::NoRights;
    // Whoever may make the file and cannot fill it lacks room, not rights.
    const bool written = file.write("OK\r\n") > 0 && file.flush();
    file.close();
    const bool readable = file.open(QIODevice::ReadOnly);
    const QByteArray line = readable ? file.readLine().trimmed() : QByteArray();
    file.close();
    const bool removed = file.remove();
    if (!written)
        return WriteTest::NoRoom;
    return removed && line == "OK" ? WriteTest::Passed : WriteTest::NoRights;
}

} // namespace

Startup::Startup(frmMDI& window, const platform::Services& services, const Telephony& telephony) :
    m_window(window), m_services(services), m_telephony(telephony) {
}

bool Startup::run() {
    if (!refuseSecondInstance() || !WriteTestApplicationFolder())
        return false;
    SetRegionalSettings();
    PfadWindows = platform::systemFolder();
    if (!OpenDatabases())
        return false;
    m_window.showMaximized();
    m_window.startStations();
    if (!insist([] { store::LoadSystemSettings(); }))
        return false;
    EnableInterfaces();
    if (!login())
        return false;
    store::ifServerAnswers([this] { m_window.showKundenTotal(modVerwaltungKunden::GetTotalKunden()); });
    m_window.VorbestellungTimer_Timer();
    showGuide();
    // Behind the guide, so that an order taken up again has the keys.
    if (!offerDraft())
        return false;
    m_window.startSystemNews();
    return true;
}

bool Startup::refuseSecondInstance() {
    m_lock = std::make_unique<InstanceLock>(store::appPath() + u"/tavolino.lock"_s);
    const InstanceLock::State found = m_lock->take();
    // A folder that cannot be written is the next step's to tell.
    if (found == InstanceLock::State::Taken || found == InstanceLock::State::Unwritable)
        return true;
    if (found != InstanceLock::State::RunsHere && askAboutLock(found) &&
        m_lock->takeOver() != InstanceLock::State::RunsHere)
        return true;
    m_services.navigation.endProgram();
    return false;
}

bool Startup::askAboutLock(InstanceLock::State found) {
    const QString who =
        found == InstanceLock::State::HeldElsewhere
            ? frmMDI::tr("Tavolino arbeitet mit diesen Daten schon auf dem Computer \"%1\", oder wurde dort "
                         "nicht richtig beendet.")
                  .arg(m_lock->computer())
            : frmMDI::tr("Ob Tavolino mit diesen Daten schon läuft, ist nicht zu erkennen: \"%1\" ist nicht "
                         "lesbar.")
                  .arg(QDir::toNativeSeparators(m_lock->file()));
    const QString question = frmMDI::tr("Läuft es nirgends mehr, können Sie weiterfahren. Möchten Sie "
                                        "weiterfahren?");
    return m_services.dialogs.MsgBox(who + u"\n\n"_s + question, platform::kYesNo,
                                     frmMDI::tr("Tavolino läuft bereits")) == platform::kAnswerYes;
}

bool Startup::WriteTestApplicationFolder() {
    const WriteTest result = writeTest(store::appPath() + u"/WriteTest.tmp"_s);
    if (result == WriteTest::Passed)
        return true;
    if (result == WriteTest::NoRoom)
        m_services.dialogs.MsgBox(
            frmMDI::tr(
                "Auf den Datenträger des Programms kann nicht geschrieben werden, wahrscheinlich ist er "
                "voll. Schaffen Sie Platz und starten Sie Tavolino neu. Das Programm wird nun beendet."),
            platform::kStop, frmMDI::tr("Kein Platz"));
    else
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
    const auto saveRegistry = [this] {
        const QString root = QDir::toNativeSeparators(store::appPath() + u'/');
        m_services.registry.SaveSetting(u"TavolinoSettings"_s, u"DB"_s, u"Root"_s,
                                        QDir::toNativeSeparators(root + u"Data/"_s));
        m_services.registry.SaveSetting(u"TavolinoSettings"_s, u"Runnable"_s, u"Root"_s, root);
    };
    bool numbered = false;
    const auto open = [&] {
        // Each time: the user may have put them right.
        readDatabaseSettings();
        for (store::Connection* connection : {&ConnMain, &ConnPhone, &ConnPrint})
            if (connection->IsOpen())
                connection->Close();
        store::OpenDatabases(saveRegistry, [this](store::Connection& main) { bringUpToDate(main); });
        numbered = modBestellNummern::GetNextTrxNr(m_services.dialogs, m_services.navigation).has_value();
    };
    try {
        return insist(open) && numbered;
    } catch (const platform::GivenUp&) {
        m_services.navigation.endProgram();
        return false;
    }
}

void Startup::readDatabaseSettings() {
    const auto settings = platform::DatabaseSettings::read(store::appPath() + u"/tavolino.ini"_s);
    // Orders must not go into the file of this station because a line of the settings is wrong.
    if (!settings.problem.isEmpty())
        throw common::RunTimeError(common::kPlatformFailure, settings.problem);
    store::setServer(settings.server, settings.phoneBookOnServer);
    store::setStation(settings.station);
}

bool Startup::insist(const std::function<void()>& step) {
    while (true) {
        QString problem;
        try {
            step();
            return true;
        } catch (const common::RunTimeError& error) {
            if (!store::hasServer() && error.number() != common::kServerGone)
                throw;
            qWarning("%d %s | %s", error.number(), qUtf8Printable(error.sentence()),
                     qUtf8Printable(error.detail()));
            problem = error.sentence();
        }
        const int answer = m_services.dialogs.MsgBox(
            problem + u"\n\n"_s +
                frmMDI::tr("\"Wiederholen\" versucht es noch einmal, \"Abbrechen\" beendet das Programm."),
            platform::kRetryCancel + platform::kStop, frmMDI::tr("Datenbankserver"));
        if (answer != platform::kAnswerRetry) {
            m_services.navigation.endProgram(1);
            return false;
        }
        store::setServerBack();
    }
}

/// Of a large firm it takes a while, which is shown and can be given up: the database is the old one then.
void Startup::bringUpToDate(store::Connection& main) {
    const platform::Progress progress = m_services.dialogs.ShowProgress(
        frmMDI::tr("Die Daten werden gesichert und auf den Stand dieser Version gebracht."));
    store::BringUpToDate(
        main, [&] { modTagessicherung::MakeCopyBeforeUpdate(progress); }, [&] { progress(0, 0); });
}

void Startup::EnableInterfaces() {
    m_window.startTelephony(m_telephony.line, m_telephony.keptCalls);
    m_window.startWebShop();
    m_window.dailyCopy().startLater(kBeforeDailyCopy);
    tellBrokenIni();
}

/// A file that is not understood must not pass for one without a telephone.
void Startup::tellBrokenIni() {
    QStringList problems{m_telephony.problem, m_services.internet.endpoints().problem,
                         modTagessicherung::Settings::read(store::appPath() + u"/tavolino.ini"_s).problem};
    problems.removeAll(QString());
    // The file itself is broken for all.
    problems.removeDuplicates();
    if (problems.isEmpty())
        return;
    const QString text =
        frmMDI::tr("Die Datei \"tavolino.ini\" ist fehlerhaft:\n\n%1\n\nWas nicht zu lesen ist, gilt "
                   "als weggelassen. Berichtigen Sie die Datei und starten Sie Tavolino neu.");
    m_services.dialogs.MsgBox(text.arg(problems.join(u'\n')), platform::kInformation,
                              frmMDI::tr("Einstellungen der Installation"));
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
bool Startup::offerDraft() {
    const QString file = orders::OrderDraft::defaultFile();
    orders::OrderDraft::Found found;
    if (!insist([&] { found = orders::OrderDraft::look(file); }))
        return false;
    if (!found.putAside.isEmpty())
        m_services.dialogs.MsgBox(
            frmMDI::tr(
                "Ein angefangener Auftrag wurde gefunden, lässt sich aber nicht lesen. Die Datei liegt "
                "jetzt unter:\n%1")
                .arg(QDir::toNativeSeparators(found.putAside)),
            platform::kInformation, frmMDI::tr("Auftragserfassung"));
    if (!found.order)
        return true;
    const QString question =
        frmMDI::tr("Ein angefangener Auftrag wurde gefunden. Möchten Sie ihn weiter bearbeiten?");
    if (m_services.dialogs.MsgBox(question, platform::kYesNo, frmMDI::tr("Auftragserfassung")) !=
        platform::kAnswerYes)
        orders::OrderDraft::decline(file);
    else
        return insist([this] {
            if (auto* desk = platform::showDesk<desks::OrderDesk>(m_services.navigation))
                desk->restoreDraft();
        });
    return true;
}

void Startup::showGuide() {
    if (modHelpStepByStep::ShowsAtStart(m_services.registry))
        m_window.screens().show(u"frmHelpStepByStep"_s);
}

} // namespace shell
