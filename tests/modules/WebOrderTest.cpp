#include "modules/OrderFixture.h"
#include "orders/OrderStorage.h"
#include "orders/WebOrderMemory.h"
#include "orders/modAuftragswesenVorbestellungen.h"

using namespace Qt::StringLiterals;
using namespace modAuftragswesenAuftragserfassung;
using namespace modAuftragswesenVorbestellungen;
using orders::BookedWebOrder;
using test::TestFirm;
using Booking = std::optional<orders::WebBooking>;

namespace {

class WebOrders : public test::OrderTest {
  protected:
    void take(qint64 web) {
        takeOrder();
        order.webBestellung = web;
    }
};

TEST_F(WebOrders, AreRememberedAsWhatTheyBecame) {
    take(77);
    const qint64 first = book();
    takeOrder();
    const qint64 keyed = book();
    take(77);
    const qint64 second = book();
    EXPECT_EQ(BookedWebOrder(77), (Booking{{second, false}}));
    EXPECT_EQ(orders::WebOrderOf({keyed, false}), std::nullopt);
    for (const qint64 number : {first, second}) {
        LoadBestellung(order, number);
        pickWein();
        UpdateBestellung(order, number);
    }
    EXPECT_EQ(BookedWebOrder(77), (Booking{{second, false}})) << "a change is no other booking";
    DeleteVorbestellung(second);
    DeleteBestellung(keyed, {});
    EXPECT_EQ(BookedWebOrder(77), (Booking{{second, false}}));
    DeleteBestellung(second, {});
    EXPECT_EQ(BookedWebOrder(77), (Booking{{first, false}})) << "it still stands";
    DeleteBestellung(first, {});
    EXPECT_EQ(BookedWebOrder(77), std::nullopt);
}

TEST_F(WebOrders, ArePreOrdersUntilTheyAreBooked) {
    take(0);
    const qint64 later = SaveVorbestellung(order);
    EXPECT_EQ(BookedWebOrder(0), (Booking{{later, true}}));
    OpenVorbestellung(order, later);
    const qint64 number = book();
    EXPECT_EQ(BookedWebOrder(0), (Booking{{number, false}}));
    DeleteBestellung(number, {});
    EXPECT_EQ(BookedWebOrder(0), (Booking{{later, true}}));
    OpenVorbestellung(order, later);
    DeleteVorbestellung(later);
    EXPECT_EQ(BookedWebOrder(0), std::nullopt);
    EXPECT_EQ(BookedWebOrder(book()), std::nullopt);
    EXPECT_TRUE(BookedWebOrder(0)) << "it was open on the screen";
}

} // namespace
