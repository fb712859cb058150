#pragma once
#include "RawStore.h"
#include <functional>
#include <memory>
#include <vector>

namespace bench {

/// The other side of a road whose statements are many: what Tavolino's connection ran on the way, statement
/// by statement with the same values, run again on the engine's C interface. Each is prepared once, its
/// values stand in it; all columns of as many rows are read as Tavolino stepped to; nothing is built, kept or
/// shown.
class Replay {
  public:
    explicit Replay(RawStore& store) : m_store(store) {}

    /// Goes the road on the connection at `handle` and takes down what it ran.
    void record(sqlite3* handle, const std::function<void()>& road);

    int recordings() const { return int(m_recordings.size()); }

    /// The statements of the recording at `i`; they start again behind the last one.
    void run(size_t i);

  private:
    struct Step {
        std::shared_ptr<RawStatement> statement;
        int rows = 0;
        /// Whether it was stepped until there were no more rows.
        bool toTheEnd = false;
    };

    void read(RawStatement& statement);

    RawStore& m_store;
    std::vector<std::vector<Step>> m_recordings;
    qint64 m_sum = 0;
};

} // namespace bench
