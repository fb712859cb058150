#pragma once
#include "platform/Progress.h"
#include <QString>

/// A backup is a compacted copy of the main database in one file; the working database is compacted on the
/// way.
namespace modDatenBackup {

/// "Backup_TavolinoNET_15Mai2026"
QString ProposedName();
/// Why no backup can go to that path; "" where one can.
QString Refusal(const QString& path);
/// With the databases closed. Works long and touches nothing but files, so that it may run in any thread.
/// `progress` goes from 10 to 100. Throws common::RunTimeError; until its last step the path has the file
/// that it had, and at every instant the working database is whole.
void CreateBackup(const QString& path, const platform::Progress& progress);

} // namespace modDatenBackup
