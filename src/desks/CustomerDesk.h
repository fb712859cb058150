#pragma once
#include "desks/WebOrder.h"
#include <QString>

namespace desks {

/// What the rest of the program asks of the customer screen. The screen is shown and at the front by then.
class CustomerDesk {
  public:
    static inline const QString kScreen = QStringLiteral("frmVerwaltungKunden");

    virtual ~CustomerDesk() = default;
    virtual void openCustomer(qint64 customerId) = 0;
    /// Offers a new customer in the cleaned mask; nothing is stored. A floor that the list does not know is
    /// left out. The screen is maximised.
    virtual void captureCustomer(const WebCustomer& customer) = 0;
};

} // namespace desks
