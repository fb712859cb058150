#include "store/StatementParser.h"
#include "common/RunTimeError.h"
#include <algorithm>

namespace store {
namespace {

using namespace Qt::StringLiterals;

/// Words that are no names: an alias needs no AS in front of it.
constexpr const char16_t* kReserved[] = {
    u"WHERE", u"ORDER", u"GROUP",   u"HAVING", u"UNION",     u"LIMIT",  u"ON",    u"INNER", u"LEFT",
    u"RIGHT", u"FULL",  u"CROSS",   u"JOIN",   u"SET",       u"AS",     u"FROM",  u"AND",   u"OR",
    u"NOT",   u"IS",    u"BETWEEN", u"LIKE",   u"INTERSECT", u"EXCEPT", u"OUTER", u"WHEN",  u"THEN",
    u"ELSE",  u"END",   u"ASC",     u"DESC",   u"IN",        u"OFFSET", u"ESCAPE"};

/// 'a' & CHR(39) & 'b' is one text.
std::vector<Token> foldTexts(const std::vector<Token>& in) {
    std::vector<Token> out;
    out.reserve(in.size() + 1);
    for (size_t i = 0; i < in.size(); ++i) {
        Token token = in[i];
        if (token.isWord(u"CHR") && i + 3 < in.size() && in[i + 1].isSymbol(u"(") &&
            in[i + 3].isSymbol(u")")) {
            token = {Token::Text, QString(QChar(char16_t(in[i + 2].text.toUShort())))};
            i += 3;
        }
        const size_t size = out.size();
        if (token.kind == Token::Text && size >= 2 && out[size - 1].isSymbol(u"&") &&
            out[size - 2].kind == Token::Text) {
            out.pop_back();
            out.back().text += token.text;
            out.back().literal = -1;
        } else {
            out.push_back(std::move(token));
        }
    }
    return out;
}

} // namespace

Statement parseStatement(const QString& sql) {
    return StatementParser(sql).run();
}

StatementParser::StatementParser(const QString& sql) : m_sql(sql), m_tokens(foldTexts(tokenize(sql))) {
    while (!m_tokens.empty() && m_tokens.back().isSymbol(u";"))
        m_tokens.pop_back();
}

Statement StatementParser::run() {
    Statement result = statement();
    if (m_at < m_tokens.size())
        fail();
    return result;
}

void StatementParser::fail() const {
    throw common::RunTimeError(common::kSqlFailure, u"Fehler in einer Datenbankabfrage."_s,
                               u"not understood: "_s + withoutValues(m_sql));
}

const Token& StatementParser::look(size_t ahead) const {
    static const Token kEnd{Token::Symbol, {}};
    return m_at + ahead < m_tokens.size() ? m_tokens[m_at + ahead] : kEnd;
}

bool StatementParser::isName() const {
    const Token& token = look();
    return token.kind == Token::Name ||
           (token.kind == Token::Word &&
            std::none_of(std::begin(kReserved), std::end(kReserved),
                         [&](const char16_t* word) { return token.isWord(word); }));
}

bool StatementParser::takeWord(const char16_t* word) {
    const bool there = isWord(word);
    m_at += there ? 1 : 0;
    return there;
}

bool StatementParser::takeSymbol(const char16_t* symbol) {
    const bool there = isSymbol(symbol);
    m_at += there ? 1 : 0;
    return there;
}

void StatementParser::needWord(const char16_t* word) {
    if (!takeWord(word))
        fail();
}

void StatementParser::needSymbol(const char16_t* symbol) {
    if (!takeSymbol(symbol))
        fail();
}

Name StatementParser::name() {
    if (!isName())
        fail();
    const Token& token = m_tokens[m_at++];
    return {token.text, token.kind == Token::Name};
}

Name StatementParser::alias() {
    if (takeWord(u"AS"))
        return name();
    return isName() ? name() : Name{};
}

Statement StatementParser::statement() {
    if (isWord(u"INSERT") || isWord(u"REPLACE"))
        return insertion();
    if (isWord(u"UPDATE"))
        return update();
    if (isWord(u"DELETE"))
        return deletion();
    Statement result;
    if (isWord(u"WITH")) {
        Select named;
        with(named);
        if (isWord(u"INSERT")) {
            result = insertion();
            result.select->with = named.with;
            result.select->recursive = named.recursive;
            return result;
        }
        result.select = select();
        result.select->with = named.with;
        result.select->recursive = named.recursive;
        return result;
    }
    result.select = select();
    return result;
}

Statement StatementParser::insertion() {
    Statement result{Statement::Inserts};
    needWord(u"INSERT");
    needWord(u"INTO");
    result.table.table = name();
    if (takeSymbol(u"(")) {
        do
            result.columns.push_back(name());
        while (takeSymbol(u","));
        needSymbol(u")");
    }
    if (takeWord(u"DEFAULT"))
        needWord(u"VALUES");
    else
        result.select = select();
    return result;
}

Statement StatementParser::update() {
    Statement result{Statement::Updates};
    needWord(u"UPDATE");
    result.table.table = name();
    result.table.alias = alias();
    needWord(u"SET");
    do {
        const Name column = name();
        needSymbol(u"=");
        result.assignments.push_back({column, expression()});
    } while (takeSymbol(u","));
    result.where = optional(u"WHERE");
    return result;
}

Statement StatementParser::deletion() {
    Statement result{Statement::Deletes};
    needWord(u"DELETE");
    takeSymbol(u"*");
    needWord(u"FROM");
    result.table.table = name();
    result.table.alias = alias();
    result.where = optional(u"WHERE");
    return result;
}

void StatementParser::with(Select& into) {
    if (!takeWord(u"WITH"))
        return;
    into.recursive = takeWord(u"RECURSIVE");
    do {
        Named named{name()};
        if (takeSymbol(u"(")) {
            do
                named.columns.push_back(name());
            while (takeSymbol(u","));
            needSymbol(u")");
        }
        needWord(u"AS");
        needSymbol(u"(");
        named.query = select();
        needSymbol(u")");
        into.with.push_back(std::move(named));
    } while (takeSymbol(u","));
}

std::shared_ptr<Select> StatementParser::select() {
    auto result = std::make_shared<Select>();
    with(*result);
    result->cores.push_back(core(*result));
    while (isWord(u"UNION") || isWord(u"EXCEPT") || isWord(u"INTERSECT")) {
        const QString word = m_tokens[m_at++].text.toUpper();
        result->unions.push_back(takeWord(u"ALL") ? word + u" ALL"_s : word);
        result->cores.push_back(core(*result));
    }
    order(*result);
    result->limit = optional(u"LIMIT");
    result->offset = optional(u"OFFSET");
    return result;
}

Core StatementParser::core(Select& of) {
    if (isWord(u"VALUES"))
        return rows();
    Core result;
    needWord(u"SELECT");
    result.distinct = takeWord(u"DISTINCT");
    if (takeWord(u"TOP"))
        of.top = m_at < m_tokens.size() ? m_tokens[m_at++].text.toInt() : 0;
    do {
        Item item{expression()};
        item.alias = alias();
        result.items.push_back(std::move(item));
    } while (takeSymbol(u","));
    if (takeWord(u"FROM"))
        result.sources = sources();
    result.where = optional(u"WHERE");
    if (takeWord(u"GROUP")) {
        needWord(u"BY");
        result.groups = list();
    }
    result.having = optional(u"HAVING");
    return result;
}

Core StatementParser::rows() {
    Core result;
    needWord(u"VALUES");
    do {
        needSymbol(u"(");
        result.rows.push_back(list());
        needSymbol(u")");
    } while (takeSymbol(u","));
    return result;
}

std::vector<Source> StatementParser::sources() {
    std::vector<Source> result{source()};
    for (QString words = join(); !words.isEmpty(); words = join()) {
        Source next = source();
        next.join = words;
        next.on = optional(u"ON");
        result.push_back(std::move(next));
    }
    return result;
}

QString StatementParser::join() {
    if (takeSymbol(u","))
        return u","_s;
    QStringList words;
    for (const char16_t* word : {u"LEFT", u"RIGHT", u"FULL", u"INNER", u"CROSS", u"OUTER", u"JOIN"})
        if (takeWord(word))
            words.append(QString::fromUtf16(word));
    if (!words.isEmpty() && words.last() != u"JOIN"_s)
        fail();
    return words.join(u' ');
}

Source StatementParser::source() {
    Source result;
    if (takeSymbol(u"(")) {
        result.query = select();
        needSymbol(u")");
    } else {
        result.table = name();
        result.isFunction = takeSymbol(u"(");
        if (result.isFunction && !isSymbol(u")"))
            result.arguments = list();
        if (result.isFunction)
            needSymbol(u")");
    }
    result.alias = alias();
    return result;
}

void StatementParser::order(Select& into) {
    if (!takeWord(u"ORDER"))
        return;
    needWord(u"BY");
    do {
        Order key{expression()};
        key.down = takeWord(u"DESC");
        if (!key.down)
            takeWord(u"ASC");
        into.order.push_back(std::move(key));
    } while (takeSymbol(u","));
}

} // namespace store
