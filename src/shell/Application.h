#pragma once
#include "maintenance/PackageFetch.h"
#include "platform/Services.h"
#include "shell/ErrorReporter.h"
#include "shell/InstanceLock.h"
#include "shell/LogFile.h"
#include "shell/PhoneBookSearch.h"
#include "shell/ScreenRegistry.h"
#include "shell/ShellNavigation.h"
#include "shell/Startup.h"
#include "shell/frmMDI.h"
#include <functional>
#include <memory>

namespace shell {

/// The program: it builds the long-lived objects, hands them down and ends them. One at a time.
class Application {
  public:
    /// What the program stands on. All outlive the application.
    struct Ground {
        /// Folder of the installation: Data, Reports, tavolino.ini.
        QString appPath;
        platform::Dialogs& dialogs;
        platform::RegistryStore& registry;
        platform::Reports& reports;
        platform::Printers& printers;
        platform::Internet& internet;
        Telephony telephony = {};
        /// Leaves the process at once; a test takes note instead and returns.
        std::function<void(int exitCode)> exitProcess;
        frmMDI::Procedures procedures = {};
        maintenance::Publisher publisher = {};
    };

    explicit Application(Ground ground);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// The screens that are built in; add more before start.
    ScreenRegistry& screens() { return m_screens; }

    const platform::Services& services() const { return m_services; }

    /// The start-up sequence. False when it ended the program.
    bool start();

    /// Built by start.
    frmMDI& mainWindow() { return *m_window; }

    /// Closes what is open and leaves the process, without a question. Settings that stand open are taken
    /// over as at any closing of their screen, but not with another exit code than 0: after an error or a
    /// refused log-in.
    void endProgram(int exitCode = 0);

  private:
    void takeSettingsOver();
    void releaseTasks();
    void closeDown();

    Ground m_ground;
    LogFile m_log;
    ShellNavigation m_navigation;
    platform::Services m_services;
    ErrorReporter m_errors;
    PhoneBookSearch m_phoneBook;
    ScreenRegistry m_screens;
    std::unique_ptr<InstanceLock> m_lock;
    std::unique_ptr<frmMDI> m_window;
    bool m_closed = false;
};

} // namespace shell
