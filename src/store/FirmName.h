#pragma once
#include <QString>

namespace store {

/// The firm's name as tavolino.ini tells it, for what is printed; empty where it tells none.
QString firmName();

} // namespace store
