#include "shell/Room.h"
#include <QEvent>
#include <QMdiSubWindow>
#include <QPainter>

namespace shell {
namespace {

struct Hint {
    const char* key;
    const char* leadsTo;
};

constexpr Hint kHints[] = {
    {QT_TRANSLATE_NOOP("Room", "F9"), QT_TRANSLATE_NOOP("Room", "Wartenden Anruf annehmen")},
    {QT_TRANSLATE_NOOP("Room", "Ctrl+B"), QT_TRANSLATE_NOOP("Room", "Auftragserfassung")},
    {QT_TRANSLATE_NOOP("Room", "Ctrl+N"), QT_TRANSLATE_NOOP("Room", "Anrufer Liste")},
    {QT_TRANSLATE_NOOP("Room", "Ctrl+K"), QT_TRANSLATE_NOOP("Room", "Kunden")},
};

} // namespace

Room::Room(QWidget* parent) : QMdiArea(parent) {
    takeBackground();
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
    QColor ink = palette().color(QPalette::WindowText);
    ink.setAlpha(130);
    painter.setPen(ink);
    const int line = painter.fontMetrics().height() * 2;
    const QPoint middle = viewport()->rect().center();
    int y = middle.y() - line * int(std::size(kHints)) / 2;
    for (const Hint& hint : kHints) {
        painter.drawText(QRect(middle.x() - 420, y, 390, line), Qt::AlignRight | Qt::AlignVCenter,
                         tr(hint.key));
        painter.drawText(QRect(middle.x(), y, 420, line), Qt::AlignLeft | Qt::AlignVCenter, tr(hint.leadsTo));
        y += line;
    }
}

} // namespace shell
