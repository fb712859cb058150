#pragma once
#include "platform/Services.h"
#include "shell/InstanceLock.h"
#include <QString>
#include <functional>
#include <memory>

class frmMDI;

namespace platform {
class BasicCAPI32;
}

namespace store {
class Connection;
}

namespace shell {

/// The telephone, and what tavolino.ini says about it.
struct Telephony {
    /// Null is a program without a telephone.
    platform::BasicCAPI32* line = nullptr;
    /// So many calls the caller list keeps; 0 for all.
    int keptCalls = 0;
    /// What is wrong with tavolino.ini; "" for nothing.
    QString problem{};
};

/// The start of the program, step by step; the order matters. Each step that ends the program says so through
/// Navigation::endProgram and gives false, and nothing after it runs.
class Startup {
  public:
    Startup(frmMDI& window, const platform::Services& services, const Telephony& telephony);

    /// Throws common::RunTimeError when a database cannot be opened.
    bool run();

    /// Held as long as the program runs, so that a second one on the same folder finds it taken.
    std::unique_ptr<InstanceLock> takeLock() { return std::move(m_lock); }

  private:
    bool refuseSecondInstance();
    /// What stands there is no program that runs here: who it may be, and whether to go on all the same.
    bool askAboutLock(InstanceLock::State found);
    bool WriteTestApplicationFolder();
    void SetRegionalSettings();
    bool OpenDatabases();
    void readDatabaseSettings();
    /// Does a step that asks the database server. Where that fails the user tries again, or ends the program
    /// (false).
    bool insist(const std::function<void()>& step);
    void bringUpToDate(store::Connection& main);
    void EnableInterfaces();
    void tellBrokenIni();
    /// False when the program ended instead.
    bool login();
    bool offerDraft();
    void showGuide();

    frmMDI& m_window;
    platform::Services m_services;
    Telephony m_telephony;
    std::unique_ptr<InstanceLock> m_lock;
};

} // namespace shell
