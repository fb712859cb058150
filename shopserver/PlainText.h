#pragma once
#include <QString>

namespace shop {

/// Control characters become blanks, but for line ends.
QString withoutControls(QString text);
/// So too, and every line ends with a line feed.
QString plainLines(QString text);

} // namespace shop
