#pragma once
#include "platform/Navigation.h"
#include <functional>

class frmMDI;

namespace shell {

/// Leads from screen to screen by way of the main window.
class ShellNavigation : public platform::Navigation {
  public:
    explicit ShellNavigation(std::function<void(int exitCode)> end) : m_end(std::move(end)) {}

    /// Null before the main window exists and after it is gone; every way then leads nowhere.
    void setMainWindow(frmMDI* window) { m_window = window; }

    bool hasScreen(const QString& screen) const override;
    QObject* showScreen(const QString& screen) override;
    QObject* mainWindow() const override;

    bool closeScreensBut(const QString& screen) override;
    void standStill() override;

    void endProgram(int exitCode) override { m_end(exitCode); }

  private:
    frmMDI* m_window = nullptr;
    std::function<void(int)> m_end;
};

} // namespace shell
