#pragma once
#include "common/Value.h"
#include "store/Engine.h"
#include "store/Tokens.h"
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <utility>
#include <vector>

namespace store {

/// The dialects that engines speak.
enum class Speech { Sqlite, MariaDb };

/// What the translation asks of the schema. Names come as the statement writes them: case does not matter.
struct Names {
    virtual ~Names() = default;
    /// Of a column of a table or view; Any where there is none.
    virtual ColumnType typeOf(const QString& table, const QString& column) const = 0;
    /// The column that tells the table's rows apart: its counter or key, or what the engine has in its stead.
    /// Of a view "", unless its rows have such a column.
    virtual QString rowKey(const QString& table) const = 0;

    /// The table's name as the schema spells it, where the engine minds.
    virtual QString tableName(const QString& table) const { return table; }

    bool isYesNo(const QString& table, const QString& column) const {
        return typeOf(table, column) == ColumnType::YesNo;
    }
};

/// Where the value of a parameter comes from.
struct Parameter {
    /// How the literal becomes the value. RangeStart and RangeEnd bound what a LIKE pattern can match: the
    /// text in front of its first wildcard, and the last text that begins so. AsText: a number beside a
    /// column of texts. AsNumber: a text beside a column of numbers; one that is no number lies above them
    /// all. Pattern: what LIKE takes, a backslash being nothing special.
    enum class Form { AsIs, Negative, RangeStart, RangeEnd, AsText, NegativeAsText, AsNumber, Pattern };

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
    /// The text, in pieces between which the parameters stand: one more than there are parameters.
    std::vector<QByteArray> pieces;
    std::vector<Parameter> parameters;
    /// TOP n where the reader sees to it: how many rows, -1 for all. Rows that tie with the n-th in the order
    /// belong to the answer, so the reader goes on while the key columns stay the same.
    int top = -1;
    /// Columns that make up the order of such a query: positions in the result, or -1, -2, … for the first,
    /// second, … hidden column.
    std::vector<int> keyColumns;
    /// Columns at the end of the result that the translation added and the reader hides. The row key of a
    /// keyed query is the first of them.
    int hiddenColumns = 0;
    /// Literals that went into the text, by position, and patterns whose kind did.
    std::vector<std::pair<int, QString>> fixed;
    std::vector<std::pair<int, Wildcard>> patterns;

    /// Whether this is also the translation of a statement of the same shape with these literals.
    bool fits(const std::vector<Literal>& literals) const;
    /// To be prepared: with "?" for each parameter.
    QByteArray prepared() const;
    /// MariaDB: the whole text with these values in it, written as its session reads them (backslash escapes
    /// on).
    QByteArray filled(const std::vector<Literal>& literals) const;
};

/// Translates a statement of the program's dialect: TOP n with ties, DELETE * FROM, True and False and any
/// number on Yes/No columns, "&" and CHR, [names], LIKE with "%" and "_", and what engines do differently
/// with numbers, texts and functions. SELECT, INSERT, UPDATE and DELETE are read and written anew,
/// definitions as by translateDefinitions; anything else passes as it is.
///
/// With `keyed` the row key comes as a further hidden column; the query must be on one table.
Translated translate(const QString& sql, const Names& names, Speech speech, bool keyed = false);

/// The statements of a script that are parted by ";", to be run in turn: CREATE TABLE, INDEX and VIEW, DROP,
/// ALTER TABLE ADD COLUMN, and INSERT, UPDATE and DELETE. Comments from "--" on go.
///
/// MariaDB keeps an indexed column of texts as VARCHAR(255), others as MEDIUMTEXT: the indexes belong into
/// one script with their tables. A column's COMMENT tells what its type does not: YESNO, DATE, or COUNTER for
/// the counter of a table. A table without a key gets an invisible one, `rowid`.
QStringList translateDefinitions(const QString& script, Speech speech);

/// A name of the schema as the engine reads it, whatever stands in it.
QString quotedName(const QString& name);

} // namespace store
