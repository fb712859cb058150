#pragma once
#include <QAbstractSocket>

namespace platform {

/// Lets a connected TCP socket notice within about a minute that the other side is gone without a word,
/// although nothing is ever sent on it.
void keepAlive(QAbstractSocket& socket);

} // namespace platform
