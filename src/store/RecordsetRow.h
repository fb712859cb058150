#pragma once
#include "store/Recordset.h"

namespace store {

/// Fetched values of a row, its key in the store, and which values were put since.
struct Recordset::Row {
    std::vector<common::Value> values;
    qint64 key = 0;
    std::vector<bool> changed;
};

} // namespace store
