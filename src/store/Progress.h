#pragma once
#include <QtGlobal>
#include <functional>

namespace store {

/// Told by long work how far it is, from the thread that works. What it throws gives the work up. Empty for
/// work that nobody watches.
using Progress = std::function<void(qint64 done, qint64 total)>;

/// How much of a database is checked. That each row stands in each index takes many times as long as the
/// rest; of a copy that agrees byte by byte with a checked file it is enough that it opens and has its
/// tables.
enum class Depth { Tables, Structure, Everything };

} // namespace store
