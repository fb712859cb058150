#pragma once
#include "common/RunTimeError.h"
#include "platform/Progress.h"
#include "store/Progress.h"
#include <QStringList>

/// What backup, restore and daily copies do to the files.
namespace maintenance {

/// Behind the name of a file that is not whole yet.
extern const QString kUnfinished;

/// Where the databases stand.
QString dataFolder();
/// The main database's file.
QString mainFile();
/// Whether the path leads to the working database or to another of the program's own data files, also
/// to one that it may make there.
bool isOwnDataFile(const QString& path);
/// As store::CheckDatabase: the file is a whole copy of the main database.
void checkCopy(const QString& path, const platform::Progress& progress,
               store::Depth depth = store::Depth::Structure);
/// Copies a closed, checked copy of the main database to that path, where it replaces a file that stands
/// there in one step, once it has been written, synced and checked under another name beside it.
void copyChecked(const QString& from, const QString& to, const platform::Progress& progress);

/// Why work that writes into those folders failed, a sentence for the user; "" where it was refused rights.
QString causeOf(const common::RunTimeError& error, const QStringList& folders);

} // namespace maintenance
