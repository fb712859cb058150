#include "platform/report/PrintTable.h"
#include "store/FirmName.h"
#include "store/StoreGlobals.h"
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// Written in some 10 ms, so that the progress is told as often as it is painted.
constexpr int kBlock = 1000;

/// Gives the row behind the block.
int fillBlock(const QString& insert, const std::function<QStringList(int row)>& values, int from, int to) {
    store::Transaction together(ConnPrint);
    for (int row = from; row < to; ++row)
        ConnPrint.Execute(insert + values(row).join(u',') + u')');
    together.commit();
    return to;
}

} // namespace

void fillPrintTable(const QString& table, const QString& columns, int count,
                    const std::function<QStringList(int row)>& values, const Progress& progress) {
    const QString empty = u"DELETE * FROM "_s + table;
    const QString insert = u"INSERT INTO "_s + table + u'(' + columns + u") VALUES("_s;
    ConnPrint.Execute(empty);
    try {
        for (int row = 0; row < count; progress(row, count))
            row = fillBlock(insert, values, row, std::min(row + kBlock, count));
    } catch (...) {
        ConnPrint.Execute(empty);
        throw;
    }
}

void setPrintHeading(const QString& column, const QString& text) {
    ConnPrint.Execute(u"UPDATE PrintSettings SET "_s + column + u" = "_s + store::sqlText(text));
}

ReportJob installedReport(const QString& reportFile, const QString& title) {
    return {.ReportFileName = store::appPath() + u"\\Reports\\"_s + reportFile,
            .DataFile = PfadPrintDB,
            .WindowTitle = title,
            .firm = store::firmName()};
}

QString sqlNumber(const common::Value& number) {
    return number.isNull() ? u"Null"_s : common::Value(number.toDouble()).toText();
}

} // namespace platform
