#pragma once
#include <QString>

namespace test {

/// Books orders and changes some of them, on and on, in the installation given. Every order that the store
/// has acknowledged is written to standard output as "<number> <lines> <total>", one a line, at once.
/// `TestFirm` made the installation; its databases are closed.
int bookUntilKilled(const QString& installation);

} // namespace test
