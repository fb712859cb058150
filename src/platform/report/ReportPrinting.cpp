#include "platform/report/ReportPrinting.h"
#include "platform/report/PrinterState.h"
#include <QPrinter>
#include <QPrinterInfo>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// Why the printer cannot take a job now; empty when it can.
QString obstacle(const QString& name) {
    if (name.isEmpty())
        return u"Es ist kein Drucker eingerichtet."_s;
    switch (printerState(name)) {
    case PrinterState::Ready:
        return {};
    case PrinterState::Missing:
        return u"Der Drucker \"%1\" ist nicht vorhanden."_s.arg(name);
    case PrinterState::Stopped:
        return u"Der Drucker \"%1\" ist angehalten."_s.arg(name);
    case PrinterState::Rejecting:
        return u"Der Drucker \"%1\" nimmt keine Aufträge an."_s.arg(name);
    case PrinterState::ServiceSilent:
        return u"Der Druckdienst antwortet nicht. Der Drucker \"%1\" ist nicht erreichbar."_s.arg(name);
    }
    return {};
}

/// Hands the job over; the reason when that fails, else empty.
QString handOver(const QString& name, const ReportDocument& report, const Progress& progress) {
    QPrinter printer(QPrinterInfo::printerInfo(name), QPrinter::HighResolution);
    // For a name that it does not know, QPrinter takes the default printer without a word.
    if (printer.printerName() != name)
        return u"Der Drucker \"%1\" ist nicht vorhanden."_s.arg(name);
    printer.setDocName(report.title());
    report.setUp(printer);
    try {
        if (!report.print(printer, progress))
            return u"Der Drucker \"%1\" hat den Druck abgebrochen."_s.arg(name);
    } catch (const GivenUp&) {
        // The printing engine hands over what has been drawn, whatever ends it.
        withdrawLastJob(name);
        throw;
    }
    if (const QString refusal = refusalOfLastJob(); !refusal.isEmpty())
        return u"Der Drucker \"%1\" hat den Druck nicht angenommen (%2)."_s.arg(name, refusal);
    return {};
}

} // namespace

bool printOn(const QString& printerName, const ReportDocument& report, Dialogs& dialogs,
             const QString& consolation) try {
    for (;;) {
        QString failure = obstacle(printerName);
        if (failure.isEmpty())
            failure = handOver(printerName, report, dialogs.ShowProgress(u"Der Bericht wird gedruckt …"_s));
        if (failure.isEmpty())
            return true;
        QStringList text{failure, consolation, u"Soll der Druck wiederholt werden?"_s};
        text.removeAll(QString());
        if (dialogs.MsgBox(text.join(u"\n\n"_s), kRetryCancel + kStop, report.title()) != kAnswerRetry)
            return false;
    }

} catch (const GivenUp&) {

    return false;
}

} // namespace platform
