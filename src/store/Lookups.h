#pragma once
#include <QString>
#include <initializer_list>
#include <vector>

/// The small questions that screens and modules ask of the main database. They use RsMain.
namespace store {

/// Query of the row of that key, the column lng_ID.
QString rowQuery(const QString& table, qint64 key);
void deleteRow(const QString& table, qint64 key);

/// Whether the query delivers a row.
bool rowExists(const QString& sql);
/// The guard of a deletion: whether a query delivers a row once the key stands behind it. They are asked in
/// turn up to the first that does.
bool isReferredTo(qint64 key, std::initializer_list<const char16_t*> queries);
/// lng_ID of the query's first row, -1 without one.
qint64 findKey(const QString& sql);
/// First column of the query's first row, "" without one.
QString findText(const QString& sql);
/// The duplicate test of the master data: key of a row whose `column` holds `text`, other than the row `key`;
/// -1 when there is none. A new row has the key -1.
qint64 findDuplicate(const QString& table, const QString& column, const QString& text, qint64 key);

struct Eintrag {
    qint64 lng_ID;
    QString text;

    friend bool operator==(const Eintrag&, const Eintrag&) = default;
};

/// The rows of a query on a key and a text, as entries of a list.
std::vector<Eintrag> entriesOf(const QString& sql);

} // namespace store
