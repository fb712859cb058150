#pragma once
#include <QColor>
#include <QPalette>

/// Colours that can be read: the contrast of a text to its ground, from 1 to 21, as the accessibility
/// guidelines reckon it.
namespace platform {

/// What every text has at least.
constexpr double kReadable = 4.5;

double contrast(const QColor& one, const QColor& other);
/// The colour nearest to `color` that stands out readably from `ground`, and from `ground2` where one is
/// given.
QColor readable(const QColor& color, const QColor& ground, const QColor& ground2 = {});
/// A part of the way from one colour to the other.
QColor mixed(const QColor& from, const QColor& to, double part);
/// Ink of what is said in passing, such as an empty list's text: paler than other texts, and readable.
QColor quietInk(const QPalette& palette, const QColor& ground, const QColor& ground2 = {});

} // namespace platform
