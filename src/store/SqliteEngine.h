#pragma once
#include "store/Engine.h"
#include <QHash>
#include <QSet>
#include <SQLiteCpp/Statement.h>
#include <memory>
#include <string>
#include <unordered_map>

struct sqlite3;

namespace SQLite {
class Database;
} // namespace SQLite

namespace store {

/// The embedded engine: one file, WAL, every commit on disk before it returns (synchronous FULL), writing
/// transactions begun IMMEDIATE. Prepared statements are kept by their text.
class SqliteEngine : public Engine {
  public:
    /// Opens an existing file; see Connection::Open for what it throws.
    SqliteEngine(const QString& path, const QString& password);
    ~SqliteEngine() override;

    qint64 execute(const QString& sql) override;
    std::unique_ptr<Cursor> query(const QString& sql, bool keyed) override;
    const std::vector<Column>& columnsOf(const QString& table) override;
    qint64 insert(const QString& table, const std::vector<Column>& columns,
                  const std::vector<common::Value>& values) override;
    void update(const QString& table, qint64 rowKey, const std::vector<Column>& columns,
                const std::vector<common::Value>& values) override;
    qint64 newKey(const QString& table) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    bool inTransaction() const override;
    QString quote(const QString& text) const override;

    /// Copies the database, compacted, into a new file.
    void compactInto(const QString& path);
    /// Reads the names of the Yes/No columns again; after the schema was made or changed.
    void schemaChanged();
    /// The engine's own handle, for the installer's bulk work.
    sqlite3* handle() const;

  private:
    friend class SqliteCursor;

    /// A statement with what its result columns are, found out once.
    struct Prepared {
        SQLite::Statement statement;
        std::vector<Column> columns;
    };

    using StatementPtr = std::unique_ptr<Prepared>;
    StatementPtr prepare(const QByteArray& sql);
    StatementPtr take(const QByteArray& sql);
    void giveBack(StatementPtr statement);
    qint64 run(const QByteArray& sql, const std::vector<Column>& columns,
               const std::vector<common::Value>& values, const qint64* rowKey);
    void checkFile(const QString& password);

    QString m_path;
    std::unique_ptr<SQLite::Database> m_database;
    std::unordered_map<std::string, std::vector<StatementPtr>> m_idle;
    int m_idleCount = 0;
    QSet<QString> m_yesNo;
    QHash<QString, std::vector<Column>> m_columns;
};

} // namespace store
