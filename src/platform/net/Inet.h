#pragma once
#include <QObject>
#include <QString>

namespace platform {

/// The internet control: one request to a web server at a time, by POST with an empty body, answered while
/// the event loop runs.
class Inet : public QObject {
    Q_OBJECT
  public:
    /// The states that the program acts on, in the control's numbering.
    enum State : int { icRequesting = 5, icError = 11, icResponseCompleted = 12 };

    using QObject::QObject;

    /// Starts and returns at once. An error page of the server is an answer like any other. One request at a
    /// time: a mistake of the caller's while StillExecuting.
    virtual void Execute(const QString& url) = 0;
    virtual bool StillExecuting() const = 0;
    /// Gives the request up, if there is one; it ends as one that failed.
    virtual void Cancel() = 0;

    /// The text of the last request's answer; "" unless it was completed.
    virtual QString Answer() const = 0;
    /// Why the last request failed, a German sentence without address or password; "" when it did not.
    virtual QString Problem() const = 0;
    /// What the last request's answer is where it is an error page, a sentence; "" where it is none.
    virtual QString Refusal() const = 0;

  Q_SIGNALS:
    void StateChanged(int state);
};

} // namespace platform
