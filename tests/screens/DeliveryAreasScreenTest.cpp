// The directory of postcodes.
#include "ScreenTest.h"
#include "shop/frmOnlineShopSettingsLiefergebiete.h"

using namespace Qt::StringLiterals;
using test::Said;
using test::TestDialogs;

namespace {

/// Four places; the keys are 1 to 4.
class DeliveryAreasTest : public test::ScreenTest<frmOnlineShopSettingsLiefergebiete> {
  protected:
    DeliveryAreasTest() {
        ConnMain.Execute(u"DELETE FROM tbl_PLZ_Verzeichnis"_s);
        add(1, u"8004,'Zürich',12.5,45,'AB',-1"_s);
        add(2, u"8001,'Zürich',30,30,'',0"_s);
        add(3, u"3000,'Bern',1100,90,'weg',0"_s);
        add(4, u"9000,'Arbon',7,7,'CD',-1"_s);
        open();
    }

    static void add(int id, const QString& values) {
        ConnMain.Execute(u"INSERT INTO tbl_PLZ_Verzeichnis(lng_ID, txt_Land, lng_PLZ, txt_Ort, "
                         u"dbl_Mindestbestellmenge, lng_Lieferzeiten, txt_Kurier, bool_Liefergebiet) "
                         u"VALUES(%1,'CH',%2)"_s.arg(id)
                             .arg(values));
    }

    static QString row(int id) {
        return stored(u"SELECT * FROM tbl_PLZ_Verzeichnis WHERE lng_ID = %1"_s.arg(id));
    }
};

} // namespace

TEST_F(DeliveryAreasTest, ListsSortsAndLoadsByADoubleClickOnly) {
    expectReachable(false);
    EXPECT_EQ(
        rows(),
        (QStringList{u"CH|3000|Bern|1'100.00|90 Minuten|weg|"_s, u"CH|8001|Zürich|30.00|30 Minuten||"_s,
                     u"CH|8004|Zürich|12.50|45 Minuten|AB|Ja"_s, u"CH|9000|Arbon|7.00|7 Minuten|CD|Ja"_s}));
    const std::pair<QStringView, QString> orders[] = {{u"cmdSortOrt", u"4 3"_s},
                                                      {u"cmdSortMindestbestellmenge", u"3 2 1 4"_s},
                                                      {u"cmdSortLieferzeiten", u"3 1 2 4"_s},
                                                      {u"cmdSortPLZ", u"3 2 1 4"_s}};
    for (const auto& [button, order] : orders) {
        click(button);
        EXPECT_TRUE(keys().startsWith(order)) << button.toString().toStdString() << keys().toStdString();
    }
    click(u"cmdSortIsLiefergebiet");
    EXPECT_TRUE(rows().at(0).endsWith(u"Ja"_s) && rows().at(1).endsWith(u"Ja"_s));
    click(u"cmdSortPLZ");
    enter(u"txt_PLZ", u"typed"_s);
    clickRow(2);
    EXPECT_EQ(text(u"txt_PLZ"), u"typed"_s) << "a click goes to the row, no more";
    EXPECT_FALSE(find(u"cmd_Delete")->isEnabled());
    doubleClickRow(0);
    EXPECT_EQ(screen->key(), 3);
    EXPECT_EQ(chosen(u"combo_Land") + text(u"txt_PLZ") + text(u"txt_Ort"), u"CH3000Bern"_s);
    EXPECT_EQ(chosen(u"combo_Mindestbestellmenge") + u' ' + chosen(u"combo_Lieferzeit") + u' ' +
                  chosen(u"combo_Kurier"),
              u"1100 90 weg"_s);
    EXPECT_TRUE(find(u"cmd_Delete")->isEnabled());
    EXPECT_EQ(enterWay(u"combo_Land", 6), u"combo_Land txt_PLZ txt_Ort combo_Mindestbestellmenge "
                                          u"combo_Lieferzeit combo_Kurier cmdSave"_s);
}

