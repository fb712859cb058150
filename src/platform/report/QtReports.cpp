#include "platform/report/QtReports.h"
#include "common/RunTimeError.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/ReportPrinting.h"

using namespace Qt::StringLiterals;

namespace platform {

ReportEnd QtReports::run(const ReportJob& job) {
    try {
        return show(job, fill(job));
    } catch (const GivenUp&) {
        return ReportEnd::GivenUp;
    } catch (const common::RunTimeError& error) {
        return refuse(job, error.sentence(), error.detail());
    } catch (const std::exception& error) {
        return refuse(job, u"Der Bericht lässt sich nicht erstellen."_s, QString::fromUtf8(error.what()));
    }
}

ReportEnd QtReports::refuse(const ReportJob& job, const QString& failure, const QString& detail) const {
    qWarning("%s (%s) %s", qPrintable(failure), qPrintable(job.ReportFileName), qPrintable(detail));
    QStringList text{failure, u"Es wurde nichts gedruckt."_s, job.note};
    text.removeAll(QString());
    m_dialogs.MsgBox(text.join(u"\n\n"_s), kOk + kStop, job.WindowTitle);
    return ReportEnd::Unusable;
}

FilledReport QtReports::fill(const ReportJob& job) const {
    FilledReport report = job.filled ? *job.filled : fillFromFile(job);
    report.title = job.WindowTitle;
    if (job.orientation != ReportJob::kAsDesigned)
        report.page.setLandscape(job.orientation == ReportJob::kLandscape);
    return report;
}

/// The progress goes before the preview shows its own.
FilledReport QtReports::fillFromFile(const ReportJob& job) const {
    const Progress progress = m_dialogs.ShowProgress(u"Der Bericht wird erstellt …"_s);
    const ReportTemplate report(job.ReportFileName);
    ReportData data = readPrintTables(job.DataFile, report.sections(), progress);
    data.firm = job.firm;
    data.title = job.WindowTitle;
    return report.fill(data, progress);
}

ReportEnd QtReports::show(const ReportJob& job, FilledReport report) const {
    const ReportDocument document(std::move(report));
    for (int copy = 0; copy < job.copies; ++copy) {
        if (job.destination == ReportJob::kToPrinter) {
            if (!printOn(job.PrinterName, document, m_dialogs, job.note))
                return ReportEnd::GivenUp;
            continue;
        }
        auto* window = new PreviewWindow(document, job.PrinterName, m_dialogs);
        job.windowState == ReportJob::kMaximized ? window->showMaximized() : window->show();
    }
    return ReportEnd::Done;
}

} // namespace platform
