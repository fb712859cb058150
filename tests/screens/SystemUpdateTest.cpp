#include "common/Guard.h"
#include "maintenance/SystemNews.h"
#include "maintenance/frmSystemMessagesService.h"
#include "maintenance/frmSystemUpdate.h"
#include "maintenance/mod_SoftwareUpdate.h"
#include "platform/UserWatch.h"
#include "platform/net/Signature.h"
#include "screens/ScreenTest.h"
#include "screens/ShellFixture.h"
#include "store/SystemSettings.h"
#include "support/AnsweringServer.h"
#include <QDialog>
#include <QProgressBar>
#include <QTemporaryFile>
#include <QUrl>

using namespace Qt::StringLiterals;
using maintenance::systemNews;
using test::AnsweringServer;
using test::TestFirm;

namespace {

const QString kUnsigned = u"Die heruntergeladene Datei ist nicht gültig signiert und wird nicht "
                          "ausgeführt."_s;

const QByteArray kBytes = "#!/bin/sh\n";

QByteArray signatureOf(const QString& kind, const QString& version, const platform::SigningKeys& keys) {
    QTemporaryFile file;
    EXPECT_TRUE(file.open() && file.write(kBytes) == kBytes.size() && file.flush());
    return *platform::signFile(file.fileName(), kind, version, keys.secretKey);
}

template <typename Screen> class UpdateTest : public test::ScreenTest<Screen> {
  protected:
    UpdateTest() {
        this->internet.ends.systemHost = server.address();
        publisher.publicKey = keys.publicKey;
        publisher.startProgram = [this](const QString& file) {
            order << u"start "_s + QFileInfo(file).fileName() +
                         (ConnMain.IsOpen() ? u" open"_s : u" closed"_s) +
                         (this->navigation.standsStill ? u" still"_s : u""_s);
            return starts;
        };
    }

    ~UpdateTest() override {
        if (!ConnMain.IsOpen())
            store::OpenDatabases();
    }

    /// With its signature, unless that is told.
    void serve(const QString& name, const QString& version, const QByteArray& signature = {}) {
        const QByteArray text = signature.isNull() ? signatureOf(name, version, keys) : signature;
        server.answersTo = {{name + u' ', AnsweringServer::page(kBytes)},
                            {name + u".sig "_s, AnsweringServer::page(text)}};
    }

    void update() {
        this->open(publisher);
        this->click(u"cmdUpdate");
    }

    bool waitForBox() {
        return QTest::qWaitFor([this] { return !this->dialogs.said.isEmpty(); }, 5000);
    }

    QStringList left() const {
        return QDir(this->firm.folder() + u"/Internet"_s).entryList({u"*.exe*"_s}, QDir::Files);
    }

    const platform::SigningKeys keys = platform::makeSigningKeys();
    maintenance::Publisher publisher;
    AnsweringServer server;
    QStringList order;
    bool starts = true;
};

using SoftwareUpdateScreen = UpdateTest<frmSystemSoftwareUpdate>;
using PhoneBookUpdateScreen = UpdateTest<frmSystemTelefonbuchUpdate>;

TEST_F(SoftwareUpdateScreen, ASignedPackageIsStartedBehindTheClosedDatabases) {
    serve(u"Update.exe"_s, u"1.0.1"_s);
    navigation.allClose = false;
    platform::UserWatch user;
    user.milliseconds = 600;
    update();
    EXPECT_FALSE(find(u"cmdUpdate")->isEnabled() || find(u"cmdClose")->isEnabled());
    EXPECT_TRUE(find(u"ProgressBar")->isVisible());
    EXPECT_EQ(find<QLabel>(u"lbl_SoftwareDownload")->text(), u"Software download......");
    EXPECT_TRUE(QTest::qWaitFor([this] { return left() == QStringList{u"Update.exe"_s}; }));
    QTest::qWait(300);
    EXPECT_TRUE(navigation.keptOpen.isEmpty()) << "the user keys";
    EXPECT_TRUE(QTest::qWaitFor([this] { return navigation.keptOpen.size() > 1; }));
    EXPECT_TRUE(find(u"cmdAbort")->isEnabled());
    EXPECT_TRUE(ConnMain.IsOpen() && dialogs.said.isEmpty()) << "another screen has something to end";
    navigation.allClose = true;
    ASSERT_TRUE(waitForBox());
    EXPECT_EQ(said(), (test::Said{{u"Das Programm wird jetzt beendet und die Software Installation "
                                   "durchgeführt."_s,
                                   platform::kInformation, u"Aktualisierung starten"_s}}));
    EXPECT_EQ(order, QStringList{u"start Update.exe closed still"_s});
    EXPECT_TRUE(navigation.ended);
    EXPECT_EQ(left(), QStringList{u"Update.exe"_s});
}

TEST_F(SoftwareUpdateScreen, WhatIsNotSignedForThisUpdateIsDeletedAndNotStarted) {
    const QString exe = u"Update.exe"_s;
    const auto signedAs = [&](const QString& kind, const QString& version) {
        serve(exe, u""_s, signatureOf(kind, version, keys));
    };
    const auto answer = [&](const QByteArray& status) {
        server.answersTo[exe + u".sig "_s] = AnsweringServer::page("<html>", status);
    };
    const std::tuple<const char*, std::function<void()>, QString> cases[] = {
        {"of the phone book", [&] { signedAs(u"DBTavolinoPhone.exe"_s, u"1.0.1"_s); }, kUnsigned},
        {"of the version that runs", [&] { signedAs(exe, u"1.0.0"_s); }, kUnsigned},
        {"of no version", [&] { signedAs(exe, u"1e9.0.0"_s); }, kUnsigned},
        {"missing", [&] { answer("404 Not Found"); }, kUnsigned},
        {"signature busy", [&] { answer("503 Busy"); },
         u"503: An error occurred calling InternetOpenUrl function\nDer Server meldet den Fehler 503."_s},
        {"cut", [&] { server.answersTo[exe + u' '].chop(1); },
         u"12030: Der Server hat die Verbindung mitten in der Antwort beendet."_s},
    };
    for (const auto& [what, prepare, says] : cases) {
        SCOPED_TRACE(what);
        serve(exe, u"1.0.1"_s);
        prepare();
        update();
        ASSERT_TRUE(waitForBox());
        EXPECT_EQ(said(), (test::Said{{says, platform::kStop, u"System: Software Aktualisierung"_s}}));
        EXPECT_TRUE(QTest::qWaitFor([this] { return left().isEmpty(); }, 1000));
        EXPECT_TRUE(find(u"cmdUpdate")->isEnabled() && find(u"cmdClose")->isEnabled());
    }
    server.requests.clear();
    publisher.publicKey.clear();
    update();
    ASSERT_TRUE(waitForBox());
    EXPECT_TRUE(server.requests.isEmpty()) << "without a key nothing is fetched";
    EXPECT_TRUE(order.isEmpty() && ConnMain.IsOpen() && !navigation.ended);
}

TEST_F(SoftwareUpdateScreen, TheFetchingCanBeGivenUp) {
    serve(u"Update.exe"_s, u"1.0.1"_s);
    server.answersTo[u"Update.exe "_s] = QByteArray();
    for (const bool byButton : {false, true}) {
        update();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !left().isEmpty(); }));
        EXPECT_FALSE(left().contains(u"Update.exe"_s)) << "before it is known to be good";
        byButton ? click(u"cmdAbort") : void(screen->close());
        EXPECT_EQ(left(), QStringList()) << byButton;
    }
    EXPECT_TRUE(find(u"cmdUpdate")->isEnabled());
    expectReachable();
}

