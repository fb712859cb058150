#include "store/CreateServerDatabase.h"
#include "common/RunTimeError.h"
#include "store/CreateDatabase.h"
#include "store/Dialect.h"
#include "store/MariaConnection.h"
#include <mysql.h>

namespace store {

using namespace Qt::StringLiterals;

namespace {

constexpr char kEnd[] = " ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_uca1400_nopad_as_ci";

void refuseTables(MariaConnection& connection, const QString& database) {
    const auto answers =
        connection.send({"SELECT count(*) FROM information_schema.tables WHERE table_schema = database()"});
    const MYSQL_ROW row = mysql_fetch_row(answers.front().rows.get());
    if (QByteArray(row[0]).toInt() > 0)
        throw common::RunTimeError(common::kTargetExists,
                                   u"Die Datenbank \"%1\" auf dem Server ist nicht leer."_s.arg(database));
}

} // namespace

QList<QByteArray> serverTables() {
    return {
        QByteArray("CREATE TABLE tbl_Store_Sperre (lng_ID BIGINT PRIMARY KEY, lng_Stand BIGINT NOT NULL)") +
            kEnd,
        "INSERT INTO tbl_Store_Sperre VALUES (1, 0)",
        QByteArray(
            "CREATE TABLE tbl_Store_Abschluss (txt_Kennung CHAR(32) CHARACTER SET ascii COLLATE ascii_bin "
            "PRIMARY KEY, lng_Zeilen BIGINT, lng_Schluessel BIGINT, date_Zeit DATETIME NOT NULL, "
            "INDEX (date_Zeit))") +
            kEnd};
}

QList<QByteArray> serverHead() {
    return {
        QByteArray("CREATE TABLE tbl_Store_Kopf (lng_Schema BIGINT NOT NULL, lng_Anwendung BIGINT NOT NULL, "
                   "lng_ID BIGINT PRIMARY KEY DEFAULT 1)") +
            kEnd,
        "INSERT INTO tbl_Store_Kopf (lng_Schema, lng_Anwendung) VALUES (" +
            QByteArray::number(kSchemaVersion) + ", " + QByteArray::number(kApplicationId) + ")"};
}

QByteArray keepToken(const QByteArray& token) {
    return "INSERT INTO tbl_Store_Abschluss VALUES ('" + token +
           "', greatest(row_count(), 0), last_insert_id(), utc_timestamp())";
}

QByteArray barToken(const QByteArray& token) {
    return "INSERT IGNORE INTO tbl_Store_Abschluss VALUES ('" + token + "', " + QByteArray::number(kBarred) +
           ", 0, utc_timestamp())";
}

QByteArray tokenQuery(const QByteArray& token) {
    return "SELECT lng_Zeilen, lng_Schluessel FROM tbl_Store_Abschluss WHERE txt_Kennung = '" + token + "'";
}

void createServerDatabase(const QString& connectionString, const QStringList& scripts) {
    const ConnectionString parts = ConnectionString::parse(connectionString);
    QList<QByteArray> definitions = serverTables();
    for (const QString& statement : translateDefinitions(scripts.join(u'\n'), Speech::MariaDb))
        definitions.append(statement.toUtf8());
    definitions += serverHead();
    MariaConnection connection(parts, MariaConnection::Database::Any);
    connection.setPatience(Patience::Long);
    connection.open();
    QByteArray at;
    try {
        refuseTables(connection, parts.database);
        for (const QByteArray& statement : definitions)
            connection.send({at = statement});
    } catch (const MariaPacketFailed& failed) {
        throwStoreError(failed.failure, parts.database, QString::fromUtf8(at));
    }
}

} // namespace store
