#pragma once
#include <QString>

namespace test {

/// The whole program at a station, without a display: takes calls, keys orders and books them by keys, on and
/// on, in the installation given. What a draft brings back is booked too. The conditions name each order, so
/// that it is known again. What happens stands on standard output at once, one a line:
///
///     K <conditions> <lines>                      about to be booked
///     B <number> <conditions> <repeats> <waits>   acknowledged; transactions done anew and waits behind a
///                                                 dialog so far
///     ? <text>                                    a box that was not expected
int runStation(const QString& installation);

} // namespace test
