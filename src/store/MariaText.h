#pragma once
#include "store/MariaCatalogue.h"

/// Statements that the engine writes by itself, for a session that reads backslash escapes.
namespace store {

QByteArray nameText(const QString& name);
QByteArray valueText(const common::Value& value);

struct InsertText {
    QByteArray head, row;
    /// The row's key, where it is among the values.
    qint64 key = 0;
};

InsertText insertText(const MariaCatalogue& catalogue, const QString& table,
                      const std::vector<Column>& columns, const std::vector<common::Value>& values);
QByteArray updateText(const MariaCatalogue& catalogue, const QString& table, qint64 key,
                      const std::vector<Column>& columns, const std::vector<common::Value>& values);

} // namespace store
