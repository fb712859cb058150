#include "store/SqliteCursor.h"
#include "common/RunTimeError.h"
#include "store/SqliteErrors.h"
#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

namespace store {

using namespace Qt::StringLiterals;

namespace {

void bindText(SQLite::Statement& statement, int position, const QString& text) {
    statement.bind(position, text.toStdString());
}

void bindPlain(SQLite::Statement& statement, int position, const common::Value& value) {
    if (value.isNull())
        statement.bind(position);
    else if (value.isText())
        bindText(statement, position, value.toText());
    else if (value.isInteger())
        statement.bind(position, int64_t(value.toLong()));
    else
        statement.bind(position, value.isDate() ? value.toSerial() : value.toDouble());
}

} // namespace

void bindAll(SQLite::Statement& statement, const std::vector<common::Value>& values) {
    for (size_t i = 0; i < values.size(); ++i)
        bindPlain(statement, int(i) + 1, values[i]);
}

void bindTyped(SQLite::Statement& statement, int position, ColumnType type, const common::Value& value) {
    const bool empty = value.isNull() || (value.isText() && value.toText().isEmpty());
    if (type == ColumnType::YesNo)
        return statement.bind(position, value.isTrue() ? -1 : 0);
    if (type == ColumnType::Any || type == ColumnType::Text) {
        const bool plain = value.isNull() || type == ColumnType::Any;
        return plain ? bindPlain(statement, position, value) : bindText(statement, position, value.toText());
    }
    if (empty)
        return statement.bind(position);
    if (type == ColumnType::Long)
        return statement.bind(position, int64_t(value.toLong()));
    statement.bind(position, type == ColumnType::Date ? value.toSerial() : value.toDouble());
}

SqliteCursor::SqliteCursor(SqliteEngine& engine, Translated translated, bool keyed) :
    m_engine(engine), m_translated(std::move(translated)), m_prepared(engine.take(m_translated.sql)) {
    bindAll(m_prepared->statement, m_translated.parameters);
    m_columns = m_prepared->columns;
    // The row key is the first of the hidden columns and shows as the last visible one.
    m_columns.resize(m_columns.size() - size_t(m_translated.hiddenColumns) + (keyed ? 1 : 0));
}

SqliteCursor::~SqliteCursor() {
    m_engine.giveBack(std::move(m_prepared));
}

/// Hidden columns are counted from the end of what is selected by name.
int SqliteCursor::keyColumn(int key) const {
    return key >= 0 ? key : int(m_prepared->columns.size()) - m_translated.hiddenColumns - key - 1;
}

bool SqliteCursor::tiesWithLast() const {
    if (m_translated.keyColumns.empty())
        return false;
    for (size_t i = 0; i < m_lastKeys.size(); ++i)
        if (value(keyColumn(m_translated.keyColumns[i])) != m_lastKeys[i])
            return false;
    return true;
}

void SqliteCursor::rememberKeys() {
    m_lastKeys.clear();
    for (const int key : m_translated.keyColumns)
        m_lastKeys.push_back(value(keyColumn(key)));
}

bool SqliteCursor::next() {
    const int top = m_translated.top;
    if (top == 0 || (top > 0 && m_delivered >= top && m_translated.keyColumns.empty()))
        return false;
    try {
        if (!m_prepared->statement.executeStep())
            return false;
    } catch (const SQLite::Exception& error) {
        throwStoreError(error, QString::fromUtf8(m_translated.sql));
    }
    if (top > 0 && m_delivered >= top && !tiesWithLast())
        return false;
    if (++m_delivered == top)
        rememberKeys();
    return true;
}

common::Value SqliteCursor::value(int column) const {
    const SQLite::Column cell = m_prepared->statement.getColumn(column);
    const int stored = cell.getType();
    const ColumnType type = m_prepared->columns[size_t(column)].type;
    if (type == ColumnType::YesNo)
        return cell.getInt() != 0 ? qint64(-1) : qint64(0);
    if (stored == SQLITE_NULL)
        return {};
    if (type == ColumnType::Date && stored != SQLITE_TEXT)
        return common::Serial{cell.getDouble()};
    if (stored == SQLITE_INTEGER && type != ColumnType::Double)
        return qint64(cell.getInt64());
    if (stored == SQLITE_TEXT || stored == SQLITE_BLOB)
        return QString::fromUtf8(cell.getText(), cell.getBytes());
    return cell.getDouble();
}

} // namespace store
