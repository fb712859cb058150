#pragma once
#include "common/Value.h"
#include "store/Engine.h"

namespace store {

/// The value in the form its column keeps: Yes/No as -1 or 0, dates as serials in a double, an empty text in
/// a number or date column as null. Throws common::RunTimeError kTypeMismatch for a text that is no number or
/// date.
common::Value storedValue(ColumnType type, const common::Value& value);

} // namespace store
