#include "platform/HeldKeys.h"
#include <QApplication>

/// The toolkit's own way to bring a key in as if it came from the window system; its tests live on it.
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                    Qt::KeyboardModifiers modifiers, const QString& text, bool repeated,
                                    ushort count);

namespace platform {

HeldKeys::HeldKeys(QDialog& dialog) {
    connect(&dialog, &QDialog::finished, this, [this, &dialog] {
        m_dialog = dialog.windowHandle();
        m_below = dialog.parentWidget() ? dialog.parentWidget()->window()->windowHandle() : nullptr;
        qApp->installEventFilter(this);
    });
}

void HeldKeys::giveBack() {
    const auto give = [this] {
        qApp->removeEventFilter(this);
        // One by one: a key may open the next dialog, which the others then are for.
        for (const auto& key : m_keys)
            QMetaObject::invokeMethod(qApp, key, Qt::QueuedConnection);
        deleteLater();
    };
    QMetaObject::invokeMethod(this, give, Qt::QueuedConnection);
}

bool HeldKeys::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWindowType())
        return false;
    if (event->type() == QEvent::ShortcutOverride) {
        // Accepted it is a key like any other; its turn as a shortcut comes later.
        event->accept();
        return true;
    }
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return false;
    const QPointer<QWindow> window = watched == m_dialog ? m_below.data() : static_cast<QWindow*>(watched);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    m_keys.push_back([window, type = key.type(), code = key.key(), modifiers = key.modifiers(),
                      text = key.text(), repeated = key.isAutoRepeat()] {
        if (window)
            qt_handleKeyEvent(window, type, code, modifiers, text, repeated, 1);
    });
    return true;
}

} // namespace platform
