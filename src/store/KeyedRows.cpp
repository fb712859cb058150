#include "store/KeyedRows.h"
#include <QHash>
#include <QSet>
#include <QStringList>
#include <limits>

namespace store {

using namespace Qt::StringLiterals;
using common::Value;

namespace {

/// Rows that are read with one statement: about as many as a window shows.
constexpr int kBlock = 32;
/// More than any window shows at once.
constexpr size_t kFirstKeys = size_t(8) * kBlock;
/// Stands for rows that went before their counter was fetched; no counter is negative.
constexpr qint64 kGone = -1;

} // namespace

KeyedRows::KeyedRows(Engine& engine, const PlainQuery& query, const QString& counter) :
    m_engine(engine), m_query(query), m_counter(counter), m_order(query.order),
    m_highest(std::numeric_limits<qint64>::max()) {
    m_columns = engine.query(blockQuery({0}), true)->columns();
    m_columns.pop_back();
    for (size_t i = 0; i < m_columns.size(); ++i)
        if (m_columns[i].name.compare(counter, Qt::CaseInsensitive) == 0)
            m_counterColumn = int(i);
    // To count what a condition chooses the store would read it all once more.
    const bool whole = m_query.condition.isEmpty();
    readKeys(whole ? kFirstKeys : std::numeric_limits<size_t>::max());
    if (!whole || m_rows.size() < kFirstKeys)
        return;
    m_total = int(ofTable(u"Count(*)"_s));
    m_highest = ofTable(u"Max(["_s + counter + u"])"_s);
}

QString KeyedRows::keyQuery() const {
    return PlainQuery{m_query.table, u'[' + m_counter + u']', m_query.condition, m_order}.sql();
}

/// The number of keys is rounded up, so that there are few shapes of this statement.
QString KeyedRows::blockQuery(const QList<qint64>& keys) const {
    qsizetype places = 1;
    while (places < keys.size())
        places *= 2;
    QStringList list;
    for (qsizetype i = 0; i < places; ++i)
        list.append(QString::number(keys[qMin(i, keys.size() - 1)]));
    const QString chosen = u'[' + m_counter + u"] IN ("_s + list.join(u',') + u')';
    return PlainQuery{m_query.table, m_query.columns, chosen, {}}.sql();
}

qint64 KeyedRows::ofTable(const QString& aggregate) const {
    const auto cursor =
        m_engine.query(u"SELECT "_s + aggregate + u" AS Wert FROM ["_s + m_query.table + u']', false);
    return cursor->next() ? cursor->value(0).toLong() : 0;
}

/// Adds rows that are not there yet, in their order, until there are so many.
void KeyedRows::readKeys(size_t most) {
    QSet<qint64> held;
    for (const Row& row : m_rows)
        held.insert(row.key);
    const auto cursor = m_engine.query(keyQuery(), false);
    while (m_rows.size() < most && cursor->next()) {
        const qint64 key = cursor->value(0).toLong();
        if (key <= m_highest && !held.contains(key))
            m_rows.push_back({key, {}});
    }
}

/// As many as were counted, with no key for those that are gone.
void KeyedRows::readOtherKeys() {
    readKeys(size_t(m_total));
    while (int(m_rows.size()) < m_total)
        m_rows.push_back({kGone, std::vector<Value>(m_columns.size())});
}

Value KeyedRows::value(int row, int column) {
    if (row >= int(m_rows.size()))
        readOtherKeys();
    if (column == m_counterColumn && m_rows[size_t(row)].key != kGone)
        return m_rows[size_t(row)].key;
    prefetch(row, row);
    return m_rows[size_t(row)].values[size_t(column)];
}

void KeyedRows::prefetch(int first, int last) {
    first = qMax(first, 0);
    last = qMin(last, count() - 1);
    if (last >= int(m_rows.size()))
        readOtherKeys();
    for (int row = first; row <= last; ++row)
        if (!holds(row))
            readBlock(row);
}

void KeyedRows::readBlock(int row) {
    const int from = row - row % kBlock;
    const int to = qMin(from + kBlock, int(m_rows.size()));
    QHash<qint64, Row*> wanted;
    for (int i = from; i < to; ++i)
        if (!holds(i))
            wanted.insert(m_rows[size_t(i)].key, &m_rows[size_t(i)]);
    const int count = int(m_columns.size());
    for (const auto cursor = m_engine.query(blockQuery(wanted.keys()), true); cursor->next();) {
        Row* const there = wanted.take(cursor->value(count).toLong());
        there->values.reserve(m_columns.size());
        for (int i = 0; i < count; ++i)
            there->values.push_back(cursor->value(i));
    }
    for (Row* gone : std::as_const(wanted)) {
        gone->values.resize(m_columns.size());
        if (m_counterColumn >= 0)
            gone->values[size_t(m_counterColumn)] = gone->key;
    }
}

void KeyedRows::sort(const QString& column, bool down) {
    if (column.isEmpty() && m_order == m_query.order)
        return;
    m_order = column.isEmpty() ? m_query.order : u'[' + column + (down ? u"] DESC"_s : u"]"_s);
    if (m_total == 0)
        return sortHeld();
    m_rows.clear();
    readKeys(kFirstKeys);
}

/// Rows that came since are left out.
void KeyedRows::sortHeld() {
    QHash<qint64, Row*> left;
    left.reserve(qsizetype(m_rows.size()));
    for (Row& row : m_rows)
        left.insert(row.key, &row);
    std::vector<Row> sorted;
    sorted.reserve(m_rows.size());
    for (const auto cursor = m_engine.query(keyQuery(), false); cursor->next();)
        if (Row* const row = left.take(cursor->value(0).toLong()))
            sorted.push_back(std::move(*row));
    for (Row& row : m_rows)
        if (left.contains(row.key))
            sorted.push_back(std::move(row));
    m_rows = std::move(sorted);
}

} // namespace store
