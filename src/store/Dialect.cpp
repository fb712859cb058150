#include "store/Dialect.h"
#include "common/RunTimeError.h"
#include <algorithm>

namespace store {
namespace {

using namespace Qt::StringLiterals;
using Tokens = std::vector<Token>;

[[noreturn]] void fail(const QString& why, const QString& sql) {
    throw common::RunTimeError(common::kSqlFailure, u"Fehler in einer Datenbankabfrage."_s,
                               why + u": "_s + withoutValues(sql));
}

bool isComparison(const Token& token) {
    return token.kind == Token::Symbol && QStringView(u"=<>").contains(token.text.front());
}

/// 'a' & CHR(39) & 'b' is one text.
Tokens foldTexts(const Tokens& in) {
    Tokens out;
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
            out.push_back(token);
        }
    }
    return out;
}

std::vector<Tokens> splitAtCommas(const Tokens& tokens, size_t from, size_t to) {
    std::vector<Tokens> items(1);
    int depth = 0;
    for (size_t i = from; i < to; ++i) {
        depth += tokens[i].isSymbol(u"(") ? 1 : tokens[i].isSymbol(u")") ? -1 : 0;
        if (depth == 0 && tokens[i].isSymbol(u","))
            items.emplace_back();
        else
            items.back().push_back(tokens[i]);
    }
    return items;
}

qsizetype firstWildcard(QStringView pattern) {
    const auto found =
        std::find_if(pattern.begin(), pattern.end(), [](QChar c) { return c == u'%' || c == u'_'; });
    return found - pattern.begin();
}

class Translator {
  public:
    Translator(const QString& sql, const QSet<QString>& yesNo, bool keyed) :
        m_sql(sql), m_yesNo(yesNo), m_keyed(keyed) {}

    Translated run() {
        m_tokens = foldTexts(tokenize(m_sql));
        while (!m_tokens.empty() && m_tokens.back().isSymbol(u";"))
            m_tokens.pop_back();
        if (m_tokens.empty())
            fail(u"empty statement"_s, m_sql);
        const Token verb = m_tokens.front();
        if (verb.isWord(u"SELECT"))
            prepareSelect();
        else if (verb.isWord(u"DELETE") && m_tokens.size() > 1 && m_tokens[1].isSymbol(u"*"))
            m_tokens.erase(m_tokens.begin() + 1);
        if (verb.isWord(u"SELECT") || verb.isWord(u"DELETE") || verb.isWord(u"UPDATE") ||
            verb.isWord(u"INSERT"))
            emitAll();
        else
            m_out = m_sql;
        m_result.sql = m_out.toUtf8();
        noteFixed();
        return std::move(m_result);
    }

  private:
    void prepareSelect() {
        if (m_tokens.size() > 2 && m_tokens[1].isWord(u"TOP")) {
            m_result.top = m_tokens[2].text.toInt();
            m_tokens.erase(m_tokens.begin() + 1, m_tokens.begin() + 3);
        }
        const size_t from = findClause(m_tokens, u"FROM");
        if (m_keyed)
            m_added.push_back({{Token::Word, u"rowid"_s}});
        if (m_result.top >= 0)
            prepareKeys(from);
        for (const Tokens& item : m_added) {
            m_tokens.insert(m_tokens.begin() + long(insertAt(from)), item.begin(), item.end());
            m_tokens.insert(m_tokens.begin() + long(insertAt(from)), {Token::Symbol, u","_s});
            m_shift += item.size() + 1;
        }
        m_result.hiddenColumns = int(m_added.size());
    }

    /// Added columns go in front of FROM one behind the other.
    size_t insertAt(size_t from) const { return from + m_shift; }

    /// The order's expressions, as columns of the result: those that are selected anyway, the others added.
    void prepareKeys(size_t from) {
        const size_t order = findClause(m_tokens, u"ORDER", from);
        if (order >= m_tokens.size())
            return;
        const std::vector<Tokens> selected = splitAtCommas(m_tokens, 1, from);
        const bool all = selected.front().size() == 1 && selected.front().front().isSymbol(u"*");
        for (Tokens key : splitAtCommas(m_tokens, order + 2, m_tokens.size())) {
            if (key.size() > 1 && (key.back().isWord(u"ASC") || key.back().isWord(u"DESC")))
                key.pop_back();
            const int position = all ? -1 : positionOf(key, selected);
            if (position >= 0) {
                m_result.keyColumns.push_back(position);
            } else {
                m_added.push_back(key);
                m_result.keyColumns.push_back(-int(m_added.size()));
            }
        }
    }

