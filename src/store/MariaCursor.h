#pragma once
#include "store/MariaConnection.h"
#include "store/MariaPlan.h"
#include <optional>

namespace store {

class MariaCatalogue;
class MariaEngine;

/// Rows of a query of a server: all there already, or still on their way.
class MariaCursor : public Cursor {
  public:
    /// With `streaming`, the engine whose connection they come by.
    MariaCursor(std::shared_ptr<MariaPlan> plan, MariaResult rows, const MariaCatalogue& catalogue,
                MariaEngine* streaming);
    ~MariaCursor() override;
    bool next() override;

    const std::vector<Column>& columns() const override { return m_plan->columns; }

    common::Value value(int column) const override;

    /// Takes in what is on its way: the connection is needed.
    void takeRest();

  private:
    using Row = std::vector<std::optional<QByteArray>>;

    bool fetch();
    void ended();
    QByteArrayView cell(int column) const;

    const std::shared_ptr<MariaPlan> m_plan;
    MariaResult m_rows;
    MariaEngine* m_streaming;
    char** m_row = nullptr;
    const unsigned long* m_lengths = nullptr;
    /// What was taken in, from the present row on.
    std::vector<Row> m_taken;
    size_t m_next = 0;
    bool m_isTaken = false;
};

} // namespace store
