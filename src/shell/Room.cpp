#include "shell/Room.h"
#include "platform/form/Contrast.h"
#include <QEvent>
#include <QMdiSubWindow>
#include <QPainter>

namespace shell {
Room::Room(QWidget* parent) : QMdiArea(parent) {
    takeBackground();
}

void Room::setHints(std::vector<Hint> hints) {
    m_hints = std::move(hints);
    viewport()->update();
}

void Room::takeBackground() {
    setBackground(palette().color(QPalette::Window).darker(106));
}

void Room::changeEvent(QEvent* event) {
    QMdiArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        takeBackground();
}

void Room::paintEvent(QPaintEvent* event) {
    QMdiArea::paintEvent(event);
    if (!subWindowList().isEmpty())
        return;
    QPainter painter(viewport());
    QFont font = this->font();
    font.setPointSizeF(font.pointSizeF() * 1.4);
    painter.setFont(font);
    painter.setPen(platform::quietInk(palette(), background().color()));
    const int line = painter.fontMetrics().height() * 2;
    const QPoint middle = viewport()->rect().center();
    int y = middle.y() - line * int(m_hints.size()) / 2;
    for (const Hint& hint : m_hints) {
        painter.drawText(QRect(middle.x() - 420, y, 390, line), Qt::AlignRight | Qt::AlignVCenter,
                         hint.key.toString(QKeySequence::NativeText));
        painter.drawText(QRect(middle.x(), y, 420, line), Qt::AlignLeft | Qt::AlignVCenter, hint.leadsTo);
        y += line;
    }
}

} // namespace shell
