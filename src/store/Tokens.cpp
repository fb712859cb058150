#include "store/Tokens.h"
#include "common/RunTimeError.h"

namespace store {
namespace {

using namespace Qt::StringLiterals;

class Scanner {
  public:
    explicit Scanner(const QString& sql) : m_sql(sql) {}

    std::vector<Token> run() {
        std::vector<Token> tokens;
        tokens.reserve(size_t(m_sql.size() / 4 + 4));
        while (skipBlanks())
            tokens.push_back(next());
        return tokens;
    }

  private:
    QChar at(qsizetype i) const { return i < m_sql.size() ? m_sql[i] : QChar(); }

    bool skipBlanks() {
        while (m_at < m_sql.size() && m_sql[m_at].isSpace())
            ++m_at;
        return m_at < m_sql.size();
    }

    Token next() {
        const QChar c = at(m_at);
        if (c == u'\'' || c == u'"')
            return {Token::Text, enclosed(c)};
        if (c == u'[')
            return {Token::Name, enclosed(u']')};
        if (c.isDigit() || (c == u'.' && at(m_at + 1).isDigit()))
            return {Token::Number, number()};
        if (c.isLetter() || c == u'_')
            return {Token::Word, word()};
        return {Token::Symbol, symbol()};
    }

    QString enclosed(QChar end) {
        QString text;
        for (++m_at; m_at < m_sql.size(); ++m_at) {
            if (m_sql[m_at] != end) {
                text += m_sql[m_at];
            } else if (at(m_at + 1) == end && end != u']') {
                text += end;
                ++m_at;
            } else {
                ++m_at;
                return text;
            }
        }
        throw common::RunTimeError(common::kSqlFailure, u"Fehler in einer Datenbankabfrage."_s,
                                   u"unfinished text in: "_s + m_sql);
    }

    QString number() {
        const qsizetype start = m_at;
        while (at(m_at).isDigit() || at(m_at) == u'.')
            ++m_at;
        if (at(m_at).toLower() == u'e') {
            const qsizetype sign = at(m_at + 1) == u'+' || at(m_at + 1) == u'-' ? 1 : 0;
            if (at(m_at + 1 + sign).isDigit())
                for (m_at += 1 + sign; at(m_at).isDigit();)
                    ++m_at;
        }
        return m_sql.mid(start, m_at - start);
    }

    QString word() {
        const qsizetype start = m_at;
        while (at(m_at).isLetterOrNumber() || at(m_at) == u'_')
            ++m_at;
        return m_sql.mid(start, m_at - start);
    }

    QString symbol() {
        const QString two = m_sql.mid(m_at, 2);
        const qsizetype length =
            two == u"<>" || two == u"<=" || two == u">=" || two == u"||" || two == u"!=" ? 2 : 1;
        m_at += length;
        return two.left(length);
    }

    const QString& m_sql;
    qsizetype m_at = 0;
};

} // namespace

std::vector<Token> tokenize(const QString& sql) {
    return Scanner(sql).run();
}

} // namespace store
