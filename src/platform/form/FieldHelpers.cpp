#include "platform/form/FieldHelpers.h"
#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QThread>
#include <QTimer>

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

bool isEnter(const QEvent& event) {
    if (event.type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<const QKeyEvent&>(event).key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
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

/// Acts as the focus comes; with the mouse, after the press that brought it has put the cursor down. Not
/// later than that, since the next key may be waiting already.
void watchFocus(QWidget& field, std::function<void()> action) {
    new Filter(field, [&field, action = std::move(action)](QEvent& event) {
        if (event.type() != QEvent::FocusIn)
            return false;
        if (static_cast<QFocusEvent&>(event).reason() == Qt::MouseFocusReason)
            QTimer::singleShot(0, &field, action);
        else
            action();
        return false;
    });
}

QString withoutQuotes(QString text) {
    return text.remove(QLatin1Char('"')).remove(QLatin1Char('\''));
}

} // namespace

void selectAllOnFocus(QLineEdit& field) {
    watchFocus(field, [&field] { field.selectAll(); });
}

void selectAllOnFocus(QPlainTextEdit& field) {
    watchFocus(field, [&field] { field.selectAll(); });
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
    new Filter(field, [&field, rule = std::move(rule)](QEvent& event) {
        if (event.type() == QEvent::MouseButtonDblClick) {
            field.selectAll();
            return true;
        }
        if (event.type() != QEvent::FocusOut)
            return false;
        // A menu over the field and a message box are no leaving.
        const Qt::FocusReason reason = static_cast<QFocusEvent&>(event).reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            field.setText(rule(field.text()));
        return false;
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
