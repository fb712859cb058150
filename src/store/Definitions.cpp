#include "common/RunTimeError.h"
#include "store/Dialect.h"
#include <QHash>
#include <QSet>

namespace store {
namespace {

using namespace Qt::StringLiterals;
using Tokens = std::vector<Token>;

/// Without comments, parted at ";". A quote may hold either.
QStringList statementsOf(const QString& script) {
    QStringList result(1);
    for (qsizetype i = 0; i < script.size(); ++i) {
        const QChar c = script[i];
        if (c == u'\'' || c == u'"') {
            const qsizetype end = script.indexOf(c, i + 1);
            const qsizetype last = end < 0 ? script.size() - 1 : end;
            result.last() += script.mid(i, last - i + 1);
            i = last;
        } else if (c == u'-' && script.mid(i, 2) == u"--"_s) {
            i = script.indexOf(u'\n', i);
            if (i < 0)
                break;
            result.last() += u'\n';
        } else if (c == u';') {
            result.append(QString());
        } else {
            result.last() += c;
        }
    }
    for (QString& statement : result)
        statement = statement.trimmed();
    result.removeAll(QString());
    return result;
}

QString key(const QString& table, const QString& column) {
    return table.toLower() + u'.' + column.toLower();
}

QString quoted(const QString& name) {
    return u'`' + QString(name).replace(u'`', u"``"_s) + u'`';
}

/// The words of a definition, read from the left.
class Words {
  public:
    explicit Words(const QString& sql) : m_sql(sql), m_tokens(tokenize(sql)) {}

    bool atEnd() const { return m_at >= m_tokens.size(); }

    bool take(const char16_t* text) {
        const bool there = !atEnd() && (m_tokens[m_at].isWord(text) || m_tokens[m_at].isSymbol(text));
        m_at += there ? 1 : 0;
        return there;
    }

    bool take(std::initializer_list<const char16_t*> words) {
        const size_t from = m_at;
        for (const char16_t* word : words)
            if (!take(word)) {
                m_at = from;
                return false;
            }
        return true;
    }

    void need(const char16_t* text) {
        if (!take(text))
            fail();
    }

    QString name() {
        if (atEnd() || (m_tokens[m_at].kind != Token::Word && m_tokens[m_at].kind != Token::Name))
            fail();
        return m_tokens[m_at++].text;
    }

    const Token& next() {
        if (atEnd())
            fail();
        return m_tokens[m_at++];
    }

    /// From here on, as written.
    QString rest() const { return atEnd() ? QString() : m_sql.mid(m_tokens[m_at].from); }

    [[noreturn]] void fail() const {
        throw common::RunTimeError(common::kSqlFailure, u"Fehler in einer Datenbankabfrage."_s,
                                   u"definition not understood: "_s + withoutValues(m_sql));
    }

  private:
    const QString& m_sql;
    const Tokens m_tokens;
    size_t m_at = 0;
};

ColumnType declared(const QString& type) {
    static const QHash<QString, ColumnType> kTypes = {{u"YESNO"_s, ColumnType::YesNo},
                                                      {u"DATE"_s, ColumnType::Date},
                                                      {u"DOUBLE"_s, ColumnType::Double},
                                                      {u"INTEGER"_s, ColumnType::Long},
                                                      {u"TEXT"_s, ColumnType::Text}};
    return kTypes.value(type.toUpper(), ColumnType::Any);
}

/// What a script defines, for its own views and statements.
class MariaDefinitions : private Names {
  public:
    QStringList run(const QStringList& statements) {
        for (const QString& statement : statements)
            noteIndexed(statement);
        QStringList result;
        for (const QString& statement : statements)
            result.append(translated(statement));
        return result;
    }

  private:
    ColumnType typeOf(const QString& table, const QString& column) const override {
        return m_types.value(key(table, column), ColumnType::Any);
    }

    QString rowKey(const QString&) const override { return u"rowid"_s; }

    void noteIndexed(const QString& statement) {
        Words words(statement);
        if (!words.take({u"CREATE", u"INDEX"}) && !words.take({u"CREATE", u"UNIQUE", u"INDEX"}))
            return;
        words.take({u"IF", u"NOT", u"EXISTS"});
        words.name();
        words.need(u"ON");
        const QString table = words.name();
        words.need(u"(");
        do
            m_indexed.insert(key(table, words.name()));
        while (words.take(u","));
    }

