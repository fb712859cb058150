#pragma once
#include "store/Engine.h"
#include "store/Progress.h"
#include "store/Schema.h"

/// Copies of whole tables from one database to another, whichever engines they have.
namespace store {

/// A table that is copied: row keys are kept, also where no column is the key, then as a last one, "rowid".
struct CopiedTable {
    QString name;
    std::vector<Column> columns;
    bool hasKey = false;
};

using Row = std::vector<common::Value>;

/// One end of a copy.
class CopyEnd {
  public:
    virtual ~CopyEnd() = default;
    virtual qint64 rowsOf(const CopiedTable& table) = 0;
    virtual void read(const CopiedTable& table, const std::function<void(const Row&)>& take) = 0;
    virtual void write(const CopiedTable& table, const Row& row) = 0;
    /// All rows of the table were handed over.
    virtual void finish() = 0;
    /// The last key that the counter of a table that has one has given; 0 for none.
    virtual qint64 lastKey(const CopiedTable& table) = 0;
    virtual void setLastKey(const CopiedTable& table, qint64 key) = 0;
};

/// The file's end.
class FileEnd : public CopyEnd {
  public:
    explicit FileEnd(Engine& engine) : m_engine(engine) {}

    /// The tables of a database of that kind, with the columns that they have here. Those that tell what the
    /// stations do at the moment are left out: they belong to no copy.
    std::vector<CopiedTable> tables(Database database);

    qint64 rowsOf(const CopiedTable& table) override;
    void read(const CopiedTable& table, const std::function<void(const Row&)>& take) override;
    void write(const CopiedTable& table, const Row& row) override;

    void finish() override {}

    qint64 lastKey(const CopiedTable& table) override;
    void setLastKey(const CopiedTable& table, qint64 key) override;

  private:
    Engine& m_engine;
};

/// Whether the table tells what the stations do at the moment.
bool isOfTheMoment(const QString& table);

/// Copies all rows and the counters into tables that are empty, reads them back and compares: as many rows,
/// and the same sum over all values. Throws kStoreFailure where they differ. What `progress` throws gives it
/// up.
void copyTables(CopyEnd& source, CopyEnd& target, const std::vector<CopiedTable>& tables,
                const Progress& progress);

} // namespace store
