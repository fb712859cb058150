#include "masterdata/frmProdukteBild.h"
#include <QImageReader>

using namespace Qt::StringLiterals;

namespace {

/// A stored file may be of any size: no more of it is decoded than a picture may have.
QImage read(const QString& path, int limit) {
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    if (reader.size().width() > limit || reader.size().height() > limit)
        reader.setScaledSize(reader.size().scaled(limit, limit, Qt::KeepAspectRatio));
    return reader.read();
}

bool isPictureName(const QString& path) {
    const QString extension = masterdata::extensionOf(path).toLower();
    return extension == u"gif" || extension == u"jpg";
}

} // namespace

frmProdukteBild::frmProdukteBild(QWidget* parent) : QLabel(parent) {
    setAlignment(Qt::AlignCenter);
    setFrameShape(StyledPanel);
    // The box has its size from the layout, whatever stands in it.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
}

void frmProdukteBild::showStored(const QString& fileName) {
    m_picture = {fileName, false};
    m_image = fileName.isEmpty()
                  ? QImage()
                  : read(masterdata::storedPicture(m_size, fileName), masterdata::maxPixels(m_size));
    display();
}

frmProdukteBild::Choice frmProdukteBild::choose(const QString& path) {
    // Measured before it is decoded: what is too big never costs its memory.
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    const QByteArray format = reader.format();
    const QSize size = reader.size();
    if (!isPictureName(path) || (format != "gif" && format != "jpeg") || size.isEmpty())
        return Choice::NoPicture;
    const int limit = masterdata::maxPixels(m_size);
    if (size.width() > limit || size.height() > limit)
        return Choice::TooBig;
    const QImage image = reader.read();
    if (image.isNull())
        return Choice::NoPicture;
    m_picture = {masterdata::stagePicture(m_size, path), true};
    m_image = image;
    display();
    return Choice::Taken;
}

void frmProdukteBild::remove() {
    m_picture = {QString(), true};
    m_image = {};
    display();
}

void frmProdukteBild::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    display();
}

void frmProdukteBild::display() {
    const QSize box = contentsRect().size();
    const bool larger = m_image.width() > box.width() || m_image.height() > box.height();
    setPixmap(QPixmap::fromImage(larger ? m_image.scaled(box, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                                        : m_image));
}
