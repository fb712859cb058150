#pragma once
#include "common/Value.h"
#include <QByteArray>
#include <QSet>
#include <QString>
#include <vector>

namespace store {

/// A statement in the engine's own dialect. Literals have become parameters, so that statements that differ
/// only in their values share one prepared statement.
struct Translated {
    QByteArray sql;
    std::vector<common::Value> parameters;
    /// TOP n: how many rows, -1 for all. Rows that tie with the n-th in the order belong to the answer, so
    /// the reader goes on while the key columns stay the same.
    int top = -1;
    /// Columns that make up the order of a TOP query: positions in the result, or -1, -2, … for the first,
    /// second, … hidden column.
    std::vector<int> keyColumns;
    /// Columns at the end of the result that the translation added and the reader hides.
    int hiddenColumns = 0;
};

/// Translates a statement of the program's dialect to SQLite's: TOP n with ties, DELETE * FROM, True and
/// False and any number on Yes/No columns, "&" and CHR, [names], LIKE with "%" and "_" (a pattern without
/// wildcards becomes an equality, one with a fixed beginning gets a range, so that indexes serve). Statements
/// other than SELECT, INSERT, UPDATE and DELETE pass as they are.
///
/// `yesNoColumns` holds the names in lower case. With `keyed` the row key comes as a further hidden column.
Translated translate(const QString& sql, const QSet<QString>& yesNoColumns, bool keyed = false);

} // namespace store
