#pragma once
#include "platform/Dialogs.h"
#include "store/RowMark.h"
#include <functional>

namespace platform {

/// Runs what saves or deletes, and gives whether it did. Otherwise another station was faster, nothing is
/// written, and the user was told; `gone` runs where the record is gone, what is typed then can be saved as a
/// new one.
bool saving(Dialogs& dialogs, const std::function<void()>& save, const std::function<void()>& gone = {});

} // namespace platform
