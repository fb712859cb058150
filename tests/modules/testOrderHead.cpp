#include "common/Clock.h"
#include "common/Convert.h"
#include "orders/WorkingOrder.h"
#include "store/SystemSettings.h"
#include "support/TestFirm.h"
#include <gtest/gtest.h>

using orders::OrderButtons;
using orders::WorkingOrder;
using platform::CellKind;
using test::TestFirm;
namespace Detail = orders::Detail;

namespace {

struct OrderHead : testing::Test {
    OrderHead() { order.SetUp(); }

    bool type(orders::DetailCell cell, const char16_t* typed) {
        return order.BestellungDetailsGrid.endEdit(cell.row, cell.column, QString::fromUtf16(typed));
    }

    TestFirm firm;
    WorkingOrder order;
};

TEST_F(OrderHead, opensWithDefaults) {
    EXPECT_EQ(order.detail(Detail::AuftragsNr), u"1001");
    EXPECT_EQ(order.detail(Detail::KundenNr), u"");
    EXPECT_EQ(order.detail(Detail::Kurier), u"AB");
    EXPECT_EQ(order.lng_KurierID, TestFirm::kKurierAB);
    EXPECT_EQ(order.detail(Detail::Datum), u"15/Mai/2026");
    EXPECT_EQ(order.detail(Detail::MWStNr), u"CHE-1");
    EXPECT_EQ(order.detail(Detail::Konditionen), u"Bar");
    EXPECT_EQ(order.BestellungTotalGrid.text(orders::TotalRow::MWSt1, 0), u"MWSt: 8.1%");
    EXPECT_EQ(order.BestellungTotalGrid.text(orders::TotalRow::MWSt3, 0), u"MWSt: 2.6%");
    EXPECT_EQ(order.BestellungTotalGrid.text(orders::TotalRow::Total, 1), u"CHF");
    EXPECT_EQ(order.BestellungGrid.rows(), 100);
    EXPECT_EQ(order.BestellungGrid.number(99, orders::Col::EinheitAnzahl), 1);
    EXPECT_EQ(order.BestellungGrid.column(u"ExtraID"), orders::Col::ExtraID);
}

TEST_F(OrderHead, withoutCouriersThereIsNoDefault) {
    ConnMain.Execute(QStringLiteral("DELETE FROM tbl_Verwaltung_Kuriere"));
    order.SetUp();
    EXPECT_EQ(order.detail(Detail::Kurier), u"");
    EXPECT_EQ(order.lng_KurierID, 0);
}

TEST_F(OrderHead, searchFindsTheCustomerByTelephoneOrMobile) {
    struct Case {
        const char16_t* number;
        qint64 id;
    };

    for (const Case& c : {Case{u"0791234567", TestFirm::kAnna}, Case{u" 791234567 ", TestFirm::kAnna},
                          Case{u"0799999999", TestFirm::kBruno}}) {
        EXPECT_TRUE(order.SucheTelefonNummer(QString::fromUtf16(c.number)));
        EXPECT_EQ(order.lng_KundenID, c.id);
        EXPECT_EQ(order.detail(Detail::KundenNr), QString::number(c.id));
        EXPECT_EQ(order.buttons(), (OrderButtons{false, true, true, false, false, false}));
    }
    order.SucheTelefonNummer(QStringLiteral("0791234567"));
    EXPECT_TRUE(order.KundenAdresseShown());
    EXPECT_TRUE(order.KundenAdresse().startsWith(u"Muster AG\r\n"));
    EXPECT_EQ(order.detail(Detail::Datum), u"15/Mai/2026");
    EXPECT_EQ(order.detail(Detail::Bestellzeit), u"18:00");
    EXPECT_EQ(order.detail(Detail::Lieferzeit), u"18:30");
    EXPECT_EQ(order.detail(Detail::Lieferung), u"15/05/2026");
}

TEST_F(OrderHead, deliveryDateStaysTodayPastMidnight) {
    TestFirm::setTime(23, 50);
    order.SucheTelefonNummer(QStringLiteral("0791234567"));
    EXPECT_EQ(order.detail(Detail::Lieferzeit), u"00:20");
    EXPECT_EQ(order.detail(Detail::Lieferung), u"15/05/2026");
}

TEST_F(OrderHead, timeAndDateAreOfOneMoment) {
    common::clock::set(TestFirm::day() + common::timeSerial(23, 59, 59) + 0.9 / 86'400);
    order.SucheTelefonNummer(QStringLiteral("0791234567"));
    EXPECT_EQ(order.detail(Detail::Datum), u"15/Mai/2026");
    EXPECT_EQ(order.detail(Detail::Bestellzeit), u"23:59");
    EXPECT_EQ(order.detail(Detail::Lieferzeit), u"00:29");
}

TEST_F(OrderHead, unknownNumberLeavesAnEmptyOrder) {
    order.SucheTelefonNummer(QStringLiteral("0791234567"));
    order.PickProdukt(TestFirm::kWein, QStringLiteral("W"), 1);
    // A blank number is no search and touches nothing.
    EXPECT_FALSE(order.SucheTelefonNummer(QStringLiteral("  ")));
    EXPECT_EQ(order.LastFilledRow(), 0);
    for (const char16_t* number : {u"0441112233", u"abc", u"1' OR '1'='1"}) {
        EXPECT_FALSE(order.SucheTelefonNummer(QString::fromUtf16(number)));
        EXPECT_EQ(order.detail(Detail::KundenNr), u"");
        EXPECT_FALSE(order.KundenAdresseShown());
        EXPECT_EQ(order.buttons(), OrderButtons{});
        EXPECT_EQ(order.LastFilledRow(), -1);
    }
}

TEST_F(OrderHead, takingACallFillsTheHeadAnew) {
    order.SucheTelefonNummer(QStringLiteral("0791234567"));
    order.setDetail(Detail::MWStNr, QString());
    order.FillFromCall(TestFirm::kAnna);
    EXPECT_EQ(order.lng_KundenID, TestFirm::kAnna);
    EXPECT_EQ(order.detail(Detail::KundenNr), u"1");
    EXPECT_EQ(order.detail(Detail::MWStNr), u"CHE-1");
    EXPECT_TRUE(order.KundenAdresseShown());
    EXPECT_EQ(order.buttons(), (OrderButtons{true, false, true, false, false, false}));
}

TEST_F(OrderHead, onlyCourierDeliveryAndConditionsCanBeEdited) {
    for (int row = 0; row < 3; ++row)
        for (int col = 0; col < 6; ++col) {
            const bool may = (row == 2 && (col == 1 || col == 3)) || (row > 0 && col == 5);
            EXPECT_EQ(order.BestellungDetailsGrid.mayEdit(row, col), may) << row << ' ' << col;
        }
    EXPECT_EQ(order.BestellungDetailsGrid.kind(1, 2), CellKind::Label);
    EXPECT_EQ(order.BestellungDetailsGrid.kind(1, 1), CellKind::ReadOnly);
    for (int row = 0; row < orders::TotalRow::Count; ++row)
        for (int col = 0; col < 3; ++col)
            EXPECT_EQ(order.BestellungTotalGrid.mayEdit(row, col),
                      row == orders::TotalRow::MWSt3 || col == 2);
    // A total that somebody overwrites is derived again at once.
    order.PickProdukt(TestFirm::kWein, QStringLiteral("W"), 1);
    EXPECT_TRUE(order.BestellungTotalGrid.endEdit(orders::TotalRow::Total, 2, QStringLiteral("1")));
    EXPECT_DOUBLE_EQ(order.total(orders::TotalRow::Total), 12);
}

TEST_F(OrderHead, typedCourierKeepsTheKeyChosenBefore) {
    order.ChooseKurier(TestFirm::kKurierCD, QStringLiteral("CD"));
    EXPECT_TRUE(type(Detail::Kurier, u"ab"));
    EXPECT_EQ(order.detail(Detail::Kurier), u"AB");
    EXPECT_EQ(order.lng_KurierID, TestFirm::kKurierCD);
    EXPECT_TRUE(type(Detail::Kurier, u"'X"));
    EXPECT_EQ(order.detail(Detail::Kurier), u"");
}

TEST_F(OrderHead, deliveryCellsRefuseWhatIsNoDate) {
    EXPECT_TRUE(type(Detail::Lieferzeit, u"19:15"));
    for (const char16_t* typed : {u"25:00", u"2400", u"1860", u"18", u"bald", u""})
        EXPECT_FALSE(type(Detail::Lieferzeit, typed));
    for (const char16_t* typed : {u"1830", u"18.30", u"18:30", u"18.10", u"715"}) {
        EXPECT_TRUE(type(Detail::Lieferzeit, typed));
        EXPECT_EQ(order.detail(Detail::Lieferzeit).size(), 5);
    }
    EXPECT_EQ(order.detail(Detail::Lieferzeit), u"07:15");
    EXPECT_TRUE(type(Detail::Lieferzeit, u"19:15"));
    EXPECT_EQ(order.detail(Detail::Lieferzeit), u"19:15");
    EXPECT_TRUE(type(Detail::Lieferung, u"1.6.26"));
    EXPECT_EQ(order.detail(Detail::Lieferung), u"01/06/2026");
    EXPECT_FALSE(type(Detail::Lieferung, u"31/02/2026"));
    EXPECT_EQ(order.detail(Detail::Lieferung), u"01/06/2026");
    EXPECT_TRUE(type(Detail::Konditionen, u"Rechnung 30 Tage, '%'"));
    EXPECT_EQ(order.detail(Detail::Konditionen), u"Rechnung 30 Tage, '%'");
}

TEST_F(OrderHead, clearingKeepsTheCourierButNotADeletedOrdersMark) {
    order.SucheTelefonNummer(QStringLiteral("0791234567"));
    order.ChooseKurier(TestFirm::kKurierCD, QStringLiteral("CD"));
    order.ChooseKonditionen(QStringLiteral("EC"));
    order.PickProdukt(TestFirm::kWein, QStringLiteral("W"), 1);
    order.ClearBestellungMaske();
    EXPECT_EQ(order.detail(Detail::Kurier), u"CD");
    EXPECT_EQ(order.lng_KurierID, TestFirm::kKurierCD);
    EXPECT_EQ(order.detail(Detail::Konditionen), u"Bar");
    EXPECT_EQ(order.detail(Detail::Datum), u"");
    EXPECT_EQ(order.KundenAdresse(), u"");
    EXPECT_EQ(order.total(orders::TotalRow::Total), 0);

    order.setDetail(Detail::Kurier, u"gelöscht");
    order.ClearBestellungMaske();
    EXPECT_EQ(order.detail(Detail::Kurier), u"AB");
    EXPECT_EQ(order.lng_KurierID, TestFirm::kKurierAB);
}

} // namespace
