#pragma once
#include "platform/Progress.h"
#include <QString>

/// A restore puts a copy of a backup file in the place of the main database.
namespace modDatenRestore {

/// Why that file cannot be read in, or none at all; "" where it can be tried.
QString Refusal(const QString& path);
/// Looks into the file, which stays as it is. Throws where it is no backup of this system: of a table that is
/// missing, a wrong password, a newer schema.
void ProbeBackup(const QString& path);
/// With the databases closed. Works long and touches nothing but files, so that it may run in any thread. The
/// present database stays as a checked copy among the daily ones; orders that were begun do not. Throws
/// common::RunTimeError; at every instant the working database is whole, the present one or the restored one.
void RestoreBackup(const QString& path, const platform::Progress& progress);

} // namespace modDatenRestore
