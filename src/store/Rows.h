#pragma once
#include "store/Engine.h"

namespace store {

/// Rows of a query, all in memory.
struct Rows {
    std::vector<Column> columns;
    std::vector<std::vector<common::Value>> rows;
};

/// The first `count` values of the cursor's row.
std::vector<common::Value> valuesOf(const Cursor& cursor, int count);
/// Runs the query to its end.
Rows readAll(Engine& engine, const QString& sql);

} // namespace store
