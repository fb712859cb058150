#pragma once
#include <QString>

namespace test {

/// Adds couriers, makes daily copies and backups and reads the backups in, on and on, in the installation
/// given (made by `TestFirm`, its databases closed). What happens stands on standard output at once, one a
/// line:
///
///     K <count>      so many couriers are stored
///     B <count>      so many are in the backup
///     > <what>       Tagessicherung, Backup or Einlesen begins
int saveUntilKilled(const QString& installation);

/// Where the backups go.
QString backupFile(const QString& installation);

} // namespace test
