#include "store/ServerSession.h"
#include <QScopeGuard>
#include <mysql.h>

namespace store {

using namespace Qt::StringLiterals;

ServerSession::ServerSession(const ConnectionString& server) :
    m_connection(server, MariaConnection::Database::Any) {
    m_connection.setPatience(Patience::Long);
    m_connection.open();
    run("SET SESSION idle_transaction_timeout = 0, lock_wait_timeout = 30");
}

MariaAnswer ServerSession::ask(const QByteArray& sql, bool stream) {
    try {
        return std::move(m_connection.send({sql}, stream).back());
    } catch (const MariaPacketFailed& failed) {
        // Of an INSERT of many rows the head tells enough.
        throwStoreError(failed.failure, database(), QString::fromUtf8(sql.left(sql.indexOf(" VALUES "))));
    }
}

void ServerSession::run(const QByteArray& sql) {
    ask(sql);
}

void ServerSession::read(const QByteArray& sql, const std::function<void(const Cells&)>& take) {
    const MariaAnswer answer = ask(sql, true);
    // What is left would else be fetched to the end.
    const auto breakOff = qScopeGuard([this] { m_connection.interrupt(); });
    Cells cells(answer.rows ? mysql_num_fields(answer.rows.get()) : 0);
    while (const MYSQL_ROW row = answer.rows ? mysql_fetch_row(answer.rows.get()) : nullptr) {
        const unsigned long* const lengths = mysql_fetch_lengths(answer.rows.get());
        for (size_t i = 0; i < cells.size(); ++i)
            cells[i] = row[i] ? std::optional(QByteArrayView(row[i], qsizetype(lengths[i]))) : std::nullopt;
        take(cells);
    }
    const MariaFailure failure = m_connection.failure();
    m_connection.streamEnded();
    if (failure.code != 0)
        throwStoreError(failure, database(), QString::fromUtf8(sql));
}

QByteArrayList ServerSession::list(const QByteArray& sql) {
    QByteArrayList all;
    read(sql, [&](const Cells& cells) { all.append(cells[0].value_or(QByteArrayView()).toByteArray()); });
    return all;
}

std::optional<QByteArray> ServerSession::value(const QByteArray& sql) {
    std::optional<QByteArray> first;
    read(sql, [&](const Cells& cells) {
        if (!first && cells[0])
            first = cells[0]->toByteArray();
    });
    return first;
}

qint64 ServerSession::number(const QByteArray& sql) {
    return value(sql).value_or(QByteArray()).toLongLong();
}

QByteArray serverText(const QString& text) {
    QByteArray result = text.toUtf8();
    return '\'' + result.replace('\\', "\\\\").replace('\'', "''").replace('\0', "") + '\'';
}

QByteArray serverName(const QString& name) {
    return '`' + name.toUtf8().replace('`', "``") + '`';
}

} // namespace store
