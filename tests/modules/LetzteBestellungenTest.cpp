#include "modules/OrderFixture.h"
#include "orders/modLetzteBestellungen.h"
#include "support/ServerFirm.h"
#include "support/StatementLog.h"

using namespace modLetzteBestellungen;
using namespace Qt::StringLiterals;
using orders::Col;
using test::TestFirm;

namespace {

struct LetzteBestellungen : test::OrderTest {
    /// Wine with a discount, a pizza with cheese, two packs of beer; gives its number.
    qint64 book(const QString& caller = u"0791234567"_s) {
        order.SucheTelefonNummer(caller);
        pickWein(2);
        order.SetRabattBestellung(10);
        pickPizza();
        pickKaese();
        order.PickProdukt(TestFirm::kBier, u"O'N5%"_s, 12);
        return OrderTest::book();
    }

    /// The filled rows, each as "quantity name price".
    QStringList lines() const {
        QStringList result;
        for (int row = 0; row <= order.LastFilledRow(); ++row)
            result << line(row, {Col::Anzahl, Col::Bezeichnung, Col::Preis}).replace(u'|', u' ');
        return result;
    }
};

TEST_F(LetzteBestellungen, AreTheCustomersOwnTheNewestFirst) {
    if (test::stand() == test::Stand::Server)
        GTEST_SKIP() << "of the file";
    book();
    const qint64 older = book();
    const qint64 newest = book();
    modAuftragswesenAuftragserfassung::DeleteBestellung(book(), {});
    book(u"0799999999"_s);
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte SET txt_Produkt = 'Rotwein' WHERE lng_ID = 3"_s);
    ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_Produkte WHERE lng_ID = 5"_s);

    const test::StatementLog log(ConnMain);
    const auto orders = LoadLetzteBestellungen(TestFirm::kAnna, 2);
    EXPECT_FALSE(test::planOf(ConnMain, log.statements().at(0)).join(u' ').contains(u"TEMP B-TREE"))
        << "reads all orders of the customer to sort them";
    ASSERT_EQ(orders.size(), 2u);
    EXPECT_EQ(orders[0].lng_TrxNr, newest);
    EXPECT_EQ(orders[1].lng_TrxNr, older);
    EXPECT_EQ(orders[0].positionen, (QStringList{u"2x Rotwein"_s, u"1x Pizza + Käse"_s, u"12x gelöscht"_s}));
    EXPECT_DOUBLE_EQ(orders[0].dbl_TotalMitMWSt, 24 - 2.4 + 14 + 2 + 36);
    EXPECT_DOUBLE_EQ(orders[0].bestellt.value(), TestFirm::day() + 0.75);
    EXPECT_TRUE(LoadLetzteBestellungen(TestFirm::kClara, 2).empty());
}

TEST_F(LetzteBestellungen, ComeBackAsIfPickedToday) {
    const qint64 number = book();
    order.PreisGruppe = 2;
    order.PickProdukt(TestFirm::kGutschein, u"G"_s, 1);
    // A name that nothing is called by leaves a row that a pick would fill: extras would miss their product.
    order.BestellungGrid.endEdit(1, Col::Bezeichnung, u"Spezialwunsch"_s);
    const auto leftOut = UebernehmeBestellung(order, number);
    EXPECT_TRUE(leftOut.nichtImAngebot.isEmpty() && leftOut.keinPlatz.isEmpty());
    EXPECT_EQ(lines(), (QStringList{u"1 Gutschein 21"_s, u"0 Spezialwunsch 0"_s, u"2 Wein 26"_s,
                                    u"1 Pizza 15"_s, u"1 Käse 3"_s, u"12 O'Neill's 38"_s}));
    EXPECT_DOUBLE_EQ(total(), 21 + 26 + 15 + 3 + 38) << "without the discount";
    EXPECT_EQ(text(4, Col::ProduktID), QString::number(TestFirm::kMargherita));
    EXPECT_EQ(text(4, Col::AnzahlIntern), u"0");
    EXPECT_EQ(text(5, Col::AnzahlIntern), u"12");
}

TEST_F(LetzteBestellungen, WhatIsNoLongerSoldIsNamed) {
    const qint64 number = book();

    const std::tuple<const char16_t*, QStringList> cases[] = {
        {u"UPDATE tbl_Verwaltung_Produkte SET flag_Status = True WHERE lng_ID = 2",
         {u"1x Pizza"_s, u"1x Käse"_s}}, // the extra goes with its product
        {u"UPDATE tbl_Verwaltung_Produkte SET flag_Status = False WHERE lng_ID = 2", {}},
        {u"UPDATE tbl_Verwaltung_ProdukteExtras SET flag_Status = True WHERE lng_ID = 2", {u"1x Käse"_s}},
        {u"DELETE FROM tbl_Verwaltung_ProdukteExtras WHERE lng_ID = 2", {u"1x gelöscht"_s}},
        {u"UPDATE tbl_Verwaltung_Produkte SET flag_Status = True WHERE lng_ID = 2",
         {u"1x Pizza"_s, u"1x gelöscht"_s}},
        {u"DELETE FROM tbl_Verwaltung_Produkte_Preise WHERE lng_ProduktID = 3 AND lng_Gruppe = 1",
         {u"2x Wein"_s, u"1x Pizza"_s, u"1x gelöscht"_s}}};
    for (const auto& [change, leftOut] : cases) {
        ConnMain.Execute(QString::fromUtf16(change));
        order.ClearBestellungMaske();
        EXPECT_EQ(UebernehmeBestellung(order, number).nichtImAngebot, leftOut);
        EXPECT_EQ(lines().size() + leftOut.size(), 4);
        EXPECT_EQ(lines().last(), u"12 O'Neill's 36");
    }
}

TEST_F(LetzteBestellungen, WhatAFullOrderHasNoRoomForIsNamed) {
    const qint64 number = book();
    for (int row = 0; row < orders::kOrderRows - 2; ++row)
        order.PickProdukt(TestFirm::kGutschein, u"G"_s, 1);
    EXPECT_EQ(UebernehmeBestellung(order, number).keinPlatz, (QStringList{u"1x Käse"_s, u"12x O'Neill's"_s}));
    EXPECT_EQ(lines().mid(98), (QStringList{u"2 Wein 24"_s, u"1 Pizza 14"_s}));
    EXPECT_EQ(UebernehmeBestellung(order, number).keinPlatz.size(), 4);
}

} // namespace
