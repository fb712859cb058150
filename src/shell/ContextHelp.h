#pragma once
#include "platform/Services.h"
#include <QObject>
#include <QWidget>

class frmHandbuch;

namespace shell {

class ScreenManager;

/// F1, wherever it is pressed: the manual at the chapter of the present screen. As a screen in the room; over
/// a modal dialog, which blocks the room, in a dialog of its own.
class ContextHelp : public QObject {
    Q_OBJECT
  public:
    ContextHelp(const platform::Services& services, ScreenManager& screens, QWidget& window);

    void show();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    /// What the user looks at, the topmost first.
    QWidgetList present() const;
    void showPlace(frmHandbuch& manual, const QWidgetList& windows) const;
    void showAbove(QWidget& dialog, const QWidgetList& windows);

    platform::Services m_services;
    ScreenManager& m_screens;
    QWidget& m_window;
};

} // namespace shell
