#pragma once
#include <QByteArray>
#include <QFileDevice>
#include <QString>
#include <optional>
#include <system_error>

namespace common {

/// Puts the bytes in the file's place in one step: whoever reads it, and whatever is cut off, finds the
/// former file or the whole new one. By the end they are on disk.
///
/// Without `permissions` a file that is replaced keeps its own. Throws RunTimeError kPlatformFailure, or
/// kDiskFull where that is the reason, when anything of it fails; the former file stands untouched then.
void writeFileAtomically(const QString& path, const QByteArray& bytes,
                         std::optional<QFileDevice::Permissions> permissions = {});

/// Puts the file `with`, which stands beside it and is complete, in the file's place in one step, once all
/// its bytes are on disk. Gives what failed; both files stand as they did then.
std::error_code replaceFile(const QString& path, const QString& with);

} // namespace common
