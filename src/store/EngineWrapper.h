#pragma once
#include "store/Engine.h"

namespace store {

/// What openEngine gives goes through this where it is set: for tests that look at what an engine is asked.
using EngineWrapper =
    std::function<std::unique_ptr<Engine>(std::unique_ptr<Engine>, const ConnectionString&)>;

void setEngineWrapper(EngineWrapper wrapper);

} // namespace store
