#include "Replay.h"
#include <map>

namespace bench {
namespace {

struct Taken {
    QByteArray sql;
    int rows = 0;
    bool toTheEnd = false;
};

struct Log {
    std::vector<Taken> taken;
    std::map<sqlite3_stmt*, size_t> running;
};

int note(unsigned event, void* context, void* handle, void*) {
    Log& log = *static_cast<Log*>(context);
    auto* statement = static_cast<sqlite3_stmt*>(handle);
    if (event == SQLITE_TRACE_STMT) {
        char* sql = sqlite3_expanded_sql(statement);
        log.running[statement] = log.taken.size();
        log.taken.push_back({sql, 0, false});
        sqlite3_free(sql);
    } else if (const auto at = log.running.find(statement); at != log.running.end()) {
        if (event == SQLITE_TRACE_ROW)
            ++log.taken[at->second].rows;
        else // At its end or its reset; one that is reset before its end is busy still.
            log.taken[at->second].toTheEnd = sqlite3_stmt_busy(statement) == 0;
    }
    return 0;
}

} // namespace

void Replay::record(sqlite3* handle, const std::function<void()>& road) {
    Log log;
    sqlite3_trace_v2(handle, SQLITE_TRACE_STMT | SQLITE_TRACE_ROW | SQLITE_TRACE_PROFILE, note, &log);
    road();
    sqlite3_trace_v2(handle, 0, nullptr, nullptr);
    std::map<QByteArray, std::shared_ptr<RawStatement>> prepared;
    std::vector<Step>& steps = m_recordings.emplace_back();
    for (const Taken& taken : log.taken) {
        auto& statement = prepared[taken.sql];
        if (!statement)
            statement = std::make_shared<RawStatement>(m_store, taken.sql.constData());
        steps.push_back({statement, taken.rows, taken.toTheEnd});
    }
}

void Replay::run(size_t i) {
    for (const Step& step : m_recordings[i % m_recordings.size()]) {
        for (int row = 0; row < step.rows && step.statement->step(); ++row)
            read(*step.statement);
        if (step.toTheEnd)
            step.statement->step();
        step.statement->reset();
    }
}

void Replay::read(RawStatement& statement) {
    for (int column = 0; column < statement.columns(); ++column) {
        const int type = statement.type(column);
        if (type == SQLITE_INTEGER)
            m_sum += statement.integer(column);
        else if (type == SQLITE_FLOAT)
            m_sum += qint64(statement.real(column));
        else if (type == SQLITE_TEXT)
            m_sum += qint64(statement.text(column).size());
    }
}

} // namespace bench
