// What the extras' screen does in its own way, and the ten prices.
#include "MasterDataTest.h"
#include "masterdata/frmProdukteExtras.h"
#include "masterdata/modProdukteExtras.h"

using namespace Qt::StringLiterals;
using test::Said;
using test::TestFirm;

namespace {

class ExtrasScreenTest : public test::MasterDataTest<frmProdukteExtras> {
  protected:
    static QString column(const QString& name, const QString& extra) {
        return stored(u"SELECT %1 FROM tbl_Verwaltung_ProdukteExtras WHERE txt_Extra = "_s.arg(name) +
                      store::sqlText(extra));
    }

    static QString price(const QString& extra, int gruppe) {
        return stored(
            u"SELECT dbl_Preis FROM view_Verwaltung_ProdukteExtras WHERE lng_Gruppe = %1 AND txt_Extra = "_s
                .arg(gruppe) +
            store::sqlText(extra));
    }
};

} // namespace

TEST_F(ExtrasScreenTest, ShowsOnePriceGroupAndStatusAtATime) {
    expectReachable();
    EXPECT_EQ(rows(), (QStringList{u"Knoblauch|Stk.|1|1|0.00|1|7|Nein|Aktiv"_s,
                                   u"Käse|Stk.|1|1|2.00|1|8|Nein|Aktiv"_s,
                                   u"Käsesauce|Stk.|1|1|1.50|1|9|Nein|Aktiv"_s}));
    choose(u"combo_Sort_Gruppe", u"2"_s);
    EXPECT_EQ(rows().last(), u"Käsesauce|Stk.|1|2|2.50|1|9|Nein|Aktiv"_s);
    tick(u"check_Sort_Status");
    EXPECT_EQ(rows(), QStringList{u"Trüffel|Stk.|1|2|10.00|1|6|Nein|Inaktiv"_s});
}

TEST_F(ExtrasScreenTest, LeadsByEnterThroughTheMaskAndRoundTheTenPrices) {
    EXPECT_EQ(enterWay(u"txt_Extra", 4),
              (QStringList{u"txt_Extra"_s, u"combo_Stückelung"_s, u"combo_Einheit"_s, u"combo_Reihenfolge"_s,
                           u"txt_Preis_1"_s}));
    EXPECT_EQ(enterWay(u"txt_Preis_9", 2),
              (QStringList{u"txt_Preis_9"_s, u"txt_Preis_10"_s, u"txt_Preis_1"_s}));
    EXPECT_EQ(enterWay(u"combo_MWSt_9", 2),
              (QStringList{u"combo_MWSt_9"_s, u"combo_MWSt_10"_s, u"combo_MWSt_1"_s}));
}

TEST_F(ExtrasScreenTest, StoresHeadAndTenPrices) {
    enter(u"txt_Extra", u"Chili \"scharf\""_s);
    choose(u"combo_Stückelung", u"Dose"_s);
    choose(u"combo_Reihenfolge", u"250"_s);
    enter(u"txt_Preis_1", u"1.5"_s);
    enter(u"txt_Preis_10", u"2"_s);
    find<QComboBox>(u"combo_MWSt_10")->setCurrentIndex(2);
    click(u"cmdSave");
    EXPECT_TRUE(said().isEmpty());
    const QString name = u"Chili scharf"_s;
    EXPECT_EQ(column(u"txt_Stückelung"_s, name) + column(u"lng_Einheit"_s, name) +
                  column(u"lng_Reihenfolge"_s, name) + column(u"flag_Internet"_s, name) +
                  column(u"flag_Status"_s, name) + column(u"flag_Updated"_s, name),
              u"Dose1250-10-1"_s);
    EXPECT_EQ(price(name, 1) + u' ' + price(name, 2) + u' ' + price(name, 10), u"1.5 0 2"_s);
    EXPECT_EQ(
        stored(u"SELECT lng_MWSt FROM view_Verwaltung_ProdukteExtras WHERE lng_Gruppe = 10 AND txt_Extra = "
               u"'Chili scharf'"_s),
        u"2"_s);
    EXPECT_EQ(TestFirm::count(u"tbl_Verwaltung_ProdukteExtras_Preise"_s), 50);
    // A second save overwrites the ten rows.
    clickRowOf(name);
    enter(u"txt_Preis_2", u"7"_s);
    click(u"cmdSave");
    EXPECT_EQ(price(name, 2), u"7"_s);
    EXPECT_EQ(TestFirm::count(u"tbl_Verwaltung_ProdukteExtras_Preise"_s), 50);
}

