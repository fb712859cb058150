#pragma once
#include <QObject>
#include <QString>
#include <QTimer>
#include <deque>

namespace platform {

/// The telephone line. Events come on the user-interface thread, each call by itself, so that an error in one
/// does not lose the next. Only the caller's number is used further on. It goes on as delivered (a SIP user
/// part without scheme and host), but for the own country's: with the country code set, "+41..." and
/// "0041..." go on as "0...". A suppressed number is "".
class BasicCAPI32 : public QObject {
    Q_OBJECT
  public:
    explicit BasicCAPI32(QObject* parent = nullptr);

    /// Digits alone ("41"); "" leaves every number as delivered.
    void setCountryCode(const QString& code) { m_countryCode = code; }

    /// Whether the line's means are there (library, address configured). May throw common::RunTimeError.
    virtual bool IsAvailable() = 0;
    /// Begins to listen; throws common::RunTimeError when the line cannot be used. What is lost later
    /// (network, router) is taken up again by the line itself.
    virtual void Start() = 0;
    /// No event comes afterwards.
    virtual void Stop() = 0;

  Q_SIGNALS:
    void IncomingCall(const QString& GerufeneNr, const QString& AnrufNr, const QString& AnrufFormat);

  protected:
    /// The line's word that a call has come; the event follows from the event loop. `isInternational`: the
    /// network tells apart from the digits that they begin with a country's code.
    void arrived(const QString& called, const QString& caller, const QString& format,
                 bool isInternational = false);
    /// Forgets what has come and was not told yet.
    void dropArrived();

  private:
    struct Call {
        QString called, caller, format;
    };

    void tellOne();
    QString national(const QString& caller, bool isInternational) const;

    QString m_countryCode;
    std::deque<Call> m_arrived;
    /// One call a round of the event loop: keys and painting have their turn between two of many.
    QTimer m_next;
};

} // namespace platform
