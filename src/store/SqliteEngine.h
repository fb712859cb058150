#pragma once
#include "store/Dialect.h"
#include "store/Engine.h"
#include "store/PlanCache.h"
#include "store/Progress.h"
#include <QHash>
#include <SQLiteCpp/Statement.h>
#include <map>
#include <memory>

struct sqlite3;

namespace SQLite {
class Database;
} // namespace SQLite

namespace store {

/// To look at a file is to leave it, and the folder that it stands in, as they are.
enum class Access { Work, Look };

/// The embedded engine: one file, WAL, every commit on disk before it returns (synchronous FULL), writing
/// transactions begun IMMEDIATE. Statements of one shape are translated and prepared once.
class SqliteEngine : public Engine, private Names {
  public:
    /// Opens an existing file; see Connection::Open for what it throws. Only a closed file can be looked at.
    SqliteEngine(const QString& path, const QString& password, Access access = Access::Work);
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
    void interrupt() override;
    int schemaVersion() const override;
    void takeSchemaSteps(const std::function<void()>& waiting) override;
    bool isWritable() const override;
    void onlyRead() override;

    bool isShared() const override { return false; }

    double now() override;

    qint64 roundTrips() const override { return 0; }

    /// Runs statements parted by ";" as the engine itself speaks them, for definitions.
    void runScript(const char* sql);

    /// Copies the database, compacted, into a new file; what `progress` throws breaks it off.
    void compactInto(const QString& path, const Progress& progress = {});
    /// Throws kStoreFailure where the database is not whole.
    void checkIntegrity(Depth depth, const Progress& progress = {});
    /// Nobody else has the database open from now on, in this process or another, and all of it is in its one
    /// file. Throws where somebody has.
    void holdAlone();
    /// Forgets what it knows of the schema; after that was made or changed.
    void schemaChanged();
    /// The engine's own handle, for the installer's bulk work.
    sqlite3* handle() const;

  private:
    friend class SqliteCursor;

    /// A statement with what its result columns are, found out once.
    struct Prepared {
        SQLite::Statement statement;
        std::vector<Column> columns;
        /// Without the hidden ones; the row key of a keyed query is the last.
        std::vector<Column> shown;
    };

    using StatementPtr = std::unique_ptr<Prepared>;

    /// A translation and its prepared statements that nobody uses at the moment.
    struct Plan {
        Plan(Translated translation, bool withKey) : translated(std::move(translation)), keyed(withKey) {}

        Translated translated;
        bool keyed;
        std::vector<StatementPtr> idle;
    };

    /// An INSERT or UPDATE of certain columns of a table.
    struct Writer {
        bool isInsert;
        QString table;
        std::vector<QString> columns;
        SQLite::Statement statement;
    };

    ColumnType typeOf(const QString& table, const QString& column) const override;

    QString rowKey(const QString&) const override { return QStringLiteral("rowid"); }

    StatementPtr prepare(const Plan& plan);
    StatementPtr take(Plan& plan);
    void giveBack(Plan& plan, StatementPtr statement);
    const std::vector<Column>& known(const QString& table) const;
    SQLite::Statement& writerFor(bool isInsert, const QString& table, const std::vector<Column>& columns);
    void write(SQLite::Statement& statement, const std::vector<Column>& columns,
               const std::vector<common::Value>& values, const qint64* rowKey);
    void openToWork(const QString& password);
    void openToLook(const QString& password);
    void checkFile(const QString& password);
    /// Runs work of the engine, which gives its word now and again.
    void watched(const std::function<void()>& word, const std::function<void()>& work);
    qint64 numberOf(const char* pragma) const;

    QString m_path;
    std::unique_ptr<SQLite::Database> m_database;
    PlanCache<Plan> m_plans{*this, Speech::Sqlite};
    std::vector<std::unique_ptr<Writer>> m_writers;
    /// What is given out stays where it is.
    mutable std::map<QString, std::vector<Column>> m_columns;
    /// The last key reserved of each table: one that a roll-back took back is not given again.
    QHash<QString, qint64> m_reserved;
};

} // namespace store