    static int positionOf(const Tokens& key, const std::vector<Tokens>& selected) {
        for (size_t i = 0; i < selected.size(); ++i) {
            const Tokens& item = selected[i];
            if (key.size() == 1 && !item.empty() &&
                item.back().text.compare(key[0].text, Qt::CaseInsensitive) == 0)
                return int(i);
        }
        return -1;
    }

    void emitAll() {
        for (m_at = 0; m_at < m_tokens.size(); ++m_at) {
            const Token& token = m_tokens[m_at];
            if (token.kind == Token::Word)
                noteClause(token);
            if (emitYesNo() || emitLike())
                continue;
            emitToken(token);
        }
    }

    void noteClause(const Token& token) {
        if (token.isWord(u"SET"))
            m_clause = Clause::Set;
        else if (token.isWord(u"VALUES"))
            m_clause = Clause::Values;
        else if (token.isWord(u"WHERE") || token.isWord(u"HAVING") || token.isWord(u"ON"))
            m_clause = Clause::Condition;
        else if (token.isWord(u"ORDER") || token.isWord(u"GROUP") || token.isWord(u"SELECT"))
            m_clause = Clause::Plain;
    }

    void put(const QString& text) {
        if (!m_out.isEmpty())
            m_out += u' ';
        m_out += text;
    }

    /// `token` has lost its place among the literals when it was put together from several.
    void putParameter(const Token& token, Parameter::Form form = Parameter::Form::AsIs) {
        Parameter parameter{token.literal, form, {}};
        if (token.literal < 0)
            parameter.constant = literalText(token.text, form);
        m_result.parameters.push_back(std::move(parameter));
        put(u"?"_s);
    }

    /// Literals that are no parameter are part of the text.
    void noteFixed() {
        Shape shape;
        readShape(m_sql, shape);
        for (int i = 0; i < int(shape.literals.size()); ++i) {
            const bool bound =
                std::any_of(m_result.parameters.begin(), m_result.parameters.end(),
                            [&](const Parameter& parameter) { return parameter.literal == i; });
            if (!bound)
                m_result.fixed.emplace_back(i, shape.literals[size_t(i)].written.toString());
        }
    }

    const Token* tokenAt(size_t i) const { return i < m_tokens.size() ? &m_tokens[i] : nullptr; }

    /// Whether a literal here is a value: compared with something, set, or listed.
    bool valuePosition(size_t at) const {
        return m_clause == Clause::Values || isListed(at) ||
               (at > 0 && isComparison(m_tokens[at - 1]) && at > 1 && m_tokens[at - 2].kind != Token::Number);
    }

    /// Whether it is one of the literals behind IN.
    bool isListed(size_t at) const {
        const auto isItem = [](const Token& token) {
            return token.kind == Token::Number || token.kind == Token::Text || token.isSymbol(u",") ||
                   token.isSymbol(u"-");
        };
        while (at > 0 && isItem(m_tokens[at - 1]))
            --at;
        return at > 1 && m_tokens[at - 1].isSymbol(u"(") && m_tokens[at - 2].isWord(u"IN");
    }

    void emitToken(const Token& token) {
        const Token* next = tokenAt(m_at + 1);
        if (token.kind == Token::Name)
            put(u'"' + QString(token.text).replace(u'"', u"\"\""_s) + u'"');
        else if (token.kind == Token::Text && m_clause != Clause::Plain)
            putParameter(token);
        else if (token.kind == Token::Text)
            put(u'\'' + QString(token.text).replace(u'\'', u"''"_s) + u'\'');
        else if (token.isSymbol(u"-") && next && next->kind == Token::Number && valuePosition(m_at))
            putParameter(m_tokens[++m_at], Parameter::Form::Negative);
        else if (token.kind == Token::Number && valuePosition(m_at))
            putParameter(token);
        else if (token.isSymbol(u"&"))
            put(u"||"_s);
        else if (token.isWord(u"True") || token.isWord(u"False"))
            put(token.isWord(u"True") ? u"-1"_s : u"0"_s);
        else
            put(token.text);
    }

