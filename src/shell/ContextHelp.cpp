#include "shell/ContextHelp.h"
#include "common/Guard.h"
#include "maintenance/frmHandbuch.h"
#include "platform/QtDialogs.h"
#include "shell/ModalFrame.h"
#include "shell/ScreenManager.h"
#include <QApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>

using namespace Qt::StringLiterals;

namespace shell {
namespace {

std::optional<modHandbuch::Place> placeOf(const QWidget* window) {
    return modHandbuch::placeOf(QLatin1String(window->metaObject()->className()));
}

bool isManual(const QWidget* window) {
    return window->findChild<frmHandbuch*>(QString(), Qt::FindDirectChildrenOnly) ||
           qobject_cast<const frmHandbuch*>(window);
}

} // namespace

ContextHelp::ContextHelp(const platform::Services& services, ScreenManager& screens, QWidget& window) :
    QObject(&window), m_services(services), m_screens(screens), m_window(window) {
    auto* key = new QShortcut(QKeySequence(Qt::Key_F1), &window);
    key->setContext(Qt::ApplicationShortcut);
    common::connectGuarded(common::Origin::User, key, &QShortcut::activated, this, [this] { show(); });
    qApp->installEventFilter(this);
}

bool ContextHelp::eventFilter(QObject* watched, QEvent* event) {
    // A modal dialog keeps the shortcuts of the main window away.
    const auto isF1 = [event] {
        const auto* key = static_cast<QKeyEvent*>(event);
        return key->key() == Qt::Key_F1 && key->modifiers() == Qt::NoModifier && !key->isAutoRepeat();
    };
    if (event->type() != QEvent::KeyPress || !isF1() || !QApplication::activeModalWidget())
        return QObject::eventFilter(watched, event);
    // Once the key has been dealt with: the manual has an event loop of its own.
    if (!isManual(QApplication::activeModalWidget()))
        QMetaObject::invokeMethod(
            this, [this] { common::guarded(common::Origin::User, [this] { show(); }); },
            Qt::QueuedConnection);
    return true;
}

QWidgetList ContextHelp::present() const {
    QWidgetList windows{QApplication::activeModalWidget()};
    // A screen in a dialog.
    if (windows.first())
        windows << windows.first()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    windows << QApplication::activeWindow() << m_screens.current();
    windows.removeAll(nullptr);
    return windows;
}

void ContextHelp::show() {
    const QWidgetList windows = present();
    if (!windows.isEmpty() && isManual(windows.first()))
        return;
    if (QWidget* dialog = QApplication::activeModalWidget())
        return showAbove(*dialog, windows);
    const bool wasThere = m_screens.current() && isManual(m_screens.current());
    auto* manual = qobject_cast<frmHandbuch*>(m_screens.show(u"frmHandbuch"_s));
    if (manual && !(wasThere && m_window.isActiveWindow()))
        showPlace(*manual, windows);
    if (manual && !m_window.isActiveWindow()) {
        m_window.raise();
        m_window.activateWindow();
    }
}

void ContextHelp::showPlace(frmHandbuch& manual, const QWidgetList& windows) const {
    for (const QWidget* window : windows)
        if (const auto place = placeOf(window); place && !isManual(window)) {
            manual.showPlace(*place);
            return;
        }
}

void ContextHelp::showAbove(QWidget& dialog, const QWidgetList& windows) {
    if (!modHandbuch::CheckManual(m_services.dialogs))
        return;
    auto* manual = new frmHandbuch;
    ModalFrame frame(manual, &dialog);
    frame.resize(manual->sizeHint().boundedTo(dialog.screen()->availableSize()));
    platform::centreOnScreen(frame);
    showPlace(*manual, windows);
    platform::execModal(frame);
}

} // namespace shell
