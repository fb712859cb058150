#include "store/SqliteErrors.h"
#include "common/RunTimeError.h"
#include "store/Tokens.h"
#include <QFileInfo>
#include <QRegularExpression>
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

constexpr const char16_t* kLocked = u"Die Datenbank \"%1\" ist durch ein anderes Programm gesperrt. Bitte "
                                    u"versuchen Sie es in einem Augenblick noch einmal.";

/// "%1" is the name of the database's file.
constexpr Known kKnown[] = {
    {SQLITE_FULL, common::kDiskFull, u"Der Datenträger ist voll. Es konnte nicht gespeichert werden."},
    {SQLITE_CORRUPT, common::kStoreFailure, u"Die Datenbank \"%1\" ist beschädigt."},
    {SQLITE_NOTADB, common::kStoreFailure,
     u"Die Datei \"%1\" ist keine Datenbank von Tavolino oder ist beschädigt."},
    {SQLITE_BUSY, common::kStoreFailure, kLocked},
    {SQLITE_LOCKED, common::kStoreFailure, kLocked},
    {SQLITE_PROTOCOL, common::kStoreFailure, kLocked},
    {SQLITE_INTERRUPT, common::kStoreFailure, u"Die Abfrage wurde abgebrochen."},
    {SQLITE_READONLY, common::kNotWritable, u"Die Datenbank \"%1\" kann nicht beschrieben werden."},
    {SQLITE_CANTOPEN, common::kFileNotFound, u"Die Datenbank \"%1\" kann nicht geöffnet werden."},
    {SQLITE_IOERR, common::kStoreFailure,
     u"Die Datenbank \"%1\" kann nicht gelesen oder geschrieben werden."},
    {SQLITE_CONSTRAINT, common::kDuplicateKey, u"Dieser Eintrag besteht bereits oder ist unvollständig."},
    {SQLITE_TOOBIG, common::kStoreFailure, u"Der Eintrag ist zu gross."},
};

/// The engine quotes a piece of the statement, which may be a value.
QString reasonOf(const SQLite::Exception& error) {
    static const QRegularExpression quoted(u"\"[^\"]*\""_s);
    return QString::fromUtf8(error.what()).replace(quoted, u"\"?\""_s);
}

} // namespace

void throwStoreError(const SQLite::Exception& error, const QString& path, const QString& statement) {
    const int code = error.getErrorCode() & 0xFF;
    const QString file = QFileInfo(path).fileName();
    const QString detail = u"%1 (%2) in %3: %4"_s.arg(reasonOf(error))
                               .arg(error.getExtendedErrorCode())
                               .arg(file, withoutValues(statement));
    for (const Known& known : kKnown)
        if (known.code == code)
            throw common::RunTimeError(known.number,
                                       QString::fromUtf16(known.sentence).replace(u"%1"_s, file), detail);
    throw common::RunTimeError(common::kSqlFailure, u"Fehler in einer Datenbankabfrage."_s, detail);
}

} // namespace store
