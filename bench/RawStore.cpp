#include "RawStore.h"
#include "store/Collation.h"

namespace bench {
namespace {

void check(bool fine, sqlite3* database, const char* what) {
    if (!fine)
        qFatal("%s: %s", what, sqlite3_errmsg(database));
}

int collate(void*, int aSize, const void* a, int bSize, const void* b) noexcept {
    return store::compareTexts({static_cast<const char*>(a), size_t(aSize)},
                               {static_cast<const char*>(b), size_t(bSize)});
}

std::string_view textOf(sqlite3_value* value) noexcept {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {text ? text : "", size_t(sqlite3_value_bytes(value))};
}

void like(sqlite3_context* context, int, sqlite3_value** values) noexcept {
    sqlite3_result_int(context, store::likeText(textOf(values[0]), textOf(values[1])));
}

} // namespace

RawStore::RawStore(const QString& path) {
    const int opened =
        sqlite3_open_v2(path.toUtf8().constData(), &m_database, SQLITE_OPEN_READWRITE, nullptr);
    check(opened == SQLITE_OK, m_database, "open");
    sqlite3_create_collation(m_database, store::kCollationName, SQLITE_UTF8, nullptr, collate);
    sqlite3_create_function(m_database, "like", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, like, nullptr,
                            nullptr);
    for (const char* pragma : {"PRAGMA journal_mode = WAL", "PRAGMA synchronous = FULL",
                               "PRAGMA temp_store = MEMORY", "PRAGMA cache_size = -32768"})
        run(pragma);
}

RawStore::~RawStore() {
    sqlite3_close(m_database);
}

void RawStore::run(const char* sql) {
    check(sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr) == SQLITE_OK, m_database, sql);
}

RawStatement::RawStatement(RawStore& store, const char* sql) {
    const int prepared =
        sqlite3_prepare_v3(store.handle(), sql, -1, SQLITE_PREPARE_PERSISTENT, &m_statement, nullptr);
    check(prepared == SQLITE_OK, store.handle(), sql);
}

bool RawStatement::step() {
    const int result = sqlite3_step(m_statement);
    check(result == SQLITE_ROW || result == SQLITE_DONE, sqlite3_db_handle(m_statement),
          sqlite3_sql(m_statement));
    return result == SQLITE_ROW;
}

} // namespace bench
