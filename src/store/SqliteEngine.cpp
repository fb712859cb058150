#include "store/SqliteEngine.h"
#include "common/RunTimeError.h"
#include "store/Collation.h"
#include "store/Connection.h"
#include "store/CreateDatabase.h"
#include "store/Dialect.h"
#include "store/PasswordGate.h"
#include "store/SqliteCursor.h"
#include "store/SqliteErrors.h"
#include <QDir>
#include <QFileInfo>
#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

namespace store {
namespace {

using namespace Qt::StringLiterals;

constexpr int kIdleStatements = 256;

std::string_view textOf(sqlite3_value* value) noexcept {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return text ? std::string_view(text, size_t(sqlite3_value_bytes(value))) : std::string_view();
}

int collate(void*, int aSize, const void* a, int bSize, const void* b) noexcept {
    return compareTexts({static_cast<const char*>(a), size_t(aSize)},
                        {static_cast<const char*>(b), size_t(bSize)});
}

void like(sqlite3_context* context, int count, sqlite3_value** values) noexcept {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL || sqlite3_value_type(values[1]) == SQLITE_NULL)
        return sqlite3_result_null(context);
    const std::string_view escape = count > 2 ? textOf(values[2]) : std::string_view();
    const char32_t mark = escape.empty() ? 0 : static_cast<unsigned char>(escape.front());
    sqlite3_result_int(context, likeText(textOf(values[0]), textOf(values[1]), mark));
}

void registerFunctions(sqlite3* handle) {
    constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_collation(handle, kCollationName, SQLITE_UTF8, nullptr, collate);
    sqlite3_create_function(handle, "like", 2, flags, nullptr, like, nullptr, nullptr);
    sqlite3_create_function(handle, "like", 3, flags, nullptr, like, nullptr, nullptr);
}

QString quotedName(const QString& name) {
    return u'"' + QString(name).replace(u'"', u"\"\""_s) + u'"';
}

ColumnType declaredType(const QString& text) {
    const QString type = text.toUpper();
    if (type == u"YESNO")
        return ColumnType::YesNo;
    if (type == u"DATE")
        return ColumnType::Date;
    if (type == u"DOUBLE")
        return ColumnType::Double;
    if (type.contains(u"INT"))
        return ColumnType::Long;
    return type.startsWith(u"TEXT") ? ColumnType::Text : ColumnType::Any;
}

} // namespace

ColumnType columnType(const char* declared) {
    return declared ? declaredType(QString::fromUtf8(declared)) : ColumnType::Any;
}

SqliteEngine::SqliteEngine(const QString& path, const QString& password) : m_path(path) {
    if (!QFileInfo::exists(path))
        throw common::RunTimeError(
            common::kFileNotFound,
            u"Die Datenbankdatei \"%1\" wurde nicht gefunden."_s.arg(QDir::toNativeSeparators(path)), path);
    try {
        m_database = std::make_unique<SQLite::Database>(path.toStdString(), SQLite::OPEN_READWRITE, 5000);
        registerFunctions(m_database->getHandle());
        checkFile(password);
        m_database->exec("PRAGMA journal_mode = WAL");
        m_database->exec("PRAGMA synchronous = FULL");
        m_database->exec("PRAGMA temp_store = MEMORY");
        m_database->exec("PRAGMA cache_size = -32768");
        schemaChanged();
    } catch (const SQLite::Exception& error) {
        throwStoreError(error, path);
    }
}

SqliteEngine::~SqliteEngine() = default;

void SqliteEngine::checkFile(const QString& password) {
    const QString file = QFileInfo(m_path).fileName();
    if (m_database->execAndGet("PRAGMA application_id").getInt() != kApplicationId)
        throw common::RunTimeError(
            common::kStoreFailure,
            u"Die Datei \"%1\" ist keine Datenbank von Tavolino oder ist beschädigt."_s.arg(file), m_path);
    const int version = m_database->execAndGet("PRAGMA user_version").getInt();
    if (version > kSchemaVersion)
        throw common::RunTimeError(
            common::kSchemaTooNew,
            u"Die Datenbank \"%1\" stammt von einer neueren Version des Programms. Bitte aktualisieren Sie Tavolino."_s
                .arg(file),
            u"schema %1, program %2"_s.arg(version).arg(kSchemaVersion));
    SQLite::Statement gate(*m_database, "SELECT txt_Verifier FROM tbl_Store_Gate");
    if (gate.executeStep() && !fitsVerifier(QByteArray(gate.getColumn(0).getText()), password))
        throw common::RunTimeError(common::kPasswordRefused, u"Das Datenbankkennwort ist ungültig."_s,
                                   m_path);
}

void SqliteEngine::schemaChanged() {
    m_columns.clear();
    m_yesNo.clear();
    SQLite::Statement names(*m_database,
                            "SELECT DISTINCT lower(c.name) FROM sqlite_schema AS t, "
                            "pragma_table_info(t.name) AS c WHERE t.type = 'table' AND c.type = 'YESNO'");
    while (names.executeStep())
        m_yesNo.insert(QString::fromUtf8(names.getColumn(0).getText()));
}

sqlite3* SqliteEngine::handle() const {
    return m_database->getHandle();
}

SqliteEngine::StatementPtr SqliteEngine::prepare(const QByteArray& sql) {
    auto prepared = StatementPtr(new Prepared{SQLite::Statement(*m_database, sql.toStdString()), {}});
    const SQLite::Statement& statement = prepared->statement;
    for (int i = 0; i < statement.getColumnCount(); ++i) {
        Column column{QString::fromUtf8(statement.getColumnName(i))};
        try {
            column.type = columnType(statement.getColumnDeclaredType(i));
        } catch (const SQLite::Exception&) {
            column.type = ColumnType::Any; // an expression has no declared type
        }
        prepared->columns.push_back(column);
    }
    return prepared;
}

