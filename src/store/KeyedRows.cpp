#include "store/KeyedRows.h"
#include "store/Collation.h"
#include "store/Rows.h"
#include <QElapsedTimer>
#include <QHash>
#include <QSet>
#include <QStringList>
#include <algorithm>
#include <limits>

namespace store {

using namespace Qt::StringLiterals;
using common::Value;

namespace {

/// Rows that are read with one statement: about as many as a window shows.
constexpr int kBlock = 32;
/// More than any window shows at once.
constexpr size_t kFirstKeys = size_t(8) * kBlock;
/// Milliseconds.
constexpr int kPromptly = 50;
/// Stands for rows that went before their key was fetched; no key is negative.
constexpr qint64 kGone = -1;

} // namespace

KeyedRows::KeyedRows(Engine& engine, const PlainQuery& query, const QString& key) :
    m_engine(&engine), m_query(query), m_key(key), m_order(query.order),
    m_highest(std::numeric_limits<qint64>::max()) {
    takeColumns(*engine.query(blockQuery({0}), false));
    // To count what a condition chooses the store would read it all once more.
    m_firstWillDo = m_query.condition.isEmpty();
    addRows(keysInOrder(engine, m_order));
    m_firstWillDo = m_firstWillDo && m_rows.size() == kFirstKeys;
    if (!m_firstWillDo)
        return;
    const QString from = u" FROM ["_s + m_query.table + u"])"_s;
    const auto cursor = m_engine->query(u"SELECT (SELECT Count(*)"_s + from + u" AS Anzahl, (SELECT Max(["_s +
                                            key + u"])"_s + from + u" AS Hoechster"_s,
                                        false);
    cursor->next();
    m_total = int(cursor->value(0).toLong());
    m_highest = cursor->value(1).toLong();
}

void KeyedRows::takeColumns(const Cursor& block) {
    m_columns = block.columns();
    m_columns.pop_back();
    for (size_t i = 0; i < m_columns.size(); ++i)
        if (m_columns[i].name.compare(m_key, Qt::CaseInsensitive) == 0)
            m_keyColumn = int(i);
}

/// Without an order the rows come as the engine finds them, which depends on the columns that it needs: they
/// are named, though a key that is there is all that it reads.
QString KeyedRows::keyQuery(const QString& order) const {
    QStringList names{u'[' + m_key + u']'};
    if (order.isEmpty())
        for (const Column& column : m_columns)
            names.append(u'[' + column.name + u']');
    const QString key = names.size() > 1 ? u"coalesce("_s + names.join(u',') + u')' : names.first();
    return PlainQuery{m_query.table, key, m_query.condition, order}.sql();
}

/// The number of keys is rounded up, so that there are few shapes of this statement.
QString KeyedRows::blockQuery(const QList<qint64>& keys) const {
    qsizetype places = 1;
    while (places < keys.size())
        places *= 2;
    QStringList list;
    for (qsizetype i = 0; i < places; ++i)
        list.append(QString::number(keys[qMin(i, keys.size() - 1)]));
    const QString chosen = u'[' + m_key + u"] IN ("_s + list.join(u',') + u')';
    return PlainQuery{m_query.table, m_query.columns + u", ["_s + m_key + u']', chosen, {}}.sql();
}

std::vector<qint64> KeyedRows::keysInOrder(Engine& engine, const QString& order) const {
    std::vector<qint64> keys;
    QElapsedTimer time;
    time.start();
    // What had to be put in order at length is not read twice.
    const auto promptly = [&] { return time.elapsed() < kPromptly; };
    const auto cursor = engine.query(keyQuery(order), false);
    while (!(m_firstWillDo && keys.size() == kFirstKeys && promptly()) && cursor->next())
        keys.push_back(cursor->value(0).toLong());
    return keys;
}

/// Adds what is not there yet.
void KeyedRows::addRows(const std::vector<qint64>& keys) {
    QSet<qint64> held;
    for (const Row& row : m_rows)
        held.insert(row.key);
    m_rows.reserve(m_rows.size() + keys.size());
    for (const qint64 key : keys)
        if (key <= m_highest && !held.contains(key))
            m_rows.push_back({key, {}});
}

/// As many as were counted, with no key for those that are gone.
void KeyedRows::readOtherKeys() {
    std::vector<qint64> keys;
    for (const auto cursor = m_engine->query(keyQuery(m_order), false); cursor->next();)
        keys.push_back(cursor->value(0).toLong());
    addRows(keys);
    m_rows.resize(size_t(m_total), {kGone, std::vector<Value>(m_columns.size())});
}

Value KeyedRows::value(int row, int column) {
    if (row >= int(m_rows.size()))
        readOtherKeys();
    if (column == m_keyColumn && m_rows[size_t(row)].key != kGone)
        return m_rows[size_t(row)].key;
    prefetch(row, row);
    return m_rows[size_t(row)].values[size_t(column)];
}

void KeyedRows::prefetch(int first, int last) {
    first = qMax(first, 0);
    last = qMin(last, count() - 1);
    if (last >= int(m_rows.size()))
        readOtherKeys();
    while (first <= last && holds(first))
        ++first;
    while (last >= first && holds(last))
        --last;
    if (first <= last)
        readBlocks(first, last);
}

/// With one statement, also where they lie across the bounds of a block.
void KeyedRows::readBlocks(int first, int last) {
    const int from = first - first % kBlock;
    const int to = qMin(last - last % kBlock + kBlock, int(m_rows.size()));
    QHash<qint64, Row*> wanted;
    for (int i = from; i < to; ++i)
        if (!holds(i))
            wanted.insert(m_rows[size_t(i)].key, &m_rows[size_t(i)]);
    const int count = int(m_columns.size());
    for (const auto cursor = m_engine->query(blockQuery(wanted.keys()), false); cursor->next();)
        if (Row* const there = wanted.take(cursor->value(count).toLong()))
            there->values = valuesOf(*cursor, count);
    for (Row* gone : std::as_const(wanted)) {
        gone->values.resize(m_columns.size());
        if (m_keyColumn >= 0)
            gone->values[size_t(m_keyColumn)] = gone->key;
    }
}

void KeyedRows::sort(const QString& column, bool down) {
    const QString order = orderBy(column, down);
    arrange(order, keysInOrder(*m_engine, order));
}

/// A text that a view puts together has no collation of its own. Numbers are left alone, for their indexes.
QString KeyedRows::orderBy(const QString& name, bool down) const {
    if (name.isEmpty())
        return m_query.order;
    const auto column = std::find_if(m_columns.begin(), m_columns.end(), [&](const Column& one) {
        return one.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    const bool isText = column->type == ColumnType::Text || column->type == ColumnType::Any;
    return u'[' + name + u']' + (isText ? u" COLLATE "_s + QString::fromLatin1(kCollationName) : QString()) +
           (down ? u" DESC"_s : QString());
}

void KeyedRows::arrange(const QString& order, const std::vector<qint64>& keys) {
    m_order = order;
    if (!m_firstWillDo)
        return sortHeld(keys);
    m_rows.clear();
    addRows(keys);
    if (keys.size() > kFirstKeys)
        m_rows.resize(size_t(m_total), {kGone, std::vector<Value>(m_columns.size())});
}

/// Rows that came since are left out.
void KeyedRows::sortHeld(const std::vector<qint64>& keys) {
    QHash<qint64, Row*> left;
    left.reserve(qsizetype(m_rows.size()));
    for (Row& row : m_rows)
        left.insert(row.key, &row);
    std::vector<Row> sorted;
    sorted.reserve(m_rows.size());
    for (const qint64 key : keys)
        if (Row* const row = left.take(key))
            sorted.push_back(std::move(*row));
    for (Row& row : m_rows)
        if (left.contains(row.key))
            sorted.push_back(std::move(row));
    m_rows = std::move(sorted);
}

} // namespace store