TEST_F(PhoneBookUpdateScreen, ComparesWithTheLocalPhoneBook) {
    const QString exe = u"DBTavolinoPhone.exe"_s;
    serve(exe, u"1"_s);
    update();
    ASSERT_TRUE(waitForBox());
    EXPECT_EQ(said().first().text, kUnsigned) << "the same again";
    serve(exe, u"2"_s);
    ConnPhone.Execute(u"ALTER TABLE tbl_PhoneBookVersion RENAME TO away"_s);
    common::setErrorHandler([this](common::Origin origin, const std::exception_ptr&) {
        EXPECT_EQ(origin, common::Origin::Answer) << "it would end the program";
        order << u"error"_s;
    });
    click(u"cmdUpdate");
    ASSERT_TRUE(waitForBox());
    common::setErrorHandler({});
    EXPECT_EQ(std::exchange(order, {}), QStringList{u"error"_s});
    EXPECT_TRUE(find(u"cmdClose")->isEnabled());
    said();
    ConnPhone.Execute(u"ALTER TABLE away RENAME TO tbl_PhoneBookVersion"_s);
    starts = false;
    click(u"cmdUpdate");
    EXPECT_TRUE(QTest::qWaitFor([this] { return navigation.ended; }, 5000));
    ASSERT_EQ(dialogs.said.size(), 2);
    EXPECT_EQ(dialogs.said.first().text,
              u"Das Programm wird jetzt beendet und die Telefonbuch Installation durchgeführt.");
    EXPECT_TRUE(dialogs.last().text.contains(u"konnte nicht gestartet werden"_s));
}

class MessagesScreen : public test::ScreenTest<frmSystemMessagesService> {
  protected:
    MessagesScreen() {
        internet.ends.systemHost = server.address();
        internet.ends.installation = u"Müller & Söhne"_s;
        systemNews() = {.SystemMessageStatus = 1, .SystemMessageText = u"Guten Tag\r\nWartung"_s};
    }

