#pragma once
#include <QtGlobal>
#include <functional>

namespace store {

/// Told by long work how far it is, from the thread that works. What it throws gives the work up. Empty for
/// work that nobody watches.
using Progress = std::function<void(qint64 done, qint64 total)>;

/// How much of a database is checked. That each row stands in each index takes many times as long as the
/// rest.
enum class Depth { Structure, Everything };

} // namespace store
