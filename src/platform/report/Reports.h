#pragma once
#include <QList>
#include <QString>
#include <memory>

namespace platform {

struct FilledReport;

/// A run of a report file over the print database, to preview windows or to a printer.
struct ReportJob {
    enum Destination { kToWindow = 0, kToPrinter = 1 };

    enum WindowState { kNormal = 0, kMaximized = 2 };

    enum Orientation { kAsDesigned = 0, kPortrait = 1, kLandscape = 2 };

    /// Path of the report file; the pictures that it shows stand in its folder.
    QString ReportFileName;
    /// Path of the print database.
    QString DataFile;
    QString WindowTitle;
    /// The firm's name, which a report may show.
    QString firm;
    /// A report that is filled already, instead of file and database.
    std::shared_ptr<const FilledReport> filled{};
    QString PrinterDriver{};
    QString PrinterName{};
    QString PrinterPort{};
    int destination = kToPrinter;
    /// A sheet each, or a window each.
    int copies = 1;
    /// Of the preview window.
    int windowState = kNormal;
    /// Of the paper; a roll has none.
    int orientation = kAsDesigned;
    /// What the user should know when nothing comes out of the printer, in a sentence: what became of the
    /// order.
    QString note{};
};

/// How a run ended.
enum class ReportEnd {
    Done,
    GivenUp, ///< by the user, at the printer's box or while it was made: the copies that were left are not
             ///< printed
    Unusable ///< the report file or its data; the user knows
};

/// Runs reports.
class Reports {
  public:
    virtual ~Reports() = default;
    /// Lays the report out and shows or prints it. What the printer refuses is told to the user, with a
    /// retry; a broken or missing report file as well. Either way it returns.
    virtual ReportEnd run(const ReportJob& job) = 0;
};

struct Printer {
    QString DeviceName;
    QString DriverName;
    QString Port;
};

/// The system's printers.
class Printers {
  public:
    virtual ~Printers() = default;
    virtual QList<Printer> all() = 0;
    /// The system's own at this moment. An empty device name when it has no printer.
    virtual Printer defaultPrinter() = 0;
};

} // namespace platform
