#pragma once
#include "platform/Progress.h"
#include "platform/report/Reports.h"
#include "store/Recordset.h"
#include <QStringList>
#include <functional>

/// The work tables of the print database, which a report reads.
namespace platform {

/// Empties a table of the print database and adds `count` rows, a block in a transaction; `progress` is told
/// between them. `columns` are the table's columns, divided by commas; `values` gives the literals of a row,
/// asked for in turn from 0 on. Given up or failed, the table is empty.
void fillPrintTable(const QString& table, const QString& columns, int count,
                    const std::function<QStringList(int row)>& values, const Progress& progress);

/// Puts a text into the one row of headings.
void setPrintHeading(const QString& column, const QString& text);

/// A run of one of the installation's report files over its print database.
ReportJob installedReport(const QString& reportFile, const QString& title);

/// A number as literal, null as Null.
QString sqlNumber(const common::Value& number);

} // namespace platform
