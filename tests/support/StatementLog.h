#pragma once
#include "store/Connection.h"
#include <QByteArray>
#include <QList>
#include <QStringList>

struct sqlite3;

namespace test {

/// Writes down the statements that a connection runs while the log lives.
class StatementLog {
  public:
    explicit StatementLog(sqlite3* handle);
    explicit StatementLog(store::Connection& connection);
    ~StatementLog();
    StatementLog(const StatementLog&) = delete;
    StatementLog& operator=(const StatementLog&) = delete;

    const QList<QByteArray>& statements() const { return m_statements; }

  private:
    sqlite3* m_handle;
    QList<QByteArray> m_statements;
};

/// How the engine would run the statement, a line a step.
QStringList planOf(store::Connection& connection, const QByteArray& sql);

} // namespace test
