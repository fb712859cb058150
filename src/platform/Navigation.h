#pragma once
#include <QObject>
#include <QString>

namespace platform {

/// How features meet without knowing each other's screens; the shell implements it. What a screen can be
/// asked stands in the interface that it fills (src/desks/).
class Navigation {
  public:
    virtual ~Navigation() = default;
    /// Whether a screen of that name is built in and the user may reach it; a control that would lead to one
    /// that is not is disabled.
    virtual bool hasScreen(const QString& screen) const = 0;
    /// Shows a screen's one instance and brings it to the front; a floating one leaves the focus where it is.
    /// Null when it did not open, and for a modal screen, which is over by then.
    virtual QObject* showScreen(const QString& screen) = 0;
    /// Null before it exists and after it is gone.
    virtual QObject* mainWindow() const = 0;
    /// Closes all child windows but that one, without a question. False when one of them has something to
    /// bring to its end first and stays.
    virtual bool closeScreensBut(const QString& screen) = 0;
    /// From now on nothing comes in by itself, no call, no timer, no server's answer: for work that has
    /// closed the databases and is followed by the program's end.
    virtual void standStill() = 0;
    /// Ends the program at once; databases are closed, nothing is asked, and open settings are taken over
    /// only with the code 0. Does not return in the program itself; a test observes it.
    virtual void endProgram(int exitCode = 0) = 0;
};

/// Shows the screen that fills the interface and gives it to be asked; null when it did not open.
template <typename Desk> Desk* showDesk(Navigation& navigation) {
    return dynamic_cast<Desk*>(navigation.showScreen(Desk::kScreen));
}

/// The main window, to be asked by one of its interfaces; null while there is none.
template <typename Desk> Desk* mainDesk(const Navigation& navigation) {
    return dynamic_cast<Desk*>(navigation.mainWindow());
}

} // namespace platform
