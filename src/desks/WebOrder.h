#pragma once
#include <QString>
#include <vector>

namespace desks {

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
    /// The server's number of the order.
    qint64 id = 0;
    std::vector<WebLine> lines;
};

/// A customer of the web shop who is not stored yet.
struct WebCustomer {
    QString firma, name, vorname, strasse, etage, plz, ort, telefon, email;
};

} // namespace desks
