#include "maintenance/modDatenRestore.h"
#include "common/FileCopy.h"
#include "common/RunTimeError.h"
#include "maintenance/CheckedCopy.h"
#include "maintenance/WorkApart.h"
#include "maintenance/modTagessicherung.h"
#include "store/MainCopies.h"
#include "store/Recordset.h"
#include "store/SchemaSteps.h"
#include "store/SoleHold.h"
#include "store/StoreGlobals.h"
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using maintenance::stretch;

namespace modDatenRestore {
namespace {

/// Of the copy that becomes the working database: the backup may be an older program's.
void bringUpToDate(const QString& file) {
    store::Connection copy;
    copy.Open(store::backupConnectionString(file));
    store::BringUpToDate(copy);
    copy.Close();
}

/// A database that is damaged is kept as it is: it is why somebody restores.
void keepPresent(store::SoleHold& hold, const QString& backup, const platform::Progress& progress) {
    const QString kept = modTagessicherung::NewNameBeforeRestore();
    const QString unfinished = kept + modTagessicherung::kUnfinished;
    maintenance::removeLeftover(unfinished);
    try {
        hold.CompactDatabase(store::backupConnectionString(unfinished), stretch(progress, 0, 80));
        maintenance::checkCopy(unfinished, stretch(progress, 80, 100));
    } catch (const common::RunTimeError& damage) {
        if (damage.number() != common::kStoreFailure)
            throw;
        maintenance::removeLeftover(unfinished);
        common::copyFile(maintenance::mainFile(), unfinished, progress);
    }
    modTagessicherung::PutInPlace(kept, backup);
}

} // namespace

QString Refusal(const QString& path) {
    if (maintenance::isOwnDataFile(path))
        return u"Die Datei \"%1\" gehört zu den Daten, mit denen Tavolino arbeitet. Wählen Sie ein Backup."_s
            .arg(QFileInfo(path).fileName());
    // Where the present database goes first.
    return modTagessicherung::FolderProblem();
}

void ProbeBackup(const QString& path) {
    store::Connection backup;
    backup.Open(store::backupProbeString(path));
    store::Recordset rows;
    for (const QString& table : store::mainTables()) {
        rows.Open(u"SELECT * FROM "_s + table, backup, store::adOpenForwardOnly, store::adLockReadOnly);
        rows.Close();
    }
    backup.Close();
}

void RestoreBackup(const QString& path, const platform::Progress& progress) {
    const QString coming = QFileInfo(maintenance::mainFile()).path() + u"/DBTavolino_NEU.mdb"_s;
    maintenance::removeLeftover(coming);
    try {
        common::copyFile(path, coming, stretch(progress, 0, 30));
        maintenance::checkCopy(coming, stretch(progress, 30, 45), store::Depth::Everything);
        bringUpToDate(coming);
        store::SoleHold hold(store::mainConnectionString());
        keepPresent(hold, path, stretch(progress, 45, 95));
        hold.replaceWith(coming);
    } catch (...) {
        QFile::remove(coming);
        throw;
    }
    progress(100, 100);
}

} // namespace modDatenRestore
