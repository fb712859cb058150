#pragma once
#include <QString>

namespace orders {
class WorkingOrder;
}

namespace test {

/// Keys orders with their draft kept, books them, changes some and stores some as pre-orders, on and on, in
/// the installation given (made by `TestFirm`, its databases closed). The conditions name each order, so that
/// it is known again. What happens stands on standard output at once, one a line:
///
///     K <fingerprint> <conditions> <lines>   the draft with that fingerprint is about to be written
///     D <fingerprint> <conditions> <lines>   it is written
///     B <number> <lines> <total>             booked, or changed
///     V <number> <lines> <total>             stored as a pre-order
///     C                                      the screen is about to be cleaned
int bookUntilKilled(const QString& installation);

/// Of all the cells that a draft brings back.
QString fingerprint(const orders::WorkingOrder& order);

} // namespace test
