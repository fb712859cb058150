#include "shell/ShellNavigation.h"
#include "shell/frmMDI.h"

namespace shell {

bool ShellNavigation::hasScreen(const QString& screen) const {
    return m_window && m_window->screens().has(screen) && m_window->screens().mayShow(screen);
}

QObject* ShellNavigation::showScreen(const QString& screen) {
    return m_window ? m_window->screens().show(screen) : nullptr;
}

bool ShellNavigation::closeScreensBut(const QString& screen) {
    return !m_window || m_window->screens().closeAllBut(screen);
}

void ShellNavigation::standStill() {
    if (m_window)
        m_window->standStill();
}

QObject* ShellNavigation::mainWindow() const {
    return m_window;
}

} // namespace shell
