#pragma once
#include <QStringView>

namespace common {

/// Whether the whole text fits the pattern: "*" any text, "?" one character, "#" one digit, "[a-z_]" one of a
/// set,
/// "[!a-z]" none of it. Case counts. A bracket that is never closed stands for itself.
bool like(QStringView text, QStringView pattern);

} // namespace common
