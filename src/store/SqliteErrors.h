#pragma once
#include <QString>

namespace SQLite {
class Exception;
}

namespace store {

/// Throws the engine's error as a RunTimeError whose sentence a user can read; `context` (a statement or a
/// path) goes into the detail.
[[noreturn]] void throwStoreError(const SQLite::Exception& error, const QString& context);

} // namespace store
