#include "tests/support/StatementLog.h"
#include "store/SqliteEngine.h"
#include <sqlite3.h>

namespace test {
namespace {

int note(unsigned, void* statements, void* statement, void*) {
    static_cast<QList<QByteArray>*>(statements)->append(sqlite3_sql(static_cast<sqlite3_stmt*>(statement)));
    return 0;
}

} // namespace

StatementLog::StatementLog(sqlite3* handle) : m_handle(handle) {
    sqlite3_trace_v2(handle, SQLITE_TRACE_STMT, note, &m_statements);
}

StatementLog::StatementLog(store::Connection& connection) :
    StatementLog(dynamic_cast<store::SqliteEngine&>(connection.engine()).handle()) {
}

StatementLog::~StatementLog() {
    sqlite3_trace_v2(m_handle, 0, nullptr, nullptr);
}

} // namespace test
