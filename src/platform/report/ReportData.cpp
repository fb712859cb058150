#include "platform/report/ReportTemplate.h"
#include "store/Recordset.h"

using namespace Qt::StringLiterals;

namespace platform {

namespace {

qint64 countOf(store::Connection& connection, const QString& table) {
    store::Recordset recordset;
    const store::OpenRecordset rows(recordset, u"SELECT Count(*) AS N FROM "_s + table, connection);
    return rows->Fields(u"N").toLong();
}

std::vector<ReportData::Row> rowsOf(store::Connection& connection, const QString& table,
                                    const Progress& progress) {
    const qint64 count = countOf(connection, table);
    // Nobody else has this recordset and its connection: the progress may let other work come in between.
    store::Recordset rows;
    rows.Open(u"SELECT * FROM "_s + table, connection, store::adOpenForwardOnly, store::adLockReadOnly);
    std::vector<ReportData::Row> result;
    for (; !rows.Eof(); rows.MoveNext()) {
        ReportData::Row row;
        for (const store::Column& column : rows.Columns())
            row.emplace_back(column.name, rows.Fields(column.name).text());
        result.push_back(std::move(row));
        progress(qint64(result.size()), count);
    }
    return result;
}

} // namespace

ReportData readPrintTables(const QString& dataFile, const QStringList& names, const Progress& progress) {
    store::Connection connection;
    connection.Open(u"Data Source="_s + dataFile + u";"_s);
    ReportData data;
    for (const QString& name : names) {
        if (!connection.engine().columnsOf(name).empty())
            data.tables[name] = rowsOf(connection, name, progress);
    }
    return data;
}

} // namespace platform
