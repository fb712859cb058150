// The users and their rights: what departs from the form of the master-data screens.
#include "ScreenTest.h"
#include "shell/frmEinstellungenBenutzer.h"
#include "shell/modEinstellungenBenutzer.h"
#include "store/SystemSettings.h"
#include <QListWidget>

using namespace Qt::StringLiterals;
using test::Said;
using test::TestFirm;

namespace {

class UsersScreenTest : public test::MasterDataTest<frmEinstellungenBenutzer> {
  protected:
    ~UsersScreenTest() override { SysAnmeldungBenutzer = 0; }

    /// Password and the seven rights of a user as stored; "" without the row.
    static QString user(const QString& name) {
        return stored(u"SELECT txt_Passwort, lng_Administrator, lng_Einstellungen, lng_KundenStatistik, "
                      u"lng_UmsatzStatistik, lng_Buchungsjournal, lng_OnlineShop, lng_Datensicherung FROM "
                      u"tbl_Einstellungen_Benutzer WHERE txt_Username = "_s +
                      store::sqlText(name));
    }

    static qint64 count() { return TestFirm::count(u"tbl_Einstellungen_Benutzer"_s); }

    QListWidget* permissions() { return find<QListWidget>(u"list_UserPermission"); }

    QString ticks() {
        QString states;
        for (int row = 0; row < permissions()->count(); ++row)
            states += permissions()->item(row)->checkState() == Qt::Checked ? u'x' : u'.';
        return states;
    }

    /// By keyboard, as the mouse's place of the box depends on the style.
    void toggle(int row) {
        permissions()->setCurrentRow(row);
        QTest::keyClick(permissions(), Qt::Key_Space);
    }

    void newUser(const QString& name) {
        dialogs.answerInput(name);
        click(u"cmdNewUser");
    }

    /// Which of the controls of the mask are enabled.
    QString enabled() {
        QStringList names;
        for (const char* name :
             {"cmdNewUser", "cmdSave", "cmdDelete", "txt_PWD", "txt_PWDConfirm", "list_UserPermission"})
            if (screen->findChild<QWidget*>(QLatin1String(name))->isEnabled())
                names << QLatin1String(name);
        return names.join(u' ');
    }
};

const QString kMaskOpen = u"cmdNewUser cmdSave txt_PWD txt_PWDConfirm list_UserPermission"_s;

} // namespace

