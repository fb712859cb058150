#include "store/SqliteEngine.h"
#include "common/Clock.h"
#include "common/OwnerFile.h"
#include "common/RunTimeError.h"
#include "store/Collation.h"
#include "store/Connection.h"
#include "store/ConnectionString.h"
#include "store/CreateDatabase.h"
#include "store/Dialect.h"
#include "store/EngineWrapper.h"
#include "store/MariaEngine.h"
#include "store/PasswordGate.h"
#include "store/SqliteCursor.h"
#include "store/SqliteErrors.h"
#include <QDir>
#include <QFileInfo>
#include <QUrl>
#include <SQLiteCpp/SQLiteCpp.h>
#include <algorithm>
#include <sqlite3.h>

namespace store {
namespace {

using namespace Qt::StringLiterals;

constexpr size_t kKeptWriters = 32;

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

QString insertSql(const QString& table, const std::vector<Column>& columns) {
    if (columns.empty())
        return u"INSERT INTO "_s + quotedName(table) + u" DEFAULT VALUES"_s;
    QStringList names;
    for (const Column& column : columns)
        names.append(quotedName(column.name));
    const QString marks = QStringList(names.size(), u"?"_s).join(u", "_s);
    return u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(quotedName(table), names.join(u", "_s), marks);
}

QString updateSql(const QString& table, const std::vector<Column>& columns) {
    QStringList assignments;
    for (const Column& column : columns)
        assignments.append(quotedName(column.name) + u" = ?"_s);
    return u"UPDATE %1 SET %2 WHERE rowid = ?"_s.arg(quotedName(table), assignments.join(u", "_s));
}

/// A statement left running would hold its locks, also when the write has failed.
struct Reset {
    SQLite::Statement& statement;

