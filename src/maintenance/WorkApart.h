#pragma once
#include "platform/Progress.h"
#include <functional>

namespace maintenance {

/// Runs file work in a thread of its own and waits for its end. The windows keep painting meanwhile, but
/// nothing that a user does is dealt out, neither then nor afterwards. `shown` is told in this thread
/// how far the work is; what the work throws comes out here.
void workApart(const std::function<void(const platform::Progress&)>& work, const platform::Progress& shown);

/// A stretch of a longer progress, which goes from one number to another of a hundred.
platform::Progress stretch(const platform::Progress& whole, int from, int to);

} // namespace maintenance
