#pragma once
#include "install/Schema.h"

namespace install {

/// The rows that every installation starts with: the settings, the shop's weekdays, looks and documents, the
/// directory of postcodes, the phone book's version, the row of report headings.
void addFirstRows(sqlite3* handle, Database database);

} // namespace install
