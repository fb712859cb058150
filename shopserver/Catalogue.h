#pragma once
#include "shopserver/OrderTimes.h"
#include <QHash>
#include <QList>
#include <QString>

namespace shop {

struct Product {
    qint64 id = 0;
    QString name;
    qint64 category = 0;
    double price = 0;
    QString text, picture, largePicture;
};

struct Category {
    qint64 id = 0;
    QString name;
};

struct Extra {
    QString name;
    double price = 0;
};

struct DeliveryArea {
    qint64 postcode = 0;
    QString town;
    double minimum = 0;
    int minutes = 0;
};

/// Colours are six hexadecimal digits, red first.
struct Look {
    QString bar = QStringLiteral("A32638"), text = QStringLiteral("FFFFFF");
    QString picture, title = QStringLiteral("Online Shop");
};

/// Encoded for the web already.
struct Documents {
    QString terms, contact, questions, withdrawal, privacy, news, thanks;
};

/// What the desk has uploaded, read once.
struct Catalogue {
    bool closed = true;
    int pickUpMinutes = 0;
    OrderTimes times;
    Look look;
    Documents documents;
    QList<Category> categories;
    QList<Product> products; ///< those of the categories above, in their order
    QHash<qint64, Extra> extras;
    QHash<qint64, QList<qint64>> extrasOf; ///< by product, in the order of the extras
    QList<DeliveryArea> areas;

    const Product* product(qint64 id) const;
    /// The area of an address: its place, or the dearest of the postcode where the place is written
    /// otherwise.
    const DeliveryArea* area(qint64 postcode, const QString& town) const;
};

} // namespace shop
