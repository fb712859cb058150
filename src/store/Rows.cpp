#include "store/Rows.h"

namespace store {

std::vector<common::Value> valuesOf(const Cursor& cursor, int count) {
    std::vector<common::Value> values;
    values.reserve(size_t(count));
    for (int i = 0; i < count; ++i)
        values.push_back(cursor.value(i));
    return values;
}

Rows readAll(Engine& engine, const QString& sql) {
    const std::unique_ptr<Cursor> cursor = engine.query(sql, false);
    Rows result{cursor->columns(), {}};
    while (cursor->next())
        result.rows.push_back(valuesOf(*cursor, int(result.columns.size())));
    return result;
}

} // namespace store