    ~MessagesScreen() override { systemNews() = {}; }

    /// The value of the last request's only key, as a server reads it.
    QString sent() const {
        const QString query = server.requests.last().section(u' ', 1, 1).section(u'?', 1);
        EXPECT_EQ(query.count(u'=') + query.count(u'&'), 1) << query.toStdString();
        return QUrl::fromPercentEncoding(query.section(u'=', 1).toLatin1());
    }

    AnsweringServer server{AnsweringServer::page("OK", "500 Error")};
};

TEST_F(MessagesScreen, AMessageIsReadOnce) {
    open();
    expectReachable();
    EXPECT_EQ(find<QPlainTextEdit>(u"txt_SystemMessage")->toPlainText(), u"Guten Tag\nWartung");
    click(u"cmdReadMessage");
    EXPECT_FALSE(find(u"cmdReadMessage")->isEnabled());
    EXPECT_EQ(said().size(), 1) << "the server has not heard of it";
    server.answer = AnsweringServer::page("OK");
    systemNews().SystemMessageText = u"Neu"_s;
    screen->showSystemMessage();
    EXPECT_EQ(find<QPlainTextEdit>(u"txt_SystemMessage")->toPlainText(), u"Neu");
    click(u"cmdReadMessage");
    EXPECT_EQ(sent(), u"Müller & Söhne");
    EXPECT_TRUE(said().isEmpty());
    open();
    EXPECT_FALSE(find(u"cmdReadMessage")->isEnabled());
}

TEST_F(MessagesScreen, WhatWasTypedArrivesAsItIs) {
    open();
    const QString typed = u"1 + 1 = 2 & 100% \"ja\" #?;/\\%41 <b>\n\tGrüezi {€} ~^|"_s;
    const QString code = find<QLabel>(u"lbl_Random")->text();
    enter(u"txt_Code", code);
    for (const QString& unfit : {u" \n"_s, QString(2000, u'€')}) {
        find<QPlainTextEdit>(u"txt_SendSystemMessage")->setPlainText(unfit);
        click(u"cmdSend");
        EXPECT_EQ(said().first().style, platform::kInformation);
    }
    find<QPlainTextEdit>(u"txt_SendSystemMessage")->setPlainText(typed);
    for (const QString& wrong : {u""_s, code + u'0', QString::number(code.toInt() ^ 1)}) {
        enter(u"txt_Code", wrong);
        click(u"cmdSend");
        EXPECT_EQ(said().first().title, u"Fehlerhafter Code");
    }
    EXPECT_TRUE(server.requests.isEmpty());
    enter(u"txt_Code", code);
    click(u"cmdSend");
    EXPECT_EQ(sent(), typed);
    EXPECT_EQ(said().first().style, platform::kStop) << "of a server with an error";
    server.answer = AnsweringServer::page("OK");
    click(u"cmdSend");
    EXPECT_EQ(said().first().text, u"Die Nachricht wurde an den System Verwalter gesendet.");
    click(u"cmdSend");
    EXPECT_EQ(said().first().title, u"Fehlerhafter Code") << "sent twice by one code";
}

class SystemNewsShell : public test::ShellTest {
  protected:
    SystemNewsShell() { internet.ends.systemHost = server.address(); }

    ~SystemNewsShell() override { SysAnmeldungBenutzer = 0; }

    /// As the server's answer at the start.
    static QByteArray news(const QByteArray& revision) {
        return AnsweringServer::page("=/01=1=01/==/02=0=02/==/03=" + revision +
                                     "=03/==/04=1=04/==/05=0=05/==/06=0=06/==/07=2958465=07/==/08=1=08/="
                                     "=/09=Wartung=09/=");
    }

    bool shows(const char* panel) { return find<QPushButton>(panel)->isVisible(); }

    bool waitFor(const std::function<bool()>& done) { return QTest::qWaitFor(done, 5000); }

    AnsweringServer server{QByteArray(), AnsweringServer::After::Stay};
};

