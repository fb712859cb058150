#include "platform/form/FieldHelpers.h"
#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QKeyEvent>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QThread>
#include <QTimer>
#include <utility>

namespace platform {
namespace {

bool waiting = true;

/// An event filter made of one function; it lives as long as the widget that it watches.
class Filter : public QObject {
  public:
    using Rule = std::function<bool(QEvent&)>;

    Filter(QWidget& watched, Rule rule) : QObject(&watched), m_rule(std::move(rule)) {
        watched.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override { return m_rule(*event); }

  private:
    Rule m_rule;
};

/// Enter as the way on. With the shift key it is a new line, in a field that has lines.
bool isEnter(const QEvent& event) {
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto& press = static_cast<const QKeyEvent&>(event);
    return (press.key() == Qt::Key_Return || press.key() == Qt::Key_Enter) &&
           !press.modifiers().testFlag(Qt::ShiftModifier);
}

QString digitsOf(const QString& text) {
    QString digits;
    for (const QChar c : text)
        if (c >= u'0' && c <= u'9')
            digits += c;
    return digits;
}

/// Keys that edit or command carry no printable text; a letter with Alt does.
bool isNoDigit(const QKeyEvent& key) {
    return !key.text().isEmpty() && key.text().at(0).isPrint() && digitsOf(key.text()).isEmpty();
}

/// The part of the program whose fields lead to each other: a child window, a dialog, a window.
QWidget* screenOf(QWidget& field) {
    QWidget* screen = &field;
    while (!screen->isWindow() && !qobject_cast<QMdiSubWindow*>(screen))
        screen = screen->parentWidget();
    return screen;
}

/// Tells the real changes of the focus, from one field of a screen to another. A menu over the field, a
/// message box, and another screen or window in front are none: whoever comes back finds the field as it was
/// left.
class FocusWatch : public QObject {
  public:
    FocusWatch(QWidget& field, std::function<void()> entered, std::function<void()> left) :
        QObject(&field), m_field(field), m_entered(std::move(entered)), m_left(std::move(left)) {
        field.installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::FocusIn)
            comes(static_cast<QFocusEvent&>(*event).reason());
        else if (event->type() == QEvent::FocusOut && m_here)
            goes();
        return false;
    }

  private:
    void comes(Qt::FocusReason reason) {
        const bool byHand = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                            reason == Qt::ShortcutFocusReason || reason == Qt::MouseFocusReason;
        if (std::exchange(m_here, true) && !byHand)
            return;
        // The press that brought the focus has yet to put the cursor down. Otherwise not later than now,
        // since the next key may be waiting already.
        if (reason == Qt::MouseFocusReason)
            QTimer::singleShot(0, this, m_entered);
        else
            m_entered();
    }

    void goes() {
        if (screenOf(m_field)->focusWidget() == &m_field)
            return;
        m_here = false;
        m_left();
    }

    QWidget& m_field;
    std::function<void()> m_entered, m_left;
    bool m_here = false;
};

QString withoutQuotes(QString text) {
    return text.remove(QLatin1Char('"')).remove(QLatin1Char('\''));
}

} // namespace

void selectAllOnFocus(QLineEdit& field) {
    new FocusWatch(
        field, [&field] { field.selectAll(); }, [] {});
}

void selectAllOnFocus(QPlainTextEdit& field) {
    new FocusWatch(
        field, [&field] { field.selectAll(); }, [] {});
}

void enterChain(const QList<QWidget*>& fields) {
    for (qsizetype i = 0; i < fields.size(); ++i) {
        QWidget* next = i + 1 < fields.size() ? fields[i + 1] : nullptr;
        auto* button = qobject_cast<QAbstractButton*>(fields[i]);
        if (!next && !button)
            continue;
        new Filter(*fields[i], [next, button](QEvent& event) {
            if (!isEnter(event))
                return false;
            if (button)
                button->click();
            else
                next->setFocus(Qt::TabFocusReason);
            return true;
        });
    }
}

void digitsOnly(QLineEdit& field, Paste paste) {
    field.setInputMethodHints(Qt::ImhDigitsOnly);
    new Filter(field, [&field, paste](QEvent& event) {
        if (event.type() != QEvent::KeyPress)
            return false;
        auto& key = static_cast<QKeyEvent&>(event);
        if (key.matches(QKeySequence::Paste)) {
            if (paste == Paste::Digits)
                field.insert(digitsOf(QApplication::clipboard()->text()));
            return paste == Paste::Digits;
        }
        return isNoDigit(key);
    });
}

void reformatOnLeave(QLineEdit& field, std::function<QString(const QString& text)> rule) {
    new FocusWatch(
        field, [] {}, [&field, rule = std::move(rule)] { field.setText(rule(field.text())); });
    new Filter(field, [&field](QEvent& event) {
        if (event.type() != QEvent::MouseButtonDblClick)
            return false;
        field.selectAll();
        return true;
    });
}

void removeQuotes(QLineEdit& field) {
    field.setText(withoutQuotes(field.text()));
}

void removeQuotes(QPlainTextEdit& field) {
    field.setPlainText(withoutQuotes(field.toPlainText()));
}

void fillNumbers(QComboBox& list, int first, int last) {
    for (int number = first; number <= last; ++number)
        list.addItem(QString::number(number));
    list.setCurrentIndex(0);
}

void chooseText(QComboBox& list, const QString& text) {
    if (!text.isEmpty() && list.findText(text) < 0)
        list.addItem(text);
    list.setCurrentIndex(text.isEmpty() ? 0 : list.findText(text));
}

QString toolTipOf(const QString& text) {
    constexpr qsizetype kReadable = 400;
    if (text.isEmpty())
        return {};
    static const QRegularExpression longWord(QStringLiteral("(\\S{40})"));
    QString cut = text.size() > kReadable ? text.left(kReadable) + QChar(u'…') : text;
    cut.replace(longWord, QStringLiteral("\\1\u200B"));
    // Only marked-up text is broken into lines.
    return QStringLiteral("<span>") + cut.toHtmlEscaped() + QStringLiteral("</span>");
}

void waitMilliseconds(int milliseconds) {
    if (!waiting)
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QThread::msleep(static_cast<unsigned long>(milliseconds));
    QApplication::restoreOverrideCursor();
}

void setWaiting(bool on) {
    waiting = on;
}

} // namespace platform
