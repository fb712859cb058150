#pragma once
#include <QString>
#include <utility>
#include <vector>

namespace desks {

/// Which web order it is. The shop's number alone does not tell: a shop that is set up anew begins to count
/// again.
struct WebOrderId {
    WebOrderId(qint64 shopNumber = 0, QString whose = {}) : number(shopNumber), merkmal(std::move(whose)) {}

    qint64 number;
    /// Telephone and delivery time as the customer gave them; "" where they are not known any more.
    QString merkmal;

    friend bool operator==(const WebOrderId&, const WebOrderId&) = default;
};

/// A line of a web order, as the shop's server tells it.
struct WebLine {
    bool isProdukt = true;
    /// Key of the product, or of the extra.
    qint64 id = 0;
    /// As text: what the server wrote goes through the quantity's cell like a typed one.
    QString anzahl;
    /// Name of the extra; not used for products.
    QString bezeichnung;
};

struct WebOrder {
    WebOrderId id;
    std::vector<WebLine> lines;
};

/// A customer of the web shop who is not stored yet.
struct WebCustomer {
    QString firma, name, vorname, strasse, etage, plz, ort, telefon, email;
};

} // namespace desks