    ~Reset() { statement.tryReset(); }
};

/// While it waited for a sole holder, another file has taken its place.
bool hasMoved(sqlite3* handle) {
    int moved = 0;
    sqlite3_file_control(handle, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
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

SqliteEngine::SqliteEngine(const QString& path, const QString& password, Access access) : m_path(path) {
    if (!QFileInfo::exists(path))
        throw common::RunTimeError(
            common::kFileNotFound,
            u"Die Datenbankdatei \"%1\" wurde nicht gefunden."_s.arg(QDir::toNativeSeparators(path)), path);
    try {
        access == Access::Work ? openToWork(password) : openToLook(password);
        m_database->exec("PRAGMA temp_store = MEMORY");
        m_database->exec("PRAGMA cache_size = -32768");
        schemaChanged();
    } catch (const SQLite::Exception& error) {
        throwStoreError(error, path);
    }
}

void SqliteEngine::openToWork(const QString& password) {
    // A database of an earlier program may be open to others still.
    for (const char16_t* suffix : {u"", u"-wal", u"-shm"})
        common::keepForOwner(m_path + QString::fromUtf16(suffix));
    do {
        m_database = std::make_unique<SQLite::Database>(m_path.toStdString(), SQLite::OPEN_READWRITE, 5000);
        registerFunctions(m_database->getHandle());
        checkFile(password);
    } while (hasMoved(handle()));
    m_database->exec("PRAGMA journal_mode = WAL");
    m_database->exec("PRAGMA synchronous = FULL");
}

void SqliteEngine::openToLook(const QString& password) {
    for (const char16_t* suffix : {u"-wal", u"-journal"})
        if (QFileInfo(m_path + QString::fromUtf16(suffix)).size() > 0)
            throw common::RunTimeError(
                common::kStoreFailure,
                u"Die Datenbank \"%1\" ist noch geöffnet oder wurde nicht richtig geschlossen."_s.arg(
                    QFileInfo(m_path).fileName()),
                m_path);
    const QUrl url = QUrl::fromLocalFile(QFileInfo(m_path).absoluteFilePath());
    // Locks and logs would be files beside it, and the disk may be one that only reads.
    const QByteArray name = url.toEncoded(QUrl::FullyEncoded) + "?immutable=1";
    m_database =
        std::make_unique<SQLite::Database>(name.toStdString(), SQLite::OPEN_READONLY | SQLite::OPEN_URI);
    registerFunctions(m_database->getHandle());
    checkFile(password);
}

SqliteEngine::~SqliteEngine() = default;

namespace {

EngineWrapper wrapper;

std::unique_ptr<Engine> openBareEngine(const ConnectionString& parts) {
    if (parts.isServer())
        return std::make_unique<MariaEngine>(parts);
    return std::make_unique<SqliteEngine>(parts.path, parts.password,
                                          parts.readOnly ? Access::Look : Access::Work);
}

} // namespace

void setEngineWrapper(EngineWrapper newWrapper) {
    wrapper = std::move(newWrapper);
}

std::unique_ptr<Engine> openEngine(const ConnectionString& parts) {
    std::unique_ptr<Engine> engine = openBareEngine(parts);
    return wrapper ? wrapper(std::move(engine), parts) : std::move(engine);
}

void SqliteEngine::checkFile(const QString& password) {
    const QString file = QFileInfo(m_path).fileName();
    if (m_database->execAndGet("PRAGMA application_id").getInt() != kApplicationId)
        throw common::RunTimeError(
            common::kStoreFailure,
            u"Die Datei \"%1\" ist keine Datenbank von Tavolino oder ist beschädigt."_s.arg(file), m_path);
    const int version = schemaVersion();
    if (version < kFirstSchemaVersion)
        throw common::RunTimeError(common::kStoreFailure, u"Die Datenbank \"%1\" ist beschädigt."_s.arg(file),
                                   m_path);
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
    m_plans.clear();
    m_writers.clear();
    m_columns.clear();
}

sqlite3* SqliteEngine::handle() const {
    return m_database->getHandle();
}

SqliteEngine::StatementPtr SqliteEngine::prepare(const Plan& plan) {
    auto prepared = StatementPtr(
        new Prepared{SQLite::Statement(*m_database, plan.translated.prepared().toStdString()), {}, {}});
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
    // The row key is the first of the hidden columns and shows as the last visible one.
    prepared->shown = prepared->columns;
    prepared->shown.resize(prepared->shown.size() - size_t(plan.translated.hiddenColumns) +
                           (plan.keyed ? 1 : 0));
    return prepared;
}

SqliteEngine::StatementPtr SqliteEngine::take(Plan& plan) {
    if (plan.idle.empty())
        return prepare(plan);
    StatementPtr statement = std::move(plan.idle.back());
    plan.idle.pop_back();
    return statement;
}

void SqliteEngine::giveBack(Plan& plan, StatementPtr statement) {
    statement->statement.tryReset();
    plan.idle.push_back(std::move(statement));
}

qint64 SqliteEngine::execute(const QString& sql) {
    const std::shared_ptr<Plan> plan = m_plans.planFor(sql, false);
    try {
        StatementPtr statement = take(*plan);
        bindLiterals(statement->statement, plan->translated.parameters, m_plans.literals());
        while (statement->statement.executeStep()) {
        }
        const qint64 changes = m_database->getChanges();
        giveBack(*plan, std::move(statement));
        return changes;
    } catch (const SQLite::Exception& error) {
        throwStoreError(error, m_path, sql);
    }
}

std::unique_ptr<Cursor> SqliteEngine::query(const QString& sql, bool keyed) {
    const std::shared_ptr<Plan> plan = m_plans.planFor(sql, keyed);
    try {
        return std::make_unique<SqliteCursor>(*this, plan, m_plans.literals());
    } catch (const SQLite::Exception& error) {
        throwStoreError(error, m_path, sql);
    }
}

ColumnType SqliteEngine::typeOf(const QString& table, const QString& column) const {
    const std::vector<Column>& columns = known(table);
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const Column& one) {
        return one.name.compare(column, Qt::CaseInsensitive) == 0;
    });
    return found == columns.end() ? ColumnType::Any : found->type;
}

const std::vector<Column>& SqliteEngine::columnsOf(const QString& table) {
    return known(table);
}

const std::vector<Column>& SqliteEngine::known(const QString& table) const {
    const QString key = table.toLower();
    if (const auto found = m_columns.find(key); found != m_columns.end())
        return found->second;
    std::vector<Column> columns;
    SQLite::Statement info(*m_database, "SELECT c.name, c.type, c.pk AND t.sql LIKE '%AUTOINCREMENT%' "
                                        "FROM sqlite_schema AS t, pragma_table_info(t.name) AS c "
                                        "WHERE lower(t.name) = lower(?)");
    info.bind(1, table.toStdString());
    while (info.executeStep())
        columns.push_back({QString::fromUtf8(info.getColumn(0).getText()),
                           columnType(info.getColumn(1).getText()), info.getColumn(2).getInt() != 0});
    return m_columns.insert_or_assign(key, columns).first->second;
}

SQLite::Statement& SqliteEngine::writerFor(bool isInsert, const QString& table,
                                           const std::vector<Column>& columns) {
    const auto sameColumn = [](const Column& column, const QString& name) { return column.name == name; };
    const auto fits = [&](const std::unique_ptr<Writer>& writer) {
        return writer->isInsert == isInsert && writer->table == table &&
               std::equal(columns.begin(), columns.end(), writer->columns.begin(), writer->columns.end(),
                          sameColumn);
    };
    const auto found = std::find_if(m_writers.begin(), m_writers.end(), fits);
    if (found != m_writers.end())
        return (*found)->statement;
    const QString sql = isInsert ? insertSql(table, columns) : updateSql(table, columns);
    if (m_writers.size() >= kKeptWriters)
        m_writers.clear();
    m_writers.emplace_back(
        new Writer{isInsert, table, {}, SQLite::Statement(*m_database, sql.toStdString())});
    for (const Column& column : columns)
        m_writers.back()->columns.push_back(column.name);
    return m_writers.back()->statement;
}

void SqliteEngine::write(SQLite::Statement& statement, const std::vector<Column>& columns,
                         const std::vector<common::Value>& values, const qint64* rowKey) {
    const Reset atEnd{statement};
    for (size_t i = 0; i < values.size(); ++i)
        bindTyped(statement, int(i) + 1, columns[i].type, values[i]);
    if (rowKey)
        statement.bind(int(values.size()) + 1, int64_t(*rowKey));
    statement.exec();
}

qint64 SqliteEngine::insert(const QString& table, const std::vector<Column>& columns,
                            const std::vector<common::Value>& values) {
    try {
        write(writerFor(true, table, columns), columns, values, nullptr);
        return m_database->getLastInsertRowid();
    } catch (const SQLite::Exception& error) {
        throwStoreError(error, m_path, u"INSERT INTO "_s + table);
    }
}

void SqliteEngine::update(const QString& table, qint64 rowKey, const std::vector<Column>& columns,
                          const std::vector<common::Value>& values) {
    if (columns.empty())
        return;
    try {
        write(writerFor(false, table, columns), columns, values, &rowKey);
    } catch (const SQLite::Exception& error) {
        throwStoreError(error, m_path, u"UPDATE "_s + table);
    }
}

qint64 SqliteEngine::newKey(const QString& table) {
    const std::string name = table.toStdString();
    try {
        SQLite::Statement start(
            *m_database, "INSERT INTO sqlite_sequence (name, seq) SELECT t.name, 0 FROM sqlite_schema AS t "
                         "WHERE lower(t.name) = lower(?1) AND NOT EXISTS "
                         "(SELECT 1 FROM sqlite_sequence WHERE lower(name) = lower(?1))");
        start.bind(1, name);
        start.exec();
        // Written down, so that neither a row of somebody else nor another process gets it.
        SQLite::Statement reserve(*m_database, "UPDATE sqlite_sequence SET seq = max(seq, ?) + 1 "
                                               "WHERE lower(name) = lower(?) RETURNING seq");
        qint64& reserved = m_reserved[table.toLower()];
        reserve.bind(1, int64_t(reserved));
        reserve.bind(2, name);
        reserve.executeStep();
        reserved = reserve.getColumn(0).getInt64();
        reserve.executeStep();
        return reserved;
    } catch (const SQLite::Exception& error) {
        throwStoreError(error, m_path, u"new key of "_s + table);
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

void SqliteEngine::interrupt() {
    sqlite3_interrupt(m_database->getHandle());
}

bool SqliteEngine::isWritable() const {
    return sqlite3_db_readonly(m_database->getHandle(), "main") == 0;
}

void SqliteEngine::onlyRead() {
    execute(u"PRAGMA query_only = ON"_s);
}

double SqliteEngine::now() {
    return common::clock::now();
}

void SqliteEngine::runScript(const char* sql) {
    try {
        m_database->exec(sql);
    } catch (const SQLite::Exception& error) {
        throwStoreError(error, m_path);
    }
    schemaChanged();
}

int SqliteEngine::schemaVersion() const {
    return m_database->execAndGet("PRAGMA user_version").getInt();
}

} // namespace store
