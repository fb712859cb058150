// What the engine does to whole files: copies, checks, sole hold.
#include "common/OwnerFile.h"
#include "common/RunTimeError.h"
#include "store/Connection.h"
#include "store/SqliteEngine.h"
#include "store/SqliteErrors.h"
#include <QFileInfo>
#include <SQLiteCpp/SQLiteCpp.h>
#include <exception>
#include <sqlite3.h>

namespace store {

using namespace Qt::StringLiterals;

namespace {

/// About a millisecond of the engine's steps.
constexpr int kStepsBetweenWords = 20'000;

/// Lets the engine give its word; what that throws breaks the statement off and waits here.
class Word {
  public:
    Word(sqlite3* engine, const std::function<void()>& word) : m_engine(engine), m_word(word) {
        sqlite3_progress_handler(engine, kStepsBetweenWords, &Word::give, this);
    }

    ~Word() { sqlite3_progress_handler(m_engine, 0, nullptr, nullptr); }

    Word(const Word&) = delete;
    Word& operator=(const Word&) = delete;

    void rethrow() const {
        if (m_error)
            std::rethrow_exception(m_error);
    }

  private:
    static int give(void* self) noexcept {
        auto& word = *static_cast<Word*>(self);
        try {
            word.m_word();
        } catch (...) {
            word.m_error = std::current_exception();
        }
        return word.m_error ? 1 : 0;
    }

    sqlite3* m_engine;
    const std::function<void()>& m_word;
    std::exception_ptr m_error;
};

[[noreturn]] void throwDamaged(const QString& path, const QString& finding) {
    throw common::RunTimeError(common::kStoreFailure,
                               u"Die Datenbank \"%1\" ist beschädigt."_s.arg(QFileInfo(path).fileName()),
                               finding);
}

/// A table of the file and how many rows it may have, which is how long its check takes.
struct Part {
    std::string table; ///< in quotes
    qint64 rows = 0;
};

std::vector<Part> partsOf(SQLite::Database& database) {
    std::vector<Part> parts{{"\"sqlite_schema\"", 1}};
    SQLite::Statement names(database, "SELECT name FROM sqlite_schema WHERE type = 'table'");
    while (names.executeStep())
        parts.push_back({quotedName(QString::fromUtf8(names.getColumn(0).getText())).toStdString(), 1});
    for (Part& part : parts)
        part.rows += database.execAndGet("SELECT max(rowid) FROM " + part.table).getInt64();
    return parts;
}

} // namespace

void SqliteEngine::watched(const std::function<void()>& word, const std::function<void()>& work) {
    const Word given(handle(), word);
    try {
        work();
    } catch (const SQLite::Exception& error) {
        given.rethrow();
        throwStoreError(error, m_path);
    } catch (...) {
        given.rethrow();
        throw;
    }
}

qint64 SqliteEngine::numberOf(const char* pragma) const {
    return m_database->execAndGet(std::string("PRAGMA ") + pragma).getInt64();
}

void SqliteEngine::compactInto(const QString& path, const Progress& progress) {
    common::createForOwner(path);
    const auto word = [&, total =
                              (numberOf("page_count") - numberOf("freelist_count")) * numberOf("page_size")] {
        if (progress)
            progress(qMin(QFileInfo(path).size(), total), total);
    };
    watched(word, [&] { execute(u"VACUUM INTO "_s + sqlText(path)); });
}

void SqliteEngine::checkIntegrity(Depth depth, const Progress& progress) {
    const std::string pragma = depth == Depth::Structure ? "PRAGMA quick_check" : "PRAGMA integrity_check";
    qint64 done = 0, total = 0;
    const auto word = [&] {
        if (progress)
            progress(done, total);
    };
    const auto check = [&](const std::string& argument) {
        const std::string finding = m_database->execAndGet(pragma + "(" + argument + ")").getString();
        if (finding != "ok")
            throwDamaged(m_path, QString::fromStdString(finding));
    };
    watched(word, [&] {
        // A compacted file has no free pages: its tables are all of it.
        if (numberOf("freelist_count") > 0)
            return check("1");
        const std::vector<Part> parts = partsOf(*m_database);
        for (const Part& part : parts)
            total += part.rows;
        for (const Part& part : parts) {
            word();
            check(part.table);
            done += part.rows;
        }
    });
}

void SqliteEngine::holdAlone() {
    const auto mode = [this](const char* pragma) {
        return m_database->execAndGet(std::string("PRAGMA ") + pragma).getString();
    };
    try {
        // The log cannot be given up while somebody else has the database open.
        if (mode("journal_mode = DELETE") == "delete") {
            m_database->exec("PRAGMA locking_mode = EXCLUSIVE");
            m_database->exec("BEGIN EXCLUSIVE");
            m_database->exec("COMMIT");
            if (mode("journal_mode") == "delete")
                return;
        }
    } catch (const SQLite::Exception& error) {
        if (error.getErrorCode() != SQLITE_BUSY)
            throwStoreError(error, m_path);
    }
    throw common::RunTimeError(common::kStoreFailure,
                               u"Die Datenbank \"%1\" ist noch in einem anderen Programm geöffnet."_s.arg(
                                   QFileInfo(m_path).fileName()),
                               m_path);
}

} // namespace store
