#pragma once
#include "store/RowSource.h"

namespace store {

/// Rows straight from a running query: forward only, the present one alone is there.
class StreamedRows : public RowSource {
  public:
    /// Steps to the first row.
    explicit StreamedRows(std::unique_ptr<Cursor> cursor) :
        m_cursor(std::move(cursor)), m_there(m_cursor->next()) {}

    const std::vector<Column>& columns() const override { return m_cursor->columns(); }

    bool hasRow(int row) override;

    common::Value value(int, int column) override { return m_cursor->value(column); }

    int count() const override { return -1; }

    const common::Value* held(int, int) const override { return nullptr; }

    void prefetch(int, int) override {}

    void sort(const QString&, bool) override;

  private:
    std::unique_ptr<Cursor> m_cursor;
    int m_row = 0;
    bool m_there;
};

} // namespace store
