#include "store/MariaErrors.h"
#include "common/RunTimeError.h"
#include "store/Tokens.h"
#include <QRegularExpression>
#include <algorithm>
#include <errmsg.h>
#include <initializer_list>
#include <mysqld_error.h>
#include <vector>

namespace store {

using namespace Qt::StringLiterals;

namespace {

struct Known {
    std::vector<unsigned> codes;
    int number;
    const char16_t* sentence;
};

/// "%1" is the name of the database.
const std::vector<Known>& known() {
    static const std::vector<Known> list = {
        // A cluster that has lost its majority knows no commands.
        {{ER_UNKNOWN_COM_ERROR},
         common::kServerGone,
         u"Der Datenbankserver kann zurzeit nicht speichern, weil ihm die Mehrheit der Server fehlt."},
        {{CR_CONNECTION_ERROR,
          CR_CONN_HOST_ERROR,
          CR_UNKNOWN_HOST,
          CR_SERVER_GONE_ERROR,
          CR_SERVER_LOST,
          CR_SERVER_HANDSHAKE_ERR,
          CR_SERVER_LOST_EXTENDED,
          CR_ERR_NET_READ,
          CR_ERR_NET_WRITE,
          ER_CON_COUNT_ERROR,
          ER_ERROR_DURING_COMMIT, // of a node that left the cluster meanwhile: perhaps it was committed
          ER_SERVER_SHUTDOWN,
          ER_NORMAL_SHUTDOWN,
          ER_NET_READ_ERROR,
          ER_NET_READ_INTERRUPTED,
          ER_NET_ERROR_ON_WRITE,
          ER_NET_WRITE_INTERRUPTED,
          ER_NET_PACKETS_OUT_OF_ORDER,
          ER_ABORTING_CONNECTION,
          ER_NEW_ABORTING_CONNECTION,
          ER_CONNECTION_KILLED,
          ER_HOST_IS_BLOCKED,
          ER_TOO_MANY_USER_CONNECTIONS,
          ER_OUT_OF_RESOURCES,
          CR_COMMANDS_OUT_OF_SYNC,
          CR_MALFORMED_PACKET,
          CR_OUT_OF_MEMORY},
         common::kServerGone,
         u"Der Datenbankserver ist nicht erreichbar. Bitte prüfen Sie das Netz und den Server."},
        {{ER_LOCK_DEADLOCK, ER_LOCK_WAIT_TIMEOUT, ER_CHECKREAD, ER_SP_DOES_NOT_EXIST},
         common::kTryAgain,
         u"Eine andere Station speichert gerade. Bitte versuchen Sie es in einem Augenblick noch einmal."},
        {{ER_DUP_ENTRY, ER_DUP_ENTRY_WITH_KEY_NAME, ER_BAD_NULL_ERROR, ER_NO_DEFAULT_FOR_FIELD,
          ER_ROW_IS_REFERENCED_2, ER_NO_REFERENCED_ROW_2, ER_CONSTRAINT_FAILED},
         common::kDuplicateKey,
         u"Dieser Eintrag besteht bereits oder ist unvollständig."},
        {{ER_DISK_FULL, ER_RECORD_FILE_FULL, ER_ERROR_ON_WRITE, ER_TEMP_FILE_WRITE_FAILURE},
         common::kDiskFull,
         u"Der Datenträger des Datenbankservers ist voll. Es konnte nicht gespeichert werden."},
        {{ER_ACCESS_DENIED_ERROR, ER_ACCESS_DENIED_NO_PASSWORD_ERROR, ER_DBACCESS_DENIED_ERROR,
          ER_MUST_CHANGE_PASSWORD_LOGIN, CR_AUTH_PLUGIN_CANNOT_LOAD},
         common::kPasswordRefused,
         u"Der Datenbankserver lehnt den Benutzer oder sein Kennwort ab."},
        {{ER_BAD_DB_ERROR},
         common::kStoreFailure,
         u"Auf dem Datenbankserver gibt es die Datenbank \"%1\" nicht."},
        {{CR_SSL_CONNECTION_ERROR},
         common::kStoreFailure,
         u"Die verschlüsselte Verbindung zum Datenbankserver kam nicht zustande: Seinem Zertifikat wird "
         u"nicht "
         u"vertraut, oder er verschlüsselt nicht."},
        {{ER_QUERY_INTERRUPTED, ER_STATEMENT_TIMEOUT},
         common::kStoreFailure,
         u"Die Abfrage wurde abgebrochen."},
        {{ER_TABLEACCESS_DENIED_ERROR, ER_COLUMNACCESS_DENIED_ERROR, ER_SPECIFIC_ACCESS_DENIED_ERROR},
         common::kStoreFailure,
         u"Dem Konto beim Datenbankserver fehlt dafür ein Recht an der Datenbank \"%1\"."},
        {{ER_OPTION_PREVENTS_STATEMENT, ER_CANT_EXECUTE_IN_READ_ONLY_TRANSACTION, ER_READ_ONLY_MODE},
         common::kNotWritable,
         u"Die Datenbank \"%1\" kann nicht beschrieben werden."},
        {{ER_DATA_TOO_LONG, ER_NET_PACKET_TOO_LARGE, ER_TOO_BIG_ROWSIZE},
         common::kStoreFailure,
         u"Der Eintrag ist zu gross."},
        {{ER_CRASHED_ON_USAGE, ER_CRASHED_ON_REPAIR, ER_NOT_KEYFILE, ER_GET_ERRNO},
         common::kStoreFailure,
         u"Die Datenbank \"%1\" ist beschädigt."},
    };
    return list;
}

const Known* find(unsigned code) {
    for (const Known& one : known())
        if (std::find(one.codes.begin(), one.codes.end(), code) != one.codes.end())
            return &one;
    return nullptr;
}

bool isOf(const MariaFailure& failure, int number) {
    const Known* const one = find(failure.code);
    return one && one->number == number;
}

/// What the server quotes may be a value, or a piece of the statement.
QString reasonOf(const MariaFailure& failure) {
    static const QRegularExpression quoted(u"'.*'"_s, QRegularExpression::DotMatchesEverythingOption);
    const bool ofLibrary = failure.code >= CR_MIN_ERROR && failure.code <= CR_MAX_ERROR;
    return ofLibrary ? failure.message : QString(failure.message).replace(quoted, u"'?'"_s);
}

} // namespace

bool isOfMinority(const MariaFailure& failure) {
    return failure.code == ER_UNKNOWN_COM_ERROR;
}

bool isLost(const MariaFailure& failure) {
    return isOf(failure, common::kServerGone);
}

bool isConflict(const MariaFailure& failure) {
    return isOf(failure, common::kTryAgain);
}

void throwStoreError(const MariaFailure& failure, const QString& database, const QString& statement) {
    const QString detail = u"%1 (%2) in %3: %4"_s.arg(reasonOf(failure))
                               .arg(failure.code)
                               .arg(database, withoutValues(statement));
    // A full disk comes as the operating system's error as well.
    const bool full = failure.message.contains(u"errno: 28"_s) ||
                      failure.message.contains(u"Errcode: 28"_s) || failure.message.contains(u"error: 28"_s);
    const Known* const one = full ? find(ER_DISK_FULL) : find(failure.code);
    if (!one)
        throw common::RunTimeError(common::kSqlFailure, u"Fehler in einer Datenbankabfrage."_s, detail);
    throw common::RunTimeError(one->number, QString::fromUtf16(one->sentence).replace(u"%1"_s, database),
                               detail);
}

} // namespace store
