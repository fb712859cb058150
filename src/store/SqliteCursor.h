#pragma once
#include "store/Dialect.h"
#include "store/SqliteEngine.h"
#include <SQLiteCpp/Statement.h>

namespace store {

/// Type of a column as the schema declares it.
ColumnType columnType(const char* declared);
/// Binds the literals of a statement to the parameters of its translation.
void bindLiterals(SQLite::Statement& statement, const std::vector<Parameter>& parameters,
                  const std::vector<Literal>& literals);
/// Binds a value in the form its column keeps; see storedValue.
void bindTyped(SQLite::Statement& statement, int position, ColumnType type, const common::Value& value);

/// A running query of the embedded engine.
class SqliteCursor : public Cursor {
  public:
    /// `literals` are those of the statement; they are bound here and not kept.
    SqliteCursor(SqliteEngine& engine, std::shared_ptr<SqliteEngine::Plan> plan,
                 const std::vector<Literal>& literals);
    ~SqliteCursor() override;
    bool next() override;

    const std::vector<Column>& columns() const override { return m_prepared->shown; }

    common::Value value(int column) const override;

  private:
    int keyColumn(int key) const;
    bool tiesWithLast() const;
    void rememberKeys();

    SqliteEngine& m_engine;
    std::shared_ptr<SqliteEngine::Plan> m_plan;
    SqliteEngine::StatementPtr m_prepared;
    std::vector<common::Value> m_lastKeys;
    int m_delivered = 0;
};

} // namespace store
