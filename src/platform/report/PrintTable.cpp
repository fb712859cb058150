#include "platform/report/PrintTable.h"
#include "common/RunTimeError.h"
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
    store::transact(ConnPrint, [&] {
        for (int row = from; row < to; ++row)
            ConnPrint.Execute(insert + values(row).join(u',') + u')');
    });
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
        const auto failure = std::current_exception();
        try {
            ConnPrint.Execute(empty);
        } catch (const common::RunTimeError&) {
            // What failed first is told.
        }
        std::rethrow_exception(failure);
    }
}

void setPrintHeading(const QString& column, const QString& text) {
    const QString value = store::sqlText(text);
    if (ConnPrint.Execute(u"UPDATE PrintSettings SET "_s + column + u" = "_s + value) == 0)
        ConnPrint.Execute(u"INSERT INTO PrintSettings("_s + column + u") VALUES("_s + value + u')');
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
