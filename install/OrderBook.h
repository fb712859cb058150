#pragma once
#include "install/Bulk.h"
#include "install/Catalogue.h"
#include "orders/rules/LineMoney.h"
#include <vector>

namespace install {

/// A line of an order before it is booked. An extra stands below the product that it belongs to.
struct OrderLine {
    qint64 productId = 0;
    /// Null on the product's own line.
    const Item* extra = nullptr;
    const Item* item = nullptr;
    double quantity = 0;
    orders::LineMoney money;
};

struct Order {
    /// Day serial and minute of the day.
    int day = 0;
    int minute = 0;
    int minutesToDelivery = 45;
    qint64 customer = 0;
    qint64 courier = 0;
    QByteArray conditions = "Bar";
    /// 1 to 10.
    int priceGroup = 1;
    double discountPercent = 0;
    bool cancelled = false;
    std::vector<OrderLine> lines;
};

/// Books orders one behind the other under gapless numbers, as the order screen would and with its reckoning.
class OrderBook {
  public:
    /// The numbers begin with the first transaction number of the settings row, whose VAT rates count too.
    explicit OrderBook(sqlite3* handle);

    OrderLine productLine(const Product& product, int priceGroup, double quantity) const;
    OrderLine extraLine(const Product& product, const Item& extra, int priceGroup, double quantity) const;
    /// Takes the discount off the lines and writes head and lines.
    void book(Order& order);

  private:
    double vatRate(int code) const { return code == 0 ? m_fullRate : code == 1 ? m_foodRate : 0; }

    OrderLine line(const Item& item, int priceGroup, double quantity) const;
    orders::OrderSums sums(const std::vector<OrderLine>& lines) const;
    void writeHead(const Order& order, const orders::OrderSums& sums);
    void writeLine(const Order& order, const OrderLine& line, int row);

    double m_fullRate;
    double m_foodRate;
    qint64 m_number;
    Inserter m_heads;
    Inserter m_lines;
    int m_day = 0;
    QByteArray m_dayText;
};

/// `percent` off the line, where it has a price.
void takeDiscount(OrderLine& line, double percent);

} // namespace install
