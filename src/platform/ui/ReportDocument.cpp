#include "platform/ui/ReportDocument.h"
#include "common/RunTimeError.h"
#include <QAbstractTextDocumentLayout>
#include <QFileInfo>
#include <QPainter>
#include <QPrinter>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

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

} // namespace

void ReportDocument::setUp(QPrinter& printer) const {
    const ReportPage& page = m_report.page;
    printer.setDocName(m_report.title);
    printer.setFullPage(true);
    if (!page.isRoll()) {
        printer.setPageLayout(pageLayout(page.size));
        return;
    }
    QTextDocument document;
    layOut(document, printer);
    const double text = document.size().height() * 25.4 / printer.resolution();
    printer.setPageLayout(
        rollLayout({page.size.width(), std::ceil(text + page.margins.top() + page.margins.bottom())}));
}

void ReportDocument::layOut(QTextDocument& document, QPrinter& printer) const {
    const ReportPage& page = m_report.page;
    const auto toPixels = [&](double millimetres) { return pixels(millimetres, printer.resolution()); };
    document.setDefaultFont(reportFont(10));
    document.setDocumentMargin(0);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document.setDefaultTextOption(option);
    document.documentLayout()->setPaintDevice(&printer);
    document.setHtml(m_report.html);
    const double width = toPixels(page.size.width() - page.margins.left() - page.margins.right());
    if (page.isRoll())
        document.setTextWidth(width);
    else
        document.setPageSize(
            {width, toPixels(page.size.height() - page.margins.top() - page.margins.bottom())});
}

bool ReportDocument::print(QPrinter& printer) const {
    QTextDocument document;
    layOut(document, printer);
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    const int pages = m_report.page.isRoll() ? 1 : document.pageCount();
    for (int page = 0; page < pages; ++page) {
        if (page > 0 && !printer.newPage())
            return false;
        drawPage(painter, document, page, printer.resolution());
    }
    return painter.end();
}

void ReportDocument::drawPage(QPainter& painter, QTextDocument& document, int page, int resolution) const {
    const QMarginsF& margins = m_report.page.margins;
    const QSizeF body(document.textWidth(),
                      m_report.page.isRoll() ? document.size().height() : document.pageSize().height());
    const QRectF view(0, page * body.height(), body.width(), body.height());
    painter.save();
    painter.translate(pixels(margins.left(), resolution), pixels(margins.top(), resolution) - view.top());
    painter.setClipRect(view);
    // Black on white, whatever the colours of the screen.
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);
    // A line that begins where the page ends belongs to the next one.
    context.clip = view.adjusted(0, 0, 0, -1);
    document.documentLayout()->draw(&painter, context);
    painter.restore();
    if (m_report.page.isRoll())
        return;
    const int pages = document.pageCount();
    drawLine(painter, m_report.page.header, margins.top() / 2, page + 1, pages, resolution);
    drawLine(painter, m_report.page.footer, m_report.page.size.height() - margins.bottom() / 2, page + 1,
             pages, resolution);
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

void saveAsPdf(const ReportDocument& report, const QString& path) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    report.setUp(printer);
    if (!report.print(printer))
        throw common::RunTimeError(
            common::kPlatformFailure,
            u"Die Datei \"%1\" lässt sich nicht schreiben."_s.arg(QFileInfo(path).fileName()), path);
}

} // namespace platform
