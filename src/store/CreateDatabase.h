#pragma once
#include "store/Progress.h"
#include <QString>

namespace store {

class SqliteEngine;

/// The version of the main database's schema that this program reads and writes; SchemaSteps.h leads there
/// from an earlier one. Each file keeps its own; one of a newer version is refused when it is opened.
inline constexpr int kSchemaVersion = 3;
/// That of the other databases, which have not changed.
inline constexpr int kFirstSchemaVersion = 1;
/// Marks a file as one of ours.
inline constexpr int kApplicationId = 0x54564c4e;

/// Creates an empty database file, for its owner only, with the password gate. An empty password leaves the
/// gate open. The password is a gate only: the data in the file are not encrypted; the file keeps a salted
/// verifier. Throws common::RunTimeError kTargetExists when the file exists.
void createDatabase(const QString& path, const QString& password, int schemaVersion = kFirstSchemaVersion);

/// Deletes a database file that nobody needs, and what stands beside it. Throws where it stays.
void removeDatabase(const QString& path);

/// Sets another password on an open, own file; used on a compacted copy.
void setPassword(const QString& path, const QString& oldPassword, const QString& newPassword);

/// Writes a compacted copy of the source's database to the target's path, for its owner only. Both are
/// connection strings; the passwords must fit the source, and the target takes the target string's. An
/// existing target is refused (kTargetExists); what fails or is given up leaves none. The main database of a
/// server is copied as it is at one moment, into a file with its tables, indexes and views.
void CompactDatabase(const QString& sourceConnection, const QString& targetConnection,
                     const Progress& progress = {});
/// The same for a source that is open; `password` is its own.
void compact(SqliteEngine& source, const QString& password, const QString& targetConnection,
             const Progress& progress = {});

} // namespace store
