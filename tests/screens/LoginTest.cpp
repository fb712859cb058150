// The log-in at the start and the change of user, on the real main window.
#include "ShellFixture.h"
#include "install/OwnerPassword.h"
#include "shell/MenuTree.h"
#include "shell/frmSystemAnmelden.h"
#include "shell/modEinstellungenBenutzer.h"
#include "store/PasswordGate.h"
#include "store/SystemSettings.h"

using namespace Qt::StringLiterals;
using modEinstellungenBenutzer::CheckLogin;

namespace {

class LoginTest : public test::ShellTest {
  protected:
    LoginTest() {
        registry.values.insert(u"TavolinoHelp/StepByStep/ID"_s, u"0"_s);
        // Few rounds: what takes time is tested once, below.
        writeIni("[Inhaber]\nName=Chef\nPasswort=" + store::makeVerifier(u"Geheim '1'"_s, 10) + '\n');
        prepare();
    }

    ~LoginTest() override { SysAnmeldungBenutzer = 0; }

    void writeIni(const QByteArray& content) {
        QFile file(folder.filePath(u"tavolino.ini"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }

    /// The log-in is on; Anna may see the journal, Root everything.
    void prepare() {
        store::setAppPath(folder.path());
        store::OpenDatabases();
        modEinstellungenBenutzer::SaveAnmeldung(true);
        modEinstellungenBenutzer::SaveBenutzer({u"Anna"_s, u"Brot"_s, {false, false, false, false, true}}, 0);
        modEinstellungenBenutzer::SaveBenutzer({u"Root"_s, u""_s, {true, true, true, true, true, true, true}},
                                               0);
        store::CloseDatabases();
    }

    /// Works the log-in when it comes up. It must be over by then: one that stays would hold the test.
    void atLogin(std::function<void()> work) {
        auto* watch = new QTimer(qApp);
        QObject::connect(watch, &QTimer::timeout, qApp, [this, watch, work = std::move(work)] {
            login = qobject_cast<frmSystemAnmelden*>(QApplication::activeModalWidget());
            if (!login)
                return;
            watch->deleteLater();
            watch->stop();
            EXPECT_TRUE(QTest::qWaitForWindowActive(login));
            work();
            if (login && login->isVisible()) {
                ADD_FAILURE() << "the log-in is still open";
                login->done(0);
            }
        });
        watch->start(1);
    }

    void attempt(const QString& name, const QString& password) {
        login->findChild<QLineEdit*>(u"txt_Benutzernamen"_s)->setText(name);
        login->findChild<QLineEdit*>(u"txt_Passwort"_s)->setText(password);
        QTest::mouseClick(login->findChild<QPushButton*>(u"cmdAnmelden"_s), Qt::LeftButton);
    }

    /// The program with Anna logged in.
    frmMDI& startAsAnna() {
        atLogin([this] { attempt(u"anna"_s, u"BROT"_s); });
        return start();
    }

    bool mayOpen(const char* entry) {
        return app->mainWindow().menuAction(QLatin1String(entry))->isEnabled();
    }

    QPointer<frmSystemAnmelden> login;
};

} // namespace

TEST_F(LoginTest, TheStartWaitsForTheLogin) {
    atLogin([this] {
        EXPECT_TRUE(app->mainWindow().isVisible());
        EXPECT_EQ(label("MDIKundenTotal"), QString()) << "the start went on";
        EXPECT_FALSE(mayOpen("mnEinstellungenBenutzer")) << "open before anybody logged in";
        EXPECT_EQ(login->windowTitle(), u"Anmelden"_s);
        QTest::keyClicks(login->focusWidget(), u"Anna"_s);
        QTest::keyClick(login->focusWidget(), Qt::Key_Return);
        EXPECT_EQ(login->focusWidget()->objectName(), u"txt_Passwort"_s);
        QTest::keyClicks(login->focusWidget(), u"Brot"_s);
        QTest::keyClick(login->focusWidget(), Qt::Key_Return);
    });
    start();
    EXPECT_EQ(label("MDIKundenTotal"), u"0"_s);
    EXPECT_TRUE(dialogs.said.isEmpty());
    EXPECT_NE(UserBuchungsjournal, 0);
    EXPECT_EQ(UserAdministrator, 0);
    EXPECT_FALSE(mayOpen("mnEinstellungenBenutzer"));
    EXPECT_TRUE(mayOpen("mnVerwaltungKurier"));
}

TEST_F(LoginTest, TheThirdWrongAttemptEndsTheProgramWithoutAWord) {
    const auto left = [](int attempts) {
        return u"Ihre Anmeldung konnte nicht verifiziert werden.\r\nÜberprüfen Sie Ihre Anmeldedaten.\r\n"
               u"Sie haben noch %1 Versuch(e)."_s.arg(attempts);
    };
    atLogin([&] {
        attempt(u"Anna"_s, u"Kuchen"_s);
        EXPECT_EQ(dialogs.last().text, left(2));
        EXPECT_EQ(dialogs.last().title, u"Anmeldung gescheitert"_s);
        attempt(u""_s, u""_s);
        EXPECT_EQ(dialogs.last().text, left(1));
        EXPECT_TRUE(ended.isEmpty());
        attempt(u"Anna"_s, u""_s);
    });
    build();
    EXPECT_FALSE(app->start());
    EXPECT_EQ(ended.size(), 1);
    EXPECT_EQ(dialogs.said.size(), 2);
    EXPECT_EQ(UserBuchungsjournal, 0);
}

TEST_F(LoginTest, ThereIsNoWayPastTheLoginAtTheStart) {
    atLogin([this] {
        dialogs.answer(platform::kAnswerNo);
        QTest::keyClick(login.data(), Qt::Key_Escape);
        dialogs.answer(platform::kAnswerNo);
        login->close();
        dialogs.answer(platform::kAnswerNo);
        QTest::mouseClick(login->findChild<QPushButton*>(u"cmdEnd"_s), Qt::LeftButton);
        EXPECT_TRUE(login->isVisible());
        EXPECT_TRUE(ended.isEmpty());
        dialogs.answer(platform::kAnswerYes);
        login->close();
    });
    build();
    EXPECT_FALSE(app->start());
    EXPECT_EQ(ended, QList<int>{0});
    ASSERT_EQ(dialogs.said.size(), 4);
    EXPECT_EQ(dialogs.last().text, u"Möchten Sie das Programm wirklich beenden?"_s);
    EXPECT_EQ(dialogs.last().title, u"Programm Beenden"_s);
    EXPECT_EQ(dialogs.last().style, platform::kYesNo);
}

TEST_F(LoginTest, AChangeOfUserClosesTheFormerUsersScreens) {
    frmMDI& window = startAsAnna();
    atLogin([&] {
        attempt(u"Root"_s, u"falsch"_s);
        login->reject();
    });
    window.menuAction(u"mnEinstellungenAnmeldung"_s)->trigger();
    EXPECT_TRUE(UserBuchungsjournal && !UserAdministrator && ended.isEmpty()) << "a failed change keeps them";
    for (const bool byMenu : {true, false}) {
        window.screens().show(u"frmVerwaltungKuriere"_s);
        window.screens().show(u"frmAuftragswesenAuftragserfassung"_s);
        ASSERT_TRUE(window.screens().open(u"frmVerwaltungKuriere"_s));
        atLogin([&] { byMenu ? attempt(u"Root"_s, u""_s) : login->reject(); });
        if (byMenu)
            window.menuAction(u"mnEinstellungenAnmeldung"_s)->trigger();
        else
            find<QToolButton>("ToolBarAnmeldung")->click();
        EXPECT_FALSE(window.screens().open(u"frmVerwaltungKuriere"_s));
        EXPECT_FALSE(window.screens().open(u"frmAuftragswesenAuftragserfassung"_s));
        // Leaving the dialog keeps the user.
        EXPECT_NE(UserAdministrator, 0);
        EXPECT_TRUE(mayOpen("mnEinstellungenBenutzer"));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(window.findChildren<QMdiSubWindow*>().isEmpty());
    }
}

TEST_F(LoginTest, WhatARightKeepsShutOpensOnNoOtherRoad) {
    frmMDI& window = startAsAnna();
    const platform::Navigation& roads = app->services().navigation;
    EXPECT_FALSE(roads.hasScreen(u"frmEinstellungenBenutzer"_s));
    EXPECT_TRUE(roads.hasScreen(u"frmVerwaltungKuriere"_s));
    // A guide or a context menu would come this way.
    app->services().navigation.showScreen(u"frmEinstellungenBenutzer"_s);
    window.screens().show(u"frmEinstellungenBenutzer"_s);
    EXPECT_FALSE(window.screens().open(u"frmEinstellungenBenutzer"_s));
    UserAdministrator = -1;
    window.ApplyUserRights();
    app->services().navigation.showScreen(u"frmEinstellungenBenutzer"_s);
    EXPECT_TRUE(window.screens().open(u"frmEinstellungenBenutzer"_s));
}

TEST_F(LoginTest, AnEndAfterARefusedLoginTakesNothingOver) {
    for (const bool thrice : {true, false}) {
        ended.clear();
        atLogin([this] { attempt(u"Root"_s, u""_s); });
        frmMDI& window = start();
        window.screens().show(u"frmEinstellungenSystem"_s);
        window.screens()
            .open(u"frmEinstellungenSystem"_s)
            ->findChild<QLineEdit*>(u"txt_VATNummer"_s)
            ->setText(u"unfertig"_s);
        atLogin([&] {
            for (int i = 0; i < (thrice ? 3 : 1); ++i)
                attempt(u"Anna"_s, u"geraten"_s);
            if (thrice)
                return;
            dialogs.answer(platform::kAnswerYes);
            QTest::mouseClick(login->findChild<QPushButton*>(u"cmdEnd"_s), Qt::LeftButton);
        });
        window.menuAction(u"mnEinstellungenAnmeldung"_s)->trigger();
        EXPECT_EQ(ended.size(), 1);
        app.reset();
        store::OpenDatabases();
        EXPECT_EQ(query(u"SELECT txt_VATNummer FROM tbl_Einstellungen_System"_s), QString());
        store::CloseDatabases();
    }
}

TEST_F(LoginTest, TheOwnerGetsInWithNoUserInTheTable) {
    atLogin([this] {
        ConnMain.Execute(u"DELETE FROM tbl_Einstellungen_Benutzer"_s);
        attempt(u"Anna"_s, u"Brot"_s);
        attempt(u"chef"_s, u"Geheim '1'"_s);
        EXPECT_EQ(dialogs.said.size(), 2) << "the owner's name counts its case";
        attempt(u"Chef"_s, u"Geheim '1'"_s);
    });
    start();
    EXPECT_TRUE(ended.isEmpty());
    EXPECT_NE(UserAdministrator, 0);
    EXPECT_EQ(UserBuchungsjournal, 0);
    EXPECT_TRUE(mayOpen("mnEinstellungenBenutzer"));
}

TEST_F(LoginTest, NoCraftedTextLetsAnyoneIn) {
    startAsAnna();
    const QString million(1'000'000, u'x');
    const QString nul = QString(QChar(0));
    const QStringList texts =
        u"|' OR '1'='1|' OR 1=1 --|'; DELETE FROM tbl_Einstellungen_Benutzer; --|\" OR \"\"=\"|%|*|Ann_|A%|"
        u"[A]nna|Anna'|Anna\\|Anna |NULL|0"_s.split(u'|') +
        QStringList{u"Anna"_s + nul, u"Brot"_s + nul + u'x', nul, u"Chef"_s + nul, million, million + u'\''};
    for (const QString& text : texts) {
        for (const QString& known : {u"Anna"_s, u"Chef"_s, text}) {
            EXPECT_FALSE(CheckLogin(known, text))
                << known.left(60).toStdString() << '/' << text.left(60).toStdString();
        }
        EXPECT_FALSE(CheckLogin(text, u"Brot"_s)) << text.left(60).toStdString();
        EXPECT_FALSE(CheckLogin(text, u"Geheim '1'"_s)) << text.left(60).toStdString();
    }
    EXPECT_EQ(UserAdministrator, 0);
    EXPECT_EQ(query(u"SELECT Count(*) AS n FROM tbl_Einstellungen_Benutzer"_s), u"2"_s);
    // A user whose name and password hold a quote gets in by exactly these.
    modEinstellungenBenutzer::SaveBenutzer({u"O'Neil"_s, u"x' OR 'y"_s, {}}, 0);
    EXPECT_TRUE(CheckLogin(u"O'Neil"_s, u"x' OR 'y"_s));
    EXPECT_FALSE(CheckLogin(u"O'Neil"_s, u"y"_s));
}

TEST_F(LoginTest, AnOwnerAccountThatIsNotWholeAdmitsNobody) {
    startAsAnna();
    const QByteArray accounts[] = {"",
                                   "[Inhaber]\nName=\nPasswort=\n",
                                   "[Inhaber]\nName=Chef\n",
                                   "[Inhaber]\nName=Chef\nPasswort=\n",
                                   "[Inhaber]\nName=Chef\nPasswort=offen\n",
                                   "[Inhaber]\nName=Chef\nPasswort=0$$\n",
                                   "[Inhaber]\nName=Chef\nPasswort=10$$\n",
                                   "[Inhaber]\nName=Chef\nPasswort=-1$AAAA$\n",
                                   "[Inhaber]\nName=\nPasswort=" + store::makeVerifier(QString(), 10) + '\n'};
    for (const QByteArray& account : accounts) {
        writeIni(account);
        for (const QString& name : {u"Chef"_s, QString()})
            for (const QString& password : {QString(), u"offen"_s, u"10$$"_s})
                EXPECT_FALSE(CheckLogin(name, password)) << account.toStdString();
    }
    writeIni("[Inhaber]\nName=Chef\n");
    install::setOwnerPassword(folder.path(), u"Käsefondue"_s);
    EXPECT_TRUE(CheckLogin(u"Chef"_s, u"Käsefondue"_s)) << "as the installer sets it";
    ASSERT_TRUE(QFile::remove(folder.filePath(u"tavolino.ini"_s)));
    EXPECT_FALSE(CheckLogin(QString(), QString()));
}
