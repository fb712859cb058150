#include "install/OrderBook.h"
#include "common/Convert.h"
#include "common/modFunctions.h"

namespace install {
namespace {

double timeOf(int minute) {
    return common::timeSerial(minute / 60 % 24, minute % 60);
}

} // namespace

void takeDiscount(OrderLine& line, double percent) {
    if (line.price == 0)
        return;
    double discount = line.price * (percent * 0.01);
    // The cells take the rounded texts, which are free of the rounding's own binary remainder.
    line.discount = modFunctions::RoundRappen(discount).toDouble();
    line.price = modFunctions::RoundRappen(line.price).toDouble();
    const double net = (line.price - line.discount) / (line.vatRate / 100 + 1);
    line.net = common::formatNumber(net, u"0.00").toDouble();
}

OrderBook::OrderBook(sqlite3* handle) :
    m_fullRate(readNumber(handle, "SELECT dbl_MWStSatz1 FROM tbl_Einstellungen_System")),
    m_foodRate(readNumber(handle, "SELECT dbl_MWStSatz3 FROM tbl_Einstellungen_System")),
    m_number(qint64(readNumber(handle, "SELECT lng_InitTrxNr FROM tbl_Einstellungen_System"))),
    m_heads(handle, "tbl_Auftragswesen_Bestellungen_Master",
            "lng_TrxNr, lng_KundenID, lng_KurierID, lng_BestellDatum, date_BestellDatum, time_BestellZeit, "
            "dbl_BestellDatumNow, time_Lieferzeit, txt_Konditionen, lng_LieferDatum, txt_LieferDatum, "
            "dbl_SummeOhneMWSt, dbl_MWStBetrag, dbl_TotalMitMWSt"),
    m_lines(
        handle, "tbl_Auftragswesen_Bestellungen_Details",
        "dbl_TrxNr, lng_TrxNrMaster, lng_ProduktID, flag_IsProdukt, lng_ExtraID, dbl_Menge, dbl_MengeIntern, "
        "txt_Stückelung, lng_Einheit, txt_Ccy, dbl_PreisMitMWSt, dbl_Rabatt, dbl_MWStSatz, "
        "dbl_PreisOhneMWSt, "
        "dbl_BestellZeitDouble") {
}

OrderLine OrderBook::line(const Item& item, int priceGroup, double quantity) const {
    OrderLine line;
    line.item = &item;
    line.quantity = quantity;
    line.vatRate = vatRate(item.vatCode);
    // A price of the catalogue is for one unit, and the quantity of a picked line begins with that unit.
    line.price = item.prices[size_t(priceGroup - 1)] * quantity / item.unit;
    line.net = line.price / (line.vatRate / 100 + 1);
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

OrderBook::Totals OrderBook::totals(const std::vector<OrderLine>& lines) const {
    Totals sums;
    double full = 0;
    double food = 0;
    for (const OrderLine& line : lines) {
        const double gross = line.price - line.discount;
        sums.total += gross;
        sums.net += line.net;
        if (line.vatRate == m_fullRate)
            full += gross - line.net;
        if (line.vatRate == m_foodRate)
            food += gross - line.net;
    }
    sums.vat = full + food;
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
    writeHead(order, order.cancelled ? Totals() : totals(order.lines));
    if (!order.cancelled) {
        int position = 0;
        for (const OrderLine& line : order.lines)
            writeLine(order, line, ++position);
    }
    ++m_number;
}

void OrderBook::writeHead(const Order& order, const Totals& totals) {
    const double time = timeOf(order.minute);
    const qint64 nobody = -1;
    // The day of delivery stays the day of the order also when the time passes midnight.
    m_heads.add(m_number, order.cancelled ? nobody : order.customer, order.cancelled ? nobody : order.courier,
                order.day, order.day, time, order.day + time, timeOf(order.minute + order.minutesToDelivery),
                order.cancelled ? QByteArray("gelöscht") : order.conditions, order.day, m_dayText, totals.net,
                totals.vat, totals.total);
}

void OrderBook::writeLine(const Order& order, const OrderLine& line, int position) {
    const bool product = line.extra == nullptr;
    m_lines.add(double(m_number) + position * 0.01, m_number, line.productId, product ? 1 : 0,
                product ? qint64(-1) : line.extra->id, line.quantity, product ? line.quantity : 0.0,
                line.item->portion, line.item->unit, "CHF", line.price, line.discount, line.vatRate, line.net,
                order.day + timeOf(order.minute));
}

} // namespace install
