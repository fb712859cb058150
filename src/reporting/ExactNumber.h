#pragma once
#include <QString>

/// A number in a statement that reads back as the very same: a bound that an order falls on exactly counts,
/// which the plain text of a number, with its 15 digits, would miss.
inline QString exactNumber(double number) {
    return QString::number(number, 'g', 17);
}
