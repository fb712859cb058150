#pragma once
#include "platform/Services.h"
#include <QLockFile>
#include <QString>
#include <memory>

class frmMDI;

namespace platform {
class BasicCAPI32;
}

namespace shell {

/// The start of the program, step by step; the order matters. Each step that ends the program says so through
/// Navigation::endProgram and gives false, and nothing after it runs.
class Startup {
  public:
    /// The line may be null: a program without a telephone.
    Startup(frmMDI& window, const platform::Services& services, platform::BasicCAPI32* line);

    /// Throws common::RunTimeError when a database cannot be opened.
    bool run();

    /// Held as long as the program runs, so that a second one on the same folder finds it taken.
    std::unique_ptr<QLockFile> takeLock() { return std::move(m_lock); }

  private:
    bool refuseSecondInstance();
    bool WriteTestApplicationFolder();
    void SetRegionalSettings();
    bool OpenDatabases();
    void EnableInterfaces();
    /// False when the program ended instead.
    bool login();
    void offerDraft();
    void showGuide();

    frmMDI& m_window;
    platform::Services m_services;
    platform::BasicCAPI32* m_line;
    std::unique_ptr<QLockFile> m_lock;
};

} // namespace shell
