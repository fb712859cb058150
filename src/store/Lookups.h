#pragma once
#include <QString>

/// The small questions that guards and duplicate tests ask of the main database. They use RsMain.
namespace store {

/// Whether the query delivers a row.
bool rowExists(const QString& sql);
/// lng_ID of the query's first row, -1 without one.
qint64 findKey(const QString& sql);
/// The duplicate test of the master data: key of a row whose `column` holds `text`, other than the row `key`;
/// -1 when there is none. A new row has the key -1.
qint64 findDuplicate(const QString& table, const QString& column, const QString& text, qint64 key);

} // namespace store
