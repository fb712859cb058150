#pragma once
#include <QColor>
#include <QPalette>

namespace platform {

/// Grey of cells that cannot be edited and of shaded rows: 0xE0E0E0 on white, its counterpart on a dark base.
inline QColor quietGrey(const QPalette& palette) {
    const QColor base = palette.color(QPalette::Base);
    const QColor ink = palette.color(QPalette::Text);
    const auto mix = [](int from, int to) { return from + (to - from) * 31 / 255; };
    return QColor(mix(base.red(), ink.red()), mix(base.green(), ink.green()), mix(base.blue(), ink.blue()));
}

/// Widths are given in twips, 15 to the pixel.
constexpr int twipsToPixels(int twips) {
    return twips / 15;
}

} // namespace platform
