#include "platform/ShortcutGate.h"
#include <QApplication>

namespace platform {
namespace {

bool belongsTo(const QObject* object, const QWidget* window) {
    while (object && object != window)
        object = object->parent();
    return object;
}

} // namespace

ShortcutGate::ShortcutGate() {
    qApp->installEventFilter(this);
}

bool ShortcutGate::eventFilter(QObject* watched, QEvent* event) {
    // No modal widget is a dialog of the system's own.
    const QWidget* modal = QApplication::activeModalWidget();
    return event->type() == QEvent::Shortcut && !(modal && belongsTo(watched, modal));
}

} // namespace platform
