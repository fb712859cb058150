#include "store/MariaText.h"
#include "store/StoredValue.h"
#include <QLocale>
#include <cmath>

namespace store {
namespace {

QByteArray quotedText(const QString& text) {
    return '\'' + text.toUtf8().replace('\\', "\\\\").replace('\'', "''").replace('\0', "") + '\'';
}

} // namespace

QByteArray nameText(const QString& name) {
    return '`' + name.toUtf8().replace('`', "``") + '`';
}

QByteArray valueText(const common::Value& value) {
    if (value.isText())
        return quotedText(value.toText());
    if (value.isInteger())
        return QByteArray::number(value.toLong());
    const double number = value.isNull()   ? std::nan("")
                          : value.isDate() ? value.toSerial()
                                           : value.toDouble();
    if (!std::isfinite(number))
        return "NULL";
    return QByteArray::number(number, 'e', QLocale::FloatingPointShortest);
}

InsertText insertText(const MariaCatalogue& catalogue, const QString& table,
                      const std::vector<Column>& columns, const std::vector<common::Value>& values) {
    const QString key = catalogue.rowKey(table);
    InsertText text;
    QByteArrayList names, row;
    for (size_t i = 0; i < columns.size(); ++i) {
        const common::Value value = storedValue(columns[i].type, values[i]);
        names.append(nameText(columns[i].name));
        row.append(valueText(value));
        if (columns[i].name.compare(key, Qt::CaseInsensitive) == 0)
            text.key = value.toLong();
    }
    text.head = "INSERT INTO " + nameText(catalogue.tableName(table)) + " (" + names.join(", ") + ") VALUES ";
    text.row = '(' + row.join(", ") + ')';
    return text;
}

QByteArray updateText(const MariaCatalogue& catalogue, const QString& table, qint64 key,
                      const std::vector<Column>& columns, const std::vector<common::Value>& values) {
    QByteArrayList assignments;
    for (size_t i = 0; i < columns.size(); ++i)
        assignments.append(nameText(columns[i].name) + " = " +
                           valueText(storedValue(columns[i].type, values[i])));
    return "UPDATE " + nameText(catalogue.tableName(table)) + " SET " + assignments.join(", ") + " WHERE " +
           nameText(catalogue.rowKey(table)) + " = " + QByteArray::number(key);
}

} // namespace store
