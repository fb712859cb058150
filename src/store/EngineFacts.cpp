#include "store/EngineFacts.h"
#include "store/Engine.h"
#include <sqlite3.h>

namespace store {

QString engineName() {
    return QStringLiteral("SQLite ") + QLatin1String(sqlite3_libversion());
}

int schemaVersion(Engine& engine) {
    const auto cursor = engine.query(QStringLiteral("PRAGMA user_version"), false);
    return cursor->next() ? int(cursor->value(0).toLong()) : 0;
}

} // namespace store