    QString translated(const QString& statement) {
        Words words(statement);
        if (words.take({u"CREATE", u"TABLE"}))
            return table(words);
        if (words.take({u"CREATE", u"VIEW"}))
            return view(words);
        if (words.take({u"ALTER", u"TABLE"}))
            return addition(words);
        for (const bool unique : {false, true})
            if (unique ? words.take({u"CREATE", u"UNIQUE", u"INDEX"}) : words.take({u"CREATE", u"INDEX"}))
                return index(words, unique);
        for (const char16_t* kind : {u"TABLE", u"VIEW"})
            if (words.take({u"DROP", kind})) {
                const bool mayLack = words.take({u"IF", u"EXISTS"});
                return u"DROP "_s + QString::fromUtf16(kind) + (mayLack ? u" IF EXISTS "_s : u" "_s) +
                       quoted(words.name());
            }
        if (words.take(u"CREATE") || words.take(u"DROP"))
            words.fail();
        return changed(statement);
    }

    QString changed(const QString& statement) {
        Shape shape;
        readShape(statement, shape);
        return QString::fromUtf8(translate(statement, *this, Speech::MariaDb).filled(shape.literals));
    }

    static QString unlessThere(Words& words) {
        return words.take({u"IF", u"NOT", u"EXISTS"}) ? u"IF NOT EXISTS "_s : QString();
    }

    QString table(Words& words) {
        QString sql = u"CREATE TABLE "_s + unlessThere(words);
        const QString name = words.name();
        words.need(u"(");
        QStringList columns;
        bool keyed = false;
        do
            columns.append(column(words, name, keyed));
        while (words.take(u","));
        words.need(u")");
        if (!keyed)
            columns.append(u"`rowid` BIGINT NOT NULL AUTO_INCREMENT PRIMARY KEY INVISIBLE"_s);
        return sql + quoted(name) + u" ("_s + columns.join(u", "_s) +
               u") ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_uca1400_nopad_as_ci"_s;
    }

    QString column(Words& words, const QString& table, bool& keyed) {
        const QString name = words.name();
        const ColumnType type = declared(words.name());
        m_types.insert(key(table, name), type);
        const bool german = words.take({u"COLLATE", u"GERMAN_CI"});
        QString sql = quoted(name) + u' ' + mariaType(type, m_indexed.contains(key(table, name)), german);
        QString comment = type == ColumnType::YesNo  ? u"YESNO"_s
                          : type == ColumnType::Date ? u"DATE"_s
                                                     : u""_s;
        for (;;) {
            if (words.take({u"PRIMARY", u"KEY"})) {
                // Where a row comes without its key, the store gives one, counter or not.
                sql += u" NOT NULL AUTO_INCREMENT PRIMARY KEY"_s;
                comment = words.take(u"AUTOINCREMENT") ? u"COUNTER"_s : comment;
                keyed = true;
            } else if (words.take({u"NOT", u"NULL"})) {
                sql += u" NOT NULL"_s;
            } else if (words.take(u"DEFAULT")) {
                const Token& value = words.next();
                sql += u" DEFAULT "_s + (value.kind == Token::Text ? u'\'' + value.text + u'\'' : value.text);
            } else {
                break;
            }
        }
        return comment.isEmpty() ? sql : sql + u" COMMENT '"_s + comment + u'\'';
    }

    static QString mariaType(ColumnType type, bool indexed, bool german) {
        switch (type) {
        case ColumnType::Long:
            return u"BIGINT"_s;
        case ColumnType::YesNo:
            return u"TINYINT"_s;
        case ColumnType::Double:
        case ColumnType::Date:
            return u"DOUBLE"_s;
        default:
            return (indexed ? u"VARCHAR(255)"_s : u"MEDIUMTEXT"_s) +
                   (german ? QString() : u" COLLATE utf8mb4_nopad_bin"_s);
        }
    }

    QString addition(Words& words) {
        const QString table = words.name();
        words.need(u"ADD");
        words.take(u"COLUMN");
        bool keyed = false;
        return u"ALTER TABLE "_s + quoted(table) + u" ADD COLUMN "_s + column(words, table, keyed);
    }

    static QString index(Words& words, bool unique) {
        QString sql = (unique ? u"CREATE UNIQUE INDEX "_s : u"CREATE INDEX "_s) + unlessThere(words);
        sql += quoted(words.name()) + u" ON "_s;
        words.need(u"ON");
        sql += quoted(words.name());
        words.need(u"(");
        QStringList columns;
        do
            columns.append(quoted(words.name()));
        while (words.take(u","));
        words.need(u")");
        return sql + u" ("_s + columns.join(u", "_s) + u')';
    }

    QString view(Words& words) {
        const QString sql = u"CREATE VIEW "_s + unlessThere(words) + quoted(words.name()) + u" AS "_s;
        words.need(u"AS");
        return sql + changed(words.rest());
    }

    QHash<QString, ColumnType> m_types;
    QSet<QString> m_indexed;
};

} // namespace

QStringList translateDefinitions(const QString& script, Speech speech) {
    const QStringList statements = statementsOf(script);
    return speech == Speech::Sqlite ? statements : MariaDefinitions().run(statements);
}

} // namespace store
