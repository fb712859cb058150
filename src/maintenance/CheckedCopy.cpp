#include "maintenance/CheckedCopy.h"
#include "common/AtomicFile.h"
#include "common/FileCopy.h"
#include "common/FileErrors.h"
#include "maintenance/WorkApart.h"
#include "store/CheckDatabase.h"
#include "store/MainCopies.h"
#include "store/StoreGlobals.h"
#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace maintenance {
namespace {

const QString kUnfinished = u".unfertig"_s;

QString dataFolder() {
    return store::appPath() + u"/Data"_s;
}

} // namespace

QString mainFile() {
    return dataFolder() + u"/DBTavolino.mdb"_s;
}

bool isOwnDataFile(const QString& path) {
    const QDir data(dataFolder());
    const QStringList own = data.entryList({u"DBTavolino.mdb*"_s, u"DBTavolinoPhone.mdb*"_s,
                                            u"DB_PRINT_Tavolino.mdb*"_s, u"DBOnlineShop.mdb*"_s,
                                            u"DB*_CLEAN.mdb*"_s, u"Auftrag.entwurf*"_s, u"tavolino.log*"_s},
                                           QDir::Files);
    std::error_code error;
    const auto same = [&](const QString& file) {
        return std::filesystem::equivalent(QFileInfo(path).filesystemFilePath(),
                                           QFileInfo(file).filesystemFilePath(), error);
    };
    return same(store::appPath() + u"/tavolino.ini"_s) ||
           std::any_of(own.begin(), own.end(),
                       [&](const QString& name) { return same(data.filePath(name)); });
}

void removeLeftover(const QString& path) {
    for (const char16_t* suffix : {u"", u"-wal", u"-shm", u"-journal"}) {
        const QString file = path + QString::fromUtf16(suffix);
        std::error_code error;
        std::filesystem::remove(QFileInfo(file).filesystemFilePath(), error);
        if (error)
            common::throwFileError(error, file);
    }
}

void checkCopy(const QString& path, const platform::Progress& progress, store::Depth depth) {
    store::CheckDatabase(path, QString::fromLatin1(store::kMainPassword), store::mainTables(), progress,
                         depth);
}

void copyChecked(const QString& from, const QString& to, const platform::Progress& progress) {
    const QString unfinished = to + kUnfinished;
    removeLeftover(unfinished);
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
        QFile::remove(unfinished);
        throw;
    }
}

QString causeOf(const common::RunTimeError& error, const QString& file) {
    for (const QString& folder : {QFileInfo(file).absolutePath(), dataFolder()}) {
        if (QStorageInfo(folder).isReadOnly())
            return u"Der Datenträger mit dem Ordner \"%1\" ist schreibgeschützt."_s.arg(
                QDir::toNativeSeparators(folder));
        if (QFileInfo::exists(folder) && !QFileInfo(folder).isWritable())
            return {};
    }
    return error.number() == common::kNotWritable ? QString() : error.sentence();
}

} // namespace maintenance
