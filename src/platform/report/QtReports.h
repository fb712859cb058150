#pragma once
#include "platform/Dialogs.h"
#include "platform/report/ReportTemplate.h"
#include "platform/report/Reports.h"

namespace platform {

/// Reports on Qt: report files as ReportTemplate tells, a preview in a window of its own, printing through
/// the system's print service.
class QtReports : public Reports {
  public:
    /// `dialogs` must outlive the reports and their preview windows.
    explicit QtReports(Dialogs& dialogs) : m_dialogs(dialogs) {}

    ReportEnd run(const ReportJob& job) override;

  private:
    FilledReport fill(const ReportJob& job) const;
    FilledReport fillFromFile(const ReportJob& job) const;
    ReportEnd show(const ReportJob& job, FilledReport report) const;
    ReportEnd refuse(const ReportJob& job, const QString& failure, const QString& detail) const;

    Dialogs& m_dialogs;
};

} // namespace platform
