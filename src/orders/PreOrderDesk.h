#pragma once
#include <QtGlobal>

namespace orders {

/// What the rest of the program asks of the list of pre-orders. It is shown and at the front when it is
/// asked.
class PreOrderList {
  public:
    virtual ~PreOrderList() = default;
    /// Narrows the list to that one.
    virtual void ShowVorbestellung(qint64 trxNr) = 0;
};

/// What the rest of the program asks of the alarm.
class PreOrderAlarm {
  public:
    virtual ~PreOrderAlarm() = default;
    /// The pre-order that is due.
    virtual void setFaellig(qint64 trxNr) = 0;
};

} // namespace orders
