#include "platform/HeldKeys.h"
#include <QApplication>
#include <QKeyEvent>
#include <QTimer>
#include <QWindow>
#include <deque>
#include <optional>

/// The toolkit's own way to bring a key in as if it came from the window system; its tests live on it.
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                    Qt::KeyboardModifiers modifiers, const QString& text, bool repeated,
                                    ushort count);

namespace platform {
namespace {

QWindow* windowOf(const QWidget* widget) {
    return widget ? widget->window()->windowHandle() : nullptr;
}

/// The keys that wait, of all dialogs: one opened by such a key gets the next ones of them.
class KeyQueue : public QObject {
  public:
    static KeyQueue& instance() {
        static QPointer<KeyQueue> queue;
        if (!queue)
            queue = new KeyQueue;
        return *queue;
    }

    void answered(QWindow* dialog, QWindow* below) {
        ++m_answered;
        // The key may be the one that opened it.
        m_given.reset();
        m_gone = dialog;
        m_below = below;
    }

    void workBegins(QDialog* box) { m_works.append(box); }

    void wentOn(QWindow* below) {
        --m_answered;
        giveOnceFocused(below);
    }

    void workEnds(QDialog* box, QWindow* below) {
        m_works.removeOne(box);
        giveOnceFocused(below);
    }

    void drop() { m_keys.clear(); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
        if ((!isKey && event->type() != QEvent::ShortcutOverride) || !watched->isWindowType())
            return false;
        auto* pressedIn = static_cast<QWindow*>(watched);
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (!waits(pressedIn, key))
            return false;
        if (isKey)
            m_keys.push_back({pressedIn == m_gone ? m_below.data() : pressedIn, key.type(), key.key(),
                              key.modifiers(), key.text(), key.isAutoRepeat()});
        else
            // Accepted it is a key like any other; its turn as a shortcut comes later.
            event->accept();
        return true;
    }

    bool event(QEvent* event) override {
        if (event->type() != kGiveNext)
            return QObject::event(event);
        give();
        return true;
    }

  private:
    struct Key {
        QPointer<QWindow> window; ///< null: the one that has the focus when its turn comes
        QEvent::Type type;
        int code;
        Qt::KeyboardModifiers modifiers;
        QString text;
        bool repeated;
    };

    static inline const auto kGiveNext = QEvent::Type(QEvent::registerEventType());

    KeyQueue() : QObject(qApp) {
        qApp->installEventFilter(this);
        m_focusWait.setSingleShot(true);
        connect(&m_focusWait, &QTimer::timeout, this, [this] { giveLater(); });
        connect(qApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow* window) {
            if (window && m_focusWait.isActive())
                m_focusWait.start(0);
        });
    }

    bool waits(const QWindow* pressedIn, const QKeyEvent& key) const {
        if (m_given == key.key())
            return false;
        if (m_answered > 0)
            return true;
        if (m_works.isEmpty())
            return m_giving;
        // A dialog that the work has opened is answered; the work's own takes Esc.
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal || pressedIn != windowOf(modal))
            return true;
        return m_works.contains(modal) && key.key() != Qt::Key_Escape;
    }

    /// Shortcuts act only in a window that has the focus, and it comes back from the window system.
    void giveOnceFocused(QWindow* below) {
        constexpr int kLongestWait = 3000;
        m_giving = true;
        if (!below || !below->isVisible() || QGuiApplication::focusWindow() == below)
            return giveLater();
        m_focusWait.start(kLongestWait);
    }

    /// Before whatever else waits in the event queue.
    void giveLater() {
        if (std::exchange(m_posted, true))
            return;
        QCoreApplication::postEvent(this, new QEvent(kGiveNext), Qt::HighEventPriority);
    }

    /// All in one go, so that none that is pressed now overtakes them. A key may open the next dialog: the
    /// others are for it, and its event loop goes on here.
    void give() {
        m_posted = false;
        while (!m_keys.empty() && m_answered == 0 && m_works.isEmpty() && !m_focusWait.isActive()) {
            const Key key = m_keys.front();
            m_keys.pop_front();
            giveLater();
            m_given = key.code;
            if (QWindow* window = key.window ? key.window.data() : QGuiApplication::focusWindow())
                qt_handleKeyEvent(window, key.type, key.code, key.modifiers, key.text, key.repeated, 1);
            m_given.reset();
        }
        m_giving = !m_keys.empty();
    }

    std::deque<Key> m_keys;
    /// The key that is being handed on.
    std::optional<int> m_given;
    /// The window below does not have the focus yet.
    QTimer m_focusWait;
    int m_answered = 0;
    QList<QWidget*> m_works;
    /// The dialog answered last, and where its keys go.
    QPointer<QWindow> m_gone, m_below;
    bool m_giving = false, m_posted = false;
};

} // namespace

HeldKeys::HeldKeys(QDialog& dialog, Since since) :
    m_dialog(&dialog), m_below(dialog.parentWidget()), m_since(since) {
    if (since == Since::Beginning)
        KeyQueue::instance().workBegins(m_dialog);
    else
        m_onAnswer = QObject::connect(&dialog, &QDialog::finished, [this] {
            m_answered = true;
            KeyQueue::instance().answered(windowOf(m_dialog), windowOf(m_below));
        });
}

void HeldKeys::drop() {
    KeyQueue::instance().drop();
}

HeldKeys::~HeldKeys() {
    QObject::disconnect(m_onAnswer);
    if (m_since == Since::Beginning)
        KeyQueue::instance().workEnds(m_dialog, windowOf(m_below));
    else if (m_answered)
        KeyQueue::instance().wentOn(windowOf(m_below));
}

} // namespace platform
