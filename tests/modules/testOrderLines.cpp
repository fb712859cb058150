#include "modules/OrderFixture.h"
#include "store/SystemSettings.h"
#include "support/ServerFirm.h"

using namespace Qt::StringLiterals;
using orders::Col;
using orders::SucheModus;
using orders::TotalRow;
using test::TestFirm;

namespace {

struct OrderLines : test::OrderTest {
    bool type(int row, int col, const char16_t* typed) {
        return order.BestellungGrid.endEdit(row, col, QString::fromUtf16(typed));
    }

    void pickKnoblauch() { order.PickExtra(TestFirm::kKnoblauch, u"Knoblauch"_s, 1); }
};

TEST_F(OrderLines, aPickComesWithItsPriceAndAnExtraUnderItsProduct) {
    QList<qint64> offered;
    QObject::connect(&order, &orders::WorkingOrder::ExtrasOffered, [&](qint64 id) { offered << id; });
    EXPECT_EQ(order.PickExtra(TestFirm::kKaese, u"Käse"_s, 1), -1);
    // The refused pick leaves no trace in the next lookup.
    EXPECT_TRUE(type(0, Col::Kurzzeichen, u"W"));
    // 18.00 is the price of a pack of six.
    order.PickProdukt(TestFirm::kBier, u"O'N5%"_s, 12);
    EXPECT_EQ(offered, (QList<qint64>{TestFirm::kWein, TestFirm::kBier}));
    EXPECT_DOUBLE_EQ(number(1, Col::PreisOhneMWSt), 36 / 1.081);
    pickPizza();
    order.PickExtra(TestFirm::kKaese, u"Käse"_s, 2);
    pickKnoblauch();
    const auto lineOf = [&](int row) {
        return line(row,
                    {Col::Kurzzeichen, Col::Anzahl, Col::AnzahlIntern, Col::EinheitAnzahl, Col::Bezeichnung,
                     Col::Ccy, Col::Preis, Col::ProduktID, Col::IsProdukt, Col::ExtraID});
    };
    EXPECT_EQ(lineOf(0), u"W|1|1|1|Wein|CHF|12|3|1|-1");
    EXPECT_EQ(lineOf(1), u"O'N5%|12|12|6|O'Neill's|CHF|36|5|1|-1");
    EXPECT_EQ(lineOf(3), u"|2|0|1|Käse|CHF|4|2|0|2");
    EXPECT_EQ(lineOf(4), u"|1|0|1|Knoblauch|CHF|0|2|0|3");
    EXPECT_DOUBLE_EQ(total(), 12 + 36 + 14 + 4);
    // Typed by its name it is that of a pick.
    type(5, Col::Bezeichnung, u"Knoblauch");
    for (int col = 0; col < Col::Count; ++col)
        EXPECT_EQ(text(5, col), text(4, col)) << col;
    for (int row = 6; row < orders::kOrderRows; ++row)
        order.BestellungGrid.setCell(row, Col::Ccy, u"CHF"_s);
    EXPECT_EQ(order.PickProdukt(TestFirm::kWein, u"W"_s, 1), -1) << "full";
    EXPECT_EQ(order.PickExtra(TestFirm::kKaese, u"Käse"_s, 1), -1);
}

TEST_F(OrderLines, priceGroupChangesOnlyWhatComesLater) {
    pickPizza();
    order.PreisGruppe = 3;
    pickPizza();
    pickKaese();
    // An extra taken by its key comes without a price group.
    order.suche = SucheModus::Extra;
    order.BestellungGrid.setCell(3, Col::ExtraID, TestFirm::kKaese);
    order.BestellungGrid_Change(3, Col::ProduktID);
    for (const auto& [row, price] : {std::pair{0, 14}, {1, 16}, {2, 4}, {3, 2}})
        EXPECT_DOUBLE_EQ(number(row, Col::Preis), price) << row;
}

TEST_F(OrderLines, aProductTakesItsExtrasAlong) {
    pickPizza();
    pickKaese();
    pickKnoblauch();
    pickWein();
    pickPizza();
    pickKaese();
    order.BestellungGrid.requestDelete(0);
    EXPECT_EQ(names(4), u"Wein|Pizza|Käse|");
    EXPECT_DOUBLE_EQ(total(), 12 + 14 + 2);
    for (const int row : {2, 100, -1})
        order.RemoveLine(row);
    EXPECT_EQ(names(3), u"Wein|Pizza|");
    EXPECT_EQ(order.BestellungGrid.rows(), 100);
    for (int row = 2; row < 100; ++row)
        EXPECT_EQ(line(row, {Col::IsProdukt, Col::EinheitAnzahl}), u"0|1");
}

TEST_F(OrderLines, keyedTextsFindTheirArticle) {
    for (const auto& [col, typed, found] :
         {std::tuple<int, const char16_t*, const char16_t*>{Col::Kurzzeichen, u"1", u"Pizza"},
          {Col::Kurzzeichen, u"10", u"Pizza Hawaii"},
          {Col::Kurzzeichen, u"w", u"Wein"},
          {Col::Kurzzeichen, u"O'", u"O'Neill's"},
          {Col::Kurzzeichen, u"O'N5%", u"O'Neill's"},
          {Col::Bezeichnung, u"pizza", u"Pizza"},
          {Col::Bezeichnung, u"Pizza H", u"Pizza Hawaii"},
          {Col::Bezeichnung, u"O'Neill's", u"O'Neill's"},
          {Col::Kurzzeichen, u"ZZ", u""},
          {Col::Kurzzeichen, u"", u""},
          {Col::Kurzzeichen, u"'; DELETE", u""},
          // An extra's name needs a line above, and a short code never finds one.
          {Col::Kurzzeichen, u"Knoblauch", u""},
          {Col::Bezeichnung, u"Knob", u"Knob"}}) {
        order.ClearBestellungMaske();
        EXPECT_TRUE(type(0, col, typed));
        EXPECT_EQ(text(0, Col::Bezeichnung), QString::fromUtf16(found))
            << QString::fromUtf16(typed).toStdString();
        EXPECT_EQ(order.suche, SucheModus::Keyed);
    }
    EXPECT_EQ(text(0, Col::Ccy), u"");
    EXPECT_EQ(total(), 0);
}

TEST_F(OrderLines, exactNameComesFirstInWhateverOrderTheStoreDelivers) {
    if (test::stand() != test::Stand::File)
        GTEST_SKIP() << "of the file";
    for (const char16_t* index : {u"idx_Produkte_Kurzzeichen", u"idx_Produkte_Produkt", u"idx_Extras_Extra"})
        ConnMain.Execute(u"DROP INDEX "_s + QString::fromUtf16(index));
    type(0, Col::Kurzzeichen, u"1");
    EXPECT_EQ(number(0, Col::ProduktID), TestFirm::kMargherita);
    pickKaese();
    EXPECT_EQ(text(1, Col::Bezeichnung), u"Käse");
    // A beginning that is nobody's name takes the first name.
    type(2, Col::Bezeichnung, u"Pizz");
    EXPECT_EQ(number(2, Col::ProduktID), TestFirm::kMargherita);
}

TEST_F(OrderLines, aNamelessArticleIsNotFoundAndNoMoreAreOfferedThanAskedFor) {
    for (const auto& [name, id] : {std::pair{u""_s, TestFirm::kMargherita}, {u"Kaffee"_s, TestFirm::kWein}})
        ConnMain.Execute(
            u"UPDATE tbl_Verwaltung_Produkte SET txt_Produkt = '%1' WHERE lng_ID = %2"_s.arg(name).arg(id));
    type(0, Col::Kurzzeichen, u"1");
    EXPECT_EQ(number(0, Col::ProduktID), TestFirm::kHawaii);
    for (const auto& [most, offered] :
         {std::pair{1, u"Kaffee"_s}, {2, u"Kaffee Käse"_s}, {8, u"Kaffee Käse Käsesauce Knoblauch"_s}}) {
        QStringList found;
        for (const orders::Artikel& artikel : order.FindAngebote(1, Col::Bezeichnung, u"K"_s, most))
            found << artikel.name;
        EXPECT_EQ(found.join(u' '), offered);
    }
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
    EXPECT_DOUBLE_EQ(total(), 16.5);
    pickWein();
    type(1, Col::Rabatt, u"5");
    type(1, Col::Bezeichnung, u"Käse");
    EXPECT_DOUBLE_EQ(total(), 16.5 + 2) << "nor does an extra keep its row's discount";
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
    EXPECT_EQ(names(3), u"Wein|Pizza|Käse");
    EXPECT_DOUBLE_EQ(total(), 28);
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
    EXPECT_DOUBLE_EQ(total(), 32);
}

TEST_F(OrderLines, numbersThatATillCannotMeanAreRefused) {
    const std::tuple<int, const char16_t*, bool> cases[] = {
        {Col::Anzahl, u"1e308", false},     {Col::Anzahl, u"100001", false}, {Col::Anzahl, u"1e-9", false},
        {Col::Anzahl, u"90000", false},     {Col::Anzahl, u"-2", true},      {Col::Anzahl, u"0.5", true},
        {Col::Preis, u"1000000.05", false}, {Col::Preis, u"1000000", true},  {Col::Preis, u"-1e300", false},
        {Col::Rabatt, u"1e300", false},     {Col::MWSt, u"-100", false},     {Col::MWSt, u"100.5", false},
        {Col::MWSt, u"100", true}};
    for (const auto& [col, typed, taken] : cases) {
        order.ClearBestellungMaske();
        pickWein();
        EXPECT_EQ(type(0, col, typed), taken) << QString::fromUtf16(typed).toStdString();
        if (!taken) {
            EXPECT_DOUBLE_EQ(total(), 12);
            EXPECT_EQ(number(0, Col::Anzahl), 1);
        }
    }
    pickKnoblauch();
    EXPECT_FALSE(type(1, Col::Anzahl, u"100001")) << "also of what costs nothing";
    EXPECT_TRUE(type(1, Col::Anzahl, u"100000"));
    // Nor does one come from the catalogue.
    ConnMain.Execute(QStringLiteral("UPDATE tbl_Verwaltung_Produkte_Preise SET dbl_Preis = 1e308"));
    order.ClearBestellungMaske();
    pickWein();
    EXPECT_EQ(order.LastFilledRow(), -1);
    EXPECT_EQ(total(), 0);
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
    order.PickProdukt(TestFirm::kBier, u"O'N5%"_s, 6);
    type(0, Col::Rabatt, u"2");
    type(0, Col::Anzahl, u"0");
    for (const int col : {Col::Anzahl, Col::Preis, Col::Rabatt, Col::PreisOhneMWSt})
        EXPECT_EQ(number(0, col), 0) << col;
    EXPECT_EQ(total(), 0);
    type(0, Col::Anzahl, u"3");
    EXPECT_EQ(number(0, Col::Preis), 0);
    type(0, Col::Anzahl, u"0");
    type(0, Col::Preis, u"9");
    EXPECT_EQ(number(0, Col::Anzahl), 6);
    EXPECT_DOUBLE_EQ(total(), 9);
}

TEST_F(OrderLines, typedAmountsAreRoundedAndTheNetDerived) {
    SysMWStSatz1 = 8;
    pickWein();
    EXPECT_DOUBLE_EQ(number(0, Col::PreisOhneMWSt), 12 / 1.08);
    EXPECT_DOUBLE_EQ(total(TotalRow::MWSt1), 12 - 12 / 1.08);
    type(0, Col::Preis, u"12");
    EXPECT_EQ(number(0, Col::PreisOhneMWSt), 11.11);
    type(0, Col::Preis, u"12.379");
    EXPECT_EQ(number(0, Col::Preis), 12.35);
    type(0, Col::Rabatt, u"3.33");
    EXPECT_EQ(number(0, Col::Rabatt), 3.35);
    type(0, Col::Rabatt, u"0");
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
    EXPECT_DOUBLE_EQ(total(), 12.3 - 1.25 + 14 - 1.4);
    order.SetRabattBestellung(0);
    EXPECT_DOUBLE_EQ(total(), 26.3);
    type(0, Col::Preis, u"1000000");
    EXPECT_FALSE(order.SetRabattBestellung(101));
    EXPECT_DOUBLE_EQ(total(), 1'000'014);
}

TEST_F(OrderLines, totalsTakeTheVatOutOfThePrice) {
    pickWein();
    pickPizza();
    order.PickProdukt(TestFirm::kGutschein, u"G"_s, 1);
    EXPECT_DOUBLE_EQ(total(TotalRow::Summe), 12 / 1.081 + 14 / 1.026 + 20);
    EXPECT_DOUBLE_EQ(total(TotalRow::MWSt1), 12 - 12 / 1.081);
    EXPECT_DOUBLE_EQ(total(TotalRow::MWSt3), 14 - 14 / 1.026);
    EXPECT_DOUBLE_EQ(total(), 46);

    order.SetMWStSatzBestellung(0);
    EXPECT_EQ(total(TotalRow::MWSt1), 0);
    EXPECT_EQ(total(TotalRow::MWSt3), 0);
    EXPECT_DOUBLE_EQ(total(TotalRow::Summe), 46);
    // Rows that are empty keep out of it.
    EXPECT_EQ(number(3, Col::Anzahl), 0);
}

TEST_F(OrderLines, equalRatesCountInBothRowsOfTheVat) {
    SysMWStSatz3 = SysMWStSatz1;
    pickWein();
    EXPECT_DOUBLE_EQ(total(TotalRow::MWSt1), total(TotalRow::MWSt3));
    EXPECT_DOUBLE_EQ(total(), 12);
}

TEST_F(OrderLines, theCatalogueOffersWhatIsActiveInItsOrder) {
    using namespace modAuftragswesenAuftragserfassung;
    const auto offered = [](const QString& sql, const QString& column) {
        QStringList values;
        for (store::OpenRecordset rows(RsMain, sql, ConnMain); !rows->Eof(); rows->MoveNext())
            values << rows->Fields(column).text();
        return values.join(u' ');
    };
    EXPECT_EQ(LoadKategorien().at(0).txt_ProduktGruppe, u"Pizza");
    EXPECT_EQ(offered(ProdukteSql(2, 4), u"txt_Kurzzeichen"_s), u"10 1");
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte SET flag_Status = True WHERE lng_ID = 1"_s);
    EXPECT_EQ(offered(ProdukteSql(2, 4), u"txt_Kurzzeichen"_s), u"1");
    EXPECT_EQ(offered(ProdukteSql({}, 1), u"txt_Kurzzeichen"_s), u"");
    EXPECT_EQ(offered(ExtrasSql(TestFirm::kMargherita), u"txt_Extra"_s), u"Knoblauch Käse");
}

} // namespace
