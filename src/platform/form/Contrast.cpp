#include "platform/form/Contrast.h"
#include <algorithm>
#include <cmath>

namespace platform {
namespace {

double linear(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

} // namespace

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor mixed(const QColor& from, const QColor& to, double part) {
    const auto mix = [part](int a, int b) { return a + int(std::lround((b - a) * part)); };
    return QColor(mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue()));
}

QColor readable(const QColor& color, const QColor& ground, const QColor& ground2) {
    const QColor& other = ground2.isValid() ? ground2 : ground;
    const bool darkGround = contrast(ground, Qt::white) > contrast(ground, Qt::black);
    constexpr int kSteps = 50;
    QColor found = color;
    for (int step = 1;
         step <= kSteps && std::min(contrast(found, ground), contrast(found, other)) < kReadable; ++step)
        found = mixed(color, darkGround ? Qt::white : Qt::black, double(step) / kSteps);
    return found;
}

QColor quietInk(const QPalette& palette, const QColor& ground, const QColor& ground2) {
    return readable(mixed(palette.color(QPalette::Active, QPalette::Text), ground, 0.5), ground, ground2);
}

} // namespace platform
