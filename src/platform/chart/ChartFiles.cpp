#include "platform/chart/ChartFiles.h"
#include "common/AtomicFile.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "common/RunTimeError.h"
#include "platform/Dialogs.h"
#include "platform/chart/ChartPicture.h"
#include "platform/report/ListPrinting.h"
#include "platform/report/ReportTemplate.h"
#include "store/FirmName.h"
#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr QSize kFileSize(1600, 900);
/// Of the letters, so that they are not lost in so large a picture.
constexpr double kFileScale = 1.6;

QString tr(const char* text) {
    return QCoreApplication::translate("ChartView", text);
}

void drawOnPaper(const Chart& chart, QPainter& painter, const QSizeF& size) {
    ChartPicture(chart.arranged(), ChartLook::onPaper(), size).draw(painter);
}

void drawForFile(const Chart& chart, QPaintDevice& device) {
    QPainter painter(&device);
    painter.scale(kFileScale, kFileScale);
    drawOnPaper(chart, painter, QSizeF(kFileSize) / kFileScale);
}

FilledReport reportOf(const Chart& chart) {
    FilledReport report{.title = chart.title, .html = {}, .page = {{297, 210}, {15, 20, 15, 20}, {}, {}}};
    report.page.header =
        QStringList{store::firmName(), chart.title, common::formatDate(common::clock::now(), u"DD/MM/YYYY")}
            .join(u'|');
    report.page.footer = u"||Seite {Seite} von {Seiten}"_s;
    report.drawing = [chart](QPainter& painter, const QSizeF& size) { drawOnPaper(chart, painter, size); };
    return report;
}

} // namespace

QByteArray pngOf(const Chart& chart) {
    QImage image(kFileSize, QImage::Format_RGB32);
    image.fill(Qt::white);
    drawForFile(chart, image);
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    image.save(&file, "PNG");
    return file.data();
}

QByteArray svgOf(const Chart& chart) {
    QBuffer file;
    QSvgGenerator svg;
    svg.setOutputDevice(&file);
    svg.setSize(kFileSize);
    svg.setViewBox(QRect(QPoint(), kFileSize));
    svg.setTitle(chart.title);
    drawForFile(chart, svg);
    return file.data();
}

void saveChart(const Chart& chart, Dialogs& dialogs) {
    const QString title = tr("Bild speichern");
    const QString path = dialogs.SaveFile(title, chart.title, {u"png"_s, u"svg"_s});
    if (path.isEmpty())
        return;
    const bool asSvg = QFileInfo(path).suffix().toLower() == u"svg";
    try {
        common::writeFileAtomically(path, asSvg ? svgOf(chart) : pngOf(chart));
    } catch (const common::RunTimeError& error) {
        dialogs.MsgBox(error.sentence(), kOk + kStop, title);
    }
}

void printChart(const Chart& chart, const Services& services) {
    previewForPrinter(services, {.ReportFileName = {},
                                 .DataFile = {},
                                 .WindowTitle = chart.title,
                                 .firm = store::firmName(),
                                 .filled = std::make_shared<const FilledReport>(reportOf(chart)),
                                 .orientation = ReportJob::kLandscape});
}

} // namespace platform
