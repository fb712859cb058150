#pragma once
#include "store/ConnectionString.h"
#include "store/MariaErrors.h"
#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

struct st_mysql;
struct st_mysql_res;

namespace store {

struct CloseMaria {
    void operator()(st_mysql* handle) const;
};

struct FreeMariaResult {
    void operator()(st_mysql_res* result) const;
};

using MariaHandle = std::unique_ptr<st_mysql, CloseMaria>;
using MariaResult = std::unique_ptr<st_mysql_res, FreeMariaResult>;

/// What one statement gave.
struct MariaAnswer {
    /// Null where it gave no rows.
    MariaResult rows;
    qint64 touched = 0;
    qint64 key = 0;
};

/// A packet that failed: what was told, and by which of its statements.
struct MariaPacketFailed {
    MariaFailure failure;
    size_t statement = 0;
};

/// How long an answer is waited for: that of a program's statement, or of work that may last.
enum class Patience { Short, Long };

/// The connection to one of several servers. It knows nothing of transactions: who uses it decides what is
/// sent again when it is lost.
class MariaConnection {
  public:
    /// Whether the database has to be one of ours.
    enum class Database { Ours, Any };

    explicit MariaConnection(const ConnectionString& parts, Database database = Database::Ours);
    ~MariaConnection();

    /// Connects where it is not, to the servers in turn. Throws RunTimeError; for some time after nobody
    /// answered, at once.
    void open();
    /// Also throws kServerGone where only nodes without majority answer, which serve what they have.
    void openToWrite();

    bool isOpen() const { return m_handle != nullptr; }

    /// Gives the connection up. The server is asked last from now on, for a while.
    void drop();
    void close();
    void setPatience(Patience patience);

    /// Sends the statements in one packet and gives the answers to all of them. Throws MariaPacketFailed;
    /// what stands behind the statement that failed was not done then, unless the connection was lost. With
    /// `stream` the rows of the last one are still on their way.
    std::vector<MariaAnswer> send(const QList<QByteArray>& statements, bool stream = false);
    /// The rows that are on their way have all come, or are not wanted.
    void streamEnded();
    /// The error of the last call on the handle.
    MariaFailure failure() const;

    /// From any thread: what is sent at the moment fails, here and at the server.
    void interrupt();

    bool wasInterrupted() const { return m_interrupted; }

    /// Makes the server stop what was interrupted, and connects anew.
    void afterInterrupt();

    /// The server's time as a serial, as it was when connecting and time has passed since.
    double now() const;

    qint64 roundTrips() const { return m_trips; }

    /// As the head of the database tells.
    int schemaVersion() const { return m_schemaVersion; }

    const QString& database() const { return m_parts.database; }

  private:
    struct Server {
        QString host;
        unsigned port;
        /// Since it was lost; invalid where it was not.
        QElapsedTimer lost;
    };

    std::vector<Server*> inTurn();
    MariaHandle connect(Server& server, MariaFailure& failure) const;
    /// Makes the session what it has to be; false for a node without majority.
    bool setUp(MariaHandle& handle);
    void readHead(st_mysql* handle);
    void use(MariaHandle handle, Server& server, bool ofMajority);
    MariaAnswer answer(bool stream);
    /// Gives what the socket's owner may break off from another thread.
    void setBusy(bool busy);

    const ConnectionString m_parts;
    const Database m_kind;
    std::vector<Server> m_servers;
    Server* m_server = nullptr;
    MariaHandle m_handle;
    unsigned long m_thread = 0;
    Patience m_patience = Patience::Short;
    QElapsedTimer m_failedRound;
    MariaFailure m_lastFailure;
    double m_serverTime = 0;
    QElapsedTimer m_sinceServerTime;
    int m_schemaVersion = 0;
    bool m_ofMajority = true;
    std::atomic<qint64> m_trips = 0;
    std::mutex m_mutex;
    bool m_busy = false;
    std::atomic<bool> m_interrupted = false;
};

} // namespace store
