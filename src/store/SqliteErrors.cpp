#include "store/SqliteErrors.h"
#include "common/RunTimeError.h"
#include <SQLiteCpp/Exception.h>
#include <sqlite3.h>

namespace store {

using namespace Qt::StringLiterals;

namespace {

struct Known {
    int code;
    int number;
    const char16_t* sentence;
};

constexpr Known kKnown[] = {
    {SQLITE_FULL, common::kDiskFull, u"Der Datenträger ist voll. Es konnte nicht gespeichert werden."},
    {SQLITE_CORRUPT, common::kStoreFailure, u"Die Datenbankdatei ist beschädigt."},
    {SQLITE_NOTADB, common::kStoreFailure, u"Die Datei ist keine Datenbank oder ist beschädigt."},
    {SQLITE_BUSY, common::kStoreFailure, u"Die Datenbank wird von einem anderen Programm benutzt."},
    {SQLITE_LOCKED, common::kStoreFailure, u"Die Datenbank wird von einem anderen Programm benutzt."},
    {SQLITE_READONLY, common::kStoreFailure, u"Die Datenbank kann nicht beschrieben werden."},
    {SQLITE_CANTOPEN, common::kFileNotFound, u"Die Datenbankdatei kann nicht geöffnet werden."},
    {SQLITE_IOERR, common::kStoreFailure, u"Die Datenbankdatei kann nicht gelesen oder geschrieben werden."},
    {SQLITE_CONSTRAINT, common::kDuplicateKey, u"Dieser Eintrag besteht bereits oder ist unvollständig."},
    {SQLITE_TOOBIG, common::kStoreFailure, u"Der Eintrag ist zu gross."},
};

} // namespace

void throwStoreError(const SQLite::Exception& error, const QString& context) {
    const int code = error.getErrorCode() & 0xFF;
    const QString detail = QString::fromUtf8(error.what()) + u" ("_s +
                           QString::number(error.getExtendedErrorCode()) + u") in: "_s + context;
    for (const Known& known : kKnown)
        if (known.code == code)
            throw common::RunTimeError(known.number, QString::fromUtf16(known.sentence), detail);
    throw common::RunTimeError(common::kSqlFailure, u"Fehler in einer Datenbankabfrage."_s, detail);
}

} // namespace store
