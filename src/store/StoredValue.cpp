#include "store/StoredValue.h"

namespace store {

common::Value storedValue(ColumnType type, const common::Value& value) {
    if (type == ColumnType::YesNo)
        return value.isTrue();
    if (type == ColumnType::Any || value.isNull())
        return value;
    if (type == ColumnType::Text)
        return value.isText() ? value : common::Value(value.toText());
    if (value.isText() && value.toText().isEmpty())
        return {};
    if (type == ColumnType::Long)
        return value.toLong();
    return type == ColumnType::Date ? value.toSerial() : value.toDouble();
}

} // namespace store
