#pragma once
#include <QString>

namespace test {

/// Books orders, changes some of them and stores some as pre-orders, on and on, in the installation given.
/// Every order that the store has acknowledged is written to standard output as "<number> <lines> <total>",
/// one a line, at once; the line of a pre-order has a "V" before its number. `TestFirm` made the
/// installation; its databases are closed.
int bookUntilKilled(const QString& installation);

} // namespace test