    /// "flag = True", "flag = 1" and "flag = -1" are one condition: whatever is not 0 is true.
    bool emitYesNo() {
        const Token& token = m_tokens[m_at];
        const Token* sign = tokenAt(m_at + 1);
        if ((token.kind != Token::Word && token.kind != Token::Name) || !sign ||
            !(sign->isSymbol(u"=") || sign->isSymbol(u"<>")) || !m_yesNo.contains(token.text.toLower()))
            return false;
        size_t at = m_at + 2;
        if (tokenAt(at) && tokenAt(at)->isSymbol(u"-"))
            ++at;
        const Token* literal = tokenAt(at);
        if (!literal ||
            !(literal->kind == Token::Number || literal->isWord(u"True") || literal->isWord(u"False")))
            return false;
        const bool truth =
            literal->kind == Token::Number ? literal->text.toDouble() != 0 : literal->isWord(u"True");
        if (m_clause == Clause::Set)
            put(token.text + (truth ? u" = -1"_s : u" = 0"_s));
        else
            put(token.text + (truth == sign->isSymbol(u"=") ? u" <> 0"_s : u" = 0"_s));
        m_at = at;
        return true;
    }

    /// name LIKE 'pattern': the part in front of the first wildcard bounds the search, so that an index
    /// serves.
    bool emitLike() {
        const Token& token = m_tokens[m_at];
        const Token* like = tokenAt(m_at + 1);
        const Token* pattern = tokenAt(m_at + 2);
        const Token* more = tokenAt(m_at + 3);
        if ((token.kind != Token::Word && token.kind != Token::Name) || !like || !like->isWord(u"LIKE") ||
            !pattern || pattern->kind != Token::Text ||
            (more && (more->isSymbol(u"&") || more->isWord(u"ESCAPE"))))
            return false;
        // The part of a qualified name in front of the point is out already; NOT stands behind the name.
        if (m_at > 0 && m_tokens[m_at - 1].isSymbol(u"."))
            return false;
        const Wildcard wildcard = wildcardOf(pattern->text);
        if (pattern->literal >= 0)
            m_result.patterns.emplace_back(pattern->literal, wildcard);
        if (wildcard == Wildcard::AtStart)
            return false;
        if (wildcard == Wildcard::Inside) {
            emitRange(token, *pattern);
        } else {
            emitToken(token);
            put(u"="_s);
            putParameter(*pattern);
        }
        m_at += 2;
        return true;
    }

    void emitRange(const Token& name, const Token& pattern) {
        put(u"("_s);
        emitToken(name);
        put(u">="_s);
        putParameter(pattern, Parameter::Form::RangeStart);
        put(u"AND"_s);
        emitToken(name);
        put(u"<="_s);
        putParameter(pattern, Parameter::Form::RangeEnd);
        put(u"AND"_s);
        emitToken(name);
        put(u"LIKE"_s);
        putParameter(pattern);
        put(u")"_s);
    }

    enum class Clause { Plain, Condition, Set, Values };

    const QString& m_sql;
    const QSet<QString>& m_yesNo;
    const bool m_keyed;
    Tokens m_tokens;
    std::vector<Tokens> m_added;
    size_t m_shift = 0;
    size_t m_at = 0;
    Clause m_clause = Clause::Plain;
    QString m_out;
    Translated m_result;
};

} // namespace

Wildcard wildcardOf(QStringView pattern) {
    const qsizetype first = firstWildcard(pattern);
    return first == pattern.size() ? Wildcard::None : first == 0 ? Wildcard::AtStart : Wildcard::Inside;
}

QString literalText(const QString& text, Parameter::Form form) {
    switch (form) {
    case Parameter::Form::RangeStart:
        return text.left(firstWildcard(text));
    case Parameter::Form::RangeEnd:
        return text.left(firstWildcard(text)) + QString::fromUcs4(U"\U0010FFFF", 1);
    default:
        return text;
    }
}

bool Translated::fits(const std::vector<Literal>& literals) const {
    const auto sameText = [&](const auto& literal) {
        return literals[size_t(literal.first)].written == literal.second;
    };
    const auto sameKind = [&](const auto& pattern) {
        return wildcardOf(literals[size_t(pattern.first)].written) == pattern.second;
    };
    return std::all_of(fixed.begin(), fixed.end(), sameText) &&
           std::all_of(patterns.begin(), patterns.end(), sameKind);
}

Translated translate(const QString& sql, const QSet<QString>& yesNoColumns, bool keyed) {
    return Translator(sql, yesNoColumns, keyed).run();
}

QString quotedName(const QString& name) {
    return QLatin1Char('"') + QString(name).replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
           QLatin1Char('"');
}

} // namespace store
