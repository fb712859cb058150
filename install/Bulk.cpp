#include "install/Bulk.h"
#include "common/RunTimeError.h"

namespace install {
namespace {

using namespace Qt::StringLiterals;

[[noreturn]] void fail(sqlite3* database) {
    const int code = sqlite3_errcode(database) & 0xff;
    const QString detail = QString::fromUtf8(sqlite3_errmsg(database));
    if (code == SQLITE_FULL)
        throw common::RunTimeError(common::kDiskFull, u"Der Datenträger ist voll."_s, detail);
    throw common::RunTimeError(common::kSqlFailure, u"Die Datenbank konnte nicht geschrieben werden."_s,
                               detail);
}

} // namespace

void runScript(sqlite3* database, const QByteArray& sql) {
    if (sqlite3_exec(database, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        fail(database);
}

double readNumber(sqlite3* database, const QByteArray& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database, sql.constData(), int(sql.size()), &statement, nullptr) != SQLITE_OK)
        fail(database);
    const bool row = sqlite3_step(statement) == SQLITE_ROW;
    const double number = row ? sqlite3_column_double(statement, 0) : 0;
    sqlite3_finalize(statement);
    if (!row)
        fail(database);
    return number;
}

Inserter::Inserter(sqlite3* database, const char* table, const char* columns) : m_database(database) {
    const QByteArray names(columns);
    QByteArray marks("?");
    for (qsizetype i = names.count(','); i > 0; --i)
        marks += ",?";
    const QByteArray sql = QByteArray("INSERT INTO ") + table + " (" + names + ") VALUES (" + marks + ")";
    if (sqlite3_prepare_v3(database, sql.constData(), int(sql.size()), SQLITE_PREPARE_PERSISTENT,
                           &m_statement, nullptr) != SQLITE_OK)
        fail(database);
}

Inserter::~Inserter() {
    sqlite3_finalize(m_statement);
}

void Inserter::finishRow() {
    Q_ASSERT(m_column == sqlite3_bind_parameter_count(m_statement));
    const bool done = sqlite3_step(m_statement) == SQLITE_DONE;
    if (!done)
        fail(m_database);
    sqlite3_reset(m_statement);
}

} // namespace install
