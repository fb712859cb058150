// The form of the master-data screens, tried on its smallest one, and what is the categories' own.
#include "ScreenTest.h"
#include "masterdata/frmProdukteKategorien.h"

using namespace Qt::StringLiterals;
using test::Said;
using test::TestFirm;

namespace {

class CategoriesScreenTest : public test::MasterDataTest<frmProdukteKategorien> {
  protected:
    /// Every column of a row but the key.
    static QString row(const QString& name) {
        return stored(u"SELECT lng_Reihenfolge, flag_Internet, lng_Updated FROM "
                      u"tbl_Verwaltung_ProdukteKategorien WHERE txt_ProduktGruppe = "_s +
                      store::sqlText(name));
    }

    static qint64 count() { return TestFirm::count(u"tbl_Verwaltung_ProdukteKategorien"_s); }
};

} // namespace

TEST_F(CategoriesScreenTest, AddsARowByKeyboardAlone) {
    expectReachable();
    EXPECT_EQ(rows(), (QStringList{u"Pizza|1|Nein"_s, u"Getränke|2|Nein"_s}));
    EXPECT_EQ(screen->key(), 0);
    EXPECT_FALSE(find(u"cmdDelete")->isEnabled());
    QTest::keyClicks(QApplication::focusWidget(), u"  Salate "_s);
    press(Qt::Key_Return);
    EXPECT_EQ(focusName(), u"combo_Reihenfolge"_s);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(row(u"Salate"_s), u"3|-1|1"_s);
    EXPECT_EQ(rows().last(), u"Salate|3|Ja"_s);
    // The mask is ready for the next one; its position carries over.
    EXPECT_EQ(screen->key(), -1);
    EXPECT_EQ(text(u"txt_Gruppe") + chosen(u"combo_Reihenfolge") + focusName(), u"3txt_Gruppe"_s);
}

TEST_F(CategoriesScreenTest, SavesAChosenRowWithoutTakingItForItsDuplicate) {
    clickRow(1);
    EXPECT_EQ(screen->key(), 1);
    EXPECT_EQ(text(u"txt_Gruppe") + chosen(u"combo_Reihenfolge") + focusName(), u"Getränke2txt_Gruppe"_s);
    EXPECT_FALSE(ticked(u"check_Internet"));
    choose(u"combo_Reihenfolge", u"1"_s);
    click(u"cmdSave");
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(row(u"Getränke"_s), u"1|0|1"_s);
    EXPECT_EQ(row(u"Pizza"_s), u"1|0|"_s);
    EXPECT_EQ(count(), 2);
}

TEST_F(CategoriesScreenTest, DeletesOnlyWhatNoProductUsesAndOnlyAfterYes) {
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte SET flag_Status = True"_s);
    clickRow(0);
    click(u"cmdDelete");
    EXPECT_EQ(
        said(),
        (Said{{u"Diese Produkte Gruppe kann nicht gelöscht werden, da bereits Produkte vernetzt sind."_s, 64,
               u"Löschen Gruppe"_s}}));
    ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_Produkte WHERE lng_ProduktGruppe = 2"_s);
    for (const auto& [answer, left] : {std::pair{platform::kAnswerNo, 2}, {platform::kAnswerYes, 1}}) {
        dialogs.answer(answer);
        click(u"cmdDelete");
        EXPECT_EQ(said(),
                  (Said{{u"Möchten Sie diese Produkt Gruppe wirklich löschen?"_s, 4, u"Löschen Gruppe"_s}}));
        EXPECT_EQ(count(), left);
        EXPECT_EQ(screen->key(), left == 2 ? 2 : -1);
    }
    // A row that is gone leaves a new record, and an empty list does nothing.
    ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_ProdukteKategorien"_s);
    clickRow(0);
    EXPECT_EQ(screen->key(), -1);
    EXPECT_FALSE(find(u"cmdDelete")->isEnabled());
    screen->FormatGrid();
    enter(u"txt_Gruppe", u"verworfen"_s);
    QTest::mouseClick(grid()->viewport(), Qt::LeftButton);
    grid()->setFocus();
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(text(u"txt_Gruppe"), u"verworfen"_s);
    click(u"cmdClose");
    EXPECT_TRUE(screen->isHidden());
    EXPECT_TRUE(said().isEmpty()) << "closes without a question";
}

