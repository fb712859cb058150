#include "common/Convert.h"
#include "orders/WorkingOrder.h"
#include "orders/modAuftragswesenAuftragserfassung.h"
#include "store/SystemSettings.h"
#include "support/TestFirm.h"
#include <gtest/gtest.h>

using orders::Col;
using orders::SucheModus;
using orders::TotalRow;
using test::TestFirm;

namespace {

struct OrderLines : testing::Test {
    OrderLines() {
        order.SetUp();
        QObject::connect(&order, &orders::WorkingOrder::ExtrasOffered,
                         [this](qint64 id) { offered.push_back(id); });
    }

    double number(int row, int col) const { return order.BestellungGrid.number(row, col); }

    QString text(int row, int col) const { return order.BestellungGrid.text(row, col); }

    bool type(int row, int col, const char16_t* typed) {
        return order.BestellungGrid.endEdit(row, col, QString::fromUtf16(typed));
    }

    QStringList names(int rows) const {
        QStringList list;
        for (int row = 0; row < rows; ++row)
            list << text(row, Col::Bezeichnung);
        return list;
    }

    void pickWein(double anzahl = 1) { order.PickProdukt(TestFirm::kWein, QStringLiteral("W"), anzahl); }

    void pickPizza() { order.PickProdukt(TestFirm::kMargherita, QStringLiteral("1"), 1); }

    void pickKaese() { order.PickExtra(TestFirm::kKaese, QStringLiteral(u"Käse"), 1); }

    void pickKnoblauch() { order.PickExtra(TestFirm::kKnoblauch, QStringLiteral("Knoblauch"), 1); }

