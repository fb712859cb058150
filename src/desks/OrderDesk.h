#pragma once
#include "desks/WebOrder.h"
#include <QString>

namespace desks {

/// What the rest of the program asks of the order screen. The screen is shown and at the front when it is
/// asked.
class OrderDesk {
  public:
    static inline const QString kScreen = QStringLiteral("frmAuftragswesenAuftragserfassung");

    virtual ~OrderDesk() = default;
    /// The second half of taking a call: finds the caller and prepares the order, or offers the quick
    /// capture.
    virtual void takeCall(const QString& number) = 0;
    /// Clears the order and searches the number, as if it had been keyed and Enter pressed.
    virtual void searchNumber(const QString& number) = 0;
    /// Puts the number into txt_AuftragsNr and loads that booking.
    virtual void loadBooking(qint64 trxNr) = 0;
    /// Brings back the order that was being keyed when the program ended.
    virtual void restoreDraft() = 0;
    /// Keys the lines of a web order into the order that stands there, as if they were typed, and remembers
    /// which web order it is, until the order is cleared. What does not fit or is not on offer is told.
    virtual void keyWebOrder(const WebOrder& order) = 0;
    /// Clears the order and fills it from a pre-order, ready to be booked as one of today.
    virtual void loadPreOrder(qint64 trxNr) = 0;
};

} // namespace desks
