#pragma once
#include <QString>

namespace desks {

/// What the rest of the program asks of the customer screen. The screen is shown and at the front by then.
class CustomerDesk {
  public:
    static inline const QString kScreen = QStringLiteral("frmVerwaltungKunden");

    virtual ~CustomerDesk() = default;
    virtual void openCustomer(qint64 customerId) = 0;
};

} // namespace desks
