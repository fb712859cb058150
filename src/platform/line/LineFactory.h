#pragma once
#include "platform/line/LineSettings.h"
#include "platform/line/TelephoneLine.h"
#include <memory>

namespace platform {

/// The line that the settings ask for, not started; null when they ask for none. Never throws: a line that
/// cannot be made out tells so when it is started.
std::unique_ptr<BasicCAPI32> createLine(const LineSettings& settings);

} // namespace platform
