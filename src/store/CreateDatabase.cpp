#include "store/CreateDatabase.h"
#include "common/FileErrors.h"
#include "common/OwnerFile.h"
#include "common/RunTimeError.h"
#include "store/ConnectionString.h"
#include "store/PasswordGate.h"
#include "store/ServerDatabase.h"
#include "store/SqliteEngine.h"
#include "store/SqliteErrors.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <SQLiteCpp/SQLiteCpp.h>
#include <filesystem>

namespace store {

using namespace Qt::StringLiterals;

namespace {

void writeVerifier(SQLite::Database& database, const QString& password) {
    database.exec("DELETE FROM tbl_Store_Gate");
    if (password.isEmpty())
        return;
    SQLite::Statement gate(database, "INSERT INTO tbl_Store_Gate (txt_Verifier) VALUES (?)");
    gate.bind(1, makeVerifier(password).toStdString());
    gate.exec();
}

} // namespace

void createDatabase(const QString& path, const QString& password, int schemaVersion) {
    if (QFile::exists(path))
        throw common::RunTimeError(common::kTargetExists, u"Die Datei \"%1\" besteht bereits."_s.arg(path));
    common::createForOwner(path);
    try {
        SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        database.exec("PRAGMA journal_mode = WAL");
        database.exec("PRAGMA application_id = " + std::to_string(kApplicationId));
        database.exec("PRAGMA user_version = " + std::to_string(schemaVersion));
        database.exec("CREATE TABLE tbl_Store_Gate (txt_Verifier TEXT NOT NULL)");
        writeVerifier(database, password);
    } catch (const SQLite::Exception& error) {
        throwStoreError(error, path);
    }
}

void removeDatabase(const QString& path) {
    for (const char16_t* suffix : {u"", u"-wal", u"-shm", u"-journal"}) {
        const QString file = path + QString::fromUtf16(suffix);
        std::error_code error;
        std::filesystem::remove(QFileInfo(file).filesystemFilePath(), error);
        if (error)
            common::throwFileError(error, file);
    }
}

void setPassword(const QString& path, const QString& oldPassword, const QString& newPassword) {
    { const SqliteEngine gate(path, oldPassword); }
    try {
        SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE);
        writeVerifier(database, newPassword);
    } catch (const SQLite::Exception& error) {
        throwStoreError(error, path);
    }
}

void CompactDatabase(const QString& sourceConnection, const QString& targetConnection,
                     const Progress& progress) {
    const ConnectionString source = ConnectionString::parse(sourceConnection);
    if (source.isServer())
        return copyFromServer(source, Database::Main, ConnectionString::parse(targetConnection), progress);
    SqliteEngine engine(source.path, source.password);
    compact(engine, source.password, targetConnection, progress);
}

void compact(SqliteEngine& source, const QString& password, const QString& targetConnection,
             const Progress& progress) {
    const ConnectionString target = ConnectionString::parse(targetConnection);
    if (QFile::exists(target.path))
        throw common::RunTimeError(common::kTargetExists,
                                   u"Die Zieldatei \"%1\" besteht bereits."_s.arg(target.path));
    try {
        source.compactInto(target.path, progress);
        if (password != target.password)
            setPassword(target.path, password, target.password);
    } catch (...) {
        QFile::remove(target.path);
        throw;
    }
}

} // namespace store
