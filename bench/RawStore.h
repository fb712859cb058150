#pragma once
#include <QByteArray>
#include <QString>
#include <sqlite3.h>
#include <string_view>

/// The engine's own C interface with as little around it as a careful program can have: what the roads of
/// Tavolino are compared with.
namespace bench {

/// A connection with the settings of the store: WAL, synchronous FULL, the same cache, the same collation and
/// LIKE. Failures end the program with a message.
class RawStore {
  public:
    explicit RawStore(const QString& path);
    ~RawStore();
    RawStore(const RawStore&) = delete;
    RawStore& operator=(const RawStore&) = delete;

    sqlite3* handle() const { return m_database; }

    void run(const char* sql);

  private:
    sqlite3* m_database = nullptr;
};

/// A statement that is prepared once. A run of it is: bind, step while there are rows, reset.
class RawStatement {
  public:
    RawStatement(RawStore& store, const char* sql);

    ~RawStatement() { sqlite3_finalize(m_statement); }

    RawStatement(const RawStatement&) = delete;
    RawStatement& operator=(const RawStatement&) = delete;

    void bind(int position, qint64 number) { sqlite3_bind_int64(m_statement, position, number); }

    void bind(int position, std::nullptr_t) { sqlite3_bind_null(m_statement, position); }

    void bind(int position, double number) { sqlite3_bind_double(m_statement, position, number); }

    /// The text outlives the run.
    void bind(int position, const QByteArray& text) {
        sqlite3_bind_text(m_statement, position, text.constData(), int(text.size()), SQLITE_STATIC);
    }

    /// The value of a column of another statement's row.
    void bind(int position, const RawStatement& from, int column) {
        sqlite3_bind_value(m_statement, position, sqlite3_column_value(from.m_statement, column));
    }

    bool step();

    void reset() { sqlite3_reset(m_statement); }

    /// Runs a statement without rows.
    void exec() {
        step();
        reset();
    }

    int columns() const { return sqlite3_column_count(m_statement); }

    int type(int column) const { return sqlite3_column_type(m_statement, column); }

    qint64 integer(int column) const { return sqlite3_column_int64(m_statement, column); }

    double real(int column) const { return sqlite3_column_double(m_statement, column); }

    /// Valid until the next step.
    std::string_view text(int column) const {
        const auto* chars = reinterpret_cast<const char*>(sqlite3_column_text(m_statement, column));
        return {chars ? chars : "", size_t(sqlite3_column_bytes(m_statement, column))};
    }

  private:
    sqlite3_stmt* m_statement = nullptr;
};

} // namespace bench
