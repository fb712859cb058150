#include "platform/report/QtReportControl.h"
#include "common/RunTimeError.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/ReportPrinting.h"

using namespace Qt::StringLiterals;

namespace platform {

void QtReportControl::PrintReport() {
    try {
        // The progress goes before the preview shows its own.
        FilledReport filled = fill(m_dialogs.ShowProgress(u"Der Bericht wird erstellt …"_s));
        run(std::move(filled));
    } catch (const GivenUp&) {
        return;
    } catch (const common::RunTimeError& error) {
        tell(error.sentence());
    } catch (const std::exception& error) {
        tell(u"Der Bericht lässt sich nicht erstellen (%1)."_s.arg(QString::fromUtf8(error.what())));
    }
}

void QtReportControl::tell(const QString& failure) {
    m_dialogs.MsgBox(failure + u"\n\nEs wurde nichts gedruckt."_s, kOk + kStop,
                     WindowTitle.isEmpty() ? u"Bericht"_s : WindowTitle);
}

FilledReport QtReportControl::fill(const Progress& progress) const {
    const ReportTemplate report(ReportFileName);
    FilledReport filled = report.fill(readPrintTables(DataFile, report.sections(), progress), progress);
    if (!WindowTitle.isEmpty())
        filled.title = WindowTitle;
    if (orientation != kAsDesigned)
        filled.page.setLandscape(orientation == kLandscape);
    return filled;
}

void QtReportControl::run(FilledReport report) {
    const ReportDocument document(std::move(report));
    if (destination == kToPrinter) {
        printOn(PrinterName, document, m_dialogs, u"Der Auftrag ist bereits gespeichert."_s);
        return;
    }
    auto* window = new PreviewWindow(document, PrinterName, m_dialogs);
    windowState == kMaximized ? window->showMaximized() : window->show();
}

} // namespace platform
