#pragma once
#include <QObject>
#include <QString>

namespace platform {

/// The telephone line. Events come on the user-interface thread. Only the caller's number is used further on,
/// and it goes on exactly as delivered (a SIP user part without scheme and host); a suppressed number is "".
class BasicCAPI32 : public QObject {
    Q_OBJECT
  public:
    using QObject::QObject;
    /// Whether the line's means are there (library, address configured). May throw common::RunTimeError.
    virtual bool IsAvailable() = 0;
    /// Begins to listen; throws common::RunTimeError when the line cannot be used. What is lost later
    /// (network, router) is taken up again by the line itself.
    virtual void Start() = 0;
    virtual void Stop() = 0;

  Q_SIGNALS:
    void IncomingCall(const QString& GerufeneNr, const QString& AnrufNr, const QString& AnrufFormat);
};

} // namespace platform