TEST_F(DeliveryAreasTest, ChecksInOrderAndReplacesATwinOnlyWhenTheMaskIsClean) {
    const TestDialogs::Said plz{u"Bitte geben Sie eine gültige PLZ ein."_s, 0, u"Fehlerhafte Eingabe"_s};
    const TestDialogs::Said ort{u"Bitte geben Sie eine gültige Ortschaft ein."_s, 0,
                                u"Fehlerhafte Eingabe"_s};
    click(u"cmdSave");
    EXPECT_EQ(said(), (Said{{u"Bitte wählen Sie ein Land aus."_s, 0, u"Fehlende Eingabe"_s}}));
    choose(u"combo_Land", u"CH"_s);
    for (const QString& typed : {u""_s, u"80O1"_s, u"1e20"_s}) {
        enter(u"txt_PLZ", typed);
        click(u"cmdSave");
        EXPECT_EQ(said(), Said{plz}) << typed.toStdString();
    }
    enter(u"txt_PLZ", u"8001"_s);
    enter(u"txt_Ort", u"\"' '"_s);
    click(u"cmdSave");
    EXPECT_EQ(said(), Said{ort});
    EXPECT_EQ(text(u"txt_Ort"), QString());
    // The same place under no key yet.
    const Said twin{{u"Diese Ortschaft existiert bereits. Möchten Sie die Ortschaft ersetzen?"_s, 4,
                     u"Fehlende Eingabe"_s}};
    enter(u"txt_Ort", u"Zü'rich"_s);
    choose(u"combo_Lieferzeit", u"05"_s);
    dialogs.answer(platform::kAnswerNo);
    click(u"cmdSave");
    EXPECT_EQ(said(), twin);
    EXPECT_EQ(text(u"txt_PLZ"), u"8001"_s);
    EXPECT_EQ(row(2), u"2|CH|8001|Zürich|30|30||0"_s);
    tick(u"check_Liefergebiet");
    dialogs.answer(platform::kAnswerYes);
    click(u"cmdSave");
    EXPECT_EQ(said(), twin);
    EXPECT_EQ(row(2), u"2|CH|8001|Zürich|0|5||-1"_s);
    EXPECT_EQ(markedKey(), 2) << "the list stands at the row";
    EXPECT_EQ(chosen(u"combo_Land") + text(u"txt_PLZ") + chosen(u"combo_Lieferzeit"), u"CH"_s);
    EXPECT_EQ(screen->key(), -1);
    // A row that is in the mask may become another one's twin.
    doubleClickRow(2);
    enter(u"txt_PLZ", u"8001"_s);
    click(u"cmdSave");
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(row(1), u"1|CH|8001|Zürich|13|45|AB|-1"_s) << "the least order is kept in whole francs";
    enter(u"txt_PLZ", u"6000"_s);
    enter(u"txt_Ort", u"Luzern"_s);
    click(u"cmdSave");
    EXPECT_EQ(stored(u"SELECT txt_Land, txt_Ort, dbl_Mindestbestellmenge, lng_Lieferzeiten, txt_Kurier FROM "
                     u"tbl_PLZ_Verzeichnis WHERE lng_PLZ = 6000"_s),
              u"CH|Luzern|0|0|"_s);
}

TEST_F(DeliveryAreasTest, DeletesAfterYes) {
    doubleClickRow(1);
    for (const int answer : {platform::kAnswerNo, platform::kAnswerYes}) {
        dialogs.answer(answer);
        click(u"cmd_Delete");
        EXPECT_EQ(said(), (Said{{u"Wollen Sie diese Ortschaft wirklich löschen?"_s, 4, u"Löschung"_s}}));
        EXPECT_EQ(keys(), answer == platform::kAnswerNo ? u"3 2 1 4"_s : u"3 1 4"_s);
    }
    EXPECT_EQ(screen->key(), -1);
    EXPECT_EQ(text(u"txt_Ort"), QString());
    doubleClickRow(0);
    click(u"combo_Clean");
    EXPECT_EQ(chosen(u"combo_Kurier") + chosen(u"combo_Mindestbestellmenge"), QString());
    EXPECT_FALSE(find(u"cmd_Delete")->isEnabled());
}