    TestFirm firm;
    orders::WorkingOrder order;
    std::vector<qint64> offered;
};

TEST_F(OrderLines, pickedProductComesWithItsPriceAndExtras) {
    order.PickProdukt(TestFirm::kBier, QStringLiteral("O'N5%"), 12);
    EXPECT_EQ(text(0, Col::Kurzzeichen), u"O'N5%");
    EXPECT_EQ(text(0, Col::Bezeichnung), u"O'Neill's");
    EXPECT_EQ(text(0, Col::Ccy), u"CHF");
    EXPECT_EQ(number(0, Col::IsProdukt), 1);
    EXPECT_EQ(number(0, Col::ExtraID), -1);
    EXPECT_EQ(number(0, Col::EinheitAnzahl), 6);
    // 18.00 is the price of a pack of six.
    EXPECT_EQ(number(0, Col::Anzahl), 12);
    EXPECT_EQ(number(0, Col::AnzahlIntern), 12);
    EXPECT_DOUBLE_EQ(number(0, Col::Preis), 36);
    EXPECT_DOUBLE_EQ(number(0, Col::PreisOhneMWSt), 36 / 1.081);
    EXPECT_EQ(offered, std::vector<qint64>{TestFirm::kBier});
}

TEST_F(OrderLines, extrasHangUnderTheirProduct) {
    order.PickExtra(TestFirm::kKaese, QStringLiteral(u"Käse"), 1);
    EXPECT_EQ(order.FirstEmptyRow(), 0);
    // The refused pick leaves no trace in the next lookup.
    EXPECT_TRUE(type(0, Col::Kurzzeichen, u"W"));
    EXPECT_EQ(text(0, Col::Bezeichnung), u"Wein");

    pickPizza();
    order.PickExtra(TestFirm::kKaese, QStringLiteral(u"Käse"), 2);
    pickKnoblauch();
    EXPECT_EQ(text(2, Col::Bezeichnung), u"Käse");
    EXPECT_EQ(number(2, Col::ProduktID), TestFirm::kMargherita);
    EXPECT_EQ(number(2, Col::ExtraID), TestFirm::kKaese);
    EXPECT_EQ(number(2, Col::IsProdukt), 0);
    EXPECT_EQ(number(2, Col::Anzahl), 2);
    EXPECT_EQ(number(2, Col::AnzahlIntern), 0);
    EXPECT_DOUBLE_EQ(number(2, Col::Preis), 4);
    EXPECT_EQ(number(3, Col::ProduktID), TestFirm::kMargherita);
    EXPECT_DOUBLE_EQ(order.total(TotalRow::Total), 12 + 14 + 4);
}

TEST_F(OrderLines, keyedTextsFindTheirArticle) {
    struct Case {
        int col;
        const char16_t* typed;
        const char16_t* found;
    };

    for (const Case& c :
         {Case{Col::Kurzzeichen, u"1", u"Pizza"}, Case{Col::Kurzzeichen, u"10", u"Pizza Hawaii"},
          Case{Col::Kurzzeichen, u"w", u"Wein"}, Case{Col::Kurzzeichen, u"O'", u"O'Neill's"},
          Case{Col::Kurzzeichen, u"O'N5%", u"O'Neill's"}, Case{Col::Bezeichnung, u"pizza", u"Pizza"},
          Case{Col::Bezeichnung, u"Pizza H", u"Pizza Hawaii"},
          Case{Col::Bezeichnung, u"O'Neill's", u"O'Neill's"}, Case{Col::Kurzzeichen, u"ZZ", u""},
          Case{Col::Kurzzeichen, u"", u""}, Case{Col::Kurzzeichen, u"'; DELETE", u""},
          // An extra's name needs a line above, and a short code never finds one.
          Case{Col::Kurzzeichen, u"Knoblauch", u""}, Case{Col::Bezeichnung, u"Knob", u"Knob"}}) {
        order.ClearBestellungMaske();
        EXPECT_TRUE(type(0, c.col, c.typed));
        EXPECT_EQ(text(0, Col::Bezeichnung), QString::fromUtf16(c.found))
            << QString::fromUtf16(c.typed).toStdString();
        EXPECT_EQ(order.suche, SucheModus::Keyed);
    }
    EXPECT_EQ(text(0, Col::Ccy), u"");
    EXPECT_EQ(order.total(TotalRow::Total), 0);
}

TEST_F(OrderLines, exactNameComesFirstInWhateverOrderTheStoreDelivers) {
    for (const char16_t* index : {u"idx_Produkte_Kurzzeichen", u"idx_Produkte_Produkt", u"idx_Extras_Extra"})
        ConnMain.Execute(QStringLiteral("DROP INDEX ") + QString::fromUtf16(index));
    type(0, Col::Kurzzeichen, u"1");
    EXPECT_EQ(number(0, Col::ProduktID), TestFirm::kMargherita);
    pickKaese();
    EXPECT_EQ(text(1, Col::Bezeichnung), u"Käse");
    // A beginning that is nobody's name takes the first row.
    type(2, Col::Bezeichnung, u"Pizz");
    EXPECT_EQ(number(2, Col::ProduktID), TestFirm::kHawaii);
}

TEST_F(OrderLines, keyedExtraIsThatOfAPick) {
    pickPizza();
    pickKaese();
    type(2, Col::Bezeichnung, u"Käse");
    for (int col = 0; col < Col::Count; ++col)
        EXPECT_EQ(text(2, col), text(1, col)) << col;
}

TEST_F(OrderLines, aLineKeyedAnewIsAFreshOne) {
    pickWein();
    type(0, Col::Rabatt, u"5");
    type(0, Col::Anzahl, u"0");
    type(0, Col::Kurzzeichen, u"W");
    EXPECT_DOUBLE_EQ(number(0, Col::Preis), 12) << "also after a quantity of 0";
    type(0, Col::Rabatt, u"5");
    type(0, Col::Kurzzeichen, u"10");
    EXPECT_EQ(number(0, Col::Rabatt), 0);
    EXPECT_DOUBLE_EQ(order.total(TotalRow::Total), 16.5);
}

TEST_F(OrderLines, noAmountStandsWithoutANameThatIsStored) {
    pickWein();
    pickPizza();
    pickKaese();
    for (const int col : {Col::Kurzzeichen, Col::Bezeichnung})
        for (int row = 0; row < 2; ++row)
            EXPECT_FALSE(type(row, col, u" "));
    EXPECT_FALSE(type(2, Col::Bezeichnung, u""));
    EXPECT_TRUE(type(2, Col::Kurzzeichen, u"")) << "an extra has no code to lose";
    EXPECT_EQ(names(3),
              (QStringList{QStringLiteral("Wein"), QStringLiteral("Pizza"), QStringLiteral(u"Käse")}));
    EXPECT_DOUBLE_EQ(order.total(TotalRow::Total), 28);
    for (const int col : {Col::Preis, Col::Rabatt, Col::MWSt}) {
        EXPECT_FALSE(order.BestellungGrid.mayEdit(3, col));
        EXPECT_TRUE(order.BestellungGrid.mayEdit(2, col));
    }
    // What the catalogue does not know can be written by hand, and taken away again while it costs nothing.
    type(3, Col::Bezeichnung, u"Kuchen");
    EXPECT_TRUE(type(3, Col::Bezeichnung, u""));
    type(3, Col::Bezeichnung, u"Kuchen");
    type(3, Col::Preis, u"4");
    EXPECT_FALSE(type(3, Col::Bezeichnung, u""));
    EXPECT_DOUBLE_EQ(order.total(TotalRow::Total), 32);
}

TEST_F(OrderLines, numbersThatATillCannotMeanAreRefused) {
    struct Case {
        int col;
        const char16_t* typed;
        bool taken;
    };

    for (const Case& c :
         {Case{Col::Anzahl, u"1e308", false}, Case{Col::Anzahl, u"100001", false},
          Case{Col::Anzahl, u"1e-9", false}, Case{Col::Anzahl, u"90000", false},
          Case{Col::Anzahl, u"-2", true}, Case{Col::Anzahl, u"0.5", true},
          Case{Col::Preis, u"1000000.05", false}, Case{Col::Preis, u"1000000", true},
          Case{Col::Preis, u"-1e300", false}, Case{Col::Rabatt, u"1e300", false},
          Case{Col::MWSt, u"-100", false}, Case{Col::MWSt, u"100.5", false}, Case{Col::MWSt, u"100", true}}) {
        order.ClearBestellungMaske();
        pickWein();
        EXPECT_EQ(type(0, c.col, c.typed), c.taken) << QString::fromUtf16(c.typed).toStdString();
        if (!c.taken) {
            EXPECT_DOUBLE_EQ(order.total(TotalRow::Total), 12);
            EXPECT_EQ(number(0, Col::Anzahl), 1);
        }
    }
}

TEST_F(OrderLines, priceGroupChangesOnlyWhatComesLater) {
    pickPizza();
    order.PreisGruppe = 3;
    pickPizza();
    pickKaese();
    EXPECT_DOUBLE_EQ(number(0, Col::Preis), 14);
    EXPECT_DOUBLE_EQ(number(1, Col::Preis), 16);
    EXPECT_DOUBLE_EQ(number(2, Col::Preis), 4);
    // An extra taken by its key comes without a price group.
    order.suche = SucheModus::Extra;
    order.BestellungGrid.setCell(3, Col::ExtraID, TestFirm::kKaese);
    order.BestellungGrid_Change(3, Col::ProduktID);
    EXPECT_DOUBLE_EQ(number(3, Col::Preis), 2);
}

TEST_F(OrderLines, aFullOrderTakesNoMore) {
    for (int row = 0; row < orders::kOrderRows; ++row)
        order.BestellungGrid.setCell(row, Col::Ccy, QStringLiteral("CHF"));
    pickPizza();
    pickKaese();
    EXPECT_EQ(order.LastFilledRow(), -1);
}

TEST_F(OrderLines, quantityScalesThePriceAndNotTheDiscount) {
    pickWein(2);
    type(0, Col::Preis, u"10.00");
    type(0, Col::Rabatt, u"1.00");
    EXPECT_TRUE(type(0, Col::Anzahl, u"3"));
    EXPECT_DOUBLE_EQ(number(0, Col::Preis), 15);
    EXPECT_DOUBLE_EQ(number(0, Col::Rabatt), 1);
    EXPECT_DOUBLE_EQ(number(0, Col::PreisOhneMWSt), 14 / 1.081);
    EXPECT_EQ(number(0, Col::AnzahlIntern), 3);
    // Neither an empty editor nor a text changes the quantity.
    EXPECT_TRUE(type(0, Col::Anzahl, u""));
    EXPECT_FALSE(type(0, Col::Anzahl, u"zwei"));
    EXPECT_EQ(number(0, Col::Anzahl), 3);
    EXPECT_DOUBLE_EQ(number(0, Col::Preis), 15);
}

TEST_F(OrderLines, quantityZeroLosesThePriceUntilOneIsTyped) {
    order.PickProdukt(TestFirm::kBier, QStringLiteral("O'N5%"), 6);
    type(0, Col::Rabatt, u"2");
    type(0, Col::Anzahl, u"0");
    for (const int col : {Col::Anzahl, Col::Preis, Col::Rabatt, Col::PreisOhneMWSt})
        EXPECT_EQ(number(0, col), 0) << col;
    EXPECT_EQ(order.total(TotalRow::Total), 0);
    type(0, Col::Anzahl, u"3");
    EXPECT_EQ(number(0, Col::Preis), 0);
    type(0, Col::Anzahl, u"0");
    type(0, Col::Preis, u"9");
    EXPECT_EQ(number(0, Col::Anzahl), 6);
    EXPECT_DOUBLE_EQ(order.total(TotalRow::Total), 9);
}

TEST_F(OrderLines, typedAmountsAreRoundedAndTheNetDerived) {
    SysMWStSatz1 = 8;
    pickWein();
    EXPECT_DOUBLE_EQ(number(0, Col::PreisOhneMWSt), 12 / 1.08);
    EXPECT_DOUBLE_EQ(order.total(TotalRow::MWSt1), 12 - 12 / 1.08);
    type(0, Col::Preis, u"12");
    EXPECT_EQ(number(0, Col::PreisOhneMWSt), 11.11);
    type(0, Col::Preis, u"12.379");
    EXPECT_EQ(number(0, Col::Preis), 12.35);
    type(0, Col::MWSt, u"0");
    EXPECT_EQ(number(0, Col::PreisOhneMWSt), 12.35);
}

TEST_F(OrderLines, discountOfTheOrderReplacesThatOfTheLines) {
    SysMWStSatz1 = 8;
    pickWein();
    type(0, Col::Preis, u"12.30");
    type(0, Col::Rabatt, u"5");
    pickPizza();
    pickKnoblauch();
    order.SetRabattBestellung(10);
    EXPECT_EQ(number(0, Col::Rabatt), 1.25);
    EXPECT_EQ(number(0, Col::PreisOhneMWSt), 10.23);
    EXPECT_EQ(number(1, Col::Rabatt), 1.4);
    // A line without a price has no discount, and its quantity stays.
    EXPECT_EQ(number(2, Col::Rabatt), 0);
    EXPECT_DOUBLE_EQ(order.total(TotalRow::Total), 12.3 - 1.25 + 14 - 1.4);
    order.SetRabattBestellung(0);
    EXPECT_DOUBLE_EQ(order.total(TotalRow::Total), 26.3);
}

TEST_F(OrderLines, totalsTakeTheVatOutOfThePrice) {
    pickWein();
    pickPizza();
    order.PickProdukt(TestFirm::kGutschein, QStringLiteral("G"), 1);
    EXPECT_DOUBLE_EQ(order.total(TotalRow::Summe), 12 / 1.081 + 14 / 1.026 + 20);
    EXPECT_DOUBLE_EQ(order.total(TotalRow::MWSt1), 12 - 12 / 1.081);
    EXPECT_DOUBLE_EQ(order.total(TotalRow::MWSt3), 14 - 14 / 1.026);
    EXPECT_DOUBLE_EQ(order.total(TotalRow::Total), 46);

    order.SetMWStSatzBestellung(0);
    EXPECT_EQ(order.total(TotalRow::MWSt1), 0);
    EXPECT_EQ(order.total(TotalRow::MWSt3), 0);
    EXPECT_DOUBLE_EQ(order.total(TotalRow::Summe), 46);
    // Rows that are empty keep out of it.
    EXPECT_EQ(number(3, Col::Anzahl), 0);
}

TEST_F(OrderLines, equalRatesCountInBothRowsOfTheVat) {
    SysMWStSatz3 = SysMWStSatz1;
    pickWein();
    EXPECT_DOUBLE_EQ(order.total(TotalRow::MWSt1), order.total(TotalRow::MWSt3));
    EXPECT_DOUBLE_EQ(order.total(TotalRow::Total), 12);
}

TEST_F(OrderLines, vatCodes) {
    using modAuftragswesenAuftragserfassung::GetMWStSatz;
    EXPECT_EQ(GetMWStSatz(0), 8.1);
    EXPECT_EQ(GetMWStSatz(1), 2.6);
    EXPECT_EQ(GetMWStSatz(2), 0);
    EXPECT_EQ(GetMWStSatz(3), 0);
    EXPECT_EQ(GetMWStSatz({}), 0);
}

TEST_F(OrderLines, aProductTakesItsExtrasAlong) {
    pickPizza();
    pickKaese();
    pickKnoblauch();
    pickWein();
    pickPizza();
    pickKaese();
    order.BestellungGrid.requestDelete(0);
    EXPECT_EQ(names(4), (QStringList{QStringLiteral("Wein"), QStringLiteral("Pizza"), QStringLiteral(u"Käse"),
                                     QString()}));
    EXPECT_DOUBLE_EQ(order.total(TotalRow::Total), 12 + 14 + 2);
    order.RemoveLine(2);
    EXPECT_EQ(names(3), (QStringList{QStringLiteral("Wein"), QStringLiteral("Pizza"), QString()}));
    EXPECT_EQ(order.BestellungGrid.rows(), 100);
    for (int row = 2; row < 100; ++row) {
        EXPECT_EQ(number(row, Col::IsProdukt), 0);
        EXPECT_EQ(number(row, Col::EinheitAnzahl), 1);
    }
    order.RemoveLine(100);
    order.RemoveLine(-1);
    EXPECT_EQ(order.LastFilledRow(), 1);
}

TEST_F(OrderLines, catalogueOffersWhatIsActive) {
    using namespace modAuftragswesenAuftragserfassung;
    const auto column = [](const QString& sql, const QString& name) {
        QStringList values;
        store::OpenRecordset rows(RsMain, sql, ConnMain);
        for (; !rows->Eof(); rows->MoveNext())
            values << rows->Fields(name).text();
        return values;
    };
    const auto kategorien = LoadKategorien();
    ASSERT_EQ(kategorien.size(), 2u);
    EXPECT_EQ(kategorien[0].txt_ProduktGruppe, u"Pizza");
    ConnMain.Execute(
        QStringLiteral("UPDATE tbl_Verwaltung_Produkte SET flag_Status = True WHERE lng_ID = 1"));
    EXPECT_EQ(column(ProdukteSql(2, 4), QStringLiteral("txt_Kurzzeichen")), QStringList{QStringLiteral("1")});
    EXPECT_TRUE(column(ProdukteSql({}, 1), QStringLiteral("txt_Kurzzeichen")).isEmpty());
    EXPECT_EQ(column(ExtrasSql(TestFirm::kMargherita), QStringLiteral("txt_Extra")),
              (QStringList{QStringLiteral("Knoblauch"), QStringLiteral(u"Käse")}));
}

} // namespace
