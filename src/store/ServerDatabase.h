#pragma once
#include "store/Engine.h"
#include "store/Progress.h"
#include "store/Schema.h"
#include "store/ServerSession.h"

namespace store {

/// Work on a server's database as a whole: filled, replaced, copied. What comes in is loaded into tables
/// beside those in place, checked, and put in place by one statement, so that everybody finds the former
/// database or the new one. One at a time does such work.
class ServerDatabase {
  public:
    /// Throws what Connection::Open throws, and kStoreFailure while somebody else does such work.
    explicit ServerDatabase(const ConnectionString& server);

    /// Unfinished: an earlier filling was cut off. Foreign: none of ours, and not empty.
    enum class State { Empty, Unfinished, Foreign, Whole };
    State state();
    bool hasPhoneBook();
    /// Grows with each transaction of a station.
    qint64 writes();

    /// Loads a database of a file, with today's schema, into tables beside. Throws kTargetExists in a foreign
    /// database, and kStoreFailure where the copy differs.
    void load(Engine& file, Database database, const Progress& progress = {});
    /// Puts what was loaded in place. A database that was empty or unfinished is whole afterwards.
    void putInPlace();

    /// Nobody else writes from now on, until what was loaded is in place or this goes.
    void lock();

  private:
    void startAnew();
    void dropLike(const QByteArray& pattern);
    QByteArrayList tablesInPlace();
    QByteArray renaming();
    void makeWhole();
    void tellStations();

    const ConnectionString m_server;
    ServerSession m_session;
    /// Holds the lock that every writing transaction takes.
    std::unique_ptr<ServerSession> m_lock;
    QList<Database> m_loaded;
};

/// Copies a server's database, as it is at one moment, into a new file of the embedded engine, checked by
/// counts and sums. Throws what Connection::Open throws, kTargetExists and kStoreFailure; what fails or is
/// given up leaves no file.
void copyFromServer(const ConnectionString& server, Database database, const ConnectionString& target,
                    const Progress& progress = {});

/// About how many bytes the database takes.
qint64 sizeOnServer(const ConnectionString& server);

} // namespace store
