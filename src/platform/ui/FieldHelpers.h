#pragma once
#include <QLineEdit>
#include <QList>
#include <QWidget>

/// Behaviour that the fields of all screens share.
namespace platform::ui {

/// The field selects its whole text whenever it gets the focus.
void selectAllOnFocus(QLineEdit& field);

/// Enter moves the focus from each field to the next one; in a button Enter presses it. The last field of the
/// list keeps Enter to itself unless it is a button.
void enterChain(const QList<QWidget*>& fields);

/// Typing lets digits through and the keys that edit; pasting inserts the digits of what is pasted. Texts set
/// by the program are not touched.
void digitsOnly(QLineEdit& field);

/// Waits under the wait cursor, blocking: the pause that the system keeps after a write.
void waitMilliseconds(int milliseconds);
/// Switches the pauses off, for tests.
void setWaiting(bool on);

} // namespace platform::ui