TEST_F(ExtrasScreenTest, APriceRewritesItselfWhenItIsLeft) {
    const std::pair<QString, QString> cases[] = {{u"12.5"_s, u"12.50"_s},  {u"1'234.5"_s, u"1234.50"_s},
                                                 {u"1e3"_s, u"1000.00"_s}, {u"-2"_s, u"-2.00"_s},
                                                 {u"12,5"_s, u"0.00"_s},   {u"abc"_s, u"0.00"_s},
                                                 {QString(), u"0.00"_s},   {u"1e999"_s, u"0.00"_s}};
    for (const auto& [typed, shown] : cases) {
        enter(u"txt_Preis_3", typed);
        press(Qt::Key_Tab);
        EXPECT_EQ(text(u"txt_Preis_3"), shown) << typed.toStdString();
    }
    QTest::mouseDClick(find<QLineEdit>(u"txt_Preis_3"), Qt::LeftButton);
    EXPECT_EQ(find<QLineEdit>(u"txt_Preis_3")->selectedText(), u"0.00"_s) << "not the part before the point";
}

TEST_F(ExtrasScreenTest, RefusesInTheGivenOrder) {
    const test::TestDialogs::Said noName{u"Bitte geben Sie eine Bezeichnung ein."_s, 0,
                                         u"Fehlerhafte Eingabe"_s};
    const test::TestDialogs::Said noPrice{u"Bitte geben Sie überall einen gültigen Preis ein."_s, 0,
                                          u"Ungültige Eingabe"_s};
    const test::TestDialogs::Said duplicate{u"Diese Bezeichnung existiert bereits."_s, 64,
                                            u"Ungültige Eingabe"_s};
    click(u"cmdSave");
    EXPECT_EQ(said(), Said{noName});
    // The key of the button leaves the focus in the price, so that it is not rewritten before.
    enter(u"txt_Extra", u"'trüffel'"_s);
    enter(u"txt_Preis_10", u"1,5"_s);
    press(Qt::Key_S, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !dialogs.said.isEmpty(); }));
    EXPECT_EQ(said(), Said{noPrice});
    EXPECT_EQ(text(u"txt_Preis_10"), u"1,5"_s);
    EXPECT_EQ(text(u"txt_Extra"), u"'trüffel'"_s);
    enter(u"txt_Preis_10", u"1.5"_s);
    // An inactive extra holds its name as well.
    click(u"cmdSave");
    EXPECT_EQ(said(), Said{duplicate});
    EXPECT_EQ(text(u"txt_Extra"), u"trüffel"_s);
    EXPECT_EQ(TestFirm::count(u"tbl_Verwaltung_ProdukteExtras"_s), 4);
}

TEST_F(ExtrasScreenTest, StaysActiveAsLongAsAProductOffersIt) {
    clickRowOf(u"Käse"_s);
    find<QCheckBox>(u"check_Internet")->setChecked(true);
    tick(u"check_Status");
    click(u"cmdSave");
    EXPECT_EQ(
        said(),
        (Said{{u"Dieses Extra kann noch nicht deaktiviert werden, da noch Beziehungen mit Produkten "
               u"bestehen. Bitte löschen Sie diese Beziehungen bevor Sie das Extra deaktivieren können."_s,
               64, u"Statusmeldung"_s}}));
    EXPECT_FALSE(ticked(u"check_Internet"));
    EXPECT_EQ(column(u"flag_Status"_s, u"Käse"_s), u"0"_s);
    ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_Produkte_Extras"_s);
    click(u"cmdSave");
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(column(u"flag_Status"_s, u"Käse"_s), u"-1"_s);
    EXPECT_TRUE(modProdukteExtras::IsExtraInaktiv(TestFirm::kKaese));
    EXPECT_TRUE(modProdukteExtras::IsExtraInaktiv(4711));
    EXPECT_FALSE(modProdukteExtras::IsExtraInternet(TestFirm::kKaese));
    // Back again without a guard; the web flag does not come back by itself.
    tick(u"check_Sort_Status");
    clickRowOf(u"Käse"_s);
    tick(u"check_Status");
    EXPECT_FALSE(ticked(u"check_Internet"));
    click(u"cmdSave");
    EXPECT_EQ(column(u"flag_Status"_s, u"Käse"_s), u"0"_s);
}

TEST_F(ExtrasScreenTest, DeletesWhatNothingRefersTo) {
    const test::TestDialogs::Said refusal{
        u"Dieses Extra kann nicht gelöscht werden, da bereits Buchungen bestehen."_s, 64, u"Löschen Extra"_s};
    clickRowOf(u"Käsesauce"_s);
    click(u"cmdDelete");
    EXPECT_EQ(said(), Said{refusal});
    ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_Produkte_Extras"_s);
    expectKeptForOrders(u"tbl_Auftragswesen_%1_Details"_s, u"lng_ExtraID"_s, refusal);
    dialogs.answer(platform::kAnswerYes);
    click(u"cmdDelete");
    EXPECT_EQ(said(), (Said{{u"Möchten Sie dieses Extra wirklich löschen?"_s, 4, u"Löschen Gruppe"_s}}));
    EXPECT_EQ(rows().size(), 2);
    EXPECT_EQ(TestFirm::count(u"tbl_Verwaltung_ProdukteExtras_Preise"_s), 30);
}
