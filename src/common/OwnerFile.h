#pragma once
#include <QString>

/// Files that hold what is nobody else's business.
namespace common {

/// Creates an empty file that only its owner may read and write. False when there is one, or it cannot be
/// made.
bool createForOwner(const QString& path);
/// Takes the rights of all others away from a file. A file that is not there, or somebody else's, stays as it
/// is.
void keepForOwner(const QString& path);

} // namespace common
