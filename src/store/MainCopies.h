#pragma once
#include <QString>
#include <QStringList>

namespace store {

/// A copy of the main database somewhere else.
QString backupConnectionString(const QString& path);
/// The same, to look at only: the file stays as it is.
QString backupProbeString(const QString& path);
/// Source and target of the main database's compaction.
QString mainCompactionSource();
QString mainCompactionTarget();
/// The tables that make a file a copy of the main database, in the order in which they are looked at.
const QStringList& mainTables();

} // namespace store
