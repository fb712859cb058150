#pragma once
#include "store/Connection.h"
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

namespace store {

/// A connection that only reads, in a thread of its own. It is opened by the first job, in that thread.
class Reader {
  public:
    using Job = std::function<void(Engine&)>;

    explicit Reader(const QString& connectionString);
    ~Reader();
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    bool isBusy() const { return m_busy; }

    /// Runs the job to its end and throws what it throws. What `waiting` throws breaks the job off and comes
    /// out once it is over.
    void read(const Job& job, const Waiting& waiting);
    /// Breaks off what runs; whoever waits for it is told that the connection is closed.
    void close();

  private:
    void run();
    /// Whether the job is over by then.
    bool waitFor(std::chrono::milliseconds time);
    void breakOff();

    const QString m_connectionString;
    /// Of the thread that reads; by the others under the lock, to interrupt it.
    Engine* m_engine = nullptr;
    const Job* m_job = nullptr;
    std::exception_ptr m_error;
    bool m_closed = false;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_busy = false;
    std::thread m_thread;
};

} // namespace store
