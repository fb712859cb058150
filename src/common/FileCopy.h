#pragma once
#include <QString>
#include <functional>

namespace common {

/// Copies a file to a new one, for its owner only; by the end it is on disk. Throws what throwFileError
/// throws; what fails, or is given up by what `progress` throws, leaves none.
void copyFile(const QString& from, const QString& to,
              const std::function<void(qint64 done, qint64 total)>& progress = {});
/// Whether the files agree byte by byte. Throws what throwFileError throws.
bool haveSameBytes(const QString& one, const QString& other,
                   const std::function<void(qint64 done, qint64 total)>& progress = {});

/// What was written to the file so far is on disk by the end.
void syncFile(const QString& path);

} // namespace common
