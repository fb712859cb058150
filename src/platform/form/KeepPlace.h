#pragma once
#include <QWidget>

namespace platform {

/// Hidden, the widget still has its place: what stands beside it does not move.
inline void keepPlaceWhenHidden(QWidget& widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

} // namespace platform
