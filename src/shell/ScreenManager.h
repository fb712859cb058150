#pragma once
#include "shell/ScreenRegistry.h"
#include <QMdiArea>
#include <QObject>
#include <QPointer>

class QDialog;
class QMdiSubWindow;

namespace shell {

/// Opens screens: each at most once, as a child window of the main window's room or as a modal dialog above
/// it.
class ScreenManager : public QObject {
    Q_OBJECT
  public:
    ScreenManager(QMdiArea& room, const ScreenRegistry& registry, QObject* parent);

    bool has(const QString& screen) const { return m_registry.has(screen); }

    /// Shows the screen, created now when it is not open, and brings it to the front: an entry whose screen
    /// is covered by another one would look dead. Null when it did not open, and for a modal screen, which is
    /// over by then.
    QWidget* show(const QString& screen);
    /// Closes the child window if it is open.
    void close(const QString& screen);

    /// Closes all child windows, without a question.
    void closeAll() { closeAllBut({}); }

    /// The same but for one; false when another one has something to bring to its end first.
    bool closeAllBut(const QString& screen);

    /// Asked before each showing of a screen, by whatever road: false leaves it shut. It tells nothing.
    void setGate(std::function<bool(const QString& screen)> mayShow) { m_mayShow = std::move(mayShow); }

    bool mayShow(const QString& screen) const { return !m_mayShow || m_mayShow(screen); }

    /// The child window in front, whichever window has the keys; null while there is none.
    QWidget* current() const;

    /// The open screen; null when it is not open.
    QWidget* open(const QString& screen) const;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void runModal(const QString& screen, const ScreenEntry& entry);
    /// Puts a dialog that is about to open into the middle of the room, no higher than that.
    void placeInRoom(QDialog& dialog) const;
    QMdiSubWindow* create(const QString& screen, const ScreenEntry& entry);
    void place(QMdiSubWindow& window, bool maximised);
    QWidget* showFloating(const QString& screen, const ScreenEntry& entry);
    void centre(QWidget& floating);

    QMdiArea& m_room;
    const ScreenRegistry& m_registry;
    std::function<bool(const QString&)> m_mayShow;
    QHash<QString, QPointer<QMdiSubWindow>> m_open;
    QHash<QString, QPointer<QWidget>> m_floating;
    QHash<QString, QPointer<QWidget>> m_modal;
};

} // namespace shell
