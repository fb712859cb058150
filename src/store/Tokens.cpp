#include "store/Tokens.h"
#include "common/RunTimeError.h"

namespace store {
namespace {

using namespace Qt::StringLiterals;

/// Stands for a number in a shape's key; a text leaves its opening quote. Neither can mean anything else
/// there, since a word takes the digits behind it along.
constexpr QChar kNumberMark(u'0');

QChar at(QStringView sql, qsizetype i) {
    return i < sql.size() ? sql[i] : QChar();
}

bool isQuote(QChar c) {
    return c == u'\'' || c == u'"';
}

bool isWordStart(QChar c) {
    return c.isLetter() || c == u'_';
}

bool isNumberStart(QStringView sql, qsizetype i) {
    return sql[i].isDigit() || (sql[i] == u'.' && at(sql, i + 1).isDigit());
}

/// Behind the closing sign of a text or [name] that opens at `i`; -1 when it does not end.
qsizetype endOfEnclosed(QStringView sql, qsizetype i, QChar end) {
    for (++i; i < sql.size(); ++i) {
        if (sql[i] != end)
            continue;
        if (end == u']' || at(sql, i + 1) != end)
            return i + 1;
        ++i;
    }
    return -1;
}

qsizetype afterEnclosed(QStringView sql, qsizetype i, QChar end) {
    const qsizetype behind = endOfEnclosed(sql, i, end);
    if (behind < 0)
        throw common::RunTimeError(common::kSqlFailure, u"Fehler in einer Datenbankabfrage."_s,
                                   u"unfinished text in: "_s + withoutValues(sql.toString()));
    return behind;
}

qsizetype afterNumber(QStringView sql, qsizetype i) {
    while (at(sql, i).isDigit() || at(sql, i) == u'.')
        ++i;
    if (at(sql, i) != u'e' && at(sql, i) != u'E')
        return i;
    const qsizetype sign = at(sql, i + 1) == u'+' || at(sql, i + 1) == u'-' ? 1 : 0;
    if (!at(sql, i + 1 + sign).isDigit())
        return i;
    for (i += 1 + sign; at(sql, i).isDigit();)
        ++i;
    return i;
}

qsizetype afterWord(QStringView sql, qsizetype i) {
    while (i < sql.size() && (sql[i].isLetterOrNumber() || sql[i] == u'_'))
        ++i;
    return i;
}

qsizetype afterSymbol(QStringView sql, qsizetype i) {
    const QStringView two = sql.mid(i, 2);
    return i + (two == u"<>" || two == u"<=" || two == u">=" || two == u"||" || two == u"!=" ? 2 : 1);
}

QStringView within(QStringView sql, qsizetype from, qsizetype to) {
    return sql.mid(from + 1, to - from - 2);
}

class Scanner {
  public:
    explicit Scanner(QStringView sql) : m_sql(sql) {}

    std::vector<Token> run() {
        std::vector<Token> tokens;
        tokens.reserve(size_t(m_sql.size() / 4 + 4));
        while (skipBlanks()) {
            const qsizetype from = m_at;
            tokens.push_back(next());
            tokens.back().from = from;
            tokens.back().to = m_at;
        }
        return tokens;
    }

  private:
    bool skipBlanks() {
        while (m_at < m_sql.size() && m_sql[m_at].isSpace())
            ++m_at;
        return m_at < m_sql.size();
    }

    Token next() {
        const qsizetype start = m_at;
        const QChar c = m_sql[start];
        if (isQuote(c)) {
            m_at = afterEnclosed(m_sql, start, c);
            return {Token::Text, Literal{within(m_sql, start, m_at), c.unicode()}.text(), m_literals++};
        }
        if (c == u'[') {
            m_at = afterEnclosed(m_sql, start, u']');
            return {Token::Name, within(m_sql, start, m_at).toString()};
        }
        if (isNumberStart(m_sql, start)) {
            m_at = afterNumber(m_sql, start);
            return {Token::Number, m_sql.mid(start, m_at - start).toString(), m_literals++};
        }
        m_at = isWordStart(c) ? afterWord(m_sql, start) : afterSymbol(m_sql, start);
        return {isWordStart(c) ? Token::Word : Token::Symbol, m_sql.mid(start, m_at - start).toString()};
    }

    const QStringView m_sql;
    qsizetype m_at = 0;
    int m_literals = 0;
};

} // namespace

std::vector<Token> tokenize(const QString& sql) {
    return Scanner(sql).run();
}

QString withoutValues(const QString& statement) {
    const QStringView sql(statement);
    QString result;
    for (qsizetype i = 0; i < sql.size();) {
        const bool isText = isQuote(sql[i]);
        const bool isNumber = isNumberStart(sql, i);
        const bool isName = sql[i] == u'[';
        const qsizetype end = isText                ? endOfEnclosed(sql, i, sql[i])
                              : isName              ? endOfEnclosed(sql, i, u']')
                              : isNumber            ? afterNumber(sql, i)
                              : isWordStart(sql[i]) ? afterWord(sql, i)
                                                    : i + 1;
        result += isText || isNumber || end < 0 ? u"?"_s : sql.mid(i, end - i).toString();
        if (end < 0)
            break;
        i = end;
    }
    return result;
}

size_t findClause(const std::vector<Token>& tokens, const char16_t* word, size_t from) {
    int depth = 0;
    for (size_t i = from; i < tokens.size(); ++i) {
        depth += tokens[i].isSymbol(u"(") ? 1 : tokens[i].isSymbol(u")") ? -1 : 0;
        if (depth == 0 && tokens[i].isWord(word))
            return i;
    }
    return tokens.size();
}

QString Literal::text() const {
    QString result = written.toString();
    if (isText() && written.contains(QChar(quote)))
        result.replace(QString(2, QChar(quote)), QString(1, QChar(quote)));
    return result;
}

void readShape(const QString& statement, Shape& shape) {
    const QStringView sql(statement);
    shape.key.resize(0);
    shape.literals.clear();
    qsizetype copied = 0;
    for (qsizetype i = 0; i < sql.size();) {
        const QChar c = sql[i];
        const bool isText = isQuote(c);
        if (isText || isNumberStart(sql, i)) {
            const qsizetype end = isText ? afterEnclosed(sql, i, c) : afterNumber(sql, i);
            shape.key += sql.mid(copied, i - copied);
            shape.key += isText ? c : kNumberMark;
            shape.literals.push_back(isText ? Literal{within(sql, i, end), c.unicode()}
                                            : Literal{sql.mid(i, end - i)});
            copied = i = end;
        } else if (c == u'[') {
            i = afterEnclosed(sql, i, u']');
        } else {
            i = isWordStart(c) ? afterWord(sql, i) : i + 1;
        }
    }
    shape.key += sql.mid(copied);
}

} // namespace store
