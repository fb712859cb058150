#pragma once
#include "platform/ReportTemplate.h"
#include <QString>

class QPainter;
class QPrinter;
class QTextDocument;

namespace platform {

/// A filled report laid out on paper. It keeps the text and lays it out anew for each device, since the
/// widths of the letters belong to the device.
class ReportDocument {
  public:
    explicit ReportDocument(FilledReport report) : m_report(std::move(report)) {}

    const QString& title() const { return m_report.title; }

    const ReportPage& page() const { return m_report.page; }

    /// Sets paper, margins and name of the job. The paper of a roll is as long as the text on it.
    void setUp(QPrinter& printer) const;
    /// Draws all pages on a printer that went through setUp. False when the printer could not begin the job.
    bool print(QPrinter& printer) const;

  private:
    void layOut(QTextDocument& document, QPrinter& printer) const;
    void drawPage(QPainter& painter, QTextDocument& document, int page, int resolution) const;
    void drawLine(QPainter& painter, const QString& line, double middle, int page, int pages,
                  int resolution) const;

    FilledReport m_report;
};

/// Writes the report as a PDF file. Throws common::RunTimeError when the file cannot be written.
void saveAsPdf(const ReportDocument& report, const QString& path);

} // namespace platform
