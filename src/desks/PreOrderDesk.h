#pragma once
#include <QString>

namespace desks {

/// What the rest of the program asks of the list of pre-orders. It is shown and at the front when it is
/// asked.
class PreOrderList {
  public:
    static inline const QString kScreen = QStringLiteral("frmAuftragswesenVorbestellungen");

    virtual ~PreOrderList() = default;
    /// Narrows the list to that one.
    virtual void ShowVorbestellung(qint64 trxNr) = 0;
};

/// What the rest of the program asks of the alarm.
class PreOrderAlarm {
  public:
    static inline const QString kScreen = QStringLiteral("frmAuftragswesenVorbestellungenAlarm");

    virtual ~PreOrderAlarm() = default;
    /// The pre-order that is due, and its customer's name.
    virtual void setFaellig(qint64 trxNr, const QString& kunde) = 0;
    /// The pre-order that it tells of.
    virtual qint64 Faellig() const = 0;
};

} // namespace desks
