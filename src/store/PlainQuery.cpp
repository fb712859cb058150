#include "store/PlainQuery.h"
#include "store/Tokens.h"
#include <algorithm>

namespace store {

using namespace Qt::StringLiterals;

namespace {

bool isName(const Token& token) {
    return token.kind == Token::Word || token.kind == Token::Name;
}

/// "*", or names with commas between them.
bool areColumns(const std::vector<Token>& tokens, size_t from, size_t to) {
    if (to == from + 1 && tokens[from].isSymbol(u"*"))
        return true;
    for (size_t i = from; i < to; ++i)
        if ((i - from) % 2 == 0 ? !isName(tokens[i]) : !tokens[i].isSymbol(u","))
            return false;
    return (to - from) % 2 == 1;
}

bool hasClause(const std::vector<Token>& tokens, size_t from, std::initializer_list<const char16_t*> words) {
    return std::any_of(words.begin(), words.end(),
                       [&](const char16_t* word) { return findClause(tokens, word, from) < tokens.size(); });
}

} // namespace

QString PlainQuery::sql() const {
    return u"SELECT "_s + columns + u" FROM ["_s + table + u']' +
           (condition.isEmpty() ? QString() : u" WHERE "_s + condition) +
           (order.isEmpty() ? QString() : u" ORDER BY "_s + order);
}

PlainQuery PlainQuery::narrowed(const QString& further) const {
    PlainQuery result = *this;
    if (!further.isEmpty())
        result.condition = condition.isEmpty() ? further : u'(' + condition + u") AND ("_s + further + u')';
    return result;
}

std::optional<PlainQuery> plainQuery(const QString& source) {
    std::vector<Token> tokens = tokenize(source);
    while (!tokens.empty() && tokens.back().isSymbol(u";"))
        tokens.pop_back();
    if (tokens.size() == 1 && isName(tokens[0]))
        return PlainQuery{tokens[0].text, u"*"_s, {}, {}};
    const size_t table = findClause(tokens, u"FROM") + 1;
    const size_t behind = table + 1;
    if (behind > tokens.size() || !tokens[0].isWord(u"SELECT") || !areColumns(tokens, 1, table - 1) ||
        !isName(tokens[table]) || hasClause(tokens, behind, {u"GROUP", u"HAVING", u"UNION", u"LIMIT"}))
        return std::nullopt;
    const size_t order = findClause(tokens, u"ORDER", behind);
    const bool conditional = behind < tokens.size() && tokens[behind].isWord(u"WHERE");
    // What else stands behind the table is another one, or a name for it.
    if (!conditional && order != behind)
        return std::nullopt;
    const auto text = [&](size_t from, size_t to) {
        return from < to ? source.mid(tokens[from].from, tokens[to - 1].to - tokens[from].from) : QString();
    };
    return PlainQuery{tokens[table].text, text(1, table - 1), text(behind + 1, order),
                      text(order + 2, tokens.size())};
}

} // namespace store
