#pragma once
#include "store/Engine.h"

namespace store {

/// Where a recordset has its rows from. Rows are counted from 0.
class RowSource {
  public:
    RowSource() = default;
    virtual ~RowSource() = default;
    RowSource(const RowSource&) = delete;
    RowSource& operator=(const RowSource&) = delete;

    /// From now on what is not in memory comes from this engine.
    virtual void useEngine(Engine&) {}

    virtual const std::vector<Column>& columns() const = 0;
    /// Whether there is such a row.
    virtual bool hasRow(int row) = 0;
    /// Of a row that is there.
    virtual common::Value value(int row, int column) = 0;
    /// How many there are; -1 where only walking to the end tells.
    virtual int count() const = 0;
    /// The value where it is in memory, else null. Rows and columns may be asked for that are not there.
    virtual const common::Value* held(int row, int column) const = 0;
    /// Brings the values of these rows, the last one included, into memory.
    virtual void prefetch(int first, int last) = 0;
    /// Puts the rows in the order of a column; an empty name gives the query's own order back.
    virtual void sort(const QString& column, bool down) = 0;
};

} // namespace store
