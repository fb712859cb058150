#include "platform/WatchedQuery.h"
#include "store/StoreGlobals.h"

namespace platform {

store::Waiting waitingWith(const Progress& progress) {
    if (!isWatched(progress))
        return {};
    return [&progress] { progress(0, 0); };
}

store::Rows readRows(const QString& sql, const Progress& progress) {
    store::Rows result;
    ConnMain.Read([&](store::Engine& engine) { result = store::readAll(engine, sql); },
                  waitingWith(progress));
    return result;
}

} // namespace platform
