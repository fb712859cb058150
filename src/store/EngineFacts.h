#pragma once
#include <QString>

namespace store {

class Engine;

/// The embedded engine and its version ("SQLite 3.40.1").
QString engineName();
/// The version of the schema that the open file has.
int schemaVersion(Engine& engine);

} // namespace store
