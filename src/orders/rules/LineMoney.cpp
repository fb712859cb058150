#include "orders/rules/LineMoney.h"
#include "common/Convert.h"
#include "common/modFunctions.h"
#include <cmath>

namespace orders {
namespace {

constexpr double kLineStep = 0.01;

/// The rounded text and not the amount, which carries the trace of the rounding's constants.
double rounded(double amount) {
    return common::parseNumber(modFunctions::RoundRappen(amount)).value_or(0);
}

double netOf(const LineMoney& line) {
    return line.gross() / (line.rate / 100 + 1);
}

} // namespace

LineMoney freshLine(double price, double rate) {
    return {price, 0, rate, price / (rate * 0.01 + 1)};
}

LineMoney atQuantity(LineMoney line, double before, double quantity) {
    if (quantity == 0)
        return {0, 0, line.rate, 0};
    if (line.price == 0) {
        line.net = 0;
        return line;
    }
    // A line cannot have a price and no quantity but by damaged data; then there is nothing to scale by.
    if (before != 0)
        line.price = line.price * quantity / before;
    line.net = netOf(line);
    return line;
}

LineMoney rederived(LineMoney line) {
    line.price = rounded(line.price);
    line.discount = rounded(line.discount);
    line.net = common::parseNumber(common::formatNumber(netOf(line), u"0.00")).value_or(0);
    return line;
}

double discountOf(double price, double percent) {
    return rounded(price * (percent * 0.01));
}

void OrderSums::add(const LineMoney& line, double rate1, double rate3) {
    total += line.gross();
    if (line.rate == rate1)
        vat1 += line.gross() - line.net;
    if (line.rate == rate3)
        vat3 += line.gross() - line.net;
    net += line.net;
}

double lineNumber(qint64 trxNr, int row) {
    return double(trxNr) + (row + 1) * kLineStep;
}

int rowOfLine(double lineNumber, qint64 trxNr) {
    return int(std::lround((lineNumber - double(trxNr)) / kLineStep)) - 1;
}

} // namespace orders
