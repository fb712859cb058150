#include "tests/support/TwinEngine.h"
#include "common/RunTimeError.h"
#include "store/PlainQuery.h"
#include <QMultiMap>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <optional>

using namespace Qt::StringLiterals;
using common::Value;

namespace test {
namespace {

using Row = std::vector<Value>;

class RowsCursor : public store::Cursor {
  public:
    explicit RowsCursor(store::Rows rows) : m_rows(std::move(rows)) {}

    bool next() override { return ++m_at <= m_rows.rows.size(); }

    const std::vector<store::Column>& columns() const override { return m_rows.columns; }

    Value value(int column) const override { return m_rows.rows[m_at - 1][size_t(column)]; }

  private:
    store::Rows m_rows;
    size_t m_at = 0;
};

store::Rows rowsOf(store::Engine& engine, const QString& sql, bool keyed) {
    const auto cursor = engine.query(sql, keyed);
    store::Rows rows{cursor->columns(), {}};
    while (cursor->next())
        rows.rows.push_back(store::valuesOf(*cursor, int(rows.columns.size())));
    return rows;
}

/// With its type, and without what sums in another order differ by. Of what was reckoned, a whole number may
/// be a double.
QString textOf(const Value& value, bool reckoned) {
    if (value.isNull())
        return u"-"_s;
    if (value.isText())
        return u"'"_s + value.toText() + u"'"_s;
    const double number = value.isDate() ? value.toSerial() : value.toDouble();
    const QString type = value.isDate() ? u"t"_s : reckoned ? u"n"_s : value.isInteger() ? u"i"_s : u"d"_s;
    return type + QString::number(number, 'g', 12);
}

bool isReckoned(const store::Column& ours, const store::Column& theirs) {
    return ours.type == store::ColumnType::Any || theirs.type == store::ColumnType::Any;
}

QStringList textsOf(const store::Rows& rows, const store::Rows& other) {
    QStringList texts;
    for (const Row& row : rows.rows) {
        QStringList values;
        for (size_t column = 0; column < row.size(); ++column)
            values << textOf(row[column], isReckoned(rows.columns[column], other.columns[column]));
        texts << values.join(u'|');
    }
    return texts;
}

/// Each engine names and types what has no name and no column by itself.
QString textOf(const std::vector<store::Column>& columns, const std::vector<store::Column>& other) {
    static const QRegularExpression noName(u"\\W"_s, QRegularExpression::UseUnicodePropertiesOption);
    QStringList texts;
    for (size_t column = 0; column < columns.size(); ++column) {
        const store::Column& own = columns[column];
        const bool reckoned = column >= other.size() || isReckoned(own, other[column]);
        texts << (reckoned && own.name.contains(noName) ? u"?"_s : own.name) +
                     (reckoned ? u""_s : u":%1"_s.arg(int(own.type))) + (own.counter ? u"+"_s : u""_s);
    }
    return texts.join(u'|');
}

/// Of the statement itself, not of one within it.
bool isOrdered(const QString& sql) {
    static const QRegularExpression order(u"\\bORDER\\s+BY\\b"_s, QRegularExpression::CaseInsensitiveOption);
    const QString tail = sql.mid(sql.lastIndexOf(order));
    return sql.contains(order) && tail.count(u'(') == tail.count(u')');
}

void fail(const QString& what, const QString& first, const QString& second) {
    if (first != second)
        ADD_FAILURE() << what.toStdString() << "\n file:   " << first.toStdString()
                      << "\n server: " << second.toStdString();
}

void compareColumns(const QString& what, const std::vector<store::Column>& ours,
                    const std::vector<store::Column>& theirs) {
    fail(what, textOf(ours, theirs), textOf(theirs, ours));
}

void compareRows(const QString& sql, const store::Rows& first, const store::Rows& second) {
    compareColumns(sql, first.columns, second.columns);
    if (first.columns.size() != second.columns.size())
        return;
    QStringList ours = textsOf(first, second), theirs = textsOf(second, first);
    if (!isOrdered(sql)) {
        ours.sort();
        theirs.sort();
    }
    fail(sql, ours.join(u'\n'), theirs.join(u'\n'));
}

/// Takes the row keys off, and gives them by what the row holds, in an order of its own.
QMultiMap<QString, qint64> takeKeys(store::Rows& rows) {
    std::vector<qint64> keys;
    for (Row& row : rows.rows) {
        keys.push_back(row.back().toLong());
        row.pop_back();
    }
    rows.columns.pop_back();
    const QStringList texts = textsOf(rows, rows);
    QMultiMap<QString, qint64> result;
    for (size_t row = 0; row < keys.size(); ++row)
        result.insert(texts[int(row)], keys[row]);
    return result;
}

bool isDefinition(const QString& sql) {
    const QString word = sql.trimmed().section(u' ', 0, 0).toUpper();
    return word == u"CREATE" || word == u"DROP" || word == u"ALTER";
}

/// What one engine gave or threw.
template <typename Answer> struct Outcome {
    std::optional<Answer> answer;
    std::optional<common::RunTimeError> error;

    QString told() const {
        return error ? u"error %1: "_s.arg(error->number()) + error->sentence() + error->detail() : QString();
    }

    int number() const { return error ? error->number() : 0; }
};

template <typename Ask> auto outcomeOf(Ask ask, store::Engine& engine) {
    Outcome<decltype(ask(engine))> outcome;
    try {
        outcome.answer = ask(engine);
    } catch (const common::RunTimeError& error) {
        outcome.error = error;
    }
    return outcome;
}

/// Gives what the first one gives or throws, after the second one was asked the same.
template <typename Ask, typename Compare>
auto askBoth(const QString& what, store::Engine& first, store::Engine& second, Ask ask,
             Compare compareAnswers) {
    auto ours = outcomeOf(ask, first);
    const auto theirs = outcomeOf(ask, second);
    // The server has not been sent the rows yet; the transaction is undone as a whole here and there.
    const bool isHeld = first.inTransaction() && ours.number() == common::kDuplicateKey && !theirs.error;
    if (ours.number() != theirs.number() && !isHeld)
        fail(what, ours.told(), theirs.told());
    if (ours.error)
        throw common::RunTimeError(*ours.error);
    if (theirs.answer)
        compareAnswers(*ours.answer, *theirs.answer);
    return std::move(*ours.answer);
}

qint64 askForNumber(const QString& what, store::Engine& first, store::Engine& second,
                    const std::function<qint64(store::Engine&)>& ask) {
    return askBoth(what, first, second, ask, [&](qint64 ours, qint64 theirs) {
        fail(what, QString::number(ours), QString::number(theirs));
    });
}

} // namespace

qint64 TwinEngine::execute(const QString& sql) {
    return askForNumber(sql, *m_first, *m_second, [&](store::Engine& engine) {
        const qint64 touched = engine.execute(sql);
        return isDefinition(sql) ? 0 : touched;
    });
}

std::unique_ptr<store::Cursor> TwinEngine::query(const QString& sql, bool keyed) {
    return std::make_unique<RowsCursor>(askBoth(
        sql, *m_first, *m_second, [&](store::Engine& engine) { return rowsOf(engine, sql, keyed); },
        [&](const store::Rows& ours, const store::Rows& theirs) {
            keyed ? learnKeys(sql, ours, theirs) : compareRows(sql, ours, theirs);
        }));
}

/// The keys may differ where the table has none of its own.
void TwinEngine::learnKeys(const QString& sql, store::Rows ours, store::Rows theirs) {
    const QString table = store::plainQuery(sql).value_or(store::PlainQuery{}).table.toLower();
    const auto ourKeys = takeKeys(ours), theirKeys = takeKeys(theirs);
    compareRows(sql, ours, theirs);
    auto theirKey = theirKeys.cbegin();
    for (auto ourKey = ourKeys.cbegin(); ourKey != ourKeys.cend() && theirKey != theirKeys.cend(); ++ourKey)
        m_keys.insert({table, *ourKey}, *theirKey++);
}

const std::vector<store::Column>& TwinEngine::columnsOf(const QString& table) {
    const std::vector<store::Column>& columns = m_first->columnsOf(table);
    compareColumns(table, columns, m_second->columnsOf(table));
    return columns;
}

/// A negative key is a promise: the row is not sent yet.
qint64 TwinEngine::insert(const QString& table, const std::vector<store::Column>& columns,
                          const std::vector<Value>& values) {
    const QString what = u"insert into "_s + table;
    const std::vector<store::Column>& all = m_first->columnsOf(table);
    const bool hasCounter =
        std::any_of(all.begin(), all.end(), [](const auto& column) { return column.counter; });
    return askBoth(
        what, *m_first, *m_second,
        [&](store::Engine& engine) { return engine.insert(table, columns, values); },
        [&](qint64 ours, qint64 theirs) {
            m_keys.insert({table.toLower(), ours}, theirs);
            if (hasCounter && theirs >= 0)
                fail(what, QString::number(ours), QString::number(theirs));
        });
}

void TwinEngine::update(const QString& table, qint64 rowKey, const std::vector<store::Column>& columns,
                        const std::vector<Value>& values) {
    askForNumber(u"update of "_s + table, *m_first, *m_second, [&](store::Engine& engine) {
        const bool isFirst = &engine == m_first.get();
        engine.update(table, isFirst ? rowKey : m_keys.value({table.toLower(), rowKey}, rowKey), columns,
                      values);
        return 0;
    });
}

qint64 TwinEngine::newKey(const QString& table) {
    return askForNumber(u"key for "_s + table, *m_first, *m_second,
                        [&](store::Engine& engine) { return engine.newKey(table); });
}

void TwinEngine::begin() {
    m_first->begin();
    m_second->begin();
}

void TwinEngine::commit() {
    m_first->commit();
    m_second->commit();
}

void TwinEngine::rollback() {
    m_first->rollback();
    m_second->rollback();
}

void TwinEngine::interrupt() {
    m_first->interrupt();
    m_second->interrupt();
}

void TwinEngine::onlyRead() {
    m_first->onlyRead();
    m_second->onlyRead();
}

} // namespace test
