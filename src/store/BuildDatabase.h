#pragma once
#include "store/Schema.h"
#include <functional>

namespace store {

class SqliteEngine;

/// Makes a database file with today's schema, whose rows `fill` writes. Until its end nobody needs the file
/// back after a crash: it is written without a journal, with the indexes behind the rows. Throws what
/// createDatabase and `fill` throw, and then leaves a file that is not whole.
void buildDatabase(const QString& path, const QString& password, Database database,
                   const std::function<void(SqliteEngine&)>& fill);

} // namespace store
