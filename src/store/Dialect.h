#pragma once
#include "common/Value.h"
#include "store/Tokens.h"
#include <QByteArray>
#include <QSet>
#include <QString>
#include <utility>
#include <vector>

namespace store {

/// Where the value of a parameter comes from.
struct Parameter {
    /// How the literal becomes the value. RangeStart and RangeEnd bound what a LIKE pattern can match: the
    /// text in front of its first wildcard, and the last text that begins so.
    enum class Form { AsIs, Negative, RangeStart, RangeEnd };

    /// Position among the statement's literals; -1 for `constant`.
    int literal = -1;
    Form form = Form::AsIs;
    common::Value constant = {};
};

/// Where the first wildcard of a LIKE pattern stands.
enum class Wildcard { None, AtStart, Inside };
Wildcard wildcardOf(QStringView pattern);
/// The value that a text gives in this form.
QString literalText(const QString& text, Parameter::Form form);

/// A statement in the engine's own dialect. Literals have become parameters, so that statements that differ
/// only in their values share one translation and one prepared statement.
struct Translated {
    QByteArray sql;
    std::vector<Parameter> parameters;
    /// TOP n: how many rows, -1 for all. Rows that tie with the n-th in the order belong to the answer, so
    /// the reader goes on while the key columns stay the same.
    int top = -1;
    /// Columns that make up the order of a TOP query: positions in the result, or -1, -2, … for the first,
    /// second, … hidden column.
    std::vector<int> keyColumns;
    /// Columns at the end of the result that the translation added and the reader hides.
    int hiddenColumns = 0;
    /// Literals that went into the text, by position, and patterns whose kind did.
    std::vector<std::pair<int, QString>> fixed;
    std::vector<std::pair<int, Wildcard>> patterns;

    /// Whether this is also the translation of a statement of the same shape with these literals.
    bool fits(const std::vector<Literal>& literals) const;
};

/// Translates a statement of the program's dialect to SQLite's: TOP n with ties, DELETE * FROM, True and
/// False and any number on Yes/No columns, "&" and CHR, [names], LIKE with "%" and "_" (a pattern without
/// wildcards becomes an equality, one with a fixed beginning gets a range, so that indexes serve). Statements
/// other than SELECT, INSERT, UPDATE and DELETE pass as they are.
///
/// `yesNoColumns` holds the names in lower case. With `keyed` the row key comes as a further hidden column.
Translated translate(const QString& sql, const QSet<QString>& yesNoColumns, bool keyed = false);

/// A name of the schema as the engine reads it, whatever stands in it.
QString quotedName(const QString& name);

} // namespace store
