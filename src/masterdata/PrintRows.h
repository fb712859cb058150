#pragma once
#include "platform/Progress.h"
#include "platform/report/Reports.h"
#include "store/Recordset.h"
#include <QStringList>
#include <functional>

namespace masterdata {

/// Empties a table of the print database and adds a row for each row of a list, a block in a transaction;
/// `progress` is told between them. `columns` are the table's columns, divided by commas; `values` gives the
/// literals of a row, counted from 0. Given up or failed, the table is empty.
void fillPrintTable(const QString& table, const QString& columns, store::Recordset& rows,
                    const std::function<QStringList(int row)>& values, const platform::Progress& progress);

/// A run of one of the installation's report files over its print database.
platform::ReportJob installedReport(const QString& reportFile, const QString& title);

/// A number as literal, null as Null.
QString sqlNumber(const common::Value& number);

/// What the lists show for their two flags, as text literals.
QString printedInternet(const common::Value& flag);
QString printedStatus(const common::Value& inactive);

} // namespace masterdata
