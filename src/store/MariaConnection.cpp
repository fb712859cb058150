#include "store/MariaConnection.h"
#include "common/RunTimeError.h"
#include "store/CreateDatabase.h"
#include "store/CreateServerDatabase.h"
#include <QTimeZone>
#include <algorithm>
#include <errmsg.h>
#include <mysql.h>
#include <mysqld_error.h>

namespace store {

using namespace Qt::StringLiterals;

namespace {

/// Seconds.
constexpr unsigned kConnectTime = 2;
/// Longer than a lock is waited for.
constexpr unsigned kAnswerTime = 8;
constexpr unsigned kLongAnswerTime = 3600;
/// Milliseconds.
constexpr qint64 kRoundTime = 5000;
constexpr qint64 kRoundPause = 2000;
constexpr qint64 kDistrust = 30000;
constexpr unsigned long kOldestServer = 101000;

constexpr char kSession[] =
    "SET NAMES utf8mb4 COLLATE utf8mb4_uca1400_nopad_as_ci;"
    "SET SESSION sql_mode = 'ANSI_QUOTES,PIPES_AS_CONCAT,NO_AUTO_VALUE_ON_ZERO,SIMULTANEOUS_ASSIGNMENT,"
    "NO_ENGINE_SUBSTITUTION,STRICT_TRANS_TABLES', "
    "tx_isolation = 'READ-COMMITTED', innodb_lock_wait_timeout = 5, idle_transaction_timeout = 10, "
    "autocommit = 1;"
    "SELECT unix_timestamp(now(6)), (SELECT s.variable_value FROM information_schema.global_status AS s, "
    "information_schema.global_variables AS v WHERE s.variable_name = 'wsrep_cluster_status' AND "
    "v.variable_name = 'wsrep_on' AND v.variable_value = 'ON')";

/// The days from 30 December 1899 to 1 January 1970, and seconds a day.
constexpr double kEpoch = 25569;
constexpr double kDay = 86400;

MariaFailure failureOf(st_mysql* handle) {
    return {mysql_errno(handle), QString::fromUtf8(mysql_error(handle))};
}

[[noreturn]] void refuse(const QString& sentence, const QString& detail = {}) {
    throw common::RunTimeError(common::kStoreFailure, sentence, detail);
}

void prepareLibrary() {
    static std::once_flag once;
    std::call_once(once, [] { mysql_library_init(0, nullptr, nullptr); });
}

/// Drops all answers but tells the first error.
bool drain(st_mysql* handle) {
    int more = 0;
    do
        MariaResult(mysql_store_result(handle));
    while ((more = mysql_next_result(handle)) == 0);
    return more < 0;
}

bool runs(st_mysql* handle, const QByteArray& sql) {
    return mysql_real_query(handle, sql.constData(), static_cast<unsigned long>(sql.size())) == 0 &&
           drain(handle);
}

} // namespace

void CloseMaria::operator()(st_mysql* handle) const {
    mysql_close(handle);
}

void FreeMariaResult::operator()(st_mysql_res* result) const {
    mysql_free_result(result);
}

MariaConnection::MariaConnection(const ConnectionString& parts, Database database) :
    m_parts(parts), m_kind(database) {
    constexpr unsigned kPort = 3306;
    prepareLibrary();
    for (const QString& server : parts.servers) {
        const qsizetype colon = server.lastIndexOf(u':');
        const unsigned port = colon < 0 ? 0 : server.mid(colon + 1).toUInt();
        m_servers.push_back({server.left(colon).trimmed(), port ? port : kPort, {}});
    }
}

MariaConnection::~MariaConnection() {
    mysql_thread_end();
}

std::vector<MariaConnection::Server*> MariaConnection::inTurn() {
    std::vector<Server*> servers;
    for (Server& server : m_servers)
        servers.push_back(&server);
    std::stable_partition(servers.begin(), servers.end(), [](const Server* server) {
        return !server->lost.isValid() || server->lost.hasExpired(kDistrust);
    });
    return servers;
}

MariaHandle MariaConnection::connect(Server& server, MariaFailure& failure) const {
    MariaHandle handle(mysql_init(nullptr));
    const unsigned wait = kConnectTime;
    const unsigned answer = m_patience == Patience::Short ? kAnswerTime : kLongAnswerTime;
    const unsigned protocol = MYSQL_PROTOCOL_TCP;
    const unsigned noFiles = 0;
    const char secure = m_parts.tls ? 1 : 0;
    mysql_optionsv(handle.get(), MYSQL_OPT_CONNECT_TIMEOUT, &wait);
    mysql_optionsv(handle.get(), MYSQL_OPT_READ_TIMEOUT, &answer);
    mysql_optionsv(handle.get(), MYSQL_OPT_WRITE_TIMEOUT, &answer);
    mysql_optionsv(handle.get(), MYSQL_OPT_PROTOCOL, &protocol);
    mysql_optionsv(handle.get(), MYSQL_SET_CHARSET_NAME, "utf8mb4");
    // A server could else ask for any file of this station.
    mysql_optionsv(handle.get(), MYSQL_OPT_LOCAL_INFILE, &noFiles);
    mysql_optionsv(handle.get(), MYSQL_OPT_SSL_ENFORCE, &secure);
    mysql_optionsv(handle.get(), MYSQL_OPT_SSL_VERIFY_SERVER_CERT, &secure);
    if (m_parts.tls && !m_parts.authority.isEmpty())
        mysql_optionsv(handle.get(), MYSQL_OPT_SSL_CA, m_parts.authority.toUtf8().constData());
    const bool there =
        mysql_real_connect(handle.get(), server.host.toUtf8().constData(), m_parts.user.toUtf8().constData(),
                           m_parts.password.toUtf8().constData(), m_parts.database.toUtf8().constData(),
                           server.port, nullptr, CLIENT_MULTI_STATEMENTS | CLIENT_FOUND_ROWS) != nullptr;
    if (there)
        return handle;
    failure = failureOf(handle.get());
    return {};
}

void MariaConnection::open() {
    if (isOpen())
        return;
    if (m_failedRound.isValid() && !m_failedRound.hasExpired(kRoundPause))
        throwStoreError(m_lastFailure, m_parts.database);
    QElapsedTimer time;
    time.start();
    MariaHandle minority;
    Server* ofMinority = nullptr;
    for (Server* server : inTurn()) {
        MariaHandle handle = time.hasExpired(kRoundTime) ? nullptr : connect(*server, m_lastFailure);
        if (handle && setUp(handle))
            return use(std::move(handle), *server, true);
        if (handle && !minority) {
            minority = std::move(handle);
            ofMinority = server;
        } else if (!handle && !isLost(m_lastFailure) && m_lastFailure.code != CR_SSL_CONNECTION_ERROR) {
            throwStoreError(m_lastFailure, m_parts.database);
        }
    }
    if (minority)
        return use(std::move(minority), *ofMinority, false);
    m_failedRound.start();
    throwStoreError(m_lastFailure, m_parts.database);
}

void MariaConnection::openToWrite() {
    open();
    if (m_ofMajority)
        return;
    // The next try looks for the majority again.
    close();
    throwStoreError({ER_UNKNOWN_COM_ERROR, u"no node with a majority"_s}, m_parts.database);
}

bool MariaConnection::setUp(MariaHandle& handle) {
    if (!mariadb_connection(handle.get()) || mysql_get_server_version(handle.get()) < kOldestServer)
        refuse(u"Der Datenbankserver ist zu alt. Tavolino braucht MariaDB 10.10 oder neuer."_s,
               QString::fromUtf8(mysql_get_server_info(handle.get())));
    const auto failed = [&] {
        m_lastFailure = failureOf(handle.get());
        handle.reset();
        if (!isLost(m_lastFailure))
            throwStoreError(m_lastFailure, m_parts.database);
        return false;
    };
    if (mysql_real_query(handle.get(), kSession, sizeof kSession - 1) != 0)
        return failed();
    while (mysql_more_results(handle.get()))
        if (mysql_next_result(handle.get()) != 0)
            return failed();
    const MariaResult rows(mysql_store_result(handle.get()));
    const MYSQL_ROW row = rows ? mysql_fetch_row(rows.get()) : nullptr;
    if (!row)
        return failed();
    m_serverTime = kEpoch + QByteArray(row[0]).toDouble() / kDay;
    m_sinceServerTime.start();
    m_trips += 2;
    const bool ofMajority = !row[1] || QByteArray(row[1]) == "Primary";
    // What a cluster without majority holds may be old, and is better than nothing.
    runs(handle.get(), "SET SESSION wsrep_dirty_reads = ON");
    if (m_kind == Database::Ours)
        readHead(handle.get());
    return ofMajority;
}

void MariaConnection::readHead(st_mysql* handle) {
    const QByteArray sql = kServerHeadQuery;
    if (mysql_real_query(handle, sql.constData(), static_cast<unsigned long>(sql.size())) != 0) {
        const MariaFailure failure = failureOf(handle);
        if (failure.code != ER_NO_SUCH_TABLE)
            throwStoreError(failure, m_parts.database);
    }
    const MariaResult rows(mysql_store_result(handle));
    const MYSQL_ROW row = rows ? mysql_fetch_row(rows.get()) : nullptr;
    if (!row || QByteArray(row[1]).toInt() != kApplicationId)
        refuse(u"Die Datenbank \"%1\" auf dem Server ist keine von Tavolino."_s.arg(m_parts.database));
    m_schemaVersion = QByteArray(row[0]).toInt();
    if (m_schemaVersion > kSchemaVersion)
        throw common::RunTimeError(
            common::kSchemaTooNew,
            u"Die Datenbank \"%1\" stammt von einer neueren Version des Programms. Bitte aktualisieren Sie Tavolino."_s
                .arg(m_parts.database),
            u"schema %1, program %2"_s.arg(m_schemaVersion).arg(kSchemaVersion));
    m_trips += 2;
    // Tokens tell of what was written, for as long as somebody may ask.
    runs(handle, kForgetTokens);
}

void MariaConnection::use(MariaHandle handle, Server& server, bool ofMajority) {
    const std::lock_guard lock(m_mutex);
    m_handle = std::move(handle);
    m_thread = mysql_thread_id(m_handle.get());
    m_server = &server;
    m_ofMajority = ofMajority;
    m_server->lost.invalidate();
    m_failedRound.invalidate();
}

void MariaConnection::close() {
    const std::lock_guard lock(m_mutex);
    m_busy = false;
    m_handle.reset();
}

void MariaConnection::drop() {
    close();
    if (m_server)
        m_server->lost.start();
}

void MariaConnection::setPatience(Patience patience) {
    if (patience == m_patience)
        return;
    m_patience = patience;
    close();
}

MariaFailure MariaConnection::failure() const {
    MariaFailure failure = failureOf(m_handle.get());
    // Of a connection that stood already, this is its end.
    if (failure.code == CR_SSL_CONNECTION_ERROR)
        failure.code = CR_SERVER_LOST;
    return failure;
}

void MariaConnection::setBusy(bool busy) {
    const std::lock_guard lock(m_mutex);
    m_busy = busy;
    if (busy)
        m_interrupted = false;
}

void MariaConnection::streamEnded() {
    setBusy(false);
}

MariaAnswer MariaConnection::answer(bool stream) {
    MariaAnswer answer;
    const bool last = !mysql_more_results(m_handle.get());
    answer.rows.reset(stream && last ? mysql_use_result(m_handle.get()) : mysql_store_result(m_handle.get()));
    if (!answer.rows && mysql_errno(m_handle.get()) != 0)
        throw MariaPacketFailed{failure()};
    if (!answer.rows) {
        answer.touched = qint64(mysql_affected_rows(m_handle.get()));
        answer.key = qint64(mysql_insert_id(m_handle.get()));
    }
    return answer;
}

std::vector<MariaAnswer> MariaConnection::send(const QList<QByteArray>& statements, bool stream) {
    const QByteArray packet = statements.join(';');
    std::vector<MariaAnswer> answers;
    setBusy(true);
    try {
        if (mysql_real_query(m_handle.get(), packet.constData(), static_cast<unsigned long>(packet.size())) !=
            0)
            throw MariaPacketFailed{failure()};
        ++m_trips;
        answers.push_back(answer(stream));
        while (mysql_more_results(m_handle.get())) {
            if (mysql_next_result(m_handle.get()) > 0)
                throw MariaPacketFailed{failure()};
            answers.push_back(answer(stream));
        }
    } catch (MariaPacketFailed& failed) {
        setBusy(false);
        failed.statement = answers.size();
        throw;
    }
    if (!stream)
        setBusy(false);
    return answers;
}

void MariaConnection::interrupt() {
    const std::lock_guard lock(m_mutex);
    if (!m_busy || !m_handle || m_interrupted)
        return;
    m_interrupted = true;
    mariadb_cancel(m_handle.get());
}

void MariaConnection::afterInterrupt() {
    const QByteArray kill = "KILL " + QByteArray::number(qulonglong(m_thread));
    close();
    MariaFailure ignored;
    if (const MariaHandle handle = m_server ? connect(*m_server, ignored) : nullptr)
        runs(handle.get(), kill);
}

double MariaConnection::now() const {
    constexpr double kMilliseconds = 1000 * kDay;
    return m_serverTime + double(m_sinceServerTime.elapsed()) / kMilliseconds;
}

} // namespace store
