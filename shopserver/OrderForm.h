#pragma once
#include "shopserver/Catalogue.h"
#include "shopserver/Order.h"
#include <QByteArray>
#include <QMap>
#include <QStringList>

namespace shop {

/// What a customer has sent, by the names of the page's fields:
/// the texts of an order in small letters, "plz" and "ort" for its place, "art" (lieferung or abholung),
/// "zeit"
/// ("" or "2026-11-23T18:45"), "beleg", "p<product>" for a quantity and "x<product>-<extra>" for an extra.
class OrderForm {
  public:
    OrderForm() = default;
    /// As application/x-www-form-urlencoded.
    explicit OrderForm(const QByteArray& body);

    /// Without control characters; "" for what was not sent.
    QString value(const QString& name) const { return m_values.value(name); }

    bool has(const QString& name) const { return m_values.contains(name); }

    /// The order that comes of it; `problems` holds a German sentence each for what is wrong with it.
    Order order(const Catalogue& catalogue, const QDateTime& now, QStringList& problems) const;

  private:
    void readPerson(Order& order, QStringList& problems) const;
    void readLines(const Catalogue& catalogue, Order& order, QStringList& problems) const;
    void readDispatch(const Catalogue& catalogue, const QDateTime& now, Order& order,
                      QStringList& problems) const;

    QMap<QString, QString> m_values;
};

} // namespace shop
