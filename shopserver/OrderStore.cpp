#include "shopserver/OrderStore.h"
#include "shopserver/Database.h"
#include <QStringList>
#include <SQLiteCpp/VariadicBind.h>

using namespace Qt::StringLiterals;

namespace shop {
namespace {

QStringList textColumns() {
    QStringList columns;
    for (const OrderText& text : kOrderTexts)
        columns << QLatin1String(text.name);
    return columns;
}

} // namespace

OrderStore::OrderStore(const QString& path) : m_database(openOwnDatabase(path)) {
    const QString columns = textColumns().join(u" TEXT NOT NULL, "_s) + u" TEXT NOT NULL"_s;
    m_database->exec(
        "CREATE TABLE IF NOT EXISTS orders (ID INTEGER PRIMARY KEY AUTOINCREMENT, receipt TEXT UNIQUE, " +
        columns.toStdString() + ", TOTAL REAL NOT NULL)");
    m_database->exec("CREATE TABLE IF NOT EXISTS lines (orderID INTEGER NOT NULL, isProduct INTEGER NOT NULL,"
                     " productID INTEGER NOT NULL, quantity INTEGER NOT NULL, name TEXT NOT NULL)");
    m_database->exec("CREATE INDEX IF NOT EXISTS linesOfOrder ON lines (orderID)");
    m_database->exec("CREATE TABLE IF NOT EXISTS confirmations (moment TEXT NOT NULL, subject TEXT NOT NULL,"
                     " text TEXT NOT NULL, address TEXT NOT NULL)");
}

OrderStore::~OrderStore() = default;

qint64 OrderStore::add(const Order& order) {
    const std::lock_guard lock(m_mutex);
    SQLite::Transaction transaction(*m_database, SQLite::TransactionBehavior::IMMEDIATE);
    if (!order.receipt.isEmpty()) {
        SQLite::Statement known(*m_database, "SELECT ID FROM orders WHERE receipt = ?");
        known.bind(1, order.receipt.toStdString());
        if (known.executeStep())
            return known.getColumn(0).getInt64();
    }
    const QString marks = u"?, "_s.repeated(qsizetype(kOrderTexts.size()));
    SQLite::Statement head(*m_database, "INSERT INTO orders (ID, receipt, " +
                                            textColumns().join(u", "_s).toStdString() +
                                            ", TOTAL) VALUES (?, ?, " + marks.toStdString() + "?)");
    int mark = 2;
    if (order.id != 0)
        head.bind(1, int64_t(order.id));
    if (!order.receipt.isEmpty())
        head.bind(2, order.receipt.toStdString());
    for (const OrderText& column : kOrderTexts)
        head.bind(++mark, (order.*column.value).toStdString());
    head.bind(++mark, order.total);
    head.exec();
    const qint64 id = m_database->getLastInsertRowid();
    SQLite::Statement row(*m_database, "INSERT INTO lines VALUES (?, ?, ?, ?, ?)");
    for (const OrderLine& line : order.lines) {
        SQLite::bind(row, int64_t(id), int(line.isProduct), int64_t(line.id), int64_t(line.quantity),
                     line.name.toStdString());
        row.exec();
        row.reset();
    }
    transaction.commit();
    return id;
}

QList<Order> OrderStore::orders() const {
    const std::lock_guard lock(m_mutex);
    SQLite::Statement query(*m_database, "SELECT ID, TOTAL, " + textColumns().join(u", "_s).toStdString() +
                                             " FROM orders ORDER BY ID");
    QList<Order> orders;
    while (query.executeStep()) {
        Order order;
        order.id = query.getColumn(0).getInt64();
        order.total = query.getColumn(1).getDouble();
        int column = 1;
        for (const OrderText& name : kOrderTexts)
            order.*name.value = textOf(query, ++column);
        orders.append(order);
    }
    return orders;
}

qint64 OrderStore::count() const {
    const std::lock_guard lock(m_mutex);
    return m_database->execAndGet("SELECT count(*) FROM orders").getInt64();
}

QList<OrderLine> OrderStore::lines(qint64 order) const {
    const std::lock_guard lock(m_mutex);
    SQLite::Statement query(*m_database,
                            "SELECT isProduct, productID, quantity, name FROM lines WHERE orderID = ?"
                            " ORDER BY rowid");
    query.bind(1, int64_t(order));
    QList<OrderLine> lines;
    while (query.executeStep())
        lines.append({query.getColumn(0).getInt() != 0, query.getColumn(1).getInt64(),
                      query.getColumn(2).getInt64(), textOf(query, 3)});
    return lines;
}

void OrderStore::remove(qint64 order) {
    const std::lock_guard lock(m_mutex);
    SQLite::Transaction transaction(*m_database);
    for (const char* sql : {"DELETE FROM lines WHERE orderID = ?", "DELETE FROM orders WHERE ID = ?"}) {
        SQLite::Statement statement(*m_database, sql);
        statement.bind(1, int64_t(order));
        statement.exec();
    }
    transaction.commit();
}

void OrderStore::addConfirmation(const Confirmation& confirmation) {
    const std::lock_guard lock(m_mutex);
    SQLite::Statement row(*m_database, "INSERT INTO confirmations VALUES (?, ?, ?, ?)");
    SQLite::bind(row, confirmation.moment.toStdString(), confirmation.subject.toStdString(),
                 confirmation.text.toStdString(), confirmation.address.toStdString());
    row.exec();
}

QList<Confirmation> OrderStore::confirmations() const {
    const std::lock_guard lock(m_mutex);
    SQLite::Statement query(*m_database,
                            "SELECT moment, subject, text, address FROM confirmations ORDER BY rowid");
    QList<Confirmation> confirmations;
    while (query.executeStep())
        confirmations.append({textOf(query, 0), textOf(query, 1), textOf(query, 2), textOf(query, 3)});
    return confirmations;
}

} // namespace shop
