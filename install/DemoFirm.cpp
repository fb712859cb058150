#include "install/DemoFirm.h"
#include "common/Clock.h"
#include "install/OrderMaker.h"
#include "install/People.h"
#include "install/Resources.h"
#include <algorithm>

namespace install {
namespace {

using namespace Qt::StringLiterals;

constexpr int kCustomers = 400;
constexpr int kPhoneBookEntries = 3000;
/// Customers who stand in the phone book too.
constexpr int kKnownEntries = 40;
constexpr int kDays = 90;

/// Writes the couriers and gives the key of the one that stands for collecting at the shop, which is the
/// last.
int writeCouriers(sqlite3* handle) {
    Inserter couriers(handle, "tbl_Verwaltung_Kuriere", "txt_Kurzzeichen, txt_Bezeichnung, lng_Reihenfolge");
    int position = 0;
    for (const QStringList& row : resourceTable(u"demo/couriers.csv"_s))
        couriers.add(row[0], row[1], ++position);
    return position;
}

void dressUp(sqlite3* handle) {
    runScript(handle,
              "UPDATE tbl_Einstellungen_System SET txt_VATNummer = 'CHE-000.000.000 MWST',"
              "txt_Werbetext = 'Vielen Dank für Ihre Bestellung. Montag bis Donnerstag: jede fünfte Pizza "
              "zum halben Preis!';"
              "UPDATE tbl_PLZ_Verzeichnis SET txt_Kurier = (SELECT txt_Kurzzeichen FROM "
              "tbl_Verwaltung_Kuriere WHERE lng_ID = 1 + lng_PLZ % 5) WHERE bool_Liefergebiet <> 0;"
              "UPDATE tbl_OnlineShop_Lieferzeiten SET lng_ShopStatus = 0, "
              "txt_EMailAdresse = 'shop@example.com'");
}

/// Ninety days at the counter.
class Season {
  public:
    Season(sqlite3* handle, const Catalogue& catalogue, int pickUpCourier) :
        m_book(handle), m_maker(m_book, catalogue, m_random), m_pickUpCourier(pickUpCourier) {}

    void bookDay(int day) {
        std::vector<int> minutes;
        for (int left = ordersOn(day); left > 0; --left)
            minutes.push_back(minuteOfAnOrder());
        std::sort(minutes.begin(), minutes.end());
        for (const int minute : minutes)
            bookOrder(day, minute);
    }

  private:
    /// Serial 2 was a Monday.
    static int weekday(int day) { return (day - 2) % 7; }

    int ordersOn(int day) {
        static constexpr int usual[] = {26, 26, 28, 30, 44, 48, 40};
        const int expected = usual[weekday(day)];
        return std::clamp(expected + m_random.between(-expected / 4, expected / 4), 20, 60);
    }

    int minuteOfAnOrder() {
        if (m_random.percent(25))
            return 11 * 60 + m_random.below(150);
        return 17 * 60 + m_random.below(165) + m_random.below(165);
    }

    void bookOrder(int day, int minute) {
        Order order;
        order.day = day;
        order.minute = minute;
        order.customer = 1 + m_random.favouring(kCustomers);
        chooseTerms(order);
        m_maker.addMeal(order);
        if (m_random.percent(6))
            order.discountPercent = m_random.percent(60) ? 10 : 5;
        order.cancelled = m_random.below(70) == 0;
        m_book.book(order);
    }

    void chooseTerms(Order& order) {
        if (m_random.percent(15)) {
            order.courier = m_pickUpCourier;
            order.conditions = "abgeholt";
            order.priceGroup = 2;
            order.minutesToDelivery = 20;
            return;
        }
        order.courier = m_random.between(1, m_pickUpCourier - 1);
        order.conditions = conditions();
        if (weekday(order.day) < 5 && order.minute < 14 * 60)
            order.priceGroup = 3;
        else if (order.customer % 20 == 0)
            order.priceGroup = 4;
        if (order.minute >= 18 * 60 && order.minute < 20 * 60 && m_random.percent(30))
            order.minutesToDelivery = 60;
    }

    QByteArray conditions() {
        const int share = m_random.below(100);
        return share < 58   ? "Bar"
               : share < 74 ? "EC"
               : share < 82 ? "Visa"
               : share < 89 ? "Euro/Mastercard"
               : share < 94 ? "Postcard"
               : share < 99 ? "Rechnung"
                            : "American Express";
    }

    Random m_random{90};
    OrderBook m_book;
    OrderMaker m_maker;
    const int m_pickUpCourier;
};

} // namespace

void addDemoFirm(sqlite3* handle, Database database) {
    const int today = int(common::clock::today());
    if (database == Database::PhoneBook)
        writePhoneBook(handle, kPhoneBookEntries, kKnownEntries);
    if (database != Database::Main)
        return;
    const Catalogue catalogue = demoCatalogue();
    writeCatalogue(handle, catalogue);
    writeCustomers(handle, kCustomers, today);
    Season season(handle, catalogue, writeCouriers(handle));
    dressUp(handle);
    for (int day = today - kDays; day < today; ++day)
        season.bookDay(day);
}

} // namespace install
