#pragma once
#include "platform/report/ReportTemplate.h"
#include <QString>
#include <memory>
#include <vector>

class QPainter;
class QPagedPaintDevice;
class QTextDocument;

namespace platform {

/// A filled report laid out on paper. It keeps the text and lays it out anew for each device, since the
/// widths of the letters belong to the device. A long list is laid out page by page, so that no row breaks
/// in two and the user sees how far it is.
class ReportDocument {
  public:
    explicit ReportDocument(FilledReport report) : m_report(std::move(report)) {}

    const QString& title() const { return m_report.title; }

    const ReportPage& page() const { return m_report.page; }

    /// Sets paper and margins. The paper of a roll is as long as the text on it.
    void setUp(QPagedPaintDevice& device) const;
    /// Draws all pages on a device that went through setUp. False when the device could not begin the job.
    bool print(QPagedPaintDevice& device, const Progress& progress = unwatched) const;

  private:
    /// A page of a long list, laid out with so many rows from the first one on; its own end at `height`,
    /// where the rows of the next page begin. A report without a long list is one piece of all its pages.
    struct Piece {
        size_t first = 0, count = 0;
        int pages = 1;
        double height = 0;
        std::shared_ptr<QTextDocument> text{}; ///< kept while there are not too many
    };

    std::shared_ptr<QTextDocument> layOut(const Piece& piece, QPagedPaintDevice& device) const;
    std::vector<Piece> pieces(QPagedPaintDevice& device, const Progress& progress) const;
    /// `next` becomes the first row of the following piece; about `count` rows are thought to fit.
    Piece pieceFrom(size_t first, size_t& next, size_t count, QPagedPaintDevice& device) const;
    void drawBody(QPainter& painter, const Piece& piece, const QTextDocument& text, int page,
                  int resolution) const;
    void drawPicture(QPainter& painter, int resolution) const;
    void drawEdges(QPainter& painter, int page, int pages, int resolution) const;
    void drawLine(QPainter& painter, const QString& line, double middle, int page, int pages,
                  int resolution) const;

    FilledReport m_report;
};

/// Writes the report as a PDF file; one of that name is replaced once the new one is whole
/// (common::writeFileAtomically, which tells what it throws).
void saveAsPdf(const ReportDocument& report, const QString& path, const Progress& progress = unwatched);

} // namespace platform
