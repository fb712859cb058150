#include "masterdata/PrintRows.h"
#include "store/StoreGlobals.h"

using namespace Qt::StringLiterals;

namespace masterdata {

void fillPrintTable(const QString& table, const QString& columns, store::Recordset& rows,
                    const std::function<QStringList(int row)>& values, const platform::Progress& progress) {
    store::Transaction together(ConnPrint);
    ConnPrint.Execute(u"DELETE * FROM "_s + table);
    const QString insert = u"INSERT INTO "_s + table + u'(' + columns + u") VALUES("_s;
    const int count = rows.RecordCount();
    for (int row = 0; row < count; ++row) {
        ConnPrint.Execute(insert + values(row).join(u',') + u')');
        progress(row + 1, count);
    }
    together.commit();
}

QString sqlNumber(const common::Value& number) {
    return number.isNull() ? u"Null"_s : common::Value(number.toDouble()).toText();
}

QString printedInternet(const common::Value& flag) {
    return store::sqlText(flag.isTrue() ? u"Ja"_s : u"Nein"_s);
}

QString printedStatus(const common::Value& inactive) {
    return store::sqlText(inactive.isTrue() ? u"Inaktiv"_s : u"Aktiv"_s);
}

} // namespace masterdata
