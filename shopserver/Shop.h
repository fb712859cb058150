#pragma once
#include "shopserver/CatalogueInForce.h"
#include "shopserver/MessageStore.h"
#include "shopserver/OrderStore.h"
#include <QString>

namespace shop {

/// Where a shop keeps what.
struct Places {
    QString root;   ///< root of the FTP server
    QString folder; ///< the shop's folder in it, relative, "" for the root itself
    QString data;   ///< folder of the shop's own files, which FTP does not reach
    QString system; ///< what is offered to all installations, "" when this is not the system's server

    QString file(const QString& name) const;
};

/// A shop's data.
struct Shop {
    explicit Shop(const Places& where);

    Places places;
    CatalogueInForce catalogue;
    OrderStore orders;
    MessageStore messages;
};

} // namespace shop