TEST_F(UsersScreenTest, OpensEmptyAndAddsAUserByKeyboard) {
    EXPECT_EQ(enabled(), u"cmdNewUser"_s);
    EXPECT_EQ(focusName(), u"cmdNewUser"_s);
    expectReachable();
    EXPECT_EQ(text(u"txt_Administrator_Username"), u"Inhaber"_s);
    EXPECT_EQ(find<QLineEdit>(u"txt_PWD")->echoMode(), QLineEdit::Password);
    EXPECT_FALSE(ticked(u"check_AnmeldungUser"));
    dialogs.answerInput(u"O'Neil"_s);
    press(Qt::Key_Space);
    EXPECT_EQ(text(u"txt_Username"), u"O'Neil"_s);
    EXPECT_EQ(enabled(), kMaskOpen);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(focusName(), u"txt_PWD"_s);
    QTest::keyClicks(QApplication::focusWidget(), u"a'b"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(focusName(), u"txt_PWDConfirm"_s);
    QTest::keyClicks(QApplication::focusWidget(), u"a'b"_s);
    toggle(5);
    find<QLineEdit>(u"txt_PWDConfirm")->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(focusName(), u"cmdSave"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(user(u"O'Neil"_s), u"a'b|0|0|0|0|0|-1|0"_s);
    EXPECT_EQ(rows(), QStringList{u"O'Neil"_s});
    EXPECT_EQ(enabled(), u"cmdNewUser"_s);
    EXPECT_TRUE(text(u"txt_Username").isEmpty());
    // A second one of the same visit is added too, with an empty password.
    newUser(u"Ida"_s);
    click(u"cmdSave");
    EXPECT_EQ(user(u"Ida"_s), u"|0|0|0|0|0|0|0"_s);
    EXPECT_EQ(count(), 2);
}

TEST_F(UsersScreenTest, ChecksANewNameInTheGivenOrder) {
    modEinstellungenBenutzer::SaveBenutzer({u"Anna"_s, {}, {}}, 0);
    const QString tooLong = u"Der Benutzer Name ist zu lang. Es sind maximal 20 Zeichen erlaubt"_s;
    const QString tooShort = u"Der Benutzer Name muss mindestenz 3 Zeichen lang sein."_s;
    const QString special = u"Der Benutzer Name darf keine Sonderzeichen beinhalten."_s;
    const std::pair<QString, QString> cases[] = {{QString(21, u'%'), tooLong},
                                                 {QString(21, u' '), tooLong},
                                                 {u""_s, tooShort},
                                                 {u"  ab  "_s, tooShort},
                                                 {u"%&"_s, tooShort},
                                                 {u"50%"_s, special},
                                                 {u"A&B"_s, special},
                                                 {QString(20, u'x'), {}},
                                                 {u"a'b\"c;--"_s, {}},
                                                 {u"Jürg 👋"_s, {}},
                                                 {u"anna"_s, u"Dieser Benutzername existiert bereits."_s}};
    for (const auto& [name, message] : cases) {
        click(u"cmdClean");
        newUser(name);
        const Said told = said();
        if (message.isEmpty()) {
            EXPECT_EQ(text(u"txt_Username"), name);
            continue;
        }
        EXPECT_EQ(told.last().text, message) << name.toStdString();
        EXPECT_EQ(told.last().title, u"Ungültiger Benutzer Name"_s);
        EXPECT_TRUE(text(u"txt_Username").isEmpty());
        EXPECT_EQ(enabled(), u"cmdNewUser"_s);
    }
}

TEST_F(UsersScreenTest, AdministratorMeansAllRights) {
    newUser(u"Anna"_s);
    toggle(3);
    EXPECT_EQ(ticks(), u"...x..."_s);
    toggle(0);
    EXPECT_EQ(ticks(), u"xxxxxxx"_s);
    toggle(0);
    EXPECT_EQ(ticks(), u".xxxxxx"_s);
    toggle(0);
    toggle(4);
    EXPECT_EQ(ticks(), u".xxx.xx"_s);
    toggle(4);
    EXPECT_EQ(ticks(), u".xxxxxx"_s) << "the seventh right does not make an administrator";
    toggle(0);
    click(u"cmdSave");
    EXPECT_EQ(user(u"Anna"_s), u"|-1|-1|-1|-1|-1|-1|-1"_s);
    EXPECT_EQ(ticks(), u"......."_s);
}

TEST_F(UsersScreenTest, RefusesToSaveWithoutAUserOrWithTwoPasswords) {
    newUser(u"Anna"_s);
    put({{u"txt_PWD", u"Brot"_s}, {u"txt_PWDConfirm", u"brot"_s}});
    said();
    click(u"cmdSave");
    EXPECT_EQ(said(), (Said{{u"Die Passwörter stimmen nicht überein."_s, 0, u"Benutzer"_s}}));
    put({{u"txt_Username", u"  "_s}});
    click(u"cmdSave");
    EXPECT_EQ(said(), (Said{{u"Bitte wählen Sie einen Benutzer."_s, 0, u"Benutzer"_s}}));
    EXPECT_EQ(count(), 0);
}

TEST_F(UsersScreenTest, ANewNameAfterALoadedUserTakesThatUsersRow) {
    modEinstellungenBenutzer::SaveBenutzer({u"Anna"_s, u"Brot"_s, {false, true}}, 0);
    screen->FormatGrid();
    clickRow(0);
    EXPECT_EQ(text(u"txt_Username") + text(u"txt_PWDConfirm") + ticks(), u"AnnaBrot.x....."_s);
    EXPECT_EQ(enabled(), u"cmdNewUser cmdSave cmdDelete txt_PWD txt_PWDConfirm list_UserPermission"_s);
    const qint64 key = screen->key();
    click(u"cmdClean");
    EXPECT_EQ(screen->key(), key) << "cleaning keeps the key";
    newUser(u"Berta"_s);
    click(u"cmdSave");
    EXPECT_EQ(rows(), QStringList{u"Berta"_s});
    EXPECT_EQ(user(u"Berta"_s), u"|0|0|0|0|0|0|0"_s);
    said();
    clickRow(0);
    click(u"cmdDelete");
    EXPECT_TRUE(said().isEmpty()) << "deleted without a question";
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(enabled(), u"cmdNewUser"_s);
    // The key left behind finds no row, so that a new user is added.
    newUser(u"Carla"_s);
    click(u"cmdSave");
    EXPECT_EQ(rows(), QStringList{u"Carla"_s});
}

TEST_F(UsersScreenTest, TheSwitchIsKeptAtOnce) {
    const QString sql = u"SELECT lng_AnmeldungBenutzer FROM tbl_Einstellungen_System"_s;
    tick(u"check_AnmeldungUser");
    EXPECT_EQ(stored(sql), u"1"_s);
    EXPECT_EQ(SysAnmeldungBenutzer, 1);
    tick(u"check_AnmeldungUser");
    EXPECT_EQ(stored(sql), u"0"_s);
    EXPECT_EQ(SysAnmeldungBenutzer, 0);
}
