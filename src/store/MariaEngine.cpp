#include "store/MariaEngine.h"
#include "common/RunTimeError.h"
#include "store/CreateDatabase.h"
#include "store/MariaCursor.h"
#include "store/MariaText.h"
#include <QElapsedTimer>

namespace store {

using namespace Qt::StringLiterals;

namespace {

constexpr int kRepeats = 3;

} // namespace

MariaEngine::MariaEngine(const ConnectionString& parts) :
    m_connection(parts), m_plans(m_catalogue, Speech::MariaDb) {
    readCatalogue();
    if (schemaVersion() < kSchemaVersion)
        takeSchemaSteps({});
}

MariaEngine::~MariaEngine() = default;

void MariaEngine::readCatalogue() {
    const MariaAnswer answer = read(MariaCatalogue::kQuery, {});
    m_catalogue.read(answer.rows, m_connection.database());
    m_plans.clear();
}

std::vector<MariaAnswer> MariaEngine::send(const Packet& packet, bool stream) {
    if (m_stream)
        std::exchange(m_stream, nullptr)->takeRest();
    return m_connection.send(packet, stream);
}

void MariaEngine::fail(const MariaFailure& failure, const QString& statement) {
    if (m_connection.wasInterrupted()) {
        m_connection.afterInterrupt();
        throw common::RunTimeError(common::kStoreFailure, u"Die Abfrage wurde abgebrochen."_s,
                                   failure.message);
    }
    if (isLost(failure))
        m_connection.drop();
    throwStoreError(failure, m_connection.database(), statement);
}

void MariaEngine::refuse(const QString& what) {
    throw common::RunTimeError(common::kStoreFailure, u"Fehler in einer Datenbankabfrage."_s, what);
}

void MariaEngine::lostOrThrow(const MariaFailure& failure, int attempt, const QString& statement) {
    if (!isLost(failure) || m_connection.wasInterrupted() || attempt == kRepeats)
        fail(failure, statement);
    m_connection.drop();
}

/// Outside a transaction: what was lost is asked again.
MariaAnswer MariaEngine::read(const QByteArray& sql, const QString& statement) {
    for (int attempt = 1;; ++attempt) {
        m_connection.open();
        try {
            return std::move(send({sql}, m_onlyReads).back());
        } catch (const MariaPacketFailed& failed) {
            lostOrThrow(failed.failure, attempt, statement);
        }
    }
}

MariaAnswer MariaEngine::ask(const QByteArray& sql, const QString& statement) {
    return m_transaction ? sendInTransaction({sql}, 0, statement) : read(sql, statement);
}

MariaAnswer MariaEngine::write(const QByteArray& sql, const QString& statement) {
    if (m_onlyReads)
        refuse(u"a connection that only reads"_s);
    return m_transaction ? writeInTransaction(sql, statement) : writeAlone(sql, statement);
}

qint64 MariaEngine::execute(const QString& sql) {
    const std::shared_ptr<MariaPlan> plan = m_plans.planFor(sql, false);
    const QByteArray text = plan->translated.filled(m_plans.literals());
    if (plan->kind == MariaPlan::Kind::Definition)
        return define(text, sql), 0;
    if (!m_transaction || plan->kind != MariaPlan::Kind::Insert)
        return write(text, sql).touched;
    m_held.addInsert(text.left(plan->rowsAt), text.mid(plan->rowsAt), plan->rows);
    flushWhereLarge();
    return plan->rows;
}

/// Definitions end a transaction at the server, and may last.
void MariaEngine::define(const QByteArray& sql, const QString& statement) {
    if (m_transaction)
        refuse(u"a definition in a transaction"_s);
    m_connection.setPatience(Patience::Long);
    m_connection.open();
    try {
        send({sql});
    } catch (const MariaPacketFailed& failed) {
        fail(failed.failure, statement);
    }
    if (!m_onlyReads)
        m_connection.setPatience(Patience::Short);
    readCatalogue();
}

std::unique_ptr<Cursor> MariaEngine::query(const QString& sql, bool keyed) {
    const std::shared_ptr<MariaPlan> plan = m_plans.planFor(sql, keyed);
    if (m_onlyReads && plan->kind != MariaPlan::Kind::Query)
        refuse(u"a statement that writes, where rows are read"_s);
    MariaAnswer answer = ask(plan->translated.filled(m_plans.literals()), sql);
    const bool streaming = m_onlyReads && !m_transaction && answer.rows;
    auto cursor =
        std::make_unique<MariaCursor>(plan, std::move(answer.rows), m_catalogue, streaming ? this : nullptr);
    m_stream = streaming ? cursor.get() : nullptr;
    return cursor;
}

const std::vector<Column>& MariaEngine::columnsOf(const QString& table) {
    return m_catalogue.columnsOf(table);
}

qint64 MariaEngine::insert(const QString& table, const std::vector<Column>& columns,
                           const std::vector<common::Value>& values) {
    const InsertText text = insertText(m_catalogue, table, columns, values);
    const QString statement = u"INSERT INTO "_s + table;
    if (!m_transaction || (text.key == 0 && m_catalogue.hasOwnKey(table))) {
        const qint64 given = write(text.head + text.row, statement).key;
        return text.key != 0 ? text.key : given;
    }
    const qint64 promised = m_held.addInsert(text.head, text.row);
    flushWhereLarge();
    return text.key != 0 ? text.key : promised;
}

void MariaEngine::update(const QString& table, qint64 rowKey, const std::vector<Column>& columns,
                         const std::vector<common::Value>& values) {
    if (columns.empty())
        return;
    const QString statement = u"UPDATE "_s + table;
    const qint64 key = HeldWrites::isPromised(rowKey) ? keyOf(rowKey, statement) : rowKey;
    const QByteArray text = updateText(m_catalogue, table, key, columns, values);
    if (!m_transaction)
        return void(writeAlone(text, statement));
    m_held.add(text);
    flushWhereLarge();
}

/// The counter is not taken back with the transaction.
qint64 MariaEngine::newKey(const QString& table) {
    const QByteArray name = nameText(m_catalogue.tableName(table));
    const QByteArray take = "INSERT INTO " + name + " () VALUES ()";
    const QByteArray remove =
        "DELETE FROM " + name + " WHERE " + nameText(m_catalogue.rowKey(table)) + " = last_insert_id()";
    const QString statement = u"new key of "_s + table;
    if (m_transaction)
        return sendInTransaction({take, remove}, 0, statement).key;
    for (int attempt = 1;; ++attempt) {
        m_connection.open();
        try {
            return send({"START TRANSACTION", take, remove, "COMMIT"})[1].key;
        } catch (const MariaPacketFailed& failed) {
            if (!isLost(failed.failure))
                rollBackQuietly();
            if (!isConflict(failed.failure) || attempt == kRepeats)
                lostOrThrow(failed.failure, attempt, statement);
        }
    }
}

void MariaEngine::interrupt() {
    m_connection.interrupt();
}

void MariaEngine::onlyRead() {
    m_onlyReads = true;
    m_connection.setPatience(Patience::Long);
}

void MariaEngine::takeSchemaSteps(const std::function<void()>&) {
    throw common::RunTimeError(
        common::kStoreFailure,
        u"Die Datenbank \"%1\" auf dem Server stammt von einer älteren Version des Programms."_s.arg(
            m_connection.database()),
        u"schema %1, program %2"_s.arg(schemaVersion()).arg(kSchemaVersion));
}

void MariaEngine::streamEnded() {
    m_stream = nullptr;
    m_connection.streamEnded();
}

bool MariaEngine::streamFailed() const {
    return m_connection.failure().code != 0;
}

void MariaEngine::throwStreamError() {
    m_stream = nullptr;
    fail(m_connection.failure(), {});
}

void MariaEngine::breakStream() {
    m_stream = nullptr;
    m_connection.interrupt();
}

void MariaEngine::streamBroken() {
    m_connection.afterInterrupt();
}

} // namespace store
