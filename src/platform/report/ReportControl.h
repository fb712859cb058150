#pragma once
#include <QString>
#include <QStringList>

namespace platform {

/// Runs a report file over the print database, to a preview window or to a printer.
class ReportControl {
  public:
    enum Destination { kToWindow = 0, kToPrinter = 1 };

    enum WindowState { kNormal = 0, kMaximized = 2 };

    enum Orientation { kAsDesigned = 0, kPortrait = 1, kLandscape = 2 };

    virtual ~ReportControl() = default;

    QString ReportFileName;
    /// Path of the print database.
    QString DataFile;
    QString PrinterDriver;
    QString PrinterName;
    QString PrinterPort;
    QString WindowTitle;
    int destination = kToPrinter;
    /// Of the preview window.
    int windowState = kNormal;
    /// Of the paper; a roll has none.
    int orientation = kAsDesigned;

    /// Lays the report out and shows or prints it. What the printer refuses is told to the user, with a
    /// retry; a broken or missing report file as well. Either way it returns, since what is printed is stored
    /// already.
    virtual void PrintReport() = 0;
};

struct Printer {
    QString DeviceName;
    QString DriverName;
    QString Port;
};

/// The system's printers, and the program's idea of the default one.
class Printers {
  public:
    virtual ~Printers() = default;
    virtual QList<Printer> all() = 0;
    /// An empty device name when the system has no printer.
    virtual Printer defaultPrinter() = 0;
    /// For this program only; the system's own default stays untouched.
    virtual void setDefaultPrinter(const Printer& printer) = 0;
};

} // namespace platform
