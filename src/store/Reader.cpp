#include "store/Reader.h"
#include "common/RunTimeError.h"
#include "store/ConnectionString.h"

namespace store {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

Reader::Reader(const QString& connectionString) :
    m_connectionString(connectionString), m_thread([this] { run(); }) {
}

Reader::~Reader() {
    close();
}

void Reader::run() {
    std::unique_ptr<Engine> engine;
    std::unique_lock lock(m_mutex);
    while (true) {
        m_changed.wait(lock, [this] { return m_job || m_closed; });
        if (!m_job)
            break;
        const Job& job = *m_job;
        lock.unlock();
        std::exception_ptr error;
        try {
            if (!engine) {
                engine = openEngine(ConnectionString::parse(m_connectionString));
                engine->onlyRead();
                const std::lock_guard known(m_mutex);
                m_engine = engine.get();
            }
            job(*engine);
        } catch (...) {
            error = std::current_exception();
        }
        lock.lock();
        m_error = std::move(error);
        m_job = nullptr;
        m_changed.notify_all();
    }
    m_engine = nullptr;
}

bool Reader::waitFor(std::chrono::milliseconds time) {
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, time, [this] { return !m_job; });
}

/// Again and again: between two statements there is nothing to interrupt.
void Reader::breakOff() {
    do {
        const std::lock_guard lock(m_mutex);
        if (m_engine)
            m_engine->interrupt();
    } while (!waitFor(2ms));
}

void Reader::read(const Job& job, const Waiting& waiting) {
    constexpr auto kBetweenWords = 20ms;

    struct Busy {
        bool& flag;

        explicit Busy(bool& busy) : flag(busy) { flag = true; }

        ~Busy() { flag = false; }
    } const busy(m_busy);

    {
        const std::lock_guard lock(m_mutex);
        m_error = nullptr;
        m_job = &job;
    }
    m_changed.notify_all();
    try {
        do
            waiting();
        while (!waitFor(kBetweenWords));
    } catch (...) {
        breakOff();
        throw;
    }
    if (m_closed)
        throw common::RunTimeError(common::kObjectClosed, u"Die Datenbankverbindung ist geschlossen."_s);
    if (m_error)
        std::rethrow_exception(std::exchange(m_error, nullptr));
}

void Reader::close() {
    if (!m_thread.joinable())
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_closed = true;
    }
    m_changed.notify_all();
    breakOff();
    m_thread.join();
}

} // namespace store
