#include "tests/support/StatementLog.h"
#include "store/SqliteEngine.h"
#include "tests/support/TwinEngine.h"
#include <sqlite3.h>
#include <stdexcept>

namespace test {
namespace {

int note(unsigned, void* statements, void* statement, void*) {
    static_cast<QList<QByteArray>*>(statements)->append(sqlite3_sql(static_cast<sqlite3_stmt*>(statement)));
    return 0;
}

sqlite3* handleOf(store::Connection& connection) {
    store::Engine& engine = connection.engine();
    auto* twin = dynamic_cast<TwinEngine*>(&engine);
    return dynamic_cast<store::SqliteEngine&>(twin ? twin->first() : engine).handle();
}

} // namespace

StatementLog::StatementLog(sqlite3* handle) : m_handle(handle) {
    sqlite3_trace_v2(handle, SQLITE_TRACE_STMT, note, &m_statements);
}

StatementLog::StatementLog(store::Connection& connection) : StatementLog(handleOf(connection)) {
}

StatementLog::~StatementLog() {
    sqlite3_trace_v2(m_handle, 0, nullptr, nullptr);
}

QStringList planOf(store::Connection& connection, const QByteArray& sql) {
    const QByteArray text = "EXPLAIN QUERY PLAN " + sql;
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(handleOf(connection), text.constData(), -1, &statement, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(handleOf(connection)));
    QStringList steps;
    while (sqlite3_step(statement) == SQLITE_ROW)
        steps += QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 3)));
    sqlite3_finalize(statement);
    return steps;
}

} // namespace test
