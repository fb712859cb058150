#include "store/Lookups.h"
#include "store/StoreGlobals.h"

namespace store {

bool rowExists(const QString& sql) {
    const OpenRecordset rows(RsMain, sql, ConnMain);
    return !rows->Eof();
}

qint64 findKey(const QString& sql) {
    const OpenRecordset rows(RsMain, sql, ConnMain);
    return rows->Eof() ? -1 : rows->Fields(u"lng_ID").toLong();
}

qint64 findDuplicate(const QString& table, const QString& column, const QString& text, qint64 key) {
    const QString sql = QStringLiteral("SELECT * FROM ") + table + QStringLiteral(" WHERE ") + column +
                        QStringLiteral(" = ") + sqlText(text);
    return findKey(key == -1 ? sql + QStringLiteral(";")
                             : sql + QStringLiteral(" AND lng_ID <> ") + QString::number(key));
}

} // namespace store
