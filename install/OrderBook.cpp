#include "install/OrderBook.h"
#include "common/Convert.h"
#include "orders/rules/StoredLine.h"
#include <QByteArrayList>

namespace install {
namespace {

double timeOf(int minute) {
    return common::timeSerial(minute / 60 % 24, minute % 60);
}

using StoredLine = orders::StoredLine<QByteArray>;

QByteArray lineColumns() {
    QByteArrayList names;
    StoredLine line;
    orders::forEachColumn(line, [&](QStringView column, const auto&) { names << column.toUtf8(); });
    return names.join(", ");
}

} // namespace

void takeDiscount(OrderLine& line, double percent) {
    if (line.money.price == 0)
        return;
    line.money.discount = orders::discountOf(line.money.price, percent);
    line.money = orders::rederived(line.money);
}

OrderBook::OrderBook(sqlite3* handle) :
    m_fullRate(readNumber(handle, "SELECT dbl_MWStSatz1 FROM tbl_Einstellungen_System")),
    m_foodRate(readNumber(handle, "SELECT dbl_MWStSatz3 FROM tbl_Einstellungen_System")),
    m_number(qint64(readNumber(handle, "SELECT lng_InitTrxNr FROM tbl_Einstellungen_System"))),
    m_heads(handle, "tbl_Auftragswesen_Bestellungen_Master",
            "lng_TrxNr, lng_KundenID, lng_KurierID, lng_BestellDatum, date_BestellDatum, time_BestellZeit, "
            "dbl_BestellDatumNow, time_Lieferzeit, txt_Konditionen, lng_LieferDatum, txt_LieferDatum, "
            "dbl_SummeOhneMWSt, dbl_MWStBetrag, dbl_TotalMitMWSt"),
    m_lines(handle, "tbl_Auftragswesen_Bestellungen_Details", lineColumns().constData()) {
}

OrderLine OrderBook::line(const Item& item, int priceGroup, double quantity) const {
    OrderLine line;
    line.item = &item;
    line.quantity = quantity;
    // A price of the catalogue is for one unit, and the quantity of a picked line begins with that unit.
    const double price = item.prices[size_t(priceGroup - 1)];
    line.money = orders::atQuantity(orders::freshLine(price, vatRate(item.vatCode)), item.unit, quantity);
    return line;
}

OrderLine OrderBook::productLine(const Product& product, int priceGroup, double quantity) const {
    OrderLine result = line(product, priceGroup, quantity);
    result.productId = product.id;
    return result;
}

OrderLine OrderBook::extraLine(const Product& product, const Item& extra, int priceGroup,
                               double quantity) const {
    OrderLine result = line(extra, priceGroup, quantity);
    result.productId = product.id;
    result.extra = &extra;
    return result;
}

orders::OrderSums OrderBook::sums(const std::vector<OrderLine>& lines) const {
    orders::OrderSums sums;
    for (const OrderLine& line : lines)
        sums.add(line.money, m_fullRate, m_foodRate);
    return sums;
}

void OrderBook::book(Order& order) {
    if (order.day != m_day) {
        m_day = order.day;
        m_dayText = common::formatDate(m_day, u"DD/MM/YYYY").toUtf8();
    }
    if (order.discountPercent > 0) {
        for (OrderLine& line : order.lines)
            takeDiscount(line, order.discountPercent);
    }
    // Of a cancelled order the number and the times remain.
    writeHead(order, order.cancelled ? orders::OrderSums() : sums(order.lines));
    if (!order.cancelled) {
        int row = 0;
        for (const OrderLine& line : order.lines)
            writeLine(order, line, row++);
    }
    ++m_number;
}

void OrderBook::writeHead(const Order& order, const orders::OrderSums& sums) {
    const double time = timeOf(order.minute);
    const qint64 nobody = -1;
    // The day of delivery stays the day of the order also when the time passes midnight.
    m_heads.add(m_number, order.cancelled ? nobody : order.customer, order.cancelled ? nobody : order.courier,
                order.day, order.day, time, order.day + time, timeOf(order.minute + order.minutesToDelivery),
                order.cancelled ? QByteArray("gelöscht") : order.conditions, order.day, m_dayText, sums.net,
                sums.vat1 + sums.vat3, sums.total);
}

void OrderBook::writeLine(const Order& order, const OrderLine& line, int row) {
    const bool product = line.extra == nullptr;
    StoredLine stored;
    stored.number = orders::lineNumber(m_number, row);
    stored.trxNr = m_number;
    stored.produktId = line.productId;
    stored.isProdukt = product ? 1 : 0;
    stored.extraId = product ? -1 : line.extra->id;
    stored.menge = line.quantity;
    stored.mengeIntern = product ? line.quantity : 0;
    stored.stueckelung = line.item->portion;
    stored.einheit = line.item->unit;
    stored.ccy = "CHF";
    stored.money = line.money;
    stored.moment = order.day + timeOf(order.minute);
    m_lines.addBy([&](auto bind) {
        orders::forEachColumn(stored, [&](QStringView, const auto& value) { bind(value); });
    });
}

} // namespace install
