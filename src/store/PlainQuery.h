#pragma once
#include <QString>
#include <optional>

namespace store {

/// A query of rows of one table or view, taken apart: "SELECT columns FROM table WHERE condition ORDER BY
/// order". Its rows are the table's own, so that it can be narrowed, put in another order and, where the
/// table has a counter, read row by row.
struct PlainQuery {
    QString table;
    /// Names divided by commas, or "*"; as written.
    QString columns;
    /// As written, each without its words in front; "" without one.
    QString condition, order;

    QString sql() const;
    /// As many of the rows as meet this condition as well.
    PlainQuery narrowed(const QString& further) const;
};

/// Takes a query apart, or makes one of a bare table name. Nothing for a query whose rows are not those of
/// one table (TOP, DISTINCT, computed or renamed columns, joins, groups, LIMIT).
std::optional<PlainQuery> plainQuery(const QString& source);

} // namespace store
