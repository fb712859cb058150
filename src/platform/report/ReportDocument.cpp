#include "platform/report/ReportDocument.h"
#include "common/AtomicFile.h"
#include "common/RunTimeError.h"
#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QTextDocument>
#include <QTextTable>
#include <numeric>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// Rows that a page of a list may hold, as long as no page has shown it.
constexpr size_t kFirstGuess = 60;
/// Pages that are kept from counting them until they are drawn.
constexpr size_t kKeptPieces = 250;

double pixels(double millimetres, int resolution) {
    return millimetres * resolution / 25.4;
}

QFont reportFont(double points) {
    QFont font;
    font.setFamilies({u"Liberation Sans"_s, u"Arial"_s, u"Helvetica"_s});
    font.setPointSizeF(points);
    return font;
}

QPageLayout pageLayout(const QSizeF& size) {
    const bool landscape = size.width() > size.height();
    const QPageSize paper(landscape ? size.transposed() : size, QPageSize::Millimeter, {},
                          QPageSize::FuzzyMatch);
    QPageLayout layout(paper, landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF());
    layout.setMode(QPageLayout::FullPageMode);
    return layout;
}

/// Upright whatever its proportions, and never taken for a sheet of about the same size.
QPageLayout rollLayout(const QSizeF& size) {
    const QPageSize paper(size, QPageSize::Millimeter, u"Rolle"_s, QPageSize::ExactMatch);
    QPageLayout layout(paper, QPageLayout::Portrait, QMarginsF());
    layout.setMode(QPageLayout::FullPageMode);
    return layout;
}

/// Where a cell begins or ends.
QRectF boundsOf(const QTextCursor& cursor) {
    return cursor.document()->documentLayout()->blockBoundingRect(cursor.block());
}

/// The rows of the long list in a text of so many of them.
class ListRows {
  public:
    ListRows(const QTextDocument& text, size_t count) : m_count(int(count)) {
        for (QTextFrame* frame : text.rootFrame()->childFrames())
            if (auto* found = qobject_cast<QTextTable*>(frame))
                m_table = found;
        m_heads = m_table ? m_table->format().headerRowCount() : 0;
        m_perRow = m_table ? (m_table->rows() - m_heads) / m_count : 0;
    }

    double top(int row) const { return boundsOf(cell(row, 0).firstCursorPosition()).top(); }

    /// How many of the first rows end before `height`. Asking for bounds is dear: halving finds the rows near
    /// it.
    int endingBefore(double height) const {
        if (m_perRow == 0)
            return m_count;
        int behind = 0;
        for (int end = m_count; behind < end;) {
            const int middle = behind + (end - behind) / 2;
            if (top(middle) < height)
                behind = middle + 1;
            else
                end = middle;
        }
        return behind > 0 && bottom(behind - 1) > height ? behind - 1 : behind;
    }

  private:
    QTextTableCell cell(int row, int column) const {
        return m_table->cellAt(m_heads + row * m_perRow, column);
    }

    double bottom(int row) const {
        double bottom = 0;
        for (int line = 0; line < m_perRow; ++line)
            for (int column = 0; column < m_table->columns(); ++column) {
                const QTextTableCell last = m_table->cellAt(m_heads + row * m_perRow + line, column);
                bottom = qMax(bottom, boundsOf(last.lastCursorPosition()).bottom());
            }
        return bottom;
    }

    const QTextTable* m_table = nullptr;
    int m_count, m_heads = 0, m_perRow = 0;
};

/// The text of a report. What it names (pictures, style sheets) is read from the folder of the report files
/// only, wherever a name or a link leads.
class ReportText : public QTextDocument {
  public:
    explicit ReportText(const QString& folder) : m_folder(QDir(folder).canonicalPath()) {}

