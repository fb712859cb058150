#include "modules/OrderFixture.h"
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

struct WebOrders : test::OrderTest {
    void take(qint64 web) {
        takeOrder();
        order.webBestellung = web;
    }
};

TEST_F(WebOrders, AreRememberedAsLongAsWhatTheyBecameStands) {
    take(77);
    const qint64 first = book();
    take(77);
    const qint64 second = book();
    take(77);
    const qint64 later = SaveVorbestellung(order);
    takeOrder();
    book();
    for (const bool isTakenOverAgain : {true, false}) {
        LoadBestellung(order, second);
        if (isTakenOverAgain)
            order.webBestellung = 77;
        UpdateBestellung(order, second);
    }
    DeleteVorbestellung(second);
    EXPECT_EQ(BookedWebOrder(77), (Booking{{second, false}}));
    DeleteBestellung(second, {});
    EXPECT_EQ(BookedWebOrder(77), (Booking{{first, false}}));
    DeleteBestellung(first, {});
    EXPECT_EQ(BookedWebOrder(77), (Booking{{later, true}}));
    OpenVorbestellung(order, later);
    DeleteVorbestellung(later);
    EXPECT_EQ(BookedWebOrder(77), std::nullopt);
    const qint64 last = book();
    EXPECT_EQ(BookedWebOrder(77), (Booking{{last, false}}));
    // An order that cannot be remembered is not booked either.
    const auto booked = [] {
        return TestFirm::rows(u"SELECT * FROM tbl_Auftragswesen_Bestellungen_Master"_s);
    };
    const QStringList before = booked();
    take(78);
    ConnMain.Execute(u"DROP TABLE tbl_WebShop_Bestellungen_Verbucht"_s);
    EXPECT_ANY_THROW(book());
    EXPECT_EQ(booked(), before);
}

TEST_F(WebOrders, AreKeyedThroughTheCellsOfTypedLines) {
    for (const char16_t* text : {u"2", u"0", u"-3", u"1e9", u"2,5", u"abc", u"", u"  4 ", u"1e-9"}) {
        const QString anzahl = QString::fromUtf16(text);
        order.ClearBestellungMaske();
        const auto told = UebernehmeWebBestellung(
            order, {4711, {{true, TestFirm::kBier, anzahl, {}}, {false, TestFirm::kKaese, anzahl, u"?"_s}}});
        orders::WorkingOrder typed;
        typed.PutProdukt(0, TestFirm::kBier, u"O'N5%"_s);
        typed.PutExtraByKey(1, TestFirm::kBier, TestFirm::kKaese, {});
        bool taken = true;
        for (const int row : {0, 1})
            taken &= typed.BestellungGrid.endEdit(row, Col::Anzahl, anzahl);
        typed.BestellungGrid.setCell(1, Col::AnzahlIntern, typed.BestellungGrid.cell(1, Col::Anzahl));
        for (int row = 0; row < 3; ++row)
            for (int col = 0; col < order.BestellungGrid.columnCount(); ++col)
                EXPECT_EQ(this->text(row, col), typed.BestellungGrid.text(row, col)) << row << ' ' << col;
        EXPECT_EQ(told.mengeAbgelehnt.isEmpty(), taken) << anzahl.toStdString();
        EXPECT_EQ(order.webBestellung, 4711);
    }
}

TEST_F(WebOrders, WhatCannotBeKeyedLeavesNoRowAndIsTold) {
    const WebLine wein{true, TestFirm::kWein, u"1"_s, {}}, gone{true, 99, u"2"_s, {}};
    const WebLine kaese{false, TestFirm::kKaese, u"1"_s, u"Käse"_s};
    const WebLine gold{false, 99, u"1"_s, u"<b>Gold</b>\n\x01 x"_s};
    // Not on offer; without a line above; without room.
    const std::tuple<std::vector<WebLine>, QString, QString> cases[] = {
        {{kaese, kaese, wein, kaese}, u"Wein|Käse|"_s, u"/1x Käse,1x Käse/"_s},
        {{wein, gone, kaese, wein, kaese}, u"Wein|Wein|Käse"_s, u"2x Produkt 99,1x Käse//"_s},
        {{wein, gold, kaese}, u"Wein||"_s, u"1x <b>Gold</b> x/1x Käse/"_s},
        {std::vector<WebLine>(5000, wein), u"Wein|Wein|Wein"_s, u"//4900"_s}};
    for (const auto& [web, lines, left] : cases) {
        order.ClearBestellungMaske();
        const auto told = UebernehmeWebBestellung(order, {5, web});
        EXPECT_EQ(names(3), lines);
        const QStringList full =
            told.keinPlatz.isEmpty() ? QStringList() : QStringList{QString::number(told.keinPlatz.size())};
        EXPECT_EQ(QStringList({told.nichtImAngebot.join(u','), told.ohnePosition.join(u','), full.join(u',')})
                      .join(u'/'),
                  left);
    }
    // What stands there already keeps its row, and its product's extra goes with it.
    order.ClearBestellungMaske();
    pickPizza();
    EXPECT_EQ(UebernehmeWebBestellung(order, {5, {gone, kaese, wein}}).keinPlatz.size(), 2);
    EXPECT_EQ(names(3), u"Pizza|Wein|"_s);
}

} // namespace
