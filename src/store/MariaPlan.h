#pragma once
#include "store/Dialect.h"

namespace store {

/// How the text of a result's column becomes a value.
enum class MariaReading { Whole, Number, Text };

struct MariaPlan {
    enum class Kind { Other, Query, Insert, Definition };

    MariaPlan(Translated translation, bool withKey);

    Translated translated;
    bool keyed;
    Kind kind = Kind::Other;
    /// Of an INSERT of values: where its rows begin, and how many there are.
    qsizetype rowsAt = 0;
    int rows = 0;
    /// Of a query, once it has run.
    std::vector<Column> columns;
    std::vector<MariaReading> readings;
};

} // namespace store
