#pragma once
#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QWindow>

namespace test {

/// Types where the focus is, key by key: an editor that the first key opens has the focus from then on.
inline void typeText(const QString& text) {
    for (const QChar c : text)
        QTest::keyClick(QApplication::focusWidget(), c.toLatin1());
}

/// Brings a key in as the window system does.
inline void pressIn(QWindow* window, Qt::Key key, Qt::KeyboardModifiers modifiers = {},
                    const QString& text = {}) {
    const QPointer<QWindow> alive(window);
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
        if (alive)
            qt_handleKeyEvent(alive, type, key, modifiers, text, false, 1);
}

/// Puts a key into the queue of the window that has the focus now. Like a key that waits in the window
/// system's queue, it is looked up when its turn comes, whatever stands there by then.
inline void queueKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {}) {
    const QPointer<QWindow> window = QGuiApplication::focusWindow();
    QMetaObject::invokeMethod(
        qApp, [=] { pressIn(window, key, modifiers, text); }, Qt::QueuedConnection);
}

inline void queueText(const QString& text) {
    for (const QChar c : text)
        queueKey(Qt::Key(c.toUpper().unicode()), {}, c);
}

} // namespace test