TEST_F(CategoriesScreenTest, RefusesInTheGivenOrder) {
    enter(u"txt_Gruppe", u"   "_s);
    click(u"cmdSave");
    EXPECT_EQ(said(), (Said{{u"Bitte geben Sie eine Gruppe ein."_s, 0, u"Fehlerhafte Eingabe"_s}}));
    EXPECT_EQ(focusName(), u"txt_Gruppe"_s) << "at what is to be mended";

    // Quotes go before the duplicate test, and stay away although the save is refused.
    enter(u"txt_Gruppe", u"'PIZ\"ZA"_s);
    dialogs.answer(platform::kAnswerYes);
    click(u"cmdSave");
    EXPECT_EQ(said(), (Said{{u"Diese Gruppe existiert bereits."_s, 4, u"Fehlende Eingabe"_s}}));
    EXPECT_EQ(text(u"txt_Gruppe"), u"PIZZA"_s);
    EXPECT_EQ(count(), 2);

    // Quotes alone pass the test for emptiness once.
    enter(u"txt_Gruppe", u"\"'\""_s);
    click(u"cmdSave");
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(row(QString()), u"1|-1|1"_s);
    enter(u"txt_Gruppe", u"\""_s);
    dialogs.answer(platform::kAnswerNo);
    click(u"cmdSave");
    EXPECT_EQ(said().size(), 1);
    EXPECT_EQ(count(), 3);
}

TEST_F(CategoriesScreenTest, BrowsesByArrowKeysAndEntersTheMaskByEnter) {
    grid()->setFocus();
    press(Qt::Key_Down);
    press(Qt::Key_Up);
    EXPECT_EQ(text(u"txt_Gruppe"), u"Pizza"_s);
    EXPECT_EQ(focusName(), u"ProduktGruppenGrid"_s);
    press(Qt::Key_Down);
    EXPECT_EQ(text(u"txt_Gruppe"), u"Getränke"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(focusName(), u"txt_Gruppe"_s);
    EXPECT_EQ(screen->key(), 1);
    click(u"cmdClean");
    EXPECT_EQ(screen->key(), -1);
    EXPECT_TRUE(text(u"txt_Gruppe").isEmpty());
    EXPECT_TRUE(ticked(u"check_Internet"));
    EXPECT_FALSE(find(u"cmdDelete")->isEnabled());
}

TEST_F(CategoriesScreenTest, WhatIsMarkedIsWhatIsInTheMask) {
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"tab", [this] { press(Qt::Key_Backtab); }},
        {"first arrow", [this] { QTest::keyClick(grid(), Qt::Key_Down); }},
        {"other button", [this] { QTest::mouseClick(grid()->viewport(), Qt::RightButton, {}, placeOf(1)); }},
        {"given back",
         [this] { QTest::mouseClick(grid()->viewport(), Qt::LeftButton, Qt::ControlModifier, placeOf(1)); }},
        {"slipped",
         [this] {
             QTest::mousePress(grid()->viewport(), Qt::LeftButton, {}, placeOf(0));
             QMouseEvent slip(QEvent::MouseMove, placeOf(1), grid()->viewport()->mapToGlobal(placeOf(1)),
                              Qt::NoButton, Qt::LeftButton, {});
             QApplication::sendEvent(grid()->viewport(), &slip);
             QTest::mouseRelease(grid()->viewport(), Qt::LeftButton, {}, placeOf(1));
         }},
        {"last", [this] { QTest::keyClick(grid(), Qt::Key_End, Qt::ControlModifier); }},
        {"space", [this] { QTest::keyClick(grid(), Qt::Key_Space, Qt::ControlModifier); }},
        {"cleaned", [this] { click(u"cmdClean"); }}};
    QList<qint64> keys;
    for (const auto& [name, act] : ways) {
        act();
        keys << qMax<qint64>(screen->key(), -1);
        EXPECT_EQ(markedKey(), screen->key() > 0 ? screen->key() : -1) << name;
    }
    EXPECT_EQ(keys, (QList<qint64>{0, 2, 1, 1, 2, 1, 1, -1}));
}
