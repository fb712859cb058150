#pragma once
#include <QLineEdit>
#include <QList>
#include <QWidget>
#include <functional>

class QComboBox;
class QPlainTextEdit;

/// Behaviour that the fields of all screens share.
namespace platform {

/// The field selects its whole text when the focus comes to it from another field; not when a menu or message
/// box over it closes, or when its window comes back: then it is as it was left.
void selectAllOnFocus(QLineEdit& field);
void selectAllOnFocus(QPlainTextEdit& field);

/// Enter moves the focus from each field to the next one; in a button Enter presses it. What the chain ends
/// in keeps Enter to itself unless it is a button. Shift+Enter is not touched: a new line.
void enterChain(const QList<QWidget*>& fields);

/// What pasting into a field of digits inserts.
enum class Paste { Digits, AsItIs };
/// Typing lets digits through and the keys that edit. Texts set by the program are not touched.
void digitsOnly(QLineEdit& field, Paste paste = Paste::Digits);

/// When the focus leaves the field for another one (see selectAllOnFocus) its text becomes what `rule` makes
/// of it. A double click takes the whole text, not the part of a number before its point.
void reformatOnLeave(QLineEdit& field, std::function<QString(const QString& text)> rule);

/// Takes the double and then the single quotes out of the field: what is stored from it may later stand in a
/// statement or in an address.
void removeQuotes(QLineEdit& field);
void removeQuotes(QPlainTextEdit& field);

/// Fills the list with the numbers from `first` to `last` and chooses the first one.
void fillNumbers(QComboBox& list, int first, int last);
/// Chooses the entry of that text, the first entry for "". A text that the list lacks is added, so that a row
/// from elsewhere keeps it when it is saved.
void chooseText(QComboBox& list, const QString& text);

/// A stored text as a tool tip: as it stands, in lines, and no more of it than one reads. "" for an empty
/// one.
QString toolTipOf(const QString& text);

/// Waits under the wait cursor, blocking: the pause that the system keeps after a write.
void waitMilliseconds(int milliseconds);
/// Switches the pauses off, for tests.
void setWaiting(bool on);

} // namespace platform
