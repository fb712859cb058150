#pragma once
#include "store/Progress.h"
#include <QString>
#include <memory>

namespace store {

class SqliteEngine;

/// A database that nobody else has open as long as this lives, in this process or another, all of it in its
/// one file: another file may take its place. Whoever opens one meanwhile waits for
/// some seconds, and gets the new file or is refused.
class SoleHold {
  public:
    /// Throws what Connection::Open throws, and kStoreFailure where somebody has it open.
    explicit SoleHold(const QString& connectionString);
    ~SoleHold();
    SoleHold(const SoleHold&) = delete;
    SoleHold& operator=(const SoleHold&) = delete;

    /// After somebody in this process has read the file by himself: when he closed it, the system gave this
    /// hold's locks up as well. Throws as the constructor.
    void renew();
    /// As store::CompactDatabase.
    void CompactDatabase(const QString& targetConnection, const Progress& progress = {});
    /// Puts the file, which stands beside the database and is whole, in its place in one step. Throws
    /// kNotWritable, kDiskFull or kPlatformFailure; both files stand as they did then. Nothing more can be
    /// done with what is held afterwards.
    void replaceWith(const QString& file);

  private:
    QString m_path, m_password;
    std::unique_ptr<SqliteEngine> m_engine;
};

} // namespace store
