#pragma once
#include <QByteArray>
#include <QString>
#include <cstddef>
#include <optional>
#include <sqlite3.h>

/// Writing straight to the engine, for what the installer does a million times.
namespace install {

/// Runs statements parted by ";". Throws common::RunTimeError kSqlFailure.
void runScript(sqlite3* database, const QByteArray& sql);
/// The first column of the first row.
double readNumber(sqlite3* database, const QByteArray& sql);

/// Adds rows to one table, one prepared statement for all.
class Inserter {
  public:
    /// `columns` as in an INSERT, such as "lng_ID, txt_Name".
    Inserter(sqlite3* database, const char* table, const char* columns);
    ~Inserter();
    Inserter(const Inserter&) = delete;
    Inserter& operator=(const Inserter&) = delete;

    /// One value a column, in their order: numbers, QString, UTF-8 as QByteArray or const char*, nullptr for
    /// nothing. Texts are bound without a copy and read before add() comes back.
    template <class... Values> void add(const Values&... values) {
        m_column = 0;
        (bind(values), ...);
        finishRow();
    }

    /// The same for a row that hands its values over itself: `fill` is called with a function of one value.
    template <class Fill> void addBy(Fill fill) {
        m_column = 0;
        fill([this](const auto& value) { this->bind(value); });
        finishRow();
    }

  private:
    void bind(int number) { sqlite3_bind_int64(m_statement, ++m_column, number); }

    void bind(qint64 number) { sqlite3_bind_int64(m_statement, ++m_column, number); }

    void bind(double number) { sqlite3_bind_double(m_statement, ++m_column, number); }

    void bind(std::nullptr_t) { sqlite3_bind_null(m_statement, ++m_column); }

    void bind(const std::optional<double>& number) { number ? bind(*number) : bind(nullptr); }

    void bind(const QByteArray& text) {
        sqlite3_bind_text(m_statement, ++m_column, text.constData(), int(text.size()), SQLITE_STATIC);
    }

    void bind(const char* text) { sqlite3_bind_text(m_statement, ++m_column, text, -1, SQLITE_STATIC); }

    void bind(const QString& text) {
        const QByteArray utf8 = text.toUtf8();
        sqlite3_bind_text(m_statement, ++m_column, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
    }

    void finishRow();

    sqlite3* m_database;
    sqlite3_stmt* m_statement = nullptr;
    int m_column = 0;
};

} // namespace install
