#include "shell/Application.h"
#include "maintenance/DailyCopy.h"
#include "platform/line/TelephoneLine.h"
#include "shell/Screens.h"
#include "store/Stations.h"
#include "store/StoreGlobals.h"

// A static library's resources are not found unless they are asked for; the macro wants the global namespace.
static void initResources() {
    Q_INIT_RESOURCE(resources);
}

namespace shell {

Application::Application(Ground ground) :
    m_ground(std::move(ground)), m_log(m_ground.appPath + QStringLiteral("/Data/tavolino.log")),
    m_navigation([this](int exitCode) { endProgram(exitCode); }),
    m_services{m_ground.dialogs, m_navigation,      m_ground.registry,
               m_ground.reports, m_ground.printers, m_ground.internet},
    m_errors(m_log, m_ground.dialogs, m_navigation), m_phoneBook(m_services) {
    initResources();
    store::setAppPath(m_ground.appPath);
    captureMessages(m_log);
    common::setErrorHandler(
        [this](common::Origin origin, const std::exception_ptr& error) { m_errors.report(origin, error); });
    registerScreens(m_screens, m_services, m_phoneBook, m_ground.publisher);
}

Application::~Application() {
    m_window.reset();
    m_navigation.setMainWindow(nullptr);
    closeDown();
    common::setErrorHandler({});
    releaseMessages();
}

bool Application::start() {
    bool started = false;
    common::guarded(common::Origin::User, [&] {
        m_window = std::make_unique<frmMDI>(m_services, m_screens, m_ground.procedures);
        m_navigation.setMainWindow(m_window.get());
        Startup startup(*m_window, m_services, m_ground.telephony);
        started = startup.run();
        m_lock = startup.takeLock();
    });
    return started;
}

void Application::endProgram(int exitCode) {
    if (exitCode == 0)
        takeSettingsOver();
    closeDown();
    m_ground.exitProcess(exitCode);
}

void Application::takeSettingsOver() {
    if (m_window && ConnMain.IsOpen())
        m_window->screens().close(QStringLiteral("frmEinstellungenSystem"));
}

/// Another station takes them over at once.
void Application::releaseTasks() {
    try {
        if (ConnMain.IsOpen())
            store::releaseAll();
    } catch (const std::exception& failure) {
        m_log.write(QStringLiteral("Fehler beim Beenden"), QString::fromUtf8(failure.what()));
    }
}

void Application::closeDown() {
    if (std::exchange(m_closed, true))
        return;
    // The program ends whatever fails here; what failed stands in the log.
    releaseTasks();
    try {
        if (m_ground.telephony.line)
            m_ground.telephony.line->Stop();
        if (m_window)
            m_window->dailyCopy().giveUp(std::chrono::seconds(1));
        for (store::Connection* connection : {&ConnMain, &ConnPhone, &ConnPrint})
            if (connection->IsOpen())
                connection->Close();
    } catch (const std::exception& failure) {
        m_log.write(QStringLiteral("Fehler beim Beenden"), QString::fromUtf8(failure.what()));
    }
    if (m_lock)
        m_lock->release();
}

} // namespace shell
