#include "common/RunTimeError.h"
#include "store/CreateServerDatabase.h"
#include "store/MariaEngine.h"
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QThread>
#include <QUuid>
#include <errmsg.h>
#include <mysql.h>

/// What of the engine writes.
namespace store {

using namespace Qt::StringLiterals;

namespace {

// A node of a cluster may take a transaction back in the middle of a packet and go on with the rest of it.
// With autocommit that rest would last by itself; without, the savepoint that is not there any more tells.
constexpr char kByHand[] = "SET autocommit = 0";
constexpr char kMark[] = "SAVEPOINT tavolino";
constexpr char kStillThere[] = "RELEASE SAVEPOINT tavolino";
constexpr char kCommit[] = "COMMIT";
constexpr char kByItself[] = "SET autocommit = 1";
/// Milliseconds.
constexpr qint64 kWriteTime = 15'000;
constexpr qint64 kSettleTime = 20'000;

QByteArray newToken() {
    return QUuid::createUuid().toRfc4122().toHex();
}

void pauseBriefly() {
    QThread::msleep(10 + QRandomGenerator::global()->bounded(40U));
}

} // namespace

void MariaEngine::rollBackQuietly() {
    try {
        if (m_connection.isOpen())
            send({"ROLLBACK", kByItself});
    } catch (const MariaPacketFailed&) {
        // The server rolls back by itself what has no connection.
        m_connection.close();
    }
}

MariaAnswer MariaEngine::writeAlone(const QByteArray& sql, const QString& statement) {
    QElapsedTimer time;
    time.start();
    for (;;) {
        const QByteArray token = newToken();
        const Packet packet = {kByHand,          kServerLock, kMark,   sql,
                               keepToken(token), kStillThere, kCommit, kByItself};
        constexpr size_t kOwn = 3;
        m_connection.openToWrite();
        try {
            return std::move(send(packet)[kOwn]);
        } catch (const MariaPacketFailed& failed) {
            if (isLost(failed.failure) && !m_connection.wasInterrupted()) {
                m_connection.drop();
                if (isOfMinority(failed.failure) && failed.statement + 1 < size_t(packet.size()))
                    continue;
                if (auto answer = settle(token))
                    return std::move(*answer);
            } else {
                rollBackQuietly();
                if (!isConflict(failed.failure) || time.hasExpired(kWriteTime))
                    fail(failed.failure, statement);
                pauseBriefly();
            }
            if (time.hasExpired(kWriteTime))
                fail(failed.failure, statement);
        }
    }
}

std::optional<MariaAnswer> MariaEngine::settle(const QByteArray& token) {
    const QString unsure = u" Ob zuletzt gespeichert wurde, ist nicht sicher; bitte sehen Sie nach."_s;
    QElapsedTimer time;
    time.start();
    for (;;) {
        try {
            m_connection.open();
            const auto answers = send({barToken(token), tokenQuery(token)});
            const MYSQL_ROW row = mysql_fetch_row(answers[1].rows.get());
            if (!row || QByteArray(row[0]).toLongLong() == kBarred)
                return std::nullopt;
            return MariaAnswer{nullptr, QByteArray(row[0]).toLongLong(), QByteArray(row[1]).toLongLong()};
        } catch (const MariaPacketFailed& failed) {
            if (isLost(failed.failure))
                m_connection.drop();
            if (time.hasExpired(kSettleTime))
                throw common::RunTimeError(common::kServerGone,
                                           u"Der Datenbankserver ist nicht erreichbar."_s + unsure,
                                           failed.failure.message);
        } catch (const common::RunTimeError& error) {
            if (error.number() != common::kServerGone || time.hasExpired(kSettleTime))
                throw common::RunTimeError(error.number(), error.sentence() + unsure, error.detail());
        }
        pauseBriefly();
    }
}

void MariaEngine::begin() {
    m_held.clear();
    m_transaction.emplace();
}

void MariaEngine::doom(const MariaFailure& failure, const QString& statement) {
    try {
        if (!isLost(failure) || m_connection.wasInterrupted())
            fail(failure, statement);
        m_connection.drop();
        throw common::RunTimeError(common::kTryAgain, u"Die Verbindung zum Datenbankserver ging verloren."_s,
                                   failure.message);
    } catch (...) {
        m_transaction->doom = std::current_exception();
        throw;
    }
}

MariaAnswer MariaEngine::sendInTransaction(const Packet& further, size_t wanted, const QString& statement) {
    if (m_transaction->doom)
        std::rethrow_exception(m_transaction->doom);
    Packet packet;
    if (!m_transaction->begun) {
        m_connection.openToWrite();
        packet = {kByHand, kServerLock, kMark};
    } else if (!m_connection.isOpen()) {
        doom({CR_SERVER_LOST, u"connection lost"_s}, statement);
    }
    const auto first = size_t(packet.size());
    packet += m_held.statements();
    const auto own = size_t(packet.size());
    packet += further;
    m_transaction->written = m_transaction->written || !m_held.isEmpty();
    m_transaction->begun = true;
    try {
        auto answers = send(packet);
        m_held.done(answers, first);
        return own + wanted < answers.size() ? std::move(answers[own + wanted]) : MariaAnswer();
    } catch (const MariaPacketFailed& failed) {
        // A statement that failed by itself leaves the transaction as it was.
        const bool harmless =
            failed.statement >= own && !isLost(failed.failure) && !isConflict(failed.failure);
        // Behind the commit stands one more statement.
        m_transaction->refused = isOfMinority(failed.failure) && failed.statement + 1 < size_t(packet.size());
        if (!harmless)
            doom(failed.failure, statement);
        m_held.clear();
        fail(failed.failure, statement);
    }
}

MariaAnswer MariaEngine::writeInTransaction(const QByteArray& sql, const QString& statement) {
    m_transaction->written = true;
    return sendInTransaction({sql}, 0, statement);
}

void MariaEngine::flushWhereLarge() {
    if (m_held.isLarge())
        sendInTransaction({}, 0, {});
}

qint64 MariaEngine::keyOf(qint64 promised, const QString& statement) {
    const MariaAnswer answer = ask("SELECT @@auto_increment_increment", statement);
    const MYSQL_ROW row = mysql_fetch_row(answer.rows.get());
    return m_held.keyOf(promised, row ? QByteArray(row[0]).toLongLong() : 1);
}

void MariaEngine::commit() {
    if (m_transaction->doom)
        std::rethrow_exception(m_transaction->doom);
    if (!m_transaction->written && m_held.isEmpty())
        return rollback();
    const QByteArray token = newToken();
    try {
        sendInTransaction({keepToken(token), kStillThere, kCommit, kByItself}, 0, u"COMMIT"_s);
    } catch (const common::RunTimeError& error) {
        // Nothing was lost but, perhaps, the answer.
        if (error.number() != common::kTryAgain || m_connection.isOpen() || m_transaction->refused ||
            !settle(token))
            throw;
    }
    m_transaction.reset();
}

void MariaEngine::rollback() {
    const bool begun = m_transaction && m_transaction->begun;
    m_transaction.reset();
    m_held.clear();
    if (begun)
        rollBackQuietly();
}

} // namespace store
