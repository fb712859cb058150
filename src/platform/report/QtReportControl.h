#pragma once
#include "platform/Dialogs.h"
#include "platform/report/ReportControl.h"
#include "platform/report/ReportTemplate.h"

namespace platform {

/// The report control on Qt: report files as ReportTemplate tells, a preview in a window of its own, printing
/// through the system's print service.
class QtReportControl : public ReportControl {
  public:
    /// `dialogs` must outlive the control and its preview windows.
    explicit QtReportControl(Dialogs& dialogs) : m_dialogs(dialogs) {}

    void PrintReport() override;

  private:
    FilledReport fill(const Progress& progress) const;
    void run(FilledReport report);
    void tell(const QString& failure);

    Dialogs& m_dialogs;
};

} // namespace platform
