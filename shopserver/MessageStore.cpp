#include "shopserver/MessageStore.h"
#include "shopserver/Database.h"
#include "shopserver/PlainText.h"
#include <QCryptographicHash>
#include <SQLiteCpp/VariadicBind.h>

namespace shop {
namespace {

std::string digestOf(const QString& message) {
    return QCryptographicHash::hash(message.toUtf8(), QCryptographicHash::Sha256).toHex().toStdString();
}

template <typename... Values> int run(SQLite::Database& database, const char* sql, const Values&... values) {
    SQLite::Statement statement(database, sql);
    SQLite::bind(statement, values...);
    return statement.exec();
}

} // namespace

MessageStore::MessageStore(const QString& path, int mostSent, int mostTold) :
    m_mostSent(mostSent), m_mostTold(mostTold), m_database(openOwnDatabase(path)) {
    m_database->exec("CREATE TABLE IF NOT EXISTS told (installation TEXT NOT NULL, digest TEXT NOT NULL,"
                     " isRead INTEGER NOT NULL, UNIQUE (installation, digest))");
    m_database->exec("CREATE TABLE IF NOT EXISTS sent (ID INTEGER PRIMARY KEY AUTOINCREMENT,"
                     " moment TEXT NOT NULL, sender TEXT NOT NULL, text TEXT NOT NULL)");
}

MessageStore::~MessageStore() = default;

bool MessageStore::isRead(const std::string& installation, const std::string& digest) const {
    SQLite::Statement query(*m_database, "SELECT isRead FROM told WHERE installation = ? AND digest = ?");
    SQLite::bind(query, installation, digest);
    return query.executeStep() && query.getColumn(0).getInt() != 0;
}

QString MessageStore::tell(const QString& installation, const QStringList& messages) {
    const std::lock_guard lock(m_mutex);
    const std::string name = installation.toStdString();
    for (const QString& message : messages) {
        const std::string digest = digestOf(message);
        if (isRead(name, digest))
            continue;
        SQLite::Transaction transaction(*m_database, SQLite::TransactionBehavior::IMMEDIATE);
        run(*m_database, "DELETE FROM told WHERE installation = ? AND isRead = 0 AND digest <> ?", name,
            digest);
        run(*m_database, "INSERT OR IGNORE INTO told VALUES (?, ?, 0)", name, digest);
        // What nobody confirmed goes first.
        run(*m_database,
            "DELETE FROM told WHERE rowid IN (SELECT rowid FROM told WHERE installation <> ?"
            " ORDER BY isRead, rowid LIMIT max(0, (SELECT count(*) FROM told) - ?))",
            name, m_mostTold);
        transaction.commit();
        return message;
    }
    return {};
}

void MessageStore::markRead(const QString& installation) {
    const std::lock_guard lock(m_mutex);
    run(*m_database, "UPDATE told SET isRead = 1 WHERE installation = ?", installation.toStdString());
}

bool MessageStore::add(const QString& sender, const QString& text) {
    const std::lock_guard lock(m_mutex);
    return run(*m_database,
               "INSERT INTO sent (moment, sender, text) SELECT ?, ?, ?"
               " WHERE (SELECT count(*) FROM sent) < ?",
               QDateTime::currentDateTime().toString(Qt::ISODate).toStdString(), sender.toStdString(),
               plainLines(text).toStdString(), m_mostSent) > 0;
}

QList<SentMessage> MessageStore::sent() const {
    const std::lock_guard lock(m_mutex);
    SQLite::Statement query(*m_database, "SELECT ID, moment, sender, text FROM sent ORDER BY ID");
    QList<SentMessage> messages;
    while (query.executeStep())
        messages.append(
            {query.getColumn(0).getInt64(), textOf(query, 1), textOf(query, 2), textOf(query, 3)});
    return messages;
}

void MessageStore::removeUpTo(qint64 id) {
    const std::lock_guard lock(m_mutex);
    run(*m_database, "DELETE FROM sent WHERE ID <= ?", int64_t(id));
}

} // namespace shop
