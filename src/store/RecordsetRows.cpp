// Rows of large lists: fetched one by one as they are looked at.
#include "store/Recordset.h"
#include "store/RecordsetRow.h"
#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>
#include <limits>

namespace store {

using namespace Qt::StringLiterals;
using common::Value;

namespace {

/// More rows than any window shows at once.
constexpr int kFirstKeys = 250;

} // namespace

void Recordset::planSingleRows() {
    // Brackets, names given by AS and the words below may stand for rows that are no table's own.
    static const QRegularExpression plain(
        u"^\\s*SELECT\\s+([\\w ,*]+?)\\s+FROM\\s+(\\w+)\\s*(\\bWHERE\\b.*?)?(\\bORDER\\s+BY\\b[\\w ,]+)?;?\\s*$"_s,
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption |
            QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression others(u"\\b(TOP|DISTINCT|AS|GROUP|UNION|HAVING)\\b"_s,
                                           QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch query = plain.match(m_source);
    if (!query.hasMatch() || others.match(m_source).hasMatch())
        return;
    for (const Column& column : m_connection->engine().columnsOf(query.captured(2)))
        if (column.counter)
            m_keyName = column.name;
    m_list = query.captured(1);
    m_from = u" FROM "_s + query.captured(2);
    m_where = query.captured(3);
    m_orderBy = query.captured(4);
}

QString Recordset::keyQuery(const QString& orderBy) const {
    return u"SELECT "_s + m_keyName + m_from + u' ' + m_where + u' ' + orderBy;
}

QString Recordset::rowQuery(qint64 key) const {
    return u"SELECT "_s + m_list + m_from + u" WHERE "_s + m_keyName + u" = "_s + QString::number(key);
}

qint64 Recordset::ofTable(const QString& aggregate) const {
    const auto cursor =
        m_connection->engine().query(u"SELECT "_s + aggregate + u" AS Wert"_s + m_from, false);
    return cursor->next() ? cursor->value(0).toLong() : 0;
}

void Recordset::fetchKeys() {
    m_columns = m_connection->engine().query(rowQuery(0), false)->columns();
    m_highest = std::numeric_limits<qint64>::max();
    m_keyOrder = m_orderBy;
    // To count what a condition chooses the store would read it all once more.
    if (!m_where.isEmpty())
        return readKeys(std::numeric_limits<int>::max());
    readKeys(kFirstKeys);
    if (m_order.size() < kFirstKeys)
        return;
    m_total = int(ofTable(u"Count(*)"_s));
    m_highest = ofTable(u"Max("_s + m_keyName + u')');
}

/// Adds rows that are not held yet, in the order of m_rows, until there are so many.
void Recordset::readKeys(int most) {
    QSet<qint64> held;
    for (const Row& row : m_rows)
        held.insert(row.key);
    const auto cursor = m_connection->engine().query(keyQuery(m_keyOrder), false);
    while (int(m_rows.size()) < most && cursor->next()) {
        const qint64 key = cursor->value(0).toLong();
        if (key > m_highest || held.contains(key))
            continue;
        m_order.push_back(int(m_rows.size()));
        m_rows.push_back({{}, key, {}});
    }
}

void Recordset::fetchOtherKeys() {
    readKeys(m_total);
    // As many as were told, with no key for those that are gone.
    while (int(m_rows.size()) < m_total) {
        m_order.push_back(int(m_rows.size()));
        m_rows.push_back({std::vector<Value>(m_columns.size()), -qint64(m_rows.size()), {}});
    }
}

Recordset::Row& Recordset::rowAt(int position) {
    if (position >= int(m_order.size()))
        fetchOtherKeys();
    Row& row = m_rows[size_t(m_order[size_t(position)])];
    if (m_keyName.isEmpty() || !row.values.empty())
        return row;
    row.values.resize(m_columns.size());
    const auto cursor = m_connection->engine().query(rowQuery(row.key), false);
    const bool there = cursor->next();
    for (size_t i = 0; i < m_columns.size(); ++i) {
        if (there)
            row.values[i] = cursor->value(int(i));
        else if (m_columns[i].name.compare(m_keyName, Qt::CaseInsensitive) == 0)
            row.values[i] = row.key;
    }
    return row;
}

/// Rows that came since are left out, rows that are gone stand last. Of a whole table only the first rows are
/// put in order.
void Recordset::sortByStore(const QString& orderBy) {
    if (m_total > 0) {
        m_rows.clear();
        m_order.clear();
        m_keyOrder = orderBy;
        return readKeys(kFirstKeys);
    }
    QHash<qint64, int> left;
    left.reserve(qsizetype(m_rows.size()));
    for (size_t i = 0; i < m_rows.size(); ++i)
        left.insert(m_rows[i].key, int(i));
    m_order.clear();
    for (const auto cursor = m_connection->engine().query(keyQuery(orderBy), false); cursor->next();) {
        if (const auto found = left.find(cursor->value(0).toLong()); found != left.end()) {
            m_order.push_back(*found);
            left.erase(found);
        }
    }
    const size_t known = m_order.size();
    m_order.insert(m_order.end(), left.begin(), left.end());
    std::sort(m_order.begin() + qsizetype(known), m_order.end());
}

/// For what needs the values of all rows.
void Recordset::fetchAllAgain() {
    for (QString* part : {&m_narrowed, &m_keyName})
        part->clear();
    m_total = 0;
    m_rows.clear();
    m_order.clear();
    fetchAll();
}

} // namespace store