SqliteEngine::StatementPtr SqliteEngine::take(const QByteArray& sql) {
    const auto found = m_idle.find(sql.toStdString());
    if (found == m_idle.end() || found->second.empty())
        return prepare(sql);
    StatementPtr statement = std::move(found->second.back());
    found->second.pop_back();
    --m_idleCount;
    return statement;
}

void SqliteEngine::giveBack(StatementPtr statement) {
    statement->statement.tryReset();
    if (m_idleCount >= kIdleStatements) {
        m_idle.clear();
        m_idleCount = 0;
    }
    m_idle[statement->statement.getQuery()].push_back(std::move(statement));
    ++m_idleCount;
}

qint64 SqliteEngine::execute(const QString& sql) {
    const Translated translated = translate(sql, m_yesNo);
    try {
        StatementPtr statement = take(translated.sql);
        bindAll(statement->statement, translated.parameters);
        while (statement->statement.executeStep()) {
        }
        const qint64 changes = m_database->getChanges();
        giveBack(std::move(statement));
        return changes;
    } catch (const SQLite::Exception& error) {
        throwStoreError(error, sql);
    }
}

std::unique_ptr<Cursor> SqliteEngine::query(const QString& sql, bool keyed) {
    try {
        return std::make_unique<SqliteCursor>(*this, translate(sql, m_yesNo, keyed), keyed);
    } catch (const SQLite::Exception& error) {
        throwStoreError(error, sql);
    }
}

const std::vector<Column>& SqliteEngine::columnsOf(const QString& table) {
    const QString key = table.toLower();
    if (const auto found = m_columns.constFind(key); found != m_columns.constEnd())
        return *found;
    std::vector<Column> columns;
    SQLite::Statement info(*m_database, "SELECT c.name, c.type, c.pk AND t.sql LIKE '%AUTOINCREMENT%' "
                                        "FROM sqlite_schema AS t, pragma_table_info(t.name) AS c "
                                        "WHERE lower(t.name) = lower(?)");
    info.bind(1, table.toStdString());
    while (info.executeStep())
        columns.push_back({QString::fromUtf8(info.getColumn(0).getText()),
                           columnType(info.getColumn(1).getText()), info.getColumn(2).getInt() != 0});
    return *m_columns.insert(key, columns);
}

qint64 SqliteEngine::run(const QByteArray& sql, const std::vector<Column>& columns,
                         const std::vector<common::Value>& values, const qint64* rowKey) {
    try {
        StatementPtr statement = take(sql);
        for (size_t i = 0; i < values.size(); ++i)
            bindTyped(statement->statement, int(i) + 1, columns[i].type, values[i]);
        if (rowKey)
            statement->statement.bind(int(values.size()) + 1, int64_t(*rowKey));
        statement->statement.exec();
        giveBack(std::move(statement));
        return m_database->getLastInsertRowid();
    } catch (const SQLite::Exception& error) {
        throwStoreError(error, QString::fromUtf8(sql));
    }
}

qint64 SqliteEngine::insert(const QString& table, const std::vector<Column>& columns,
                            const std::vector<common::Value>& values) {
    QString names;
    QString marks;
    for (const Column& column : columns) {
        names += (names.isEmpty() ? u""_s : u", "_s) + quotedName(column.name);
        marks += marks.isEmpty() ? u"?"_s : u", ?"_s;
    }
    const QString sql = columns.empty()
                            ? u"INSERT INTO "_s + quotedName(table) + u" DEFAULT VALUES"_s
                            : u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(quotedName(table), names, marks);
    return run(sql.toUtf8(), columns, values, nullptr);
}

void SqliteEngine::update(const QString& table, qint64 rowKey, const std::vector<Column>& columns,
                          const std::vector<common::Value>& values) {
    QString assignments;
    for (const Column& column : columns)
        assignments += (assignments.isEmpty() ? u""_s : u", "_s) + quotedName(column.name) + u" = ?"_s;
    if (!columns.empty())
        run(u"UPDATE %1 SET %2 WHERE rowid = ?"_s.arg(quotedName(table), assignments).toUtf8(), columns,
            values, &rowKey);
}

qint64 SqliteEngine::newKey(const QString& table) {
    const QString sql = u"SELECT max(coalesce((SELECT seq FROM sqlite_sequence WHERE name = ?), 0), "
                        u"coalesce((SELECT max(rowid) FROM %1), 0)) + 1"_s.arg(quotedName(table));
    try {
        SQLite::Statement statement(*m_database, sql.toStdString());
        statement.bind(1, table.toStdString());
        statement.executeStep();
        return statement.getColumn(0).getInt64();
    } catch (const SQLite::Exception& error) {
        throwStoreError(error, sql);
    }
}

void SqliteEngine::begin() {
    execute(u"BEGIN IMMEDIATE"_s);
}

void SqliteEngine::commit() {
    execute(u"COMMIT"_s);
}

void SqliteEngine::rollback() {
    execute(u"ROLLBACK"_s);
}

bool SqliteEngine::inTransaction() const {
    return sqlite3_get_autocommit(m_database->getHandle()) == 0;
}

QString SqliteEngine::quote(const QString& text) const {
    return sqlText(text);
}

void SqliteEngine::compactInto(const QString& path) {
    execute(u"VACUUM INTO "_s + sqlText(path));
}

} // namespace store