TEST_F(SystemNewsShell, TheAnswerShowsThePanelsAndOffersTheUpdateOnce) {
    server.answer = news("5");
    const QString leftover = folder.filePath(u"Internet/Update.exe.teil"_s);
    QDir().mkpath(folder.filePath(u"Internet"_s));
    EXPECT_TRUE(QFile(leftover).open(QIODevice::WriteOnly));
    start();
    EXPECT_FALSE(QFile::exists(leftover));
    EXPECT_TRUE(server.requests.isEmpty()) << "the start waited for a server";
    ASSERT_TRUE(waitFor([this] { return shows("lbl_SoftwareUpdate"); }));
    EXPECT_TRUE(server.requests.first().startsWith(
        u"POST /rootTavolinoNet/System/TavolinoNet_Start.asp?id1=&id2=1.0.0 "_s));
    EXPECT_TRUE(waitFor([this] { return dialogs.said.size() == 2; }));
    EXPECT_TRUE(dialogs.said.first().text.startsWith(u"Sie haben noch "_s));
    EXPECT_EQ(dialogs.last().title, u"Software aktualisieren");
    EXPECT_TRUE(shows("lbl_SystemMessage"));
    app->mainWindow().ApplyUserRights();
    EXPECT_EQ(dialogs.said.size(), 2) << "not twice for one answer";
    find<QPushButton>("lbl_SystemMessage")->click();
    EXPECT_FALSE(shows("lbl_SystemMessage"));
    EXPECT_TRUE(app->mainWindow().screens().open(u"frmSystemMessagesService"_s));
    dialogs.answer(platform::kAnswerYes);
    find<QPushButton>("lbl_SoftwareUpdate")->click();
    EXPECT_FALSE(shows("lbl_SoftwareUpdate"));
    EXPECT_TRUE(app->mainWindow().screens().open(mod_SoftwareUpdate::kSoftwareScreen));
    EXPECT_TRUE(ended.isEmpty());
}

TEST_F(SystemNewsShell, WithoutAnAnswerNothingShows) {
    for (const QByteArray& answer : {QByteArray(), AnsweringServer::page("<html>"),
                                     AnsweringServer::page("=/08=1=08/==/09=x=09/=", "500 No")}) {
        server.requests.clear();
        server.answer = answer;
        start();
        EXPECT_TRUE(waitFor([this] { return !server.requests.isEmpty(); }));
        QTest::qWait(50);
        EXPECT_FALSE(shows("lbl_SoftwareUpdate") || shows("lbl_SystemMessage"));
    }
}

TEST_F(SystemNewsShell, ADialogThatStandsIsWaitedForAndALogInIsToldAgain) {
    server.answer = news("5");
    frmMDI& window = start();
    QDialog dialog(&window);
    dialog.setModal(true);
    dialog.show();
    ASSERT_TRUE(waitFor([this] { return shows("lbl_SoftwareUpdate"); }));
    QTest::qWait(400);
    EXPECT_TRUE(dialogs.said.isEmpty());
    QTest::keyClick(&dialog, Qt::Key_A);
    dialog.close();
    QTest::qWait(400);
    EXPECT_TRUE(dialogs.said.isEmpty()) << "the user keys";
    window.findChild<platform::UserWatch*>()->milliseconds = 0;
    EXPECT_TRUE(waitFor([this] { return dialogs.said.size() == 2; }));
    // Nobody but the administrator.
    SysAnmeldungBenutzer = 1;
    window.setUserLoggedIn();
    window.ApplyUserRights();
    EXPECT_FALSE(shows("lbl_SoftwareUpdate") || shows("lbl_SystemMessage"));
    for (const QString& screen : {mod_SoftwareUpdate::kSoftwareScreen, mod_SoftwareUpdate::kForcedScreen,
                                  mod_SoftwareUpdate::kPhoneBookScreen, u"frmSystemMessagesService"_s})
        EXPECT_FALSE(window.screens().show(screen)) << screen.toStdString();
    UserAdministrator = -1;
    window.setUserLoggedIn();
    window.ApplyUserRights();
    EXPECT_TRUE(shows("lbl_SoftwareUpdate") && shows("lbl_SystemMessage"));
    EXPECT_EQ(dialogs.said.size(), 4);
}

TEST_F(SystemNewsShell, AForcedUpdateIsModalAndClosesWithItsScreen) {
    frmMDI& window = start();
    window.show();
    EXPECT_TRUE(window.screens().show(mod_SoftwareUpdate::kSoftwareScreen));
    systemNews() = {.newest = common::Version{9, 0, 0}};
    dialogs.answer(platform::kAnswerYes, [this] {
        QTimer::singleShot(50, [this] {
            QWidget* const dialog = QApplication::activeModalWidget();
            ASSERT_TRUE(dialog);
            EXPECT_EQ(app->mainWindow().screens().current(), nullptr) << "two would write one file";
            auto* const close = dialog->findChild<QPushButton*>(u"cmdClose"_s);
            close->setEnabled(false);
            QTest::keyClick(dialog, Qt::Key_Escape);
            QTest::qWait(20);
            EXPECT_TRUE(dialog->isVisible()) << "Esc gave a fetching up";
            close->setEnabled(true);
            close->click();
        });
    });
    EXPECT_EQ(mod_SoftwareUpdate::CheckSoftwareUpdate(app->services(), {9, 0, 0}),
              mod_SoftwareUpdate::Standing::Forced);
    EXPECT_EQ(dialogs.last().title, u"Software Aktualisiierung");
    EXPECT_EQ(ended, QList<int>{0});
}

} // namespace
