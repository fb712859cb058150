#pragma once
#include "store/RowSource.h"
#include "store/Rows.h"

namespace store {

/// Rows that were all fetched at once. Those of a keyed query can be changed and added to; this keeps what
/// the writer has stored.
class FetchedRows : public RowSource {
  public:
    /// Runs the query to its end.
    FetchedRows(Engine& engine, const QString& sql, bool keyed);
    /// Rows that were reckoned or read elsewhere; their columns may be without names.
    explicit FetchedRows(Rows rows);

    const std::vector<Column>& columns() const override { return m_columns; }

    bool hasRow(int row) override { return row >= 0 && row < count(); }

    common::Value value(int row, int column) override { return m_rows[size_t(row)].values[size_t(column)]; }

    int count() const override { return int(m_rows.size()); }

    const common::Value* held(int row, int column) const override {
        const bool there = row >= 0 && row < count() && column >= 0 && column < int(m_columns.size());
        return there ? &m_rows[size_t(row)].values[size_t(column)] : nullptr;
    }

    void prefetch(int, int) override {}

    /// Numbers by their size, texts as the store compares them, what is empty first.
    void sort(const QString& column, bool down) override;

    /// The row's key in the store; of a keyed query.
    qint64 key(int row) const { return m_rows[size_t(row)].key; }

    void put(int row, int column, const common::Value& value) {
        m_rows[size_t(row)].values[size_t(column)] = value;
    }

    void append(qint64 key, std::vector<common::Value> values);

  private:
    struct Row {
        qint64 key;
        /// Place in the query's order.
        int place;
        std::vector<common::Value> values;
    };

    std::vector<Column> m_columns;
    std::vector<Row> m_rows;
};

} // namespace store
