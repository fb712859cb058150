#include "store/EngineFacts.h"
#include "store/Engine.h"
#include <sqlite3.h>

namespace store {

QString engineName() {
    return QStringLiteral("SQLite ") + QLatin1String(sqlite3_libversion());
}

int schemaVersion(Engine& engine) {
    return engine.schemaVersion();
}

} // namespace store
