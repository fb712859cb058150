#pragma once
#include "platform/Progress.h"
#include <QString>

namespace platform {
class Dialogs;
}

namespace platform {

class DataGrid;

/// Writes the list as a spreadsheet (.xlsx): headings, order and choice of rows, alignment and formats as
/// shown, without the hidden columns; numbers and dates stay such. A file of that name is replaced once the
/// new one is whole; throws common::RunTimeError when it cannot be written.
void saveAsXlsx(const DataGrid& grid, const QString& path, const Progress& progress = unwatched);

/// Puts the export into the list's context menu; `name` is the file name that is suggested. Failures are told
/// to the user. `dialogs` must outlive the list.
void offerSheetExport(DataGrid& grid, Dialogs& dialogs, const QString& name);

} // namespace platform
