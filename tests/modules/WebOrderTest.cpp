#include "modules/OrderFixture.h"
#include "orders/OrderStorage.h"
#include "orders/WebOrderMemory.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "orders/modWebBestellung.h"

using namespace Qt::StringLiterals;
using namespace modAuftragswesenAuftragserfassung;
using namespace modAuftragswesenVorbestellungen;
using desks::WebLine;
using modWebBestellung::UebernehmeWebBestellung;
using orders::BookedWebOrder;
using orders::Col;
using test::TestFirm;
using Booking = std::optional<orders::WebBooking>;

namespace {

class WebOrders : public test::OrderTest {
  protected:
    void take(qint64 web) {
        takeOrder();
        order.webBestellung = web;
    }

    static WebLine produkt(qint64 id, const QString& anzahl = u"1"_s) { return {true, id, anzahl, {}}; }

    static WebLine extra(qint64 id, const QString& name, const QString& anzahl = u"1"_s) {
        return {false, id, anzahl, name};
    }

    /// The rows up to the last filled one, each as "quantity name".
    QStringList lines() const {
        QStringList result;
        for (int row = 0; row <= order.LastFilledRow(); ++row)
            result << line(row, {Col::Anzahl, Col::Bezeichnung}).replace(u'|', u' ');
        return result;
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

TEST_F(WebOrders, AreKeyedThroughTheCellsOfTypedLines) {
    const auto leftOut =
        UebernehmeWebBestellung(order, {4711,
                                        {produkt(TestFirm::kBier, u"12"_s), produkt(TestFirm::kMargherita),
                                         extra(TestFirm::kKaese, u"as the shop calls it"_s, u"2"_s),
                                         extra(TestFirm::kKnoblauch, {}), produkt(TestFirm::kWein, u"3"_s)}});
    EXPECT_TRUE(leftOut.nichtImAngebot.isEmpty() && leftOut.keinPlatz.isEmpty() &&
                leftOut.ohnePosition.isEmpty() && leftOut.mengeAbgelehnt.isEmpty());
    EXPECT_EQ(order.webBestellung, 4711);
    EXPECT_EQ(order.suche, orders::SucheModus::Keyed);
    orders::WorkingOrder typed;
    typed.PickProdukt(TestFirm::kBier, u"O'N5%"_s, 12);
    typed.PickProdukt(TestFirm::kMargherita, u"1"_s, 1);
    typed.PickExtra(TestFirm::kKaese, u"Käse"_s, 2);
    typed.PickExtra(TestFirm::kKnoblauch, u"Knoblauch"_s, 1);
    typed.PickProdukt(TestFirm::kWein, u"W"_s, 3);
    // The shop's extras count within as well.
    for (const int row : {2, 3})
        typed.BestellungGrid.setCell(row, Col::AnzahlIntern, typed.BestellungGrid.cell(row, Col::Anzahl));
    for (int row = 0; row < orders::kOrderRows; ++row)
        for (int col = 0; col < order.BestellungGrid.columnCount(); ++col)
            EXPECT_EQ(text(row, col), typed.BestellungGrid.text(row, col)) << row << ' ' << col;
    EXPECT_EQ(total(), typed.total(orders::TotalRow::Total));
}

TEST_F(WebOrders, ABadQuantityIsThatOfACell) {
    for (const char16_t* anzahl : {u"2", u"0", u"-3", u"1e9", u"2,5", u"abc", u"", u"  4 ", u"1e-9"}) {
        const QString keyed = QString::fromUtf16(anzahl);
        order.ClearBestellungMaske();
        const auto leftOut = UebernehmeWebBestellung(order, {1, {produkt(TestFirm::kBier, keyed)}});
        orders::WorkingOrder typed;
        typed.PutProdukt(0, TestFirm::kBier, u"O'N5%"_s);
        const bool taken = typed.BestellungGrid.endEdit(0, Col::Anzahl, keyed);
        for (int col = 0; col < order.BestellungGrid.columnCount(); ++col)
            EXPECT_EQ(text(0, col), typed.BestellungGrid.text(0, col)) << keyed.toStdString() << ' ' << col;
        EXPECT_EQ(leftOut.mengeAbgelehnt,
                  taken ? QStringList() : QStringList{u"O'Neill's ("_s + keyed + u')'});
    }
}

TEST_F(WebOrders, WhatCannotBeKeyedLeavesNoRowAndIsNamed) {
    const WebLine wein = produkt(TestFirm::kWein), kaese = extra(TestFirm::kKaese, u"Käse"_s);
    const WebLine gone = produkt(99, u"2"_s);

    struct Case {
        const char* name;
        std::vector<WebLine> web;
        QStringList lines, nichtImAngebot, ohnePosition, keinPlatz;
        bool begun = false;
    };

    const Case cases[] = {{"nothing", {}, {}, {}, {}, {}},
                          {"extras first",
                           {kaese, kaese, wein, kaese},
                           {u"1 Wein"_s, u"1 Käse"_s},
                           {},
                           {u"1x Käse"_s, u"1x Käse"_s},
                           {}},
                          {"a product that has gone",
                           {gone, kaese, wein, kaese},
                           {u"1 Wein"_s, u"1 Käse"_s},
                           {u"2x Produkt 99"_s, u"1x Käse"_s},
                           {},
                           {}},
                          {"between others",
                           {wein, gone, kaese, wein},
                           {u"1 Wein"_s, u"1 Wein"_s},
                           {u"2x Produkt 99"_s, u"1x Käse"_s},
                           {},
                           {}},
                          {"an extra that has gone",
                           {wein, extra(99, u"<b>Gold</b>\n\x01 x"_s), kaese},
                           {u"1 Wein"_s},
                           {u"1x <b>Gold</b> x"_s},
                           {u"1x Käse"_s},
                           {}},
                          {"nothing on offer",
                           {gone, produkt(TestFirm::kHawaii)},
                           {u"1 Pizza Hawaii"_s},
                           {u"2x Produkt 99"_s},
                           {},
                           {}},
                          {"rows that are taken",
                           {wein, kaese, wein},
                           {u"1 Pizza"_s, u"1 Wein"_s},
                           {},
                           {},
                           {u"1x Wein"_s, u"1x Käse"_s},
                           true}};
    for (const auto& [name, web, expected, nichtImAngebot, ohnePosition, keinPlatz, begun] : cases) {
        order.ClearBestellungMaske();
        if (begun)
            pickPizza();
        const auto leftOut = UebernehmeWebBestellung(order, {5, web});
        EXPECT_EQ(lines(), expected) << name;
        EXPECT_EQ(order.FirstEmptyRow(), expected.size()) << name;
        EXPECT_EQ(leftOut.nichtImAngebot, nichtImAngebot) << name;
        EXPECT_EQ(leftOut.ohnePosition, ohnePosition) << name;
        EXPECT_EQ(leftOut.keinPlatz, keinPlatz) << name;
        EXPECT_EQ(order.webBestellung.has_value(), !web.empty()) << name;
    }
}

TEST_F(WebOrders, LongerThanTheOrderLoseNothingSilently) {
    callAnna();
    std::vector<WebLine> web(orders::kOrderRows - 1, produkt(TestFirm::kGutschein));
    web.push_back(extra(TestFirm::kKaese, u"Käse"_s));
    web.resize(5000, produkt(TestFirm::kWein));
    const auto leftOut = UebernehmeWebBestellung(order, {8, web});
    EXPECT_EQ(lines().size(), orders::kOrderRows);
    EXPECT_EQ(lines().last(), u"1 Käse");
    EXPECT_EQ(leftOut.keinPlatz.size(), 4900);
    EXPECT_EQ(leftOut.keinPlatz.first(), u"1x Wein");
    EXPECT_EQ(BookedWebOrder(8), std::nullopt);
    const qint64 number = book();
    EXPECT_EQ(BookedWebOrder(8), (Booking{{number, false}}));
}

} // namespace
