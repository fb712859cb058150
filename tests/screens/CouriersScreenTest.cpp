// What the couriers' screen does in its own way.
#include "ScreenTest.h"
#include "masterdata/frmVerwaltungKuriere.h"

using namespace Qt::StringLiterals;
using test::Said;
using test::TestFirm;

namespace {

using CouriersScreenTest = test::MasterDataTest<frmVerwaltungKuriere>;

} // namespace

TEST_F(CouriersScreenTest, ChecksTheDuplicateBeforeTheNameAndKeepsQuotes) {
    expectReachable();
    EXPECT_EQ(rows(), (QStringList{u"CD|Carla|1"_s, u"AB|Anton|2"_s}));
    EXPECT_EQ(enterWay(u"txt_Kurzzeichen", 3),
              u"txt_Kurzzeichen txt_Bezeichnung combo_Reihenfolge cmdSave"_s);
    click(u"cmdSave");
    EXPECT_EQ(said(), (Said{{u"Bitte geben Sie ein Kurzzeichen ein."_s, 0, u"Fehlerhafte Eingabe"_s}}));
    enter(u"txt_Kurzzeichen", u"ab"_s);
    dialogs.answer(platform::kAnswerYes);
    click(u"cmdSave");
    EXPECT_EQ(said(), (Said{{u"Dieses Kurzzeichen existiert bereits."_s, 4, u"Fehlende Eingabe"_s}}));
    enter(u"txt_Kurzzeichen", u"O'N"_s);
    click(u"cmdSave");
    EXPECT_EQ(said(), (Said{{u"Bitte geben Sie eine Bezeichnung ein."_s, 0, u"Fehlerhafte Eingabe"_s}}));
    EXPECT_EQ(focusName(), u"txt_Bezeichnung"_s);
    enter(u"txt_Bezeichnung", u"Sean \"Shorty\" O'Neill"_s);
    click(u"cmdSave");
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(rows(), (QStringList{u"CD|Carla|1"_s, u"O'N|Sean \"Shorty\" O'Neill|1"_s, u"AB|Anton|2"_s}));
    EXPECT_EQ(focusName(), u"txt_Kurzzeichen"_s);
}

TEST_F(CouriersScreenTest, ChoosesARowWithoutCleaningTheMaskAndDeletesAtOnceUnlessReferredTo) {
    ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_Kuriere WHERE lng_ID = 2"_s);
    enter(u"txt_Kurzzeichen", u"typed"_s);
    // The first row is on show yet and gone already: what was typed stays.
    clickRow(0);
    EXPECT_EQ(text(u"txt_Kurzzeichen"), u"typed"_s);
    EXPECT_EQ(markedKey(), -1) << "it is not in the mask";
    clickRow(1);
    EXPECT_EQ(text(u"txt_Kurzzeichen"), u"AB"_s);
    EXPECT_EQ(focusName(), u"KuriereGrid"_s);
    EXPECT_EQ(screen->key(), TestFirm::kKurierAB);
    screen->FormatGrid();
    clickRow(0);
    expectDeletion(u"tbl_Auftragswesen_%1_Master"_s, u"lng_KurierID"_s,
                   {u"Dieser Kurier kann nicht gelöscht werden, da bereits Buchungen bestehen."_s, 64,
                    u"Löschen Kurier"_s},
                   {});
}
