#pragma once
#include <QString>

namespace platform {

/// How features meet without knowing each other's screens; the shell implements it.
class Navigation {
  public:
    virtual ~Navigation() = default;
    /// Whether a screen of that name is built in; a control that would lead to one that is not is disabled.
    virtual bool hasScreen(const QString& screen) const = 0;
    /// Shows a screen's one instance; `front` also brings an open one to the top.
    virtual void showScreen(const QString& screen, bool front = true) = 0;
    /// Brings the order screen to the front, clears it and searches the number there, as if it had been
    /// keyed.
    virtual void openOrderForNumber(const QString& number) = 0;
    /// Opens a customer on the customer screen.
    virtual void openCustomer(qint64 customerId) = 0;
    /// Loads a booking onto the order screen.
    virtual void openBooking(qint64 trxNr) = 0;
    /// Opens a pre-order on the order screen, as an order that can be booked.
    virtual void openVorbestellung(qint64 trxNr) = 0;
    /// Opens the list of pre-orders on that one.
    virtual void showVorbestellung(qint64 trxNr) = 0;
    /// Shows the alarm for a due pre-order. The focus stays where it is.
    virtual void showVorbestellungAlarm(qint64 trxNr) = 0;
    /// The next transaction number, shown in the main window's status box.
    virtual void showNextTrxNr(const QString& number) = 0;
    /// The number of waiting pre-orders, shown there too.
    virtual void showVorbestellungCount(qint64 count) = 0;

    /// The number of customers, shown there too.
    virtual void showKundenTotal(qint64 /*count*/) {}

    /// A call as if the line had delivered it: the order screen's simulation.
    virtual void incomingCall(const QString& GerufeneNr, const QString& AnrufNr,
                              const QString& AnrufFormat) = 0;
    /// Ends the program at once; databases are closed, nothing is asked. Does not return in the program
    /// itself; a test observes it.
    virtual void endProgram(int exitCode = 0) = 0;
};

} // namespace platform
