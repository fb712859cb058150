#include "maintenance/modDatenRestore.h"
#include "common/FileCopy.h"
#include "common/RunTimeError.h"
#include "maintenance/CheckedCopy.h"
#include "maintenance/WorkApart.h"
#include "maintenance/modTagessicherung.h"
#include "orders/OrderDraft.h"
#include "store/CreateDatabase.h"
#include "store/MainCopies.h"
#include "store/Recordset.h"
#include "store/SchemaSteps.h"
#include "store/SoleHold.h"
#include "store/StoreGlobals.h"
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using maintenance::stretch;

namespace modDatenRestore {
namespace {

/// Of the copy that becomes the working database: the backup may be an older program's.
void bringUpToDate(const QString& file) {
    const QString connection = store::backupConnectionString(file);
    bool isChanged = false;
    store::Connection copy;
    copy.Open(connection);
    store::BringUpToDate(copy, [&] { isChanged = true; });
    copy.Close();
    // A log beside it would stay behind under its present name.
    store::SoleHold{connection};
    if (isChanged)
        maintenance::checkCopy(file, platform::unwatched);
}

bool canBeRead(const QString& path) {
    QFile file(path);
    bool isRead = file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    for (qint64 left = file.size(); isRead && left > 0;) {
        const qsizetype taken = file.read(1 << 20).size();
        isRead = taken > 0;
        left -= taken;
    }
    return isRead;
}

/// A database that is damaged is kept as it is. False where its disk does not give it back any more: that is
/// why somebody restores.
bool copyDamaged(const QString& target, const platform::Progress& progress) {
    store::removeDatabase(target);
    try {
        common::copyFile(maintenance::mainFile(), target, progress);
        return true;
    } catch (const common::RunTimeError& error) {
        if (error.number() != common::kPlatformFailure || canBeRead(maintenance::mainFile()))
            throw;
        qWarning("The present database cannot be kept: %s", error.what());
        return false;
    }
}

bool isOfTarget(const common::RunTimeError& error) {
    return error.number() == common::kDiskFull || error.number() == common::kNotWritable ||
           error.number() == common::kPlatformFailure || error.number() == common::kFileNotFound;
}

void keepPresent(store::SoleHold& hold, const QString& backup, const platform::Progress& progress) {
    const QString kept = modTagessicherung::NewNameBeforeRestore();
    const QString unfinished = kept + maintenance::kUnfinished;
    store::removeDatabase(unfinished);
    try {
        hold.CompactDatabase(store::backupConnectionString(unfinished), stretch(progress, 0, 80));
        maintenance::checkCopy(unfinished, stretch(progress, 80, 100));
    } catch (const common::RunTimeError& damage) {
        if (isOfTarget(damage) || !hold.isFile())
            throw;
        qWarning("The present database is kept as it is: %s", damage.what());
        const bool isKept = copyDamaged(unfinished, progress);
        hold.renew();
        if (!isKept)
            return;
    }
    modTagessicherung::PutInPlace(kept, backup);
}

} // namespace

QString Refusal(const QString& path) {
    if (maintenance::isOwnDataFile(path))
        return u"Die Datei \"%1\" gehört zu den Daten, mit denen Tavolino arbeitet. Wählen Sie ein Backup."_s
            .arg(QFileInfo(path).fileName());
    return {};
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
    store::removeDatabase(coming);
    try {
        common::copyFile(path, coming, stretch(progress, 0, 30));
        maintenance::checkCopy(coming, stretch(progress, 30, 45), store::Depth::Everything);
        bringUpToDate(coming);
        store::SoleHold hold(store::mainConnectionString());
        hold.prepare(coming, stretch(progress, 45, 70));
        keepPresent(hold, path, stretch(progress, 70, 95));
        hold.replaceWith(coming);
    } catch (...) {
        store::removeDatabase(coming);
        throw;
    }
    // Their customers' numbers are the former database's.
    orders::OrderDraft::forgetAll(orders::OrderDraft::defaultFile());
    progress(100, 100);
}

} // namespace modDatenRestore
