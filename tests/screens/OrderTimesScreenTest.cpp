// The hours in which the web shop takes orders.
#include "ScreenTest.h"
#include "shop/frmOnlineShopSettingsBestellzeiten.h"

using namespace Qt::StringLiterals;
using test::Said;
using test::TestFirm;

namespace {

using OrderTimesTest = test::ScreenTest<frmOnlineShopSettingsBestellzeiten>;

const QString kMonday = u"SELECT * FROM tbl_OnlineShop_Bestellzeiten WHERE lngWochentag = 1"_s;
const QString kLead = u"SELECT * FROM tbl_OnlineShop_Lieferzeiten"_s;

} // namespace

TEST_F(OrderTimesTest, KeepsEachWeekdayAndWhatIsNotInTheLists) {
    ConnMain.Execute(u"UPDATE tbl_OnlineShop_Bestellzeiten SET lngMittagBisMinuten = 7, "
                     u"lngAbendGeschlossen = -1 WHERE lngWochentag = 1"_s);
    ConnMain.Execute(u"DELETE FROM tbl_OnlineShop_Bestellzeiten WHERE lngWochentag = 3"_s);
    open();
    expectReachable(false);
    EXPECT_EQ(chosen(u"comboMiddayMinutenTo1"), u"07"_s);
    EXPECT_TRUE(ticked(u"checkEveningClose1"));
    EXPECT_EQ(chosen(u"comboEveningMinutenTo5"), u"30"_s);
    EXPECT_EQ(chosen(u"comboMiddayStundenFrom3"), QString());
    EXPECT_FALSE(find<QComboBox>(u"comboMiddayStundenFrom3")->isEditable());
    choose(u"comboMiddayStundenFrom1", u"09"_s);
    choose(u"comboEveningMinutenTo1", u"55"_s);
    tick(u"checkMiddayClose1");
    tick(u"checkEveningClose1");
    enter(u"txt_EMailAdress", u" o'neill@example.com"_s);
    click(u"opt_ShopStatus1");
    EXPECT_EQ(enterWay(u"txt_Abholzeit", 3), u"txt_Abholzeit txt_LastOrder txt_EMailAdress cmdSave"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(said(), (Said{{u"Die Bestellzeiten wurden abgespeichert."_s, 0, u"Bestellzeiten"_s}}));
    EXPECT_EQ(stored(kMonday), u"1|1|9|0|14|7|0|17|0|22|55"_s);
    EXPECT_EQ(stored(kLead), u"20|30|-1| o'neill@example.com"_s);
    EXPECT_EQ(TestFirm::count(u"tbl_OnlineShop_Bestellzeiten"_s), 6) << "a missing weekday is not added";
    click(u"cmdInternet");
    EXPECT_EQ(navigation.shown, QStringList(u"frmOnlineShopTransfer"_s));
}

TEST_F(OrderTimesTest, AddsTheMissingRowAndSavesNoTimesOfNoWeekday) {
    ConnMain.Execute(u"DELETE FROM tbl_OnlineShop_Lieferzeiten"_s);
    ConnMain.Execute(u"DELETE FROM tbl_OnlineShop_Bestellzeiten"_s);
    open();

    const struct {
        const char16_t* field;
        QString faulty;
        QString typed;
    } fields[] = {{u"txt_Abholzeit", u"Bitte geben Sie eine gültige Abholzeit ein."_s, u"15"_s},
                  {u"txt_LastOrder", u"Bitte geben Sie eine gültige letzte Bestellzeit ein."_s, u"12.5"_s},
                  {u"txt_EMailAdress", u"Bitte geben Sie eine gültige e-mail Adresse ein."_s, u"x"_s}};

    for (const auto& field : fields) {
        find<QPushButton>(u"cmdSave")->click();
        EXPECT_EQ(said(), (Said{{field.faulty, 0, u"Fehlerhafte Eingabe"_s}}));
        EXPECT_EQ(focusName(), field.field);
        enter(field.field, field.typed);
    }
    click(u"cmdSave");
    EXPECT_EQ(said().size(), 1);
    EXPECT_EQ(stored(kLead), u"15|13|0|x"_s);
    EXPECT_EQ(TestFirm::count(u"tbl_OnlineShop_Bestellzeiten"_s), 0);
}

TEST_F(OrderTimesTest, MinutesThatAreNoneBecomeZeroAndAreNotSavedByTheSameKey) {
    open();
    for (const QString& typed : {u"abc"_s, u""_s, u"1,5"_s, u"9e99"_s}) {
        enter(u"txt_Abholzeit", typed);
        press(Qt::Key_Return);
        EXPECT_EQ(text(u"txt_Abholzeit"), u"0"_s);
        QApplication::processEvents();
        EXPECT_EQ(said(),
                  (Said{{u"Bitte geben Sie eine gültige Abholzeit ein."_s, 0, u"Ungültige Eingabe"_s}}));
    }
    enter(u"txt_LastOrder", u"bald"_s);
    press(Qt::Key_S, Qt::AltModifier);
    QApplication::processEvents();
    EXPECT_EQ(said(),
              (Said{{u"Bitte geben Sie eine gültige letzte Bestellzeit ein."_s, 0, u"Ungültige Eingabe"_s}}));
    EXPECT_EQ(stored(kLead), u"20|30|-1|"_s);
}
