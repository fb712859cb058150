#include "maintenance/CheckedCopy.h"
#include "common/AtomicFile.h"
#include "common/FileCopy.h"
#include "common/FileErrors.h"
#include "maintenance/WorkApart.h"
#include "store/CheckDatabase.h"
#include "store/CreateDatabase.h"
#include "store/MainCopies.h"
#include "store/StoreGlobals.h"
#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace maintenance {
const QString kUnfinished = u".unfertig"_s;

QString dataFolder() {
    return store::appPath() + u"/Data"_s;
}

QString mainFile() {
    return dataFolder() + u"/DBTavolino.mdb"_s;
}

bool isOwnDataFile(const QString& path) {
    const QStringList own = {u"DBTavolino.mdb*"_s,   u"DBTavolinoPhone.mdb*"_s, u"DB_PRINT_Tavolino.mdb*"_s,
                             u"DBOnlineShop.mdb*"_s, u"DB*_CLEAN.mdb*"_s,       u"DBTavolino_NEU.mdb*"_s,
                             u"Auftrag.entwurf*"_s,  u"tavolino.log*"_s};
    const QFileInfo chosen(path);
    const QDir data(dataFolder());
    if (QDir::match(own, chosen.fileName()) &&
        QDir(chosen.absolutePath()).canonicalPath() == data.canonicalPath())
        return true;
    std::error_code error;
    const auto same = [&](const QString& file) {
        return std::filesystem::equivalent(chosen.filesystemFilePath(), QFileInfo(file).filesystemFilePath(),
                                           error);
    };
    const QStringList there = data.entryList(own, QDir::Files);
    return same(store::appPath() + u"/tavolino.ini"_s) ||
           std::any_of(there.begin(), there.end(),
                       [&](const QString& name) { return same(data.filePath(name)); });
}

void checkCopy(const QString& path, const platform::Progress& progress, store::Depth depth) {
    store::CheckDatabase(path, QString::fromLatin1(store::kMainPassword), store::mainTables(), progress,
                         depth);
}

void copyChecked(const QString& from, const QString& to, const platform::Progress& progress) {
    const QString unfinished = to + kUnfinished;
    store::removeDatabase(unfinished);
    try {
        common::copyFile(from, unfinished, stretch(progress, 0, 70));
        if (!common::haveSameBytes(from, unfinished, stretch(progress, 70, 100)))
            throw common::RunTimeError(
                common::kPlatformFailure,
                u"Der Datenträger gibt nicht zurück, was geschrieben wurde. Er ist wohl defekt."_s, to);
        checkCopy(unfinished, {}, store::Depth::Tables);
        if (const std::error_code error = common::replaceFile(to, unfinished))
            common::throwFileError(error, to);
    } catch (...) {
        store::removeDatabase(unfinished);
        throw;
    }
}

QString causeOf(const common::RunTimeError& error, const QStringList& folders) {
    const bool mayBeFolders = error.number() == common::kNotWritable ||
                              error.number() == common::kPlatformFailure ||
                              error.number() == common::kFileNotFound;
    for (const QString& folder : mayBeFolders ? folders : QStringList()) {
        if (QStorageInfo(folder).isReadOnly())
            return u"Der Datenträger mit dem Ordner \"%1\" ist schreibgeschützt."_s.arg(
                QDir::toNativeSeparators(folder));
        if (QFileInfo::exists(folder) && !QFileInfo(folder).isWritable())
            return {};
    }
    return error.number() == common::kNotWritable ? QString() : error.sentence();
}

} // namespace maintenance
