#pragma once
#include "shopserver/Order.h"
#include <memory>
#include <mutex>

namespace SQLite {
class Database;
}

namespace shop {

struct Confirmation {
    QString moment, subject, text, address;
};

/// Orders and confirmations in a database of the shop's own. An order is stored whole or not at all; a number
/// is never given twice. May be used by any thread.
class OrderStore {
  public:
    explicit OrderStore(const QString& path);
    ~OrderStore();

    /// Its number. An order whose receipt is there already is not stored again.
    qint64 add(const Order& order);
    /// The open ones, the oldest first, without their lines.
    QList<Order> orders() const;
    qint64 count() const;
    QList<OrderLine> lines(qint64 order) const;
    /// Nothing happens to a number that is not there.
    void remove(qint64 order);

    void addConfirmation(const Confirmation& confirmation);
    QList<Confirmation> confirmations() const;

  private:
    mutable std::mutex m_mutex;
    std::unique_ptr<SQLite::Database> m_database;
};

} // namespace shop
