#pragma once
#include <QString>
#include <system_error>

namespace common {

/// Of the last call of the system in this thread.
std::error_code lastError();
/// Throws what the system says about a file as a RunTimeError: kNotWritable for refused rights, kDiskFull,
/// else kPlatformFailure.
[[noreturn]] void throwFileError(const std::error_code& error, const QString& path);

} // namespace common
