#include "store/FetchedRows.h"
#include "store/Collation.h"
#include <algorithm>

namespace store {

using common::Value;

namespace {

int compareValues(const Value& a, const Value& b) {
    if (a.isNull() || b.isNull())
        return int(!a.isNull()) - int(!b.isNull());
    if (a.isText() || b.isText())
        return compareTexts(a.toText(), b.toText());
    const double x = a.toDouble();
    const double y = b.toDouble();
    return x < y ? -1 : x > y ? 1 : 0;
}

} // namespace

FetchedRows::FetchedRows(Engine& engine, const QString& sql, bool keyed) {
    const std::unique_ptr<Cursor> cursor = engine.query(sql, keyed);
    m_columns = cursor->columns();
    if (keyed)
        m_columns.pop_back();
    const int count = int(m_columns.size());
    while (cursor->next())
        append(keyed ? cursor->value(count).toLong() : 0, valuesOf(*cursor, count));
}

FetchedRows::FetchedRows(Rows rows) : m_columns(std::move(rows.columns)) {
    if (!rows.rows.empty())
        m_columns.resize(rows.rows.front().size());
    for (std::vector<Value>& values : rows.rows)
        append(0, std::move(values));
}

void FetchedRows::append(qint64 key, std::vector<Value> values) {
    m_rows.push_back({key, int(m_rows.size()), std::move(values)});
}

void FetchedRows::sort(const QString& name, bool down) {
    const auto found = std::find_if(m_columns.begin(), m_columns.end(), [&](const Column& column) {
        return column.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    if (found == m_columns.end())
        return std::sort(m_rows.begin(), m_rows.end(),
                         [](const Row& a, const Row& b) { return a.place < b.place; });
    const size_t column = size_t(found - m_columns.begin());
    std::stable_sort(m_rows.begin(), m_rows.end(), [&](const Row& a, const Row& b) {
        const int c = compareValues(a.values[column], b.values[column]);
        return down ? c > 0 : c < 0;
    });
}

} // namespace store
