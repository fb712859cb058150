#include "store/Lookups.h"
#include "store/StoreGlobals.h"
#include <algorithm>

using namespace Qt::StringLiterals;

namespace store {

QString rowQuery(const QString& table, qint64 key) {
    return u"SELECT * FROM "_s + table + u" WHERE lng_ID = "_s + QString::number(key);
}

void deleteRow(const QString& table, qint64 key) {
    ConnMain.Execute(u"DELETE FROM "_s + table + u" WHERE lng_ID = "_s + QString::number(key));
}

bool rowExists(const QString& sql) {
    const OpenRecordset rows(RsMain, sql, ConnMain);
    return !rows->Eof();
}

bool isReferredTo(qint64 key, std::initializer_list<const char16_t*> queries) {
    return std::any_of(queries.begin(), queries.end(), [key](const char16_t* query) {
        return rowExists(QString::fromUtf16(query) + QString::number(key));
    });
}

qint64 findKey(const QString& sql) {
    const OpenRecordset rows(RsMain, sql, ConnMain);
    return rows->Eof() ? -1 : rows->Fields(u"lng_ID").toLong();
}

QString findText(const QString& sql) {
    const OpenRecordset rows(RsMain, sql, ConnMain);
    return rows->Eof() ? QString() : rows->Fields(rows->Columns().front().name).text();
}

qint64 findDuplicate(const QString& table, const QString& column, const QString& text, qint64 key) {
    const QString sql = u"SELECT * FROM "_s + table + u" WHERE "_s + column + u" = "_s + sqlText(text);
    return findKey(key == -1 ? sql + u';' : sql + u" AND lng_ID <> "_s + QString::number(key));
}

std::vector<Eintrag> entriesOf(const QString& sql) {
    std::vector<Eintrag> entries;
    const OpenRecordset rows(RsMain, sql, ConnMain);
    for (const QString text = rows->Columns().at(1).name; !rows->Eof(); rows->MoveNext())
        entries.push_back({rows->Fields(u"lng_ID").toLong(), rows->Fields(text).text()});
    return entries;
}

} // namespace store
