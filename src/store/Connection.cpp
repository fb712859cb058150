#include "store/Connection.h"
#include "common/RunTimeError.h"
#include "store/ConnectionString.h"
#include "store/Reader.h"
#include "store/Recordset.h"
#include "store/ServerState.h"
#include "store/StoreGlobals.h"
#include <QRandomGenerator>
#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

namespace store {

using namespace Qt::StringLiterals;

Connection::~Connection() {
    m_readers.clear();
    const QSet<Recordset*> open = m_recordsets;
    for (Recordset* rows : open)
        rows->abandon();
}

void Connection::Open(const QString& connectionString) {
    if (IsOpen())
        throw common::RunTimeError(common::kObjectOpen, u"Die Datenbankverbindung ist bereits geöffnet."_s);
    m_engine = openEngine(ConnectionString::parse(connectionString));
    m_connectionString = connectionString;
}

void Connection::Close() {
    if (!m_engine)
        engine();
    for (const auto& reader : std::exchange(m_readers, {}))
        reader->close();
    const QSet<Recordset*> open = m_recordsets;
    for (Recordset* rows : open)
        rows->abandon();
    m_engine.reset();
    m_connectionString.clear();
}

Engine& Connection::engine() const {
    if (!m_engine)
        throw common::RunTimeError(common::kObjectClosed, u"Die Datenbankverbindung ist geschlossen."_s);
    if (isServerAway() && m_connectionString == mainConnectionString())
        throwServerAway();
    return *m_engine;
}

qint64 Connection::Execute(const QString& sql) {
    return engine().execute(sql);
}

void Connection::Read(const std::function<void(Engine&)>& job, const Waiting& waiting) {
    Engine& own = engine();
    // Nobody else sees what a transaction has written.
    if (!waiting || own.inTransaction())
        return job(own);
    const auto idle = std::find_if(m_readers.begin(), m_readers.end(),
                                   [](const auto& reader) { return !reader->isBusy(); });
    const auto reader = idle != m_readers.end() ? *idle : std::make_shared<Reader>(m_connectionString);
    if (idle == m_readers.end())
        m_readers.push_back(reader);
    reader->read(job, waiting);
}

void Connection::BeginTrans() {
    engine().begin();
}

void Connection::CommitTrans() {
    engine().commit();
}

void Connection::RollbackTrans() {
    // Also of a server that has gone away meanwhile.
    m_engine->rollback();
}

void transact(Connection& connection, const std::function<void()>& work) {
    constexpr int kAttempts = 8;
    constexpr auto kFirstPause = std::chrono::milliseconds(5);
    for (int attempt = 1;; ++attempt) {
        try {
            Transaction transaction(connection);
            work();
            return transaction.commit();
        } catch (const common::RunTimeError& error) {
            if (error.number() != common::kTryAgain || attempt == kAttempts)
                throw;
        }
        countRepeatedTransaction();
        std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(kFirstPause) * (1 << attempt) *
                                    (0.5 + QRandomGenerator::global()->generateDouble() / 2));
    }
}

Transaction::Transaction(Connection& connection) : m_connection(connection) {
    connection.BeginTrans();
}

Transaction::~Transaction() {
    if (m_done || !m_connection.InTransaction())
        return;
    try {
        m_connection.RollbackTrans();
    } catch (...) {
        // The error that brought us here is the one to tell; the engine rolls back by itself when it closes.
    }
}

void Transaction::commit() {
    m_connection.CommitTrans();
    m_done = true;
}

QString sqlText(const QString& text) {
    return u'\'' + QString(text).remove(QChar(u'\0')).replace(u'\'', u"''"_s) + u'\'';
}

} // namespace store
