#include "store/BuildDatabase.h"
#include "store/CreateDatabase.h"
#include "store/SqliteEngine.h"

namespace store {

void buildDatabase(const QString& path, const QString& password, Database database,
                   const std::function<void(SqliteEngine&)>& fill) {
    const auto script = [database](Definitions which) { return definitions(database, which).toUtf8(); };
    createDatabase(path, password, database == Database::Main ? kSchemaVersion : kFirstSchemaVersion);
    SqliteEngine engine(path, password);
    engine.runScript("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; PRAGMA cache_size = -200000;"
                     "BEGIN IMMEDIATE");
    engine.runScript(script(Definitions::Tables));
    fill(engine);
    engine.runScript(script(Definitions::Indexes));
    engine.runScript(script(Definitions::Views));
    engine.runScript("COMMIT; PRAGMA synchronous = FULL; PRAGMA journal_mode = WAL");
}

} // namespace store
