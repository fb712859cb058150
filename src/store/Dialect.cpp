#include "store/Dialect.h"
#include "common/RunTimeError.h"
#include "store/Emitter.h"
#include <algorithm>

namespace store {
namespace {

using namespace Qt::StringLiterals;

qsizetype firstWildcard(QStringView pattern) {
    const auto found =
        std::find_if(pattern.begin(), pattern.end(), [](QChar c) { return c == u'%' || c == u'_'; });
    return found - pattern.begin();
}

QString firstWord(const QString& sql) {
    const QStringView text = QStringView(sql).trimmed();
    const auto end = std::find_if_not(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
    return text.first(end - text.begin()).toString().toUpper();
}

/// As it is, with all its literals.
Translated untouched(const QString& sql, const QString& text) {
    Translated result;
    result.pieces.push_back(text.toUtf8());
    Shape shape;
    readShape(sql, shape);
    for (size_t i = 0; i < shape.literals.size(); ++i)
        result.fixed.emplace_back(int(i), shape.literals[i].written.toString());
    return result;
}

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

QByteArray Translated::prepared() const {
    QByteArray sql = pieces.front();
    for (size_t i = 1; i < pieces.size(); ++i)
        sql += '?' + pieces[i];
    return sql;
}

Translated translate(const QString& sql, const Names& names, Speech speech, bool keyed) {
    const QString verb = firstWord(sql);
    if (verb.isEmpty())
        throw common::RunTimeError(common::kSqlFailure, u"Fehler in einer Datenbankabfrage."_s,
                                   u"empty statement: "_s + withoutValues(sql));
    if (QStringList{u"SELECT"_s, u"INSERT"_s, u"UPDATE"_s, u"DELETE"_s, u"WITH"_s}.contains(verb)) {
        const auto emitter =
            speech == Speech::Sqlite ? sqliteEmitter(sql, names, keyed) : mariaEmitter(sql, names, keyed);
        return emitter->run(parseStatement(sql));
    }
    const bool defines = verb == u"CREATE"_s || verb == u"DROP"_s || verb == u"ALTER"_s;
    if (speech == Speech::MariaDb && defines)
        return untouched(sql, translateDefinitions(sql, speech).join(u"; "_s));
    return untouched(sql, sql);
}

QString quotedName(const QString& name) {
    return QLatin1Char('"') + QString(name).replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
           QLatin1Char('"');
}

} // namespace store
