#pragma once
#include <QString>

namespace test {

/// A main database as the first programs made it, with one order of one customer; `madeLater` are statements
/// of the engine that change it before it is closed. An existing file is replaced.
void createFirstSchema(const QString& path, const char* madeLater = "");

} // namespace test
