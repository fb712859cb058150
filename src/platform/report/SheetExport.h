#pragma once
#include "platform/Progress.h"
#include "platform/form/DataGrid.h"
#include <QString>
#include <functional>
#include <vector>

namespace platform {

class Dialogs;

/// A table as it goes into a spreadsheet of its own: headings, alignment and formats as the lists show them;
/// numbers and dates stay such, a summed column ends in a formula. Columns of width 0 are left out.
struct SheetTable {
    QString name;
    std::vector<DataColumn> columns;
    int rows = 0;
    std::function<common::Value(int row, int column)> value;
    /// Stands above each printed page: what span, whose.
    QString heading{};
};

/// The rows of a list as it stands. The list has to outlive the table.
SheetTable sheetOf(const DataGrid& grid, const QString& name, const QString& heading = {});

/// Writes the tables as one file (.xlsx), a sheet each. A file of that name is replaced once the new one is
/// whole; throws common::RunTimeError when it cannot be written.
void saveAsXlsx(const std::vector<SheetTable>& tables, const QString& path,
                const Progress& progress = unwatched);

/// Asks where to and writes the tables; `name` is the file name that is suggested. Failures are told to the
/// user.
void exportSheets(Dialogs& dialogs, const QString& name, const std::vector<SheetTable>& tables);

/// Gives the list a context menu with the export. `dialogs` must outlive the list.
void offerSheetExport(DataGrid& grid, Dialogs& dialogs, const QString& name);

} // namespace platform
