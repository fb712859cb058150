#include "maintenance/frmHelpPicture.h"
#include <QImage>
#include <QPainter>

frmHelpPicture::frmHelpPicture(QString file, QWidget* parent) : QWidget(parent), m_file(std::move(file)) {
    setMinimumSize(320, 240);
}

void frmHelpPicture::paintEvent(QPaintEvent*) {
    const QSize room = size() * devicePixelRatioF();
    if (room != m_room) {
        m_room = room;
        const QImage picture(m_file);
        if (picture.isNull())
            return;
        const QSize largest = picture.size() * devicePixelRatioF();
        m_shown = QPixmap::fromImage(
            picture.scaled(largest.boundedTo(picture.size().scaled(room, Qt::KeepAspectRatio)),
                           Qt::KeepAspectRatio, Qt::SmoothTransformation));
        m_shown.setDevicePixelRatio(devicePixelRatioF());
    }
    if (m_shown.isNull())
        return;
    const QSizeF shown = m_shown.deviceIndependentSize();
    QPainter(this).drawPixmap(QPointF((width() - shown.width()) / 2, 0), m_shown);
}
