#pragma once
#include "store/PlainQuery.h"
#include "store/RowSource.h"
#include <QList>

namespace store {

/// Rows of a table with a counter: their counters in order, and the values of those that were looked at, a
/// block at a time.
///
/// Of a whole table only the first counters are fetched, and the number of rows; the other counters when one
/// of them is looked at. Which rows there are is settled by that. Their values are those of the first look; a
/// row that is gone by then has its counter only, or nothing where that was not fetched yet.
class KeyedRows : public RowSource {
  public:
    /// `counter` is the name of the table's counter.
    KeyedRows(Engine& engine, const PlainQuery& query, const QString& counter);

    const std::vector<Column>& columns() const override { return m_columns; }

    bool hasRow(int row) override { return row >= 0 && row < count(); }

    common::Value value(int row, int column) override;

    int count() const override { return qMax(int(m_rows.size()), m_total); }

    const common::Value* held(int row, int column) const override {
        const bool there = row >= 0 && column >= 0 && column < int(m_columns.size()) && holds(row);
        return there ? &m_rows[size_t(row)].values[size_t(column)] : nullptr;
    }

    void prefetch(int first, int last) override;
    /// By the store. Of a whole table the first rows only are put in order; else rows that are gone come
    /// last.
    void sort(const QString& column, bool down) override;

  private:
    struct Row {
        qint64 key;
        /// Empty until they are read.
        std::vector<common::Value> values;
    };

    bool holds(int row) const { return row < int(m_rows.size()) && !m_rows[size_t(row)].values.empty(); }

    QString keyQuery() const;
    /// `keys` is not empty.
    QString blockQuery(const QList<qint64>& keys) const;
    qint64 ofTable(const QString& aggregate) const;
    void readKeys(size_t most);
    void readOtherKeys();
    void sortHeld();
    /// Reads the block that the row is in, but for rows that are in memory.
    void readBlock(int row);

    Engine& m_engine;
    const PlainQuery m_query;
    const QString m_counter;
    /// The order that the rows stand in.
    QString m_order;
    std::vector<Column> m_columns;
    /// Place of the counter among the columns, -1 where it was not asked for.
    int m_counterColumn = -1;
    /// Of a whole table: that many rows when the first counters were fetched, none with a higher counter.
    int m_total = 0;
    qint64 m_highest;
    std::vector<Row> m_rows;
};

} // namespace store
