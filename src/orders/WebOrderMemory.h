#pragma once
#include "desks/WebOrder.h"
#include "orders/OrderStorage.h"
#include <optional>

/// Which web order became which booking or pre-order. A web order that was taken over twice has several; none
/// outlives what it tells of.
namespace orders {

struct WebBooking {
    qint64 trxNr = 0;
    bool isPreOrder = false;
    friend bool operator==(const WebBooking&, const WebBooking&) = default;
};

/// The newest booking of a web order, else its newest pre-order. Reads through RsMain.
std::optional<WebBooking> BookedWebOrder(const desks::WebOrderId& web);
/// The web order that a stored order was; nothing for one that was keyed.
std::optional<desks::WebOrderId> WebOrderOf(const WebBooking& booking);

/// Their transaction is the caller's, who stores or removes the order in it.
void RememberWebOrder(const desks::WebOrderId& web, const WebBooking& booking);
void ForgetWebOrder(const WebBooking& booking);

} // namespace orders
