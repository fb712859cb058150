#include "store/ServerDatabase.h"
#include "common/RunTimeError.h"
#include "store/BuildDatabase.h"
#include "store/CreateDatabase.h"
#include "store/CreateServerDatabase.h"
#include "store/Dialect.h"
#include "store/ServerEnd.h"
#include "store/SqliteEngine.h"
#include "store/Stations.h"
#include <QFile>
#include <QMap>
#include <QRegularExpression>

namespace store {

using namespace Qt::StringLiterals;

namespace {

/// In front of the names of tables that are loaded, and of those that they have replaced.
const QString kComing = u"neu_"_s;
constexpr char kGone[] = "alt_";
/// Stands as long as an empty database is filled.
constexpr char kFilling[] = "tbl_Store_Umzug";

QByteArrayList definitionsOf(Database database, const char* kind) {
    QStringList scripts;
    for (const Definitions which : {Definitions::Tables, Definitions::Indexes, Definitions::Views})
        scripts.append(definitions(database, which));
    QByteArrayList found;
    for (const QString& statement : translateDefinitions(scripts.join(u'\n'), Speech::MariaDb))
        if (statement.startsWith(QLatin1StringView(kind)))
            found.append(statement.toUtf8());
    return found;
}

/// A statement for each table: the server walks it once for all its indexes.
QByteArrayList indexesOf(Database database) {
    static const QRegularExpression index(u"^CREATE (UNIQUE )?INDEX (\\S+) ON (\\S+) (.*)$"_s);
    QMap<QString, QStringList> byTable;
    for (const char* const kind : {"CREATE INDEX", "CREATE UNIQUE INDEX"})
        for (const QByteArray& statement : definitionsOf(database, kind)) {
            const auto parts = index.match(QString::fromUtf8(statement));
            byTable[parts.captured(3)].append(
                u"ADD %1INDEX %2 %3"_s.arg(parts.captured(1), parts.captured(2), parts.captured(4)));
        }
    QByteArrayList statements;
    for (auto table = byTable.cbegin(); table != byTable.cend(); ++table)
        statements.append(u"ALTER TABLE %1 %2"_s.arg(table.key(), table->join(u", "_s)).toUtf8());
    return statements;
}

QByteArrayList coming(const QByteArrayList& statements) {
    QByteArrayList result;
    for (QByteArray statement : statements)
        result.append(statement.replace("`tbl_", '`' + kComing.toUtf8() + "tbl_"));
    return result;
}

[[noreturn]] void refuse(int number, const QString& sentence, const QString& database) {
    throw common::RunTimeError(number, sentence.arg(database));
}

} // namespace

ServerDatabase::ServerDatabase(const ConnectionString& server) : m_server(server), m_session(server) {
    // A cluster knows no such locks.
    if (m_session.number("SELECT if(@@wsrep_on, 1, get_lock(concat('tavolino ', database()), 0))") != 1)
        refuse(
            common::kStoreFailure,
            u"Mit der Datenbank \"%1\" auf dem Server arbeitet gerade jemand: Sie wird gefüllt oder ersetzt."_s,
            server.database);
}

QByteArrayList ServerDatabase::tablesInPlace() {
    return m_session.list("SELECT table_name FROM information_schema.tables WHERE table_schema = database() "
                          "AND table_name NOT LIKE 'neu\\_%' AND table_name NOT LIKE 'alt\\_%'");
}

ServerDatabase::State ServerDatabase::state() {
    const QByteArrayList tables = tablesInPlace();
    if (tables.isEmpty())
        return State::Empty;
    if (tables.contains("tbl_Store_Kopf") && m_session.value(kServerHeadQuery))
        return State::Whole;
    return tables.contains(kFilling) ? State::Unfinished : State::Foreign;
}

bool ServerDatabase::hasPhoneBook() {
    return tablesInPlace().contains("tbl_PhoneBook");
}

qint64 ServerDatabase::writes() {
    return m_session.number("SELECT lng_Stand FROM tbl_Store_Sperre WHERE lng_ID = 1");
}

void ServerDatabase::dropLike(const QByteArray& pattern) {
    const QByteArray of =
        "FROM information_schema.tables WHERE table_schema = database() AND table_name LIKE '" + pattern +
        "' AND table_type ";
    for (const QByteArray& view : m_session.list("SELECT table_name " + of + "= 'VIEW'"))
        m_session.run("DROP VIEW `" + view + '`');
    for (const QByteArray& table : m_session.list("SELECT table_name " + of + "<> 'VIEW'"))
        m_session.run("DROP TABLE `" + table + '`');
}

/// An earlier run may have been cut off.
void ServerDatabase::startAnew() {
    dropLike("neu\\_tbl\\_%");
    dropLike("alt\\_tbl\\_%");
    const State now = state();
    if (now == State::Foreign)
        refuse(common::kTargetExists, u"Die Datenbank \"%1\" auf dem Server ist nicht leer."_s,
               m_server.database);
    if (now == State::Whole)
        return;
    if (now == State::Empty)
        m_session.run(QByteArray("CREATE TABLE ") + kFilling + " (lng_ID BIGINT PRIMARY KEY)");
    dropLike("view\\_%");
    for (const QByteArray& table : tablesInPlace())
        if (table != kFilling)
            m_session.run("DROP TABLE `" + table + '`');
}

void ServerDatabase::load(Engine& file, Database database, const Progress& progress) {
    if (m_loaded.isEmpty())
        startAnew();
    for (const QByteArray& table : coming(definitionsOf(database, "CREATE TABLE")))
        m_session.run(table);
    FileEnd source(file);
    ServerEnd target(m_session, kComing);
    copyTables(source, target, source.tables(database), progress);
    for (const QByteArray& indexes : coming(indexesOf(database)))
        m_session.run(indexes);
    m_loaded.append(database);
}

void ServerDatabase::lock() {
    if (m_lock)
        return;
    m_lock = std::make_unique<ServerSession>(m_server);
    // Somebody may be writing, and for a while.
    m_lock->run("SET SESSION innodb_lock_wait_timeout = 60");
    m_lock->run("START TRANSACTION");
    m_lock->run(kServerLock);
}

/// What the stations do at the moment stays.
QByteArray ServerDatabase::renaming() {
    const QByteArrayList inPlace = tablesInPlace();
    QByteArrayList steps;
    const auto step = [&](const QByteArray& from, const QByteArray& to) {
        steps.append('`' + from + "` TO `" + to + '`');
    };
    for (const Database database : m_loaded)
        for (const SchemaTable& table : tablesOf(database)) {
            const QByteArray name = table.name.toUtf8();
            const bool isThere = inPlace.contains(name);
            if (isThere && isOfTheMoment(table.name))
                continue;
            if (isThere)
                step(name, kGone + name);
            step(kComing.toUtf8() + name, name);
        }
    return "RENAME TABLE " + steps.join(", ");
}

/// The head comes last: without it the database is none.
void ServerDatabase::makeWhole() {
    for (const Database database : m_loaded)
        for (const QByteArray& view : definitionsOf(database, "CREATE VIEW"))
            m_session.run(view);
    for (const QByteArray& statement : serverTables() + serverHead())
        m_session.run(statement);
}

/// They read again what they keep in memory.
void ServerDatabase::tellStations() {
    for (const QString& topic : topicNames())
        m_session.run("INSERT INTO tbl_Stationen_Neues (txt_Thema, lng_Stand) VALUES (" + serverText(topic) +
                      ", 1) ON DUPLICATE KEY UPDATE lng_Stand = lng_Stand + 1");
}

void ServerDatabase::putInPlace() {
    const bool isNew = state() != State::Whole;
    if (m_lock)
        // Throws where the lock was taken away: nodes of a cluster do not wait for each other.
        m_lock->run("DO 1");
    m_session.run(renaming());
    isNew ? makeWhole() : tellStations();
    m_lock.reset();
    m_loaded.clear();
    m_session.run(QByteArray("DROP TABLE IF EXISTS ") + kFilling);
    dropLike("neu\\_tbl\\_%");
    dropLike("alt\\_tbl\\_%");
}

namespace {

/// All that is read afterwards is as it is now.
void takeSnapshot(ServerSession& session) {
    session.run("SET SESSION TRANSACTION ISOLATION LEVEL REPEATABLE READ");
    session.run("START TRANSACTION WITH CONSISTENT SNAPSHOT, READ ONLY");
}

void requireVersion(ServerSession& session, const QString& database) {
    const qint64 version = session.number(kServerHeadQuery);
    if (version > kSchemaVersion)
        refuse(
            common::kSchemaTooNew,
            u"Die Datenbank \"%1\" stammt von einer neueren Version des Programms. Bitte aktualisieren Sie Tavolino."_s,
            database);
    if (version < kSchemaVersion)
        refuse(common::kStoreFailure,
               u"Die Datenbank \"%1\" ist noch auf dem Stand einer älteren Version des Programms."_s,
               database);
}

} // namespace

void copyFromServer(const ConnectionString& server, Database database, const ConnectionString& target,
                    const Progress& progress) {
    ServerSession session(server);
    requireVersion(session, server.database);
    takeSnapshot(session);
    if (QFile::exists(target.path))
        refuse(common::kTargetExists, u"Die Zieldatei \"%1\" besteht bereits."_s, target.path);
    try {
        buildDatabase(target.path, target.password, database, [&](SqliteEngine& engine) {
            FileEnd copy(engine);
            ServerEnd source(session);
            copyTables(source, copy, copy.tables(database), progress);
        });
    } catch (...) {
        removeDatabase(target.path);
        throw;
    }
}

qint64 sizeOnServer(const ConnectionString& server) {
    return ServerSession(server).number(
        "SELECT sum(data_length + index_length) FROM information_schema.tables "
        "WHERE table_schema = database()");
}

} // namespace store