  protected:
    QVariant loadResource(int type, const QUrl& name) override {
        if (name.scheme() == u"data")
            return QTextDocument::loadResource(type, name);
        const QString place = QDir(m_folder).filePath(name.isLocalFile() ? name.toLocalFile() : name.path());
        const QFileInfo file(QFileInfo(place).canonicalFilePath());
        QFile content(file.filePath());
        QByteArray bytes;
        if (!m_folder.isEmpty() && file.filePath().startsWith(m_folder + u'/') && file.isFile() &&
            content.open(QIODevice::ReadOnly))
            bytes = content.readAll();
        else
            qWarning("A report names a file that the folder of the reports does not have: %s",
                     qPrintable(name.toString()));
        if (type != ImageResource)
            return bytes;
        // Given no picture, the toolkit would look for one by itself.
        const QImage picture = QImage::fromData(bytes);
        return picture.isNull() ? QImage(1, 1, QImage::Format_ARGB32_Premultiplied) : picture;
    }

  private:
    const QString m_folder;
};

} // namespace

void ReportDocument::setUp(QPagedPaintDevice& device) const {
    const ReportPage& page = m_report.page;
    if (!page.isRoll()) {
        device.setPageLayout(pageLayout(page.size));
        return;
    }
    const double text = layOut({}, device)->size().height() * 25.4 / device.logicalDpiY();
    device.setPageLayout(
        rollLayout({page.size.width(), std::ceil(text + page.margins.top() + page.margins.bottom())}));
}

std::shared_ptr<QTextDocument> ReportDocument::layOut(const Piece& piece, QPagedPaintDevice& device) const {
    const ReportPage& page = m_report.page;
    const auto toPixels = [&](double millimetres) { return pixels(millimetres, device.logicalDpiY()); };
    auto text = std::make_shared<ReportText>(m_report.folder);
    text->setUndoRedoEnabled(false);
    text->setDefaultFont(reportFont(10));
    text->setDocumentMargin(0);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    text->setDefaultTextOption(option);
    text->documentLayout()->setPaintDevice(&device);
    text->setHtml(m_report.rows.empty() ? m_report.html : m_report.part(piece.first, piece.count));
    const double width = toPixels(page.size.width() - page.margins.left() - page.margins.right());
    if (page.isRoll())
        text->setTextWidth(width);
    else
        text->setPageSize({width, toPixels(page.size.height() - page.margins.top() - page.margins.bottom())});
    return text;
}

ReportDocument::Piece ReportDocument::pieceFrom(size_t first, size_t& next, size_t count,
                                                QPagedPaintDevice& device) const {
    const size_t left = m_report.rows.size() - first;
    Piece piece{first, qMin(count, left)};
    piece.text = layOut(piece, device);
    piece.pages = m_report.page.isRoll() ? 1 : piece.text->pageCount();
    next = first + piece.count;
    if (piece.count == left && (left <= 1 || piece.pages == 1))
        return piece;
    const double page = piece.text->pageSize().height();
    const ListRows rows(*piece.text, piece.count);
    const int whole = rows.endingBefore(page);
    if (size_t(whole) == piece.count)
        return piece.count == left ? piece : pieceFrom(first, next, count * 2, device);
    if (whole == 0) // a row longer than a page
        return piece.count == 1 ? piece : pieceFrom(first, next, 1, device);
    piece.pages = 1;
    piece.height = qMin(page, rows.top(whole));
    next = first + size_t(whole);
    return piece;
}

std::vector<ReportDocument::Piece> ReportDocument::pieces(QPagedPaintDevice& device,
                                                          const Progress& progress) const {
    std::vector<Piece> result;
    size_t next = 0, guess = kFirstGuess;
    do {
        const size_t first = next;
        result.push_back(pieceFrom(first, next, guess, device));
        guess = (next - first) * 9 / 8 + 4;
        if (result.size() > kKeptPieces)
            result.back().text.reset();
        progress(qint64(next), 2 * qint64(m_report.rows.size()));
    } while (next < m_report.rows.size());
    return result;
}

