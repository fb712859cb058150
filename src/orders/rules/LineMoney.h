#pragma once
#include <QtGlobal>

/// The money of an order's lines. It knows neither cells nor tables: the order screen and the installer's
/// demo firm reckon with it alike.
namespace orders {

struct LineMoney {
    double price = 0;    ///< of the whole line, including VAT
    double discount = 0; ///< an amount, which is taken off the price
    double rate = 0;     ///< of the VAT, in percent
    double net = 0;      ///< price less discount, without VAT

    double gross() const { return price - discount; }

    bool operator==(const LineMoney&) const = default;
};

/// A line at the catalogue's price, which counts as it stands: nothing is rounded.
LineMoney freshLine(double price, double rate);

/// What becomes of the line when the quantity changes. The discount stays; at quantity 0 price and discount
/// are gone until a price is typed. Nothing is rounded.
LineMoney atQuantity(LineMoney line, double before, double quantity);

/// The line derived anew after an amount or the rate was changed: price and discount rounded to 5 rappen, net
/// to rappen.
LineMoney rederived(LineMoney line);

/// `percent` of the price, rounded to 5 rappen.
double discountOf(double price, double percent);

/// The sums of an order, not rounded.
struct OrderSums {
    double net = 0;
    double vat1 = 0; ///< of the lines at the first rate
    double vat3 = 0; ///< of the lines at the second; with equal rates a line counts in both
    double total = 0;

    void add(const LineMoney& line, double rate1, double rate3);
};

/// The second key of a stored line carries its place in the order: the third row of order 1234 is 1234.03.
/// Rows are counted from 0.
double lineNumber(qint64 trxNr, int row);
int rowOfLine(double lineNumber, qint64 trxNr);

} // namespace orders
