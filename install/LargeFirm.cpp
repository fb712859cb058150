#include "install/LargeFirm.h"
#include "common/Clock.h"
#include "install/OrderMaker.h"
#include "install/People.h"
#include <algorithm>

namespace install {
namespace {

constexpr int kCustomers = 200'000;
constexpr int kOrders = 1'000'000;
constexpr int kPhoneBookEntries = 1'000'000;
constexpr int kCouriers = 20;
/// About five years at full scale; a smaller firm is a younger one, its days are as busy.
constexpr int kOrdersADay = 550;
/// From one line up to this many in turn: five on average.
constexpr int kMostLines = 9;

int scaled(int count, double scale) {
    return std::max(1, int(std::lround(count * scale)));
}

void writeCouriers(sqlite3* handle) {
    Inserter couriers(handle, "tbl_Verwaltung_Kuriere", "txt_Kurzzeichen, txt_Bezeichnung, lng_Reihenfolge");
    for (int i = 1; i <= kCouriers; ++i)
        couriers.add(QStringLiteral(u"K%1").arg(i, 2, 10, QChar(u'0')), QStringLiteral(u"Kurier %1").arg(i),
                     i);
}

void writeOrders(sqlite3* handle, int count, int customers, int today) {
    const Catalogue catalogue = largeCatalogue();
    writeCatalogue(handle, catalogue);
    Random random(5);
    OrderBook book(handle);
    OrderMaker maker(book, catalogue, random);
    Order order;
    for (int i = 0; i < count; ++i) {
        const int toCome = count - 1 - i;
        const int ofTheDay = kOrdersADay - 1 - toCome % kOrdersADay;
        order.day = today - 1 - toCome / kOrdersADay;
        order.minute = 10 * 60 + ofTheDay * 13 * 60 / kOrdersADay;
        order.customer = 1 + random.favouring(customers);
        order.courier = random.between(1, kCouriers);
        order.priceGroup = random.between(1, kPriceGroups);
        order.discountPercent = random.percent(5) ? 10 : 0;
        order.cancelled = false;
        order.lines.clear();
        maker.addLines(order, 1 + (i + kMostLines / 2) % kMostLines);
        book.book(order);
    }
}

} // namespace

void addLargeFirm(sqlite3* handle, Database database, double scale) {
    if (database == Database::PhoneBook)
        writePhoneBook(handle, scaled(kPhoneBookEntries, scale), scaled(kCustomers, scale) / 10);
    if (database != Database::Main)
        return;
    const int today = int(common::clock::today());
    const int customers = scaled(kCustomers, scale);
    writeCustomers(handle, customers, today);
    writeCouriers(handle);
    writeOrders(handle, scaled(kOrders, scale), customers, today);
}

} // namespace install
