#include "maintenance/frmHandbuchBilder.h"
#include <QImageReader>
#include <QPaintDevice>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>

QSizeF frmHandbuchBilder::intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) {
    const QString name = format.toImageFormat().name();
    if (!m_sizes.contains(name))
        m_sizes.insert(name, QImageReader(m_folder + u'/' + name).size().expandedTo({0, 0}));
    const QSizeF size = m_sizes.value(name);
    const QTextBlock block = document->findBlock(position);
    const int steps =
        block.blockFormat().indent() + (block.textList() ? block.textList()->format().indent() : 0);
    const double room =
        document->textWidth() - 2 * document->documentMargin() - steps * document->indentWidth();
    return size.width() > room && room > 0 ? size * (room / size.width()) : size;
}

void frmHandbuchBilder::drawObject(QPainter* painter, const QRectF& room, QTextDocument*, int,
                                   const QTextFormat& format) {
    const QSize pixels = (room.size() * painter->device()->devicePixelRatioF()).toSize();
    painter->drawImage(room, scaled(format.toImageFormat().name(), pixels));
}

const QImage& frmHandbuchBilder::scaled(const QString& name, const QSize& pixels) {
    QImage& image = m_scaled[name];
    if (image.size() != pixels && !pixels.isEmpty())
        image =
            QImage(m_folder + u'/' + name).scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return image;
}
