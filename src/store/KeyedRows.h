#pragma once
#include "store/PlainQuery.h"
#include "store/RowSource.h"
#include <QList>

namespace store {

/// Rows of a table or view with a key: their keys in order, and the values of those that were looked at, a
/// block at a time.
///
/// Of a whole table only the first keys are fetched, and the number of rows; the other keys when one of them
/// is looked at, or with the first ones where those had to be put in order at length. Which rows there are is
/// settled by that. Their values are those of the first look; a row that is gone by then has its key only, or
/// nothing where that was not fetched yet.
class KeyedRows : public RowSource {
  public:
    /// `key` is a column of whole numbers from 0 on that no two rows share: a table's counter, say.
    KeyedRows(Engine& engine, const PlainQuery& query, const QString& key);

    void useEngine(Engine& engine) override { m_engine = &engine; }

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

    /// What sort does, in steps: the order, its keys, which any thread may read by an engine of its own, and
    /// the rows in the order of these keys.
    QString orderBy(const QString& name, bool down) const;
    std::vector<qint64> keysInOrder(Engine& engine, const QString& order) const;
    void arrange(const QString& order, const std::vector<qint64>& keys);

  private:
    struct Row {
        qint64 key;
        /// Empty until they are read.
        std::vector<common::Value> values;
    };

    bool holds(int row) const { return row < int(m_rows.size()) && !m_rows[size_t(row)].values.empty(); }

    QString keyQuery(const QString& order) const;
    /// `keys` is not empty.
    QString blockQuery(const QList<qint64>& keys) const;
    void takeColumns(const Cursor& block);
    void addRows(const std::vector<qint64>& keys);
    void readOtherKeys();
    void sortHeld(const std::vector<qint64>& keys);
    /// Reads the blocks that these rows are in, but for rows that are in memory.
    void readBlocks(int first, int last);

    Engine* m_engine;
    const PlainQuery m_query;
    const QString m_key;
    /// The order that the rows stand in.
    QString m_order;
    std::vector<Column> m_columns;
    /// Place of the key among the columns, -1 where it was not asked for.
    int m_keyColumn = -1;
    /// Of a whole table: that many rows when the first keys were fetched, none with a higher key.
    int m_total = 0;
    qint64 m_highest;
    /// Whether not all keys are needed at once.
    bool m_firstWillDo = false;
    std::vector<Row> m_rows;
};

} // namespace store
