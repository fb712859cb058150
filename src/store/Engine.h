#pragma once
#include "common/Value.h"
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

/// The seam behind which a database engine stands. Connections, recordsets and all above know only this. A
/// second engine fills this class and is chosen in openEngine. Statements come in the program's own dialect
/// and each engine translates them by itself; texts get into them by sqlText.
namespace store {

/// What a column holds, as declared in the schema. It decides how values are written and read back.
enum class ColumnType { Any, Long, Double, Text, YesNo, Date };

struct Column {
    QString name;
    ColumnType type = ColumnType::Any;
    /// The table's own counter, given by the store.
    bool counter = false;
};

/// Rows of a running query, walked forward.
class Cursor {
  public:
    virtual ~Cursor() = default;
    /// Steps to the next row; false behind the last one.
    virtual bool next() = 0;
    virtual const std::vector<Column>& columns() const = 0;
    virtual common::Value value(int column) const = 0;
};

class Engine {
  public:
    virtual ~Engine() = default;
    /// Runs UPDATE, DELETE, INSERT or a definition; gives the number of rows touched.
    virtual qint64 execute(const QString& sql) = 0;
    /// Runs a SELECT. With `keyed` each row's own row key comes as one more, last column, which needs a query
    /// on one table.
    virtual std::unique_ptr<Cursor> query(const QString& sql, bool keyed) = 0;
    /// Columns of a table or view in the schema's order; empty when there is none of that name.
    virtual const std::vector<Column>& columnsOf(const QString& table) = 0;
    /// Adds a row and gives its row key, which is the table's counter where it has one. Values come in the
    /// type of their column or one that converts to it; what does not throws kTypeMismatch.
    virtual qint64 insert(const QString& table, const std::vector<Column>& columns,
                          const std::vector<common::Value>& values) = 0;
    virtual void update(const QString& table, qint64 rowKey, const std::vector<Column>& columns,
                        const std::vector<common::Value>& values) = 0;
    /// A key for a new row of a table with a counter, reserved for the caller: nobody else gets it, in this
    /// process or another, whether the row is ever written or not.
    virtual qint64 newKey(const QString& table) = 0;
    /// Begins a transaction that writes: nobody else writes in one meanwhile. Throws kTryAgain, as all up to
    /// its commit may, where another one was in the way; then it is taken back.
    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;
    virtual bool inTransaction() const = 0;
    /// Breaks off what runs at the moment, from any thread: it throws. Nothing happens where nothing runs.
    virtual void interrupt() = 0;
    /// Of the open database, 1 for the first one.
    virtual int schemaVersion() const = 0;
    /// Takes the steps to kSchemaVersion in one transaction; see SchemaSteps.h.
    virtual void takeSchemaSteps(const std::function<void()>& waiting) = 0;
    /// Whether the database may be written at all.
    virtual bool isWritable() const = 0;
    /// From now on this connection only reads, and a query may last.
    virtual void onlyRead() = 0;
    /// Whether other stations may work on the database at the same time.
    virtual bool isShared() const = 0;
    /// The time of the store, the same for all stations, as a serial. In a file it is this station's.
    virtual double now() = 0;
    /// How often a server was asked and answered; 0 in a file.
    virtual qint64 roundTrips() const = 0;
};

struct ConnectionString;
/// The engine that the connection string asks for, connected. Throws what Connection::Open throws.
std::unique_ptr<Engine> openEngine(const ConnectionString& parts);

} // namespace store
