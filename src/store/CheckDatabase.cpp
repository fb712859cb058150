#include "store/CheckDatabase.h"
#include "common/RunTimeError.h"
#include "store/SqliteEngine.h"
#include <QFileInfo>

namespace store {

using namespace Qt::StringLiterals;

void CheckDatabase(const QString& path, const QString& password, const QStringList& tables,
                   const Progress& progress, Depth depth) {
    SqliteEngine engine(path, password, Access::Look);
    for (const QString& table : tables)
        if (engine.columnsOf(table).empty())
            throw common::RunTimeError(common::kStoreFailure,
                                       u"In der Datenbank \"%1\" fehlt die Tabelle \"%2\"."_s.arg(
                                           QFileInfo(path).fileName(), table));
    if (depth != Depth::Tables)
        engine.checkIntegrity(depth, progress);
}

} // namespace store
