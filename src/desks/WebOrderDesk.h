#pragma once
#include <QString>

namespace desks {

/// What the rest of the program asks of the list of web orders. It is shown and at the front when it is
/// asked.
class WebOrderList {
  public:
    static inline const QString kScreen = QStringLiteral("frmInternetBestellungen");

    virtual ~WebOrderList() = default;
    /// E-mail address of the present order's customer, as he typed it; "" without one.
    virtual QString EMail() const = 0;
    /// Shows what was fetched since, and stays on the same order.
    virtual void Refresh() = 0;
};

} // namespace desks
