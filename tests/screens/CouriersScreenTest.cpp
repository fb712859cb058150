// What the couriers' screen does in its own way.
#include "MasterDataTest.h"
#include "masterdata/frmVerwaltungKuriere.h"
#include "masterdata/modVerwaltungKuriere.h"

using namespace Qt::StringLiterals;
using test::Said;
using test::TestFirm;

namespace {

class CouriersScreenTest : public test::MasterDataTest<frmVerwaltungKuriere> {
  protected:
    static qint64 count() { return TestFirm::count(u"tbl_Verwaltung_Kuriere"_s); }
};

} // namespace

TEST_F(CouriersScreenTest, AddsByKeyboard) {
    expectReachable();
    EXPECT_EQ(rows(), (QStringList{u"CD|Carla|1"_s, u"AB|Anton|2"_s}));
    EXPECT_EQ(enterWay(u"txt_Kurzzeichen", 3), (QStringList{u"txt_Kurzzeichen"_s, u"txt_Bezeichnung"_s,
                                                            u"combo_Reihenfolge"_s, u"cmdSave"_s}));
    enter(u"txt_Kurzzeichen", u"EF"_s);
    enter(u"txt_Bezeichnung", u"Eva"_s);
    click(u"cmdSave");
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(rows(), (QStringList{u"CD|Carla|1"_s, u"EF|Eva|1"_s, u"AB|Anton|2"_s}));
    EXPECT_EQ(focusName(), u"txt_Kurzzeichen"_s);
    EXPECT_EQ(modVerwaltungKuriere::FillKurierMenu().size(), 3u);
    EXPECT_EQ(modVerwaltungKuriere::FillKurierCombo().size(), 3u);
}

TEST_F(CouriersScreenTest, ChecksTheDuplicateBeforeTheName) {
    click(u"cmdSave");
    EXPECT_EQ(said(), (Said{{u"Bitte geben Sie ein Kurzzeichen ein."_s, 0, u"Fehlerhafte Eingabe"_s}}));
    enter(u"txt_Kurzzeichen", u"ab"_s);
    dialogs.answer(platform::kAnswerYes);
    click(u"cmdSave");
    EXPECT_EQ(said(), (Said{{u"Dieses Kurzzeichen existiert bereits."_s, 4, u"Fehlende Eingabe"_s}}));
    enter(u"txt_Kurzzeichen", u"XY"_s);
    click(u"cmdSave");
    EXPECT_EQ(said(), (Said{{u"Bitte geben Sie eine Bezeichnung ein."_s, 0, u"Fehlerhafte Eingabe"_s}}));
    EXPECT_EQ(focusName(), u"txt_Bezeichnung"_s);
    EXPECT_EQ(count(), 2);
}

TEST_F(CouriersScreenTest, KeepsQuotesAsData) {
    enter(u"txt_Kurzzeichen", u"O'N"_s);
    enter(u"txt_Bezeichnung", u"Sean \"Shorty\" O'Neill"_s);
    click(u"cmdSave");
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(stored(u"SELECT txt_Bezeichnung FROM tbl_Verwaltung_Kuriere WHERE txt_Kurzzeichen = 'O''N'"_s),
              u"Sean \"Shorty\" O'Neill"_s);
    enter(u"txt_Kurzzeichen", u"o'n"_s);
    dialogs.answer(platform::kAnswerNo);
    click(u"cmdSave");
    EXPECT_EQ(said().size(), 1);
}

TEST_F(CouriersScreenTest, ChoosesARowWithoutCleaningTheMask) {
    ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_Kuriere WHERE lng_ID = 2"_s);
    enter(u"txt_Kurzzeichen", u"typed"_s);
    // The first row is on show yet and gone already: what was typed stays.
    clickRow(0);
    EXPECT_EQ(text(u"txt_Kurzzeichen"), u"typed"_s);
    EXPECT_EQ(markedKey(), -1) << "it is not in the mask";
    clickRow(1);
    EXPECT_EQ(text(u"txt_Kurzzeichen"), u"AB"_s);
    EXPECT_EQ(focusName(), u"KuriereGrid"_s);
    EXPECT_EQ(screen.property("KurierID").toLongLong(), TestFirm::kKurierAB);
}

TEST_F(CouriersScreenTest, DeletesAtOnceUnlessReferredTo) {
    clickRow(0);
    expectKeptForOrders(u"tbl_Auftragswesen_%1_Master"_s, u"lng_KurierID"_s,
                        {u"Dieser Kurier kann nicht gelöscht werden, da bereits Buchungen bestehen."_s, 64,
                         u"Löschen Kurier"_s});
    click(u"cmdDelete");
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(rows(), QStringList{u"AB|Anton|2"_s});
    EXPECT_EQ(screen.key(), -1);
}
