#pragma once
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <memory>
#include <mutex>

namespace SQLite {
class Database;
}

namespace shop {

struct SentMessage {
    qint64 id = 0;
    QString moment, sender, text;
};

/// Which installation has read what, and what was written back: a database of the server's own. May be used
/// by any thread.
class MessageStore {
  public:
    explicit MessageStore(const QString& path, int mostSent = 1000, int mostTold = 10'000);
    ~MessageStore();

    /// The first of the messages that the installation has not read, "" for none; it counts as told.
    QString tell(const QString& installation, const QStringList& messages);
    /// The one told last is read: what came in its place meanwhile still waits.
    void markRead(const QString& installation);

    /// False when there is no room until somebody removes what he has seen.
    bool add(const QString& sender, const QString& text);
    QList<SentMessage> sent() const;
    void removeUpTo(qint64 id);

  private:
    bool isRead(const std::string& installation, const std::string& digest) const;

    int m_mostSent, m_mostTold;
    mutable std::mutex m_mutex;
    std::unique_ptr<SQLite::Database> m_database;
};

} // namespace shop
