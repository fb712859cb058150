#pragma once
#include "desks/WebOrder.h"
#include <QString>
#include <vector>

/// Orders from the web shop. The open ones stand in tbl_WebShop_Bestellungen_Master, a mirror of what the
/// server holds. What the server answers may be anything: an answer that cannot be read throws kTypeMismatch,
/// one that tells an order twice kDuplicateKey.
namespace modInternetBestellungen {

/// Replaces the orders by those of the answer and gives their number; a text without the frame of an answer
/// has none. In one transaction: an answer that cannot be read leaves the orders as they were.
qint64 ParseWebShopBestellungen(const QString& text);

/// The lines of one order, in the server's order. A text without the frame has none.
std::vector<desks::WebLine> ParseWebShopBestellungDetails(const QString& text);

} // namespace modInternetBestellungen
