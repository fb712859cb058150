#include "store/ServerEnd.h"

namespace store {

using namespace Qt::StringLiterals;

namespace {

QByteArray columnsOf(const CopiedTable& table) {
    QByteArrayList names;
    for (const Column& column : table.columns)
        names.append(serverName(column.name));
    return names.join(", ");
}

QByteArray literal(const common::Value& value) {
    constexpr int kAllDigits = 17;
    if (value.isNull())
        return "NULL";
    if (value.isText())
        return serverText(value.toText());
    if (value.isInteger())
        return QByteArray::number(value.toLong());
    return QByteArray::number(value.isDate() ? value.toSerial() : value.toDouble(), 'g', kAllDigits);
}

common::Value valueOf(ColumnType type, const std::optional<QByteArrayView>& cell) {
    if (!cell)
        return {};
    switch (type) {
    case ColumnType::Long:
    case ColumnType::YesNo:
        return cell->toLongLong();
    case ColumnType::Double:
        return cell->toDouble();
    case ColumnType::Date:
        return common::Serial{cell->toDouble()};
    default:
        return QString::fromUtf8(*cell);
    }
}

} // namespace

QByteArray ServerEnd::nameOf(const CopiedTable& table) const {
    return serverName(m_front + table.name);
}

qint64 ServerEnd::rowsOf(const CopiedTable& table) {
    return m_session.number("SELECT count(*) FROM " + nameOf(table));
}

void ServerEnd::read(const CopiedTable& table, const std::function<void(const Row&)>& take) {
    Row row(table.columns.size());
    m_session.read("SELECT " + columnsOf(table) + " FROM " + nameOf(table),
                   [&](const ServerSession::Cells& cells) {
                       for (size_t i = 0; i < row.size(); ++i)
                           row[i] = valueOf(table.columns[i].type, cells[i]);
                       take(row);
                   });
}

void ServerEnd::write(const CopiedTable& table, const Row& row) {
    constexpr qsizetype kBlock = qsizetype(1) << 20;
    if (m_rows.isEmpty())
        m_head = "INSERT INTO " + nameOf(table) + " (" + columnsOf(table) + ") VALUES ";
    m_rows += m_rows.isEmpty() ? "(" : ", (";
    for (size_t i = 0; i < row.size(); ++i) {
        if (i > 0)
            m_rows += ',';
        m_rows += literal(row[i]);
    }
    m_rows += ')';
    if (m_rows.size() > kBlock)
        finish();
}

void ServerEnd::finish() {
    if (!m_rows.isEmpty())
        m_session.run(m_head + m_rows);
    m_rows.clear();
}

qint64 ServerEnd::lastKey(const CopiedTable& table) {
    const auto next = m_session.value("SELECT auto_increment FROM information_schema.tables WHERE "
                                      "table_schema = database() AND table_name = " +
                                      serverText(m_front + table.name));
    return next ? next->toLongLong() - 1 : 0;
}

void ServerEnd::setLastKey(const CopiedTable& table, qint64 key) {
    m_session.run("ALTER TABLE " + nameOf(table) + " AUTO_INCREMENT = " + QByteArray::number(key + 1));
}

} // namespace store
