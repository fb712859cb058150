#include "common/Clock.h"
#include "modules/OrderFixture.h"
#include "store/SystemSettings.h"

using namespace Qt::StringLiterals;
using orders::OrderButtons;
using platform::CellKind;
using test::TestFirm;
namespace Detail = orders::Detail;

namespace {

struct OrderHead : test::OrderTest {
    bool type(orders::DetailCell cell, const char16_t* typed) {
        return order.BestellungDetailsGrid.endEdit(cell.row, cell.column, QString::fromUtf16(typed));
    }
};

TEST_F(OrderHead, opensWithDefaults) {
    EXPECT_EQ(head({Detail::AuftragsNr, Detail::KundenNr, Detail::Kurier, Detail::Datum, Detail::MWStNr,
                    Detail::Konditionen}),
              u"1001||AB|15/Mai/2026|CHE-1|Bar");
    EXPECT_EQ(order.lng_KurierID, TestFirm::kKurierAB);
    EXPECT_EQ(order.BestellungTotalGrid.text(orders::TotalRow::MWSt1, 0), u"MWSt: 8.1%");
    EXPECT_EQ(order.BestellungTotalGrid.text(orders::TotalRow::Total, 1), u"CHF");
    ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_Kuriere"_s);
    order.SetUp();
    EXPECT_EQ(order.detail(Detail::Kurier), u"") << "without couriers there is no default";
    EXPECT_EQ(order.lng_KurierID, 0);
}

TEST_F(OrderHead, searchAndCallFillTheHead) {
    for (const auto& [number, id] : {std::pair{u"0791234567", TestFirm::kAnna},
                                     {u"0799999999", TestFirm::kBruno},
                                     {u" 791234567 ", TestFirm::kAnna}}) {
        EXPECT_TRUE(order.SucheTelefonNummer(QString::fromUtf16(number)));
        EXPECT_EQ(order.lng_KundenID, id);
        EXPECT_EQ(order.detail(Detail::KundenNr), QString::number(id));
        EXPECT_EQ(order.buttons(), (OrderButtons{false, true, true, false, false, false}));
    }
    EXPECT_TRUE(order.KundenAdresseShown());
    EXPECT_TRUE(order.KundenAdresse().startsWith(u"Muster AG\r\n"));
    const auto dates = [&] {
        return head({Detail::Datum, Detail::Bestellzeit, Detail::Lieferzeit, Detail::Lieferung});
    };
    EXPECT_EQ(dates(), u"15/Mai/2026|18:00|18:30|15/05/2026");
    // Date and time are of one moment, and the delivery's date stays that of today past midnight.
    common::clock::set(TestFirm::day() + common::timeSerial(23, 59, 59) + 0.9 / 86'400);
    callAnna();
    EXPECT_EQ(dates(), u"15/Mai/2026|23:59|00:29|15/05/2026");

    order.setDetail(Detail::MWStNr, QString());
    order.FillFromCall(TestFirm::kBruno);
    EXPECT_EQ(order.lng_KundenID, TestFirm::kBruno);
    EXPECT_EQ(head({Detail::KundenNr, Detail::MWStNr}), u"2|CHE-1");
    EXPECT_EQ(order.buttons(), (OrderButtons{true, false, true, false, false, false}));
}

TEST_F(OrderHead, deliveryCellsRefuseWhatIsNoDate) {
    callAnna();
    for (const auto& [cell, typed, shown] : {std::tuple<orders::DetailCell, const char16_t*, const char16_t*>{
                                                 Detail::Lieferzeit, u"19:15", u"19:15"},
                                             {Detail::Lieferzeit, u"25:00", u"19:15"},
                                             {Detail::Lieferzeit, u"2400", u"19:15"},
                                             {Detail::Lieferzeit, u"1860", u"19:15"},
                                             {Detail::Lieferzeit, u"18", u"19:15"},
                                             {Detail::Lieferzeit, u"", u"19:15"},
                                             {Detail::Lieferzeit, u"1830", u"18:30"},
                                             {Detail::Lieferzeit, u"18.10", u"18:10"},
                                             {Detail::Lieferzeit, u"715", u"07:15"},
                                             {Detail::Lieferung, u"1.6.26", u"01/06/2026"},
                                             {Detail::Lieferung, u"31/02/2026", u"01/06/2026"},
                                             {Detail::Konditionen, u"30 Tage, '%'", u"30 Tage, '%'"}}) {
        const QString before = order.detail(cell);
        EXPECT_EQ(type(cell, typed), before != shown) << QString::fromUtf16(typed).toStdString();
        EXPECT_EQ(order.detail(cell), shown);
    }
}

TEST_F(OrderHead, clearingKeepsTheCourierButNotADeletedOrdersMark) {
    callAnna();
    order.ChooseKurier(TestFirm::kKurierCD, u"CD"_s);
    order.ChooseKonditionen(u"EC"_s);
    pickWein();
    order.ClearBestellungMaske();
    EXPECT_EQ(head({Detail::Kurier, Detail::Konditionen, Detail::Datum}), u"CD|Bar|");
    EXPECT_EQ(order.lng_KurierID, TestFirm::kKurierCD);
    EXPECT_EQ(order.KundenAdresse(), u"");
    EXPECT_EQ(total(), 0);
    order.setDetail(Detail::Kurier, u"gelöscht");
    order.ClearBestellungMaske();
    EXPECT_EQ(order.detail(Detail::Kurier), u"AB");
    EXPECT_EQ(order.lng_KurierID, TestFirm::kKurierAB);
}

TEST_F(OrderHead, unknownNumberLeavesAnEmptyOrder) {
    callAnna();
    pickWein();
    // A blank number is no search and touches nothing.
    EXPECT_FALSE(order.SucheTelefonNummer(u"  "_s));
    EXPECT_EQ(order.LastFilledRow(), 0);
    for (const char16_t* number : {u"0441112233", u"abc", u"1' OR '1'='1"}) {
        EXPECT_FALSE(order.SucheTelefonNummer(QString::fromUtf16(number)));
        EXPECT_EQ(order.detail(Detail::KundenNr), u"");
        EXPECT_FALSE(order.KundenAdresseShown());
        EXPECT_EQ(order.buttons(), OrderButtons{});
        EXPECT_EQ(order.LastFilledRow(), -1);
    }
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
    pickWein();
    EXPECT_TRUE(order.BestellungTotalGrid.endEdit(orders::TotalRow::Total, 2, u"1"_s));
    EXPECT_DOUBLE_EQ(total(), 12);
}

TEST_F(OrderHead, typedCourierKeepsTheKeyChosenBefore) {
    order.ChooseKurier(TestFirm::kKurierCD, u"CD"_s);
    EXPECT_TRUE(type(Detail::Kurier, u"ab"));
    EXPECT_EQ(order.detail(Detail::Kurier), u"AB");
    EXPECT_EQ(order.lng_KurierID, TestFirm::kKurierCD);
    EXPECT_TRUE(type(Detail::Kurier, u"'X"));
    EXPECT_EQ(order.detail(Detail::Kurier), u"");
}

} // namespace
