#pragma once
#include "store/Progress.h"
#include <QString>
#include <memory>

namespace store {

class Engine;
class ServerDatabase;
class SqliteEngine;

/// The main database in the hands of one who replaces it.
///
/// A file is open to nobody else as long as this lives, in this process or another, and all of it in its
/// one file: another file may take its place. Whoever opens one meanwhile waits for
/// some seconds, and gets the new file or is refused. On a server others go on; from the copy of the present
/// database on, nobody but the holder writes.
class SoleHold {
  public:
    /// Throws what Connection::Open throws, and kStoreFailure where somebody has it open, or holds it.
    explicit SoleHold(const QString& connectionString);
    ~SoleHold();
    SoleHold(const SoleHold&) = delete;
    SoleHold& operator=(const SoleHold&) = delete;

    /// False on a server.
    bool isFile() const { return !m_server; }

    /// After somebody in this process has read the file by himself: when he closed it, the system gave this
    /// hold's locks up as well. Throws as the constructor.
    void renew();
    /// Of a file: what is held, open.
    Engine& engine();
    /// Takes in ahead what a server needs of the file that is to replace its database.
    void prepare(const QString& file, const Progress& progress = {});
    /// As store::CompactDatabase.
    void CompactDatabase(const QString& targetConnection, const Progress& progress = {});
    /// Puts the file, which stands beside the database and is whole, in its place in one step; on a server,
    /// the rows of the file that was prepared, and the file goes. Throws
    /// kNotWritable, kDiskFull or kPlatformFailure; both files stand as they did then. Nothing more can be
    /// done with what is held afterwards.
    void replaceWith(const QString& file);

  private:
    QString m_connection, m_path, m_password;
    std::unique_ptr<SqliteEngine> m_engine;
    std::unique_ptr<ServerDatabase> m_server;
};

} // namespace store
