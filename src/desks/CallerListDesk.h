#pragma once
#include <QString>

namespace desks {

/// What the rest of the program asks of the list of callers while it is open.
class CallerList {
  public:
    static inline const QString kScreen = QStringLiteral("frmVerwaltungAnruferListe");

    virtual ~CallerList() = default;
    /// A further call was recorded: the list shows it, and the row that is marked stays marked.
    virtual void callCame() = 0;
};

} // namespace desks
