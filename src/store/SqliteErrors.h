#pragma once
#include <QString>

namespace SQLite {
class Exception;
}

namespace store {

/// Throws the engine's error as a RunTimeError whose sentence a user can read: it names the database's file.
/// The statement goes into the detail, without its values.
[[noreturn]] void throwStoreError(const SQLite::Exception& error, const QString& path,
                                  const QString& statement = {});

} // namespace store
