// Rows of large lists: fetched one by one as they are looked at.
#include "store/Recordset.h"
#include "store/RecordsetRow.h"
#include <QHash>
#include <QRegularExpression>
#include <algorithm>

namespace store {

using namespace Qt::StringLiterals;

namespace {

/// The counters that a query delivers, in its order.
template <typename Use> void forEachKey(Connection& connection, const QString& sql, Use use) {
    for (const auto cursor = connection.engine().query(sql, false); cursor->next();)
        use(cursor->value(0).toLong());
}

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
    m_from = u" FROM "_s + query.captured(2);
    m_where = query.captured(3);
    m_orderBy = query.captured(4);
    m_rowQuery = u"SELECT "_s + query.captured(1) + m_from + u" WHERE "_s + m_keyName + u" = "_s;
}

void Recordset::fetchKeys() {
    Engine& engine = m_connection->engine();
    m_columns = engine.query(m_rowQuery + u'0', false)->columns();
    forEachKey(*m_connection, u"SELECT "_s + m_keyName + m_from + u' ' + m_where + u' ' + m_orderBy,
               [&](qint64 key) {
                   m_order.push_back(int(m_rows.size()));
                   m_rows.push_back({{}, key, {}});
               });
}

Recordset::Row& Recordset::rowAt(int index) {
    Row& row = m_rows[size_t(index)];
    if (m_keyName.isEmpty() || !row.values.empty())
        return row;
    row.values.resize(m_columns.size());
    const auto cursor = m_connection->engine().query(m_rowQuery + QString::number(row.key), false);
    const bool there = cursor->next();
    for (size_t i = 0; i < m_columns.size(); ++i) {
        if (there)
            row.values[i] = cursor->value(int(i));
        else if (m_columns[i].name.compare(m_keyName, Qt::CaseInsensitive) == 0)
            row.values[i] = row.key;
    }
    return row;
}

/// Rows that came since are left out, rows that are gone stand last.
void Recordset::sortByStore(const QString& order) {
    columnIndex(order.split(u' ', Qt::SkipEmptyParts).front());
    QHash<qint64, int> left;
    left.reserve(qsizetype(m_rows.size()));
    for (size_t i = 0; i < m_rows.size(); ++i)
        left.insert(m_rows[i].key, int(i));
    m_order.clear();
    forEachKey(*m_connection, u"SELECT "_s + m_keyName + m_from + u' ' + m_where + u" ORDER BY "_s + order,
               [&](qint64 key) {
                   if (const auto found = left.find(key); found != left.end()) {
                       m_order.push_back(*found);
                       left.erase(found);
                   }
               });
    const size_t known = m_order.size();
    m_order.insert(m_order.end(), left.begin(), left.end());
    std::sort(m_order.begin() + qsizetype(known), m_order.end());
}

} // namespace store
