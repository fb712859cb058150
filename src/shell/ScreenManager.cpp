#include "shell/ScreenManager.h"
#include "platform/QtDialogs.h"
#include <QAction>
#include <QDialog>
#include <QEvent>
#include <QMdiSubWindow>
#include <QMenu>
#include <QStyle>

namespace shell {

ScreenManager::ScreenManager(QMdiArea& room, const ScreenRegistry& registry, QObject* parent) :
    QObject(parent), m_room(room), m_registry(registry) {
    // A screen of fixed size stays what it is above a maximised one.
    m_room.setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
    // A screen that closes leads back to where the user came from.
    m_room.setActivationOrder(QMdiArea::ActivationHistoryOrder);
}

QWidget* ScreenManager::show(const QString& screen) {
    const ScreenEntry* entry = m_registry.find(screen);
    if (!entry || !mayShow(screen))
        return nullptr;
    if (entry->floating)
        return showFloating(screen, *entry);
    QMdiSubWindow* window = m_open.value(screen);
    if (!window) {
        if (entry->mayOpen && !entry->mayOpen())
            return nullptr;
        if (entry->modal) {
            runModal(screen, *entry);
            return nullptr;
        }
        window = create(screen, *entry);
    }
    if (window->isMinimized())
        window->showNormal();
    window->show();
    m_room.setActiveSubWindow(window);
    return window->widget();
}

QWidget* ScreenManager::open(const QString& screen) const {
    const QPointer<QMdiSubWindow> window = m_open.value(screen);
    if (window)
        return window->widget();
    if (QWidget* modal = m_modal.value(screen))
        return modal;
    QWidget* floating = m_floating.value(screen);
    return floating && !floating->isHidden() ? floating : nullptr;
}

QWidget* ScreenManager::current() const {
    const QMdiSubWindow* window = m_room.currentSubWindow();
    return window ? window->widget() : nullptr;
}

QWidget* ScreenManager::showFloating(const QString& screen, const ScreenEntry& entry) {
    // A window of its own would be given the keys by some window managers, whatever it asks for.
    QPointer<QWidget>& floating = m_floating[screen];
    if (!floating) {
        floating = entry.create(m_room.window());
        m_room.window()->installEventFilter(this);
    }
    if (floating->isHidden()) {
        floating->adjustSize();
        centre(*floating);
    }
    floating->show();
    floating->raise();
    return floating;
}

void ScreenManager::centre(QWidget& floating) {
    floating.move(m_room.window()->rect().center() - floating.rect().center());
}

void ScreenManager::close(const QString& screen) {
    if (const QPointer<QMdiSubWindow> window = m_open.take(screen))
        window->close();
}

bool ScreenManager::closeAllBut(const QString& screen) {
    // Forgotten at once, deleted later: a window may be the one whose key led here.
    auto windows = std::exchange(m_open, {});
    if (const QPointer<QMdiSubWindow> kept = windows.take(screen))
        m_open.insert(screen, kept);
    bool allClosed = true;
    for (auto window = windows.cbegin(); window != windows.cend(); ++window) {
        if (!*window)
            continue;
        if ((*window)->close()) {
            (*window)->deleteLater();
        } else {
            // It has something to bring to its end, and closes by itself.
            m_open.insert(window.key(), *window);
            allClosed = false;
        }
    }
    for (const QPointer<QWidget>& floating : std::as_const(m_floating))
        if (floating)
            floating->close();
    return allClosed;
}

void ScreenManager::runModal(const QString& screen, const ScreenEntry& entry) {
    const QScopedPointer<QWidget> widget(entry.create(m_room.window()));
    auto* dialog = qobject_cast<QDialog*>(widget.data());
    Q_ASSERT(dialog);
    m_modal.insert(screen, dialog);
    if (entry.inRoom)
        placeInRoom(*dialog);
    else
        platform::centreOnScreen(*dialog);
    platform::execModal(*dialog);
}

void ScreenManager::placeInRoom(QDialog& dialog) const {
    const QRect room(m_room.mapToGlobal(QPoint(0, 0)), m_room.size());
    const int title = dialog.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &dialog);
    const int height = qMin(dialog.height(), room.height() - title);
    dialog.setMinimumHeight(qMin(dialog.minimumHeight(), height));
    dialog.setMaximumHeight(qMin(dialog.maximumHeight(), height));
    dialog.move(room.center().x() - dialog.width() / 2, room.top() + (room.height() - title - height) / 2);
}

QMdiSubWindow* ScreenManager::create(const QString& screen, const ScreenEntry& entry) {
    QWidget* widget = entry.create(nullptr);
    widget->installEventFilter(this);
    QMdiSubWindow* window = m_room.addSubWindow(widget);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setObjectName(screen + QStringLiteral("Window"));
    // The frame's own keys (Ctrl+W, Ctrl+F4) would drop what stands on the screen: it closes by its button.
    for (QAction* action : window->systemMenu()->actions())
        action->setShortcuts(QList<QKeySequence>());
    m_open.insert(screen, window);
    place(*window, entry.maximised);
    return window;
}

void ScreenManager::place(QMdiSubWindow& window, bool maximised) {
    const QWidget& screen = *window.widget();
    if (screen.minimumSize() == screen.maximumSize())
        window.setWindowFlags(Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                              Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                              Qt::WindowCloseButtonHint);
    if (maximised)
        return window.showMaximized();
    window.adjustSize();
    const QSize room = m_room.viewport()->size();
    window.move(std::max(0, (room.width() - window.width()) / 2),
                std::max(0, (room.height() - window.height()) / 2));
}

bool ScreenManager::eventFilter(QObject* watched, QEvent* event) {
    // The main window may get its size only after the first alarm, and it may shrink.
    if (watched == m_room.window() && event->type() == QEvent::Resize)
        for (const QPointer<QWidget>& floating : std::as_const(m_floating))
            if (floating)
                centre(*floating);
    // A screen closes itself; its frame goes with it.
    auto* screen = qobject_cast<QWidget*>(watched);
    if (screen && event->type() == QEvent::Close && event->isAccepted())
        if (auto* window = qobject_cast<QMdiSubWindow*>(screen->parentWidget()))
            QMetaObject::invokeMethod(
                window,
                [window, screen = QPointer<QWidget>(screen)] {
                    // It may have refused, or its frame was what closed.
                    if (!window->isHidden() && (!screen || screen->isHidden()))
                        window->close();
                },
                Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

} // namespace shell
