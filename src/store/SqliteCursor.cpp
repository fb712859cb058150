#include "store/SqliteCursor.h"
#include "common/RunTimeError.h"
#include "store/SqliteErrors.h"
#include "store/StoredValue.h"
#include <SQLiteCpp/SQLiteCpp.h>
#include <optional>
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

/// Digits alone, few enough for a whole number: how nearly every key and quantity is written.
std::optional<int64_t> plainNumber(QStringView text) {
    constexpr qsizetype kSafeDigits = 18;
    if (text.size() > kSafeDigits)
        return std::nullopt;
    int64_t number = 0;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9')
            return std::nullopt;
        number = number * 10 + (c.unicode() - u'0');
    }
    return number;
}

void bindNumber(SQLite::Statement& statement, int position, QStringView text, bool negative) {
    if (const auto number = plainNumber(text))
        return statement.bind(position, negative ? -*number : *number);
    const QString number = (negative ? u"-"_s : u""_s) + text.toString();
    bool whole = false;
    const qint64 large = number.toLongLong(&whole);
    if (whole)
        statement.bind(position, int64_t(large));
    else
        statement.bind(position, number.toDouble());
}

void bindLiteral(SQLite::Statement& statement, int position, const Parameter& parameter,
                 const Literal& literal) {
    if (!literal.isText())
        bindNumber(statement, position, literal.written, parameter.form == Parameter::Form::Negative);
    else if (parameter.form == Parameter::Form::AsIs)
        bindText(statement, position, literal.text());
    else
        bindText(statement, position, literalText(literal.text(), parameter.form));
}

} // namespace

void bindLiterals(SQLite::Statement& statement, const std::vector<Parameter>& parameters,
                  const std::vector<Literal>& literals) {
    int position = 0;
    for (const Parameter& parameter : parameters) {
        ++position;
        if (parameter.literal < 0)
            bindPlain(statement, position, parameter.constant);
        else
            bindLiteral(statement, position, parameter, literals[size_t(parameter.literal)]);
    }
}

void bindTyped(SQLite::Statement& statement, int position, ColumnType type, const common::Value& value) {
    bindPlain(statement, position, storedValue(type, value));
}

SqliteCursor::SqliteCursor(SqliteEngine& engine, std::shared_ptr<SqliteEngine::Plan> plan,
                           const std::vector<Literal>& literals) :
    m_engine(engine),
    m_plan(std::move(plan)), m_prepared(engine.take(*m_plan)) {
    bindLiterals(m_prepared->statement, m_plan->translated.parameters, literals);
}

SqliteCursor::~SqliteCursor() {
    m_engine.giveBack(*m_plan, std::move(m_prepared));
}

/// Hidden columns are counted from the end of what is selected by name.
int SqliteCursor::keyColumn(int key) const {
    return key >= 0 ? key : int(m_prepared->columns.size()) - m_plan->translated.hiddenColumns - key - 1;
}

bool SqliteCursor::tiesWithLast() const {
    if (m_plan->translated.keyColumns.empty())
        return false;
    for (size_t i = 0; i < m_lastKeys.size(); ++i)
        if (value(keyColumn(m_plan->translated.keyColumns[i])) != m_lastKeys[i])
            return false;
    return true;
}

void SqliteCursor::rememberKeys() {
    m_lastKeys.clear();
    for (const int key : m_plan->translated.keyColumns)
        m_lastKeys.push_back(value(keyColumn(key)));
}

bool SqliteCursor::next() {
    const int top = m_plan->translated.top;
    if (top == 0 || (top > 0 && m_delivered >= top && m_plan->translated.keyColumns.empty()))
        return false;
    try {
        if (!m_prepared->statement.executeStep())
            return false;
    } catch (const SQLite::Exception& error) {
        throwStoreError(error, m_engine.m_path, QString::fromUtf8(m_plan->translated.prepared()));
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
