#include "platform/UserWatch.h"
#include <QApplication>
#include <QEvent>

namespace platform {
namespace {

UserWatch* theWatch = nullptr;

} // namespace

UserWatch::UserWatch(QObject* parent) : QObject(parent) {
    theWatch = this;
    qApp->installEventFilter(this);
}

UserWatch::~UserWatch() {
    theWatch = nullptr;
}

bool UserWatch::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    // A key that a shortcut takes is no key press.
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        m_pressed.start();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool mayInterrupt(const QWidget* window) {
    const QWidget* const dialog = QApplication::activeModalWidget();
    return (!dialog || dialog == window) && !QApplication::activePopupWidget() &&
           (!theWatch || theWatch->isAtRest());
}

} // namespace platform
