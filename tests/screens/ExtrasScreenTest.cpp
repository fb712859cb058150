// What the extras' screen does in its own way, and the ten prices.
#include "ScreenTest.h"
#include "masterdata/frmProdukteExtras.h"
#include "masterdata/modProdukteExtras.h"

using namespace Qt::StringLiterals;
using test::Said;
using test::TestFirm;

namespace {

class ExtrasScreenTest : public test::MasterDataTest<frmProdukteExtras> {
  protected:
    static QString columns(const QString& names, const QString& extra, int gruppe = 1) {
        return stored(
            u"SELECT %1 FROM view_Verwaltung_ProdukteExtras WHERE lng_Gruppe = %2 AND txt_Extra = '%3'"_s.arg(
                names, QString::number(gruppe), extra));
    }
};

} // namespace

TEST_F(ExtrasScreenTest, ShowsOnePriceGroupAndStatusAndLeadsRoundTheTenPrices) {
    expectReachable();
    EXPECT_EQ(rows(), (QStringList{u"Knoblauch|Stk.|1|1|0.00|1|7|Nein|Aktiv"_s,
                                   u"Käse|Stk.|1|1|2.00|1|8|Nein|Aktiv"_s,
                                   u"Käsesauce|Stk.|1|1|1.50|1|9|Nein|Aktiv"_s}));
    choose(u"combo_Sort_Gruppe", u"2"_s);
    EXPECT_EQ(rows().last(), u"Käsesauce|Stk.|1|2|2.50|1|9|Nein|Aktiv"_s);
    tick(u"check_Sort_Status");
    EXPECT_EQ(rows(), QStringList{u"Trüffel|Stk.|1|2|10.00|1|6|Nein|Inaktiv"_s});
    EXPECT_EQ(enterWay(u"txt_Extra", 4),
              u"txt_Extra combo_Stückelung combo_Einheit combo_Reihenfolge txt_Preis_1"_s);
    EXPECT_EQ(enterWay(u"txt_Preis_9", 2), u"txt_Preis_9 txt_Preis_10 txt_Preis_1"_s);
    EXPECT_EQ(enterWay(u"combo_MWSt_9", 2), u"combo_MWSt_9 combo_MWSt_10 combo_MWSt_1"_s);
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
    EXPECT_EQ(
        stored(
            u"SELECT txt_Stückelung, lng_Einheit, lng_Reihenfolge, flag_Internet, flag_Status, flag_Updated "
            u"FROM tbl_Verwaltung_ProdukteExtras WHERE txt_Extra = 'Chili scharf'"_s),
        u"Dose|1|250|-1|0|-1"_s);
    EXPECT_EQ(columns(u"dbl_Preis"_s, name), u"1.5"_s);
    EXPECT_EQ(columns(u"dbl_Preis, lng_MWSt"_s, name, 10), u"2|2"_s);
    // A second save overwrites the ten rows.
    clickRowOf(name);
    enter(u"txt_Preis_2", u"7"_s);
    click(u"cmdSave");
    EXPECT_EQ(columns(u"dbl_Preis"_s, name, 2), u"7"_s);
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
    QTest::mouseDClick(find(u"txt_Preis_3"), Qt::LeftButton);
    EXPECT_EQ(find<QLineEdit>(u"txt_Preis_3")->selectedText(), u"0.00"_s) << "not the part before the point";
}

TEST_F(ExtrasScreenTest, RefusesInTheGivenOrder) {
    click(u"cmdSave");
    EXPECT_EQ(said(), (Said{{u"Bitte geben Sie eine Bezeichnung ein."_s, 0, u"Fehlerhafte Eingabe"_s}}));
    // The key of the button leaves the focus in the price, so that it is not rewritten before.
    enter(u"txt_Extra", u"'trüffel'"_s);
    enter(u"txt_Preis_10", u"1,5"_s);
    press(Qt::Key_S, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !dialogs.said.isEmpty(); }));
    EXPECT_EQ(said(),
              (Said{{u"Bitte geben Sie überall einen gültigen Preis ein."_s, 0, u"Ungültige Eingabe"_s}}));
    EXPECT_EQ(text(u"txt_Extra") + text(u"txt_Preis_10"), u"'trüffel'1,5"_s);
    enter(u"txt_Preis_10", u"1.5"_s);
    // An inactive extra holds its name as well.
    click(u"cmdSave");
    EXPECT_EQ(said(), (Said{{u"Diese Bezeichnung existiert bereits."_s, 64, u"Ungültige Eingabe"_s}}));
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
    ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_Produkte_Extras"_s);
    click(u"cmdSave");
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(columns(u"flag_Status, flag_Internet"_s, u"Käse"_s), u"-1|0"_s);
    EXPECT_TRUE(modProdukteExtras::IsExtraInaktiv(TestFirm::kKaese));
    EXPECT_TRUE(modProdukteExtras::IsExtraInaktiv(4711));
    // Back again without a guard; the web flag does not come back by itself.
    tick(u"check_Sort_Status");
    clickRowOf(u"Käse"_s);
    tick(u"check_Status");
    EXPECT_FALSE(ticked(u"check_Internet"));
    click(u"cmdSave");
    EXPECT_EQ(columns(u"flag_Status"_s, u"Käse"_s), u"0"_s);
}

TEST_F(ExtrasScreenTest, DeletesWhatNothingRefersTo) {
    const test::TestDialogs::Said refusal{
        u"Dieses Extra kann nicht gelöscht werden, da bereits Buchungen bestehen."_s, 64, u"Löschen Extra"_s};
    clickRowOf(u"Käsesauce"_s);
    click(u"cmdDelete");
    EXPECT_EQ(said(), Said{refusal}) << "a product offers it";
    ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_Produkte_Extras"_s);
    expectDeletion(u"tbl_Auftragswesen_%1_Details"_s, u"lng_ExtraID"_s, refusal,
                   {{u"Möchten Sie dieses Extra wirklich löschen?"_s, 4, u"Löschen Gruppe"_s}});
    EXPECT_EQ(TestFirm::count(u"tbl_Verwaltung_ProdukteExtras_Preise"_s), 30);
}