bool ReportDocument::print(QPagedPaintDevice& device, const Progress& progress) const {
    const std::vector<Piece> parts = pieces(device, progress);
    const int pages = std::accumulate(parts.begin(), parts.end(), 0,
                                      [](int sum, const Piece& piece) { return sum + piece.pages; });
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    int number = 0;
    for (const Piece& piece : parts) {
        const auto text = piece.text ? piece.text : layOut(piece, device);
        for (int page = 0; page < piece.pages; ++page) {
            if (number > 0 && !device.newPage())
                return false;
            if (m_report.drawing)
                drawPicture(painter, device.logicalDpiY());
            else
                drawBody(painter, piece, *text, page, device.logicalDpiY());
            drawEdges(painter, ++number, pages, device.logicalDpiY());
        }
        progress(pages + number, 2 * qint64(pages));
    }
    return painter.end();
}

void ReportDocument::drawBody(QPainter& painter, const Piece& piece, const QTextDocument& text, int page,
                              int resolution) const {
    const QMarginsF& margins = m_report.page.margins;
    const QSizeF body(text.textWidth(),
                      m_report.page.isRoll() ? text.size().height() : text.pageSize().height());
    const double height = piece.height > 0 ? piece.height : body.height();
    const QRectF view(0, page * body.height(), body.width(), height);
    painter.save();
    painter.translate(pixels(margins.left(), resolution), pixels(margins.top(), resolution) - view.top());
    painter.setClipRect(view);
    // Black on white, whatever the colours of the screen.
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);
    // A line that begins where the page ends belongs to the next one.
    context.clip = view.adjusted(0, 0, 0, -1);
    text.documentLayout()->draw(&painter, context);
    painter.restore();
}

void ReportDocument::drawPicture(QPainter& painter, int resolution) const {
    constexpr int kUnitsPerInch = 96;
    const ReportPage& page = m_report.page;
    const QRectF body = QRectF(QPointF(), page.size).marginsRemoved(page.margins);
    painter.save();
    painter.translate(pixels(body.left(), resolution), pixels(body.top(), resolution));
    painter.scale(double(resolution) / kUnitsPerInch, double(resolution) / kUnitsPerInch);
    m_report.drawing(painter, {pixels(body.width(), kUnitsPerInch), pixels(body.height(), kUnitsPerInch)});
    painter.restore();
}

void ReportDocument::drawEdges(QPainter& painter, int page, int pages, int resolution) const {
    const ReportPage& paper = m_report.page;
    if (paper.isRoll())
        return;
    drawLine(painter, paper.header, paper.margins.top() / 2, page, pages, resolution);
    drawLine(painter, paper.footer, paper.size.height() - paper.margins.bottom() / 2, page, pages,
             resolution);
}

/// `middle` in millimetres from the top edge of the paper.
void ReportDocument::drawLine(QPainter& painter, const QString& line, double middle, int page, int pages,
                              int resolution) const {
    const ReportPage& paper = m_report.page;
    const double width = paper.size.width() - paper.margins.left() - paper.margins.right();
    const QRectF box(pixels(paper.margins.left(), resolution), pixels(middle - 2.5, resolution),
                     pixels(width, resolution), pixels(5, resolution));
    painter.setFont(reportFont(8));
    painter.setPen(Qt::black);
    const QString text = QString(line)
                             .replace(u"{Seite}"_s, QString::number(page))
                             .replace(u"{Seiten}"_s, QString::number(pages));
    const QStringList parts = text.split(u'|');
    const Qt::Alignment sides[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
    for (int i = 0; i < 3 && i < parts.size(); ++i)
        painter.drawText(box, int(sides[i] | Qt::AlignVCenter), parts[i].trimmed());
}

void saveAsPdf(const ReportDocument& report, const QString& path, const Progress& progress) {
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    QPdfWriter pdf(&file);
    pdf.setTitle(report.title());
    report.setUp(pdf);
    if (!report.print(pdf, progress))
        throw common::RunTimeError(common::kPlatformFailure, u"Der Bericht lässt sich nicht zeichnen."_s);
    common::writeFileAtomically(path, file.data());
}

} // namespace platform
