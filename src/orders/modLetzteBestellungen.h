#pragma once
#include "orders/Ausgelassen.h"
#include "orders/WorkingOrder.h"
#include <QStringList>
#include <optional>
#include <vector>

/// What a customer ordered before, and ordering it again. Reads through RsMain.
namespace modLetzteBestellungen {

struct LetzteBestellung {
    qint64 lng_TrxNr = 0;
    /// Moment of the order as serial; missing where none can be read.
    std::optional<double> bestellt;
    double dbl_TotalMitMWSt = 0;
    /// A text each product with its extras, "2x Pizza Margherita + Oliven", by the names of today.
    QStringList positionen;
};

/// The customer's last booked orders, the newest first. A deleted order belongs to nobody any more.
std::vector<LetzteBestellung> LoadLetzteBestellungen(qint64 kundenId, int most);

/// Puts the lines of a booked order behind those of `order`, as if each were picked today: at the price of
/// the order's price group, in the quantity of then, without discount, extras under their product. An extra
/// does not come without its product.
orders::Ausgelassen UebernehmeBestellung(orders::WorkingOrder& order, qint64 trxNr);

} // namespace modLetzteBestellungen
