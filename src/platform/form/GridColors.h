#pragma once
#include "platform/form/Contrast.h"

namespace platform {

/// Grey of cells that cannot be edited and of shaded rows: 0xE0E0E0 on white, its counterpart on a dark base.
inline QColor quietGrey(const QPalette& palette) {
    return mixed(palette.color(QPalette::Base), palette.color(QPalette::Text), 31 / 255.0);
}

/// Ground of a cell whose edit was refused: a red, as strong on a dark base as on a light one.
inline QColor refusedTint(const QPalette& palette) {
    return mixed(palette.color(QPalette::Base), QColor(0xd0, 0x20, 0x20), 0.5);
}

/// Widths are given in twips, 15 to the pixel.
constexpr int twipsToPixels(int twips) {
    return twips / 15;
}

} // namespace platform
