#pragma once
#include <QString>

namespace test {

/// Brings a database of the first schema up to date, adds couriers, makes daily copies and backups and reads
/// the backups in, on and on, in the installation given (made by `TestFirm`, its databases closed). What
/// happens stands on standard output at once, one a line:
///
///     K <count>      so many couriers are stored
///     B <count>      so many are in the backup
///     > <what>       Schritte, Tagessicherung, Backup or Einlesen begins
int saveUntilKilled(const QString& installation);

/// Where the backups go.
QString backupFile(const QString& installation);
/// A closed database of the first schema, which the test makes, and the copy that is brought up to date.
QString firstDatabase(const QString& installation);
QString olderDatabase(const QString& installation);

} // namespace test
