#pragma once
#include "store/Progress.h"
#include <QString>
#include <QStringList>

namespace store {

/// Checks a closed database file, which stays as it is: it opens, the password fits, it is one of ours and of
/// no newer schema, it has these tables, and it is whole. Throws what Connection::Open throws, and
/// kStoreFailure for a table that is missing and for damage.
void CheckDatabase(const QString& path, const QString& password, const QStringList& tables,
                   const Progress& progress = {}, Depth depth = Depth::Structure);

} // namespace store
