#pragma once
#include "store/Progress.h"
#include "store/SoleHold.h"
#include <optional>

namespace store {

/// All of the main database in one closed, compacted and checked file, which nobody changes as long as this
/// lives: the file in which it stands, compacted on the way and open to nobody else; of a server's, a copy as
/// of one moment, which goes with this.
class CompactedMain {
  public:
    /// Throws what SoleHold and CompactDatabase throw; the working database is whole at every instant.
    explicit CompactedMain(const Progress& progress);
    ~CompactedMain();
    CompactedMain(const CompactedMain&) = delete;
    CompactedMain& operator=(const CompactedMain&) = delete;

    const QString& file() const { return m_file; }

  private:
    void putInPlace(const QString& clean);

    QString m_file;
    std::optional<SoleHold> m_hold;
};

/// About how many bytes the main database takes.
qint64 mainSize();

} // namespace store
