// Sort, Filter and Find of a recordset: they keep to the rows that it holds.
#include "common/RunTimeError.h"
#include "store/Collation.h"
#include "store/Recordset.h"
#include "store/RecordsetRow.h"
#include "store/Tokens.h"
#include <algorithm>
#include <numeric>

namespace store {

using namespace Qt::StringLiterals;
using common::Value;

namespace {

/// Null stands first, numbers by their size, texts as the store compares them.
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

/// "column op literal".
struct Condition {
    int column;
    QString sign;
    Value literal;
    bool truth;

    bool holds(const Value& value) const {
        if (value.isNull())
            return false;
        const int c = truth ? int(value.isTrue()) - int(literal.isTrue()) : compareValues(value, literal);
        if (sign == u"=")
            return c == 0;
        if (sign == u"<>")
            return c != 0;
        if (sign == u"<")
            return c < 0;
        if (sign == u"<=")
            return c <= 0;
        return sign == u">" ? c > 0 : c >= 0;
    }
};

namespace {

Value literalOf(const std::vector<Token>& tokens, size_t& at) {
    const bool negative = tokens[at].isSymbol(u"-");
    at += negative ? 1 : 0;
    const Token& token = tokens.at(at++);
    if (token.kind == Token::Text)
        return token.text;
    if (token.kind == Token::Word)
        return Value(token.isWord(u"True"));
    return Value(negative ? -token.text.toDouble() : token.text.toDouble());
}

} // namespace

std::vector<Condition> Recordset::parseConditions(const QString& text) {
    const std::vector<Token> tokens = tokenize(text);
    std::vector<Condition> conditions;
    for (size_t at = 0; at + 2 < tokens.size();) {
        at += tokens[at].isWord(u"AND") ? 1 : 0;
        const int column = columnIndex(tokens[at].text);
        const QString sign = tokens[at + 1].text;
        at += 2;
        const Value literal = literalOf(tokens, at);
        conditions.push_back({column, sign, literal, columnsNow()[size_t(column)].type == ColumnType::YesNo});
    }
    if (conditions.empty())
        throw common::RunTimeError(common::kSqlFailure, u"Fehler in einem Filter."_s, text);
    return conditions;
}

void Recordset::Filter(const QString& text) {
    requireOpen();
    const bool all = text.trimmed().isEmpty();
    if (!all && !m_fetched && !m_from.isEmpty()) {
        const QString chosen = m_where.isEmpty() ? QString() : u'(' + m_where.mid(5) + u") AND "_s;
        m_narrowed = u"SELECT "_s + m_list + m_from + u" WHERE "_s + chosen + text + u' ' + m_orderBy;
        m_keyName.clear();
        return fetch();
    }
    fetch();
    if (!m_narrowed.isEmpty() || (!m_keyName.isEmpty() && !all))
        fetchAllAgain();
    else if (!m_keyName.isEmpty())
        return Sort({});
    m_order.resize(m_rows.size());
    std::iota(m_order.begin(), m_order.end(), 0);
    if (!all) {
        const std::vector<Condition> conditions = parseConditions(text);
        std::erase_if(m_order, [&](int row) {
            return !std::all_of(conditions.begin(), conditions.end(), [&](const Condition& condition) {
                return condition.holds(m_rows[size_t(row)].values[size_t(condition.column)]);
            });
        });
    }
    m_position = 0;
}

void Recordset::Sort(const QString& order) {
    fetch();
    m_position = 0;
    const QStringList words = order.split(u' ', Qt::SkipEmptyParts);
    const size_t column = words.isEmpty() ? 0 : size_t(columnIndex(words.front()));
    if (!m_keyName.isEmpty() && !(words.isEmpty() && m_keyOrder == m_orderBy))
        return sortByStore(words.isEmpty() ? m_orderBy : u" ORDER BY "_s + order);
    if (words.isEmpty())
        return std::sort(m_order.begin(), m_order.end());
    const bool down = words.size() > 1 && words[1].compare(u"DESC"_s, Qt::CaseInsensitive) == 0;
    std::stable_sort(m_order.begin(), m_order.end(), [&](int a, int b) {
        const int c = compareValues(m_rows[size_t(a)].values[column], m_rows[size_t(b)].values[column]);
        return down ? c > 0 : c < 0;
    });
}

void Recordset::Find(const QString& criteria) {
    fetch();
    const std::vector<Condition> conditions = parseConditions(criteria);
    for (; m_position < count(); ++m_position) {
        const Row& row = rowAt(m_position);
        if (conditions.front().holds(row.values[size_t(conditions.front().column)]))
            return;
    }
}

} // namespace store
