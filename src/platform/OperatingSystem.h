#pragma once
#include <QString>

namespace platform {

/// The folder of the operating system itself ("C:\Windows"); the root folder where there is none such.
QString systemFolder();

} // namespace platform
