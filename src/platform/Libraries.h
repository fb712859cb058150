#pragma once
#include <QStringList>

namespace platform {

/// The libraries that the program stands on, each with its version where it tells one.
QStringList libraries();

} // namespace platform
