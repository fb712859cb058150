#pragma once
#include <QtGlobal>
#include <functional>

namespace platform {

/// Thrown out of long work that the user has given up. Whoever showed the progress catches it.
struct GivenUp {};

/// Told by long work how far it is, as often as it likes. Throws GivenUp.
using Progress = std::function<void(qint64 done, qint64 total)>;

/// For work that nobody watches.
inline void unwatched(qint64 /*done*/, qint64 /*total*/) {
}

inline bool isWatched(const Progress& progress) {
    const auto* plain = progress.target<void (*)(qint64, qint64)>();
    return !plain || *plain != &unwatched;
}

} // namespace platform
