#include "common/Clock.h"
#include "common/RunTimeError.h"
#include "masterdata/modVerwaltungKunden.h"
#include "platform/form/DataGrid.h"
#include "shell/MenuTree.h"
#include "shell/modEinstellungenBenutzer.h"
#include "store/SystemSettings.h"
#include "tests/screens/ShellFixture.h"
#include "tests/support/AnsweringServer.h"
#include "tests/support/Bookings.h"
#include "tests/support/FullDisk.h"
#include <QEnterEvent>
#include <QFile>
#include <QSignalSpy>
#include <QThread>
#include <sys/file.h>
#include <thread>

using namespace Qt::StringLiterals;
using test::ShellTest;
using test::TestFirm;

TEST_F(ShellTest, StartsInItsOrder) {
    QStringList seen;
    line.onStart = [&] {
        seen << label("MDIAuftragsNummer") << (app->mainWindow().isVisible() ? u"visible"_s : u"hidden"_s)
             << registry.values.value(u"TavolinoSettings/DB/Root"_s);
        EXPECT_TRUE(ConnMain.IsOpen());
        EXPECT_EQ(SysCurrency, u"CHF"_s) << "the settings are read before the interfaces";
        EXPECT_EQ(label("MDIKundenTotal"), u""_s);
    };
    test::AnsweringServer shop;
    internet.ends.strDomainMapping = shop.address();
    start();
    EXPECT_EQ(seen, (QStringList{query(u"SELECT lng_InitTrxNr FROM tbl_Einstellungen_System"_s), u"visible"_s,
                                 folder.path() + u"/Data/"_s}));
    EXPECT_EQ(registry.values.value(u"TavolinoSettings/Runnable/Root"_s), folder.path() + u'/');
    EXPECT_TRUE(QTest::qWaitFor([&] { return shop.requests.size() == 1; }))
        << "the first poll does not wait a minute";
    EXPECT_EQ(label("MDIKundenTotal"), u"0"_s);
    EXPECT_FALSE(find<QPushButton>("ShowTelefonListeCommand")->isHidden());
    EXPECT_TRUE(dialogs.said.isEmpty());
    EXPECT_FALSE(QFile::exists(folder.filePath(u"WriteTest.tmp"_s)));
}

namespace {

/// Goes only when it may, and counts how often it was closed.
class Screen : public QWidget {
  public:
    explicit Screen(bool goes) : mayGo(goes) {}

    bool mayGo;
    int closings = 0;

  protected:
    void closeEvent(QCloseEvent* event) override {
        ++closings;
        event->setAccepted(mayGo);
    }
};

} // namespace

TEST_F(ShellTest, ScreensCloseOnceUnlessTheyHaveSomethingToBringToItsEnd) {
    build();
    for (const QString& name : {u"frmStays"_s, u"frmGoes"_s, u"frmKept"_s})
        app->screens().add(name, {[name](QWidget*) { return new Screen(name == u"frmGoes"); }});
    ASSERT_TRUE(app->start());
    platform::Navigation& ways = app->services().navigation;
    ways.showScreen(u"frmKept"_s);
    QPointer<QObject> goes = ways.showScreen(u"frmGoes"_s), stays = ways.showScreen(u"frmStays"_s);
    QEventLoop outer;
    QTimer::singleShot(0, [&] {
        EXPECT_FALSE(ways.closeScreensBut(u"frmKept"_s));
        // What is closed lives on as long as a dialog stands.
        QEventLoop dialog;
        QTimer::singleShot(50, &dialog, &QEventLoop::quit);
        dialog.exec();
        ASSERT_TRUE(goes);
        EXPECT_LE(static_cast<Screen&>(*goes).closings, 2);
        outer.quit();
    });
    outer.exec();
    EXPECT_FALSE(ways.closeScreensBut(u"frmKept"_s)) << "it still has not gone";
    EXPECT_EQ(ways.showScreen(u"frmStays"_s), stays);
    static_cast<Screen&>(*stays).mayGo = true;
    EXPECT_TRUE(ways.closeScreensBut(u"frmKept"_s));
    EXPECT_EQ(static_cast<Screen&>(*ways.showScreen(u"frmKept"_s)).closings, 0);
}

TEST_F(ShellTest, OnlyALivingSecondInstanceEndsTheStartWithoutAWord) {
    start();
    {
        // One process cannot hold two programs, but a second start on the same folder is what counts.
        const auto first = std::move(app);
        registry.values.clear();
        EXPECT_FALSE(build().start());
        app.reset();
        EXPECT_EQ(std::exchange(ended, {}), QList<int>{0});
        EXPECT_TRUE(registry.values.isEmpty()) << "touches nothing";
    }
    const QString path = folder.filePath(u"tavolino.lock"_s);
    const auto file = [&](const QByteArray& content) {
        QFile lock(path);
        EXPECT_TRUE(lock.open(QIODevice::WriteOnly));
        lock.write(content);
    };
    const QByteArray here = QSysInfo::machineHostName().toUtf8();
    for (const QByteArray& left : {QByteArray(), QByteArray("\0\xff kaputt", 9),
                                   "999999\ntavolino\n" + here + "\nanother-machine\nboot\n"}) {
        build();
        file(left);
        EXPECT_TRUE(app->start()) << left.toStdString();
    }
    EXPECT_TRUE(dialogs.said.isEmpty());
    app.reset();
    {
        QFile starting(path);
        ASSERT_TRUE(starting.open(QIODevice::WriteOnly) && flock(starting.handle(), LOCK_EX) == 0);
        const std::jthread ends([&] {
            QThread::msleep(50);
            starting.remove();
        });
        EXPECT_EQ(shell::InstanceLock(path).take(), shell::InstanceLock::State::Taken)
            << "another start has not written its name yet, and gives up";
    }

    for (const int answer : {platform::kAnswerNo, platform::kAnswerYes}) {
        build();
        file("4711\ntavolino\nKASSE-ALT\nanother-machine\nboot\n");
        dialogs.answer(answer);
        EXPECT_EQ(app->start(), answer == platform::kAnswerYes);
        EXPECT_TRUE(dialogs.last().text.contains(u"\"KASSE-ALT\""_s));
    }
    EXPECT_EQ(ended, QList<int>{0});
    build();
    file("4711\ntavolino\nKASSE-ALT\nanother-machine\nboot\n");
    QLockFile quicker(path);
    dialogs.answer(platform::kAnswerYes, [&] { EXPECT_TRUE(QFile::remove(path) && quicker.tryLock(0)); });
    EXPECT_FALSE(app->start()) << "whoever was quicker while the question stood";
    quicker.unlock();
    build();
    EXPECT_TRUE(app->start());
    const auto said = dialogs.said.size();
    build();
    EXPECT_TRUE(app->start()) << "the answer holds for the next start";
    EXPECT_EQ(dialogs.said.size(), said);

    build();
    ASSERT_TRUE(QDir().mkpath(path));
    dialogs.answer(platform::kAnswerYes);
    EXPECT_TRUE(app->start());
    EXPECT_TRUE(dialogs.last().text.contains(u"tavolino.lock"_s));
    EXPECT_EQ(dialogs.unexpected, 0);
}

TEST_F(ShellTest, AFullDiskIsNoLackOfRightsAndLeavesNothingBehind) {
    {
        const test::FullDisk full(0);
        EXPECT_FALSE(build().start());
    }
    ASSERT_EQ(dialogs.said.size(), 1);
    EXPECT_EQ(dialogs.last().title, u"Kein Platz"_s);
    EXPECT_EQ(ended, QList<int>{0});
    EXPECT_FALSE(QFile::exists(folder.filePath(u"WriteTest.tmp"_s)));
}

TEST_F(ShellTest, AFolderOrADatabaseThatIsNotThereEndsTheStartWithItsMessage) {
    // A folder in the test file's place cannot be removed or written, by whoever runs this.
    ASSERT_TRUE(QDir(folder.path()).mkpath(u"WriteTest.tmp/in the way"_s));
    EXPECT_FALSE(build().start());
    EXPECT_EQ(
        dialogs.last().text,
        u"Dieser Benutzer hat keine Schreibzugriff. Geben Sie dem Benutzer die nötigen Berechtigungen oder "
        "starten Sie die Applikation als Administrator. Das Programm wird nun beendet."_s);
    EXPECT_EQ(dialogs.last().title, u"Keine Benutzerberechtigung"_s);
    EXPECT_EQ(dialogs.last().style, 64);
    EXPECT_FALSE(registry.values.contains(u"TavolinoSettings/DB/Root"_s));

    ASSERT_TRUE(QDir(folder.filePath(u"WriteTest.tmp"_s)).removeRecursively());
    ASSERT_TRUE(QFile::remove(folder.filePath(u"Data/DBTavolinoPhone.mdb"_s)));
    EXPECT_FALSE(build().start());
    EXPECT_EQ(dialogs.said.size(), 2);
    EXPECT_EQ(dialogs.last().style, 16);
    EXPECT_EQ(ended, (QList<int>{0, 1}));
    EXPECT_FALSE(app->mainWindow().isVisible());
    EXPECT_FALSE(ConnMain.IsOpen());
    QFile log(folder.filePath(u"Data/tavolino.log"_s));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_TRUE(log.readAll().contains("DBTavolinoPhone"));
}

TEST_F(ShellTest, WithoutALineTheProgramRunsOn) {
    line.onStart = [] { throw std::runtime_error("no card"); };
    start().menuAction(u"mnAuftragswesenISDNListe"_s)->trigger();
    EXPECT_FALSE(QApplication::activeModalWidget()) << "its list does nothing";
    EXPECT_TRUE(find<QPushButton>("ShowTelefonListeCommand")->isHidden());
    EXPECT_TRUE(label("MDIMeldung").startsWith(u"Start ohne Telefonie"_s));
    EXPECT_TRUE(ended.isEmpty());
    EXPECT_TRUE(dialogs.said.isEmpty());
    iniProblem = u"Die Datei ist beschädigt."_s;
    start();
    ASSERT_EQ(dialogs.said.size(), 1) << "a broken file must not pass for one without a telephone";
    EXPECT_TRUE(dialogs.last().text.contains(iniProblem));
}

TEST_F(ShellTest, CallsShowTheirNumberAndAreRecorded) {
    frmMDI& window = start();
    for (const QString& number : {u"0791112233"_s, u"0447654321"_s})
        Q_EMIT line.IncomingCall(u"044"_s, number, u""_s);
    auto* panel = find<QPushButton>("ShowISDNNr");
    EXPECT_TRUE(panel->isVisible() && find<QLabel>("DisplayISDNAmpel2")->isVisible());
    EXPECT_EQ(panel->text(), u"0447654321"_s);
    EXPECT_TRUE(asked.isEmpty()) << "a call disturbed an open screen";
    QTest::keyClick(&window, Qt::Key_F9);
    EXPECT_EQ(asked, QStringList{u"call 0447654321"_s});
    EXPECT_FALSE(panel->isVisible());
    EXPECT_EQ(panel->text(), u""_s);

    // A suppressed number is only cleared.
    Q_EMIT line.IncomingCall({}, {}, {});
    EXPECT_TRUE(panel->isVisible());
    QTest::mouseClick(panel, Qt::LeftButton);
    EXPECT_FALSE(panel->isVisible());
    EXPECT_EQ(asked.size(), 1);
    EXPECT_EQ(
        query(u"SELECT group_concat(txt_Telefon || flag_Kunde, ' ') FROM tbl_Verwaltung_AnruferListe"_s),
        u"07911122330 0447654321-1 0"_s);
}

TEST_F(ShellTest, TheWaitingCallTellsWhoCallsAndHowManyWait) {
    frmMDI& window = start();
    ConnMain.Execute(u"INSERT INTO tbl_Verwaltung_Kunden(txt_Name, txt_Vorname, txt_Telefon, dbl_Telefon) "
                     u"VALUES('Meier', 'Anna', '0447654321', 447654321)"_s);
    const int width = window.minimumSizeHint().width();
    EXPECT_LE(width, 1240) << "a display of 1280 with a frame";
    Q_EMIT line.IncomingCall(u"044"_s, u"0791112233"_s, u""_s);
    EXPECT_FALSE(find<QLabel>("ISDNAnrufer")->isVisible());
    EXPECT_EQ(label("ISDNTaste"), u"annehmen mit F9"_s);
    Q_EMIT line.IncomingCall(u"044"_s, u"0447654321"_s, u""_s);
    EXPECT_EQ(label("ISDNAnrufer"), u"Meier Anna"_s);
    EXPECT_EQ(label("ISDNTaste"), u"F9 · 2 Anrufe warten"_s);
    EXPECT_EQ(find<QPushButton>("ShowISDNNr")->accessibleDescription(), u"0447654321, Meier Anna"_s);
    EXPECT_EQ(find<QPushButton>("ShowTelefonListeCommand")->text(), u"Anrufer (1)"_s) << "one waits still";
    Q_EMIT line.IncomingCall(u"044"_s, QString(50, u'8'), u""_s);
    EXPECT_EQ(window.minimumSizeHint().width(), width) << "the window must not jump at a call";
    window.takeWaitingCall();
    EXPECT_EQ(find<QPushButton>("ShowTelefonListeCommand")->text(), u"Anrufer (2)"_s);
    window.showMessage(u"Auftrag 4054 verbucht"_s);
    EXPECT_EQ(label("MDIMeldung"), u"Auftrag 4054 verbucht"_s);
    EXPECT_EQ(find<QLabel>("MDIKundenTotal")->accessibleName(), u"Kunden: 0"_s);
}

TEST_F(ShellTest, ACallReachesWhoeverLooksElsewhereAndIsTakenThere) {
    int beeps = 0;
    procedures.beep = [&] { ++beeps; };
    frmMDI& window = start();
    const auto ring = [&] { Q_EMIT line.IncomingCall(u"044"_s, u"0447654321"_s, u""_s); };
    ring();
    EXPECT_EQ(beeps, 0) << "who sits before it needs no sound";
    window.showMinimized();
    QApplication::setActiveWindow(nullptr);
    ring();
    EXPECT_FALSE(window.isMinimized());
    EXPECT_EQ(beeps, 1);

    QWidget preview;
    const auto banner = [&] { return preview.findChild<QPushButton*>(); };
    preview.resize(600, 400);
    preview.show();
    QApplication::setActiveWindow(&preview);
    ASSERT_TRUE(banner()) << "a window that opens while the call waits tells it too";
    EXPECT_TRUE(banner()->text().contains(u"0447654321"_s));
    ring();
    EXPECT_EQ(beeps, 2);
    EXPECT_EQ(preview.findChildren<QPushButton*>().size(), 1);
    QTest::keyClick(&preview, Qt::Key_F9);
    EXPECT_EQ(asked, QStringList{u"call 0447654321"_s});
    EXPECT_FALSE(banner()->isVisible());
    ring();
    QTest::mouseClick(banner()->isVisible() ? banner() : preview.findChildren<QPushButton*>().last(),
                      Qt::LeftButton);
    EXPECT_EQ(asked.size(), 2);
}

TEST_F(ShellTest, TimersRunAndAnErrorInTheirsOrInACallsIsToldOnceAndTheProgramGoesOn) {
    int beeps = 0;
    procedures.beep = [&] {
        ++beeps;
        throw std::runtime_error("no sound");
    };
    frmMDI& window = start();
    const auto letTick = [&](const char* name, int interval) {
        auto* timer = find<QTimer>(name);
        EXPECT_TRUE(timer->isActive()) << name;
        EXPECT_EQ(timer->interval(), interval) << name;
        QSignalSpy ticks(timer, &QTimer::timeout);
        timer->setInterval(1);
        EXPECT_TRUE(QTest::qWaitFor([&] { return ticks.size() >= 2; })) << name;
        timer->setInterval(interval);
        return int(std::exchange(dialogs.said, {}).size());
    };
    common::clock::set(46000.75);
    EXPECT_EQ(letTick("TimerZeit", 1000), 0);
    EXPECT_EQ(label("MDIZeitAnzeige"), u"09/12/2025 18:00:00"_s);
    common::clock::release();
    window.setInternetAttention(3);
    EXPECT_EQ(letTick("TimerBeep", 1000), 1);
    EXPECT_GE(beeps, 2);
    EXPECT_EQ(letTick("InternetLinkTimer", 60000), 0) << "without a shop there is nothing to ask";
    SysVorbestellungAutomatischStatus = 1;
    ConnMain.Execute(u"DROP TABLE tbl_Auftragswesen_Vorbestellungen_Master"_s);
    EXPECT_EQ(letTick("VorbestellungTimer", 60000), 1);
    ConnMain.Execute(u"DROP TABLE tbl_Verwaltung_AnruferListe"_s);
    for (int call = 0; call < 2; ++call)
        Q_EMIT line.IncomingCall(u"044"_s, u"0791112233"_s, u""_s);
    EXPECT_EQ(std::exchange(dialogs.said, {}).size(), 1);
    EXPECT_EQ(find<QPushButton>("ShowISDNNr")->text(), u"0791112233"_s) << "the number is shown all the same";
    EXPECT_TRUE(ended.isEmpty());

    find<QPushButton>("ShowISDNNr")->click();
    EXPECT_EQ(dialogs.said.size(), 1) << "the user's own action is told again";
    EXPECT_EQ(ended, QList<int>{1});
    EXPECT_EQ(line.stops, 1);
}

TEST_F(ShellTest, AFailingTickDuringAPrintLeavesThePrintAlone) {
    start();
    ConnMain.Execute(u"INSERT INTO tbl_Verwaltung_Kunden (txt_Name) VALUES ('Meier'), ('Müller')"_s);
    ConnPrint.Execute(u"INSERT INTO PrintArtikelUmsatz (Gruppe) VALUES ('bleibt')"_s);
    dialogs.duringWork = [] {
        common::guarded(common::Origin::Timer, [] {
            const store::Transaction own(ConnPrint);
            ConnPrint.Execute(u"DELETE * FROM PrintArtikelUmsatz"_s);
            throw common::RunTimeError(common::kStoreFailure, u"Der Abruf ist gescheitert."_s);
        });
    };
    const auto printed = [](const QString& table) {
        return test::TestFirm::value(u"SELECT Count(*) AS N FROM "_s + table, ConnPrint).toInt();
    };
    store::Recordset list;
    list.Open(modVerwaltungKunden::AlleKunden(), ConnMain, store::adOpenStatic, store::adLockReadOnly);
    common::guarded(common::Origin::User,
                    [&] { modVerwaltungKunden::FillKundenStamm(list, dialogs.ShowProgress({})); });
    EXPECT_EQ(printed(u"KundenStamm"_s), 2);
    EXPECT_EQ(printed(u"PrintArtikelUmsatz"_s), 1) << "the tick's own work was rolled back";
    EXPECT_EQ(dialogs.said.size(), 1);
    EXPECT_TRUE(ended.isEmpty());
}

TEST_F(ShellTest, EveryWayOutEndsAtOnceAndTakesTheOpenSettingsOver) {
    const std::function<void(frmMDI&)> ways[] = {
        [](frmMDI& window) { window.close(); },
        [](frmMDI& window) { window.menuAction(u"mnEinstellungenBeenden"_s)->trigger(); },
        [](frmMDI& window) { QTest::keyClick(&window, Qt::Key_X, Qt::ControlModifier); },
        [this](frmMDI&) { find<QToolButton>("ToolBarExit")->click(); },
        // After an error nothing is written any more.
        [this](frmMDI&) { app->endProgram(1); },
    };
    int number = 4000;
    for (const auto& leave : ways) {
        frmMDI& window = start();
        window.screens().show(u"frmEinstellungenSystem"_s);
        window.screens()
            .open(u"frmEinstellungenSystem"_s)
            ->findChild<QLineEdit*>(u"txt_TrxNr"_s)
            ->setText(QString::number(++number));
        line.stops = 0;
        leave(window);
        EXPECT_EQ(line.stops, 1) << number;
        EXPECT_FALSE(ConnMain.IsOpen());
        build();
        ASSERT_TRUE(app->start());
        EXPECT_EQ(label("MDIAuftragsNummer"), number == 4005 ? u"4004"_s : QString::number(number));
    }
    EXPECT_EQ(ended, (QList<int>{0, 0, 0, 0, 1}));
    EXPECT_TRUE(dialogs.said.isEmpty());
}

TEST_F(ShellTest, NoEntryIsADeadClick) {
    frmMDI& window = start();
    for (const shell::MenuEntry& entry : shell::menuEntries()) {
        const QAction* action = window.menuAction(QLatin1String(entry.name));
        ASSERT_TRUE(action) << entry.name;
        if (entry.kind == shell::MenuKind::Screen) {
            EXPECT_EQ(action->isEnabled(), app->screens().has(entry.screen)) << entry.name;
        }
    }
    EXPECT_TRUE(find<QToolButton>("ToolBarBestellung")->isEnabled());
    EXPECT_TRUE(find<QToolButton>("ToolBarExit")->isEnabled());
    EXPECT_TRUE(find<QToolButton>("ToolBarInternetTransfer")->isEnabled());
    EXPECT_TRUE(find<QPushButton>("ShowInternetListeCommand")->isEnabled());
}

TEST_F(ShellTest, MenuKeysReachTheMenuAlsoFromATextField) {
    build();
    int opened = 0;
    app->screens().add(u"frmVerwaltungKunden"_s, {.create = [&](QWidget* parent) {
                           ++opened;
                           auto* field = new QLineEdit(parent);
                           field->setText(u"Ausschnitt"_s);
                           return field;
                       }});
    ASSERT_TRUE(app->start());
    frmMDI& window = app->mainWindow();
    QApplication::setActiveWindow(&window);
    QTest::keyClick(&window, Qt::Key_K, Qt::ControlModifier);
    ASSERT_EQ(opened, 1);
    auto* field = qobject_cast<QLineEdit*>(window.screens().open(u"frmVerwaltungKunden"_s));
    field->setFocus();
    field->setCursorPosition(3);
    QTest::keyClick(field, Qt::Key_B, Qt::ControlModifier);
    EXPECT_TRUE(window.screens().open(u"frmAuftragswesenAuftragserfassung"_s));
    QTest::keyClick(field, Qt::Key_K, Qt::ControlModifier);
    for (const Qt::Key key : {Qt::Key_W, Qt::Key_F4}) {
        QTest::keyClick(field, key, Qt::ControlModifier);
        EXPECT_TRUE(window.screens().open(u"frmVerwaltungKunden"_s))
            << "a key of the frame closed the screen";
    }
    EXPECT_EQ(field->text(), u"Ausschnitt"_s) << "the field took the menu's key for its own";
    EXPECT_EQ(opened, 1) << "a screen opened twice";
    field->setFocus();
    field->selectAll();
    QTest::keyClick(field, Qt::Key_X, Qt::ControlModifier);
    EXPECT_TRUE(ended.isEmpty()) << "cutting text ended the program";
    field->close();
    QTest::qWait(1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(window.screens().open(u"frmVerwaltungKunden"_s));
    EXPECT_EQ(window.findChildren<QMdiSubWindow*>().size(), 1);
}

/// From the user's row over the log-in to every road.
TEST_F(ShellTest, EachRightOpensItsOwnEntriesAndScreens) {
    build();
    for (const shell::MenuEntry& entry : shell::menuEntries())
        if (!entry.screen.isEmpty() && !app->screens().has(entry.screen))
            app->screens().add(entry.screen, {.create = [](QWidget* parent) { return new QWidget(parent); }});
    ASSERT_TRUE(app->start());
    frmMDI& window = app->mainWindow();
    EXPECT_FALSE(window.menuAction(u"mnEinstellungenAnmeldung"_s)->isEnabled()) << "the log-in is off";
    EXPECT_FALSE(find<QToolButton>("ToolBarAnmeldung")->isEnabled());

    const std::pair<QString, QStringList> rights[] = {
        {u"lng_Einstellungen"_s, {u"mnEinstellungenSystem"_s}},
        {u"lng_KundenStatistik"_s,
         {u"mnAuswertungenKundenumsatz"_s, u"mnAuswertungenKundenBuchungsjournal"_s}},
        {u"lng_UmsatzStatistik"_s, {u"mnAuswertungenUmsatz"_s, u"mnAuswertungenUmsatzProdukt"_s}},
        {u"lng_Buchungsjournal"_s, {u"mnAuswertungenBuchungsjournal"_s, u"mnAuswertungenTagesabschluss"_s}},
        {u"lng_OnlineShop"_s, {u"mnOnlineShop"_s}},
        {u"lng_Datensicherung"_s, {u"mnDatenBackup"_s}},
        {u"lng_Administrator"_s,
         {u"mnEinstellungenBenutzer"_s, u"mnDatenRestore"_s, u"mnSystemMessages"_s, u"mnSystemUpdates"_s}}};
    QStringList guarded;
    for (const auto& [column, opened] : rights)
        guarded << opened;
    const auto expectOpen = [&](const QString& who, const QStringList& opened) {
        window.ApplyUserRights();
        for (const QString& entry : guarded)
            EXPECT_EQ(window.menuAction(entry)->isEnabled(), opened.contains(entry))
                << who.toStdString() << ' ' << entry.toStdString();
        EXPECT_EQ(find<QToolButton>("ToolBarInternetTransfer")->isEnabled(),
                  opened.contains(u"mnOnlineShop"_s));
        // Whatever road leads to a screen, also one from another screen or below the menu of the shop.
        for (const shell::MenuEntry& entry : shell::menuEntries()) {
            const bool shop = QLatin1String(entry.parent).startsWith(u"mnOnlineShop"_s);
            const QString name = shop ? u"mnOnlineShop"_s : QString::fromLatin1(entry.name);
            if (entry.kind == shell::MenuKind::Screen) {
                EXPECT_EQ(app->services().navigation.hasScreen(entry.screen),
                          !guarded.contains(name) || opened.contains(name))
                    << who.toStdString() << ' ' << entry.name;
            }
        }
    };
    expectOpen(u"log-in off"_s, guarded);
    SysAnmeldungBenutzer = 1;
    expectOpen(u"no right"_s, {});
    for (const auto& [column, opened] : rights) {
        ConnMain.Execute(u"DELETE FROM tbl_Einstellungen_Benutzer"_s);
        ConnMain.Execute(u"INSERT INTO tbl_Einstellungen_Benutzer(txt_Username, txt_Passwort, %1) "
                         u"VALUES('Eva', 'x', -1)"_s.arg(column));
        ASSERT_TRUE(modEinstellungenBenutzer::CheckLogin(u"Eva"_s, u"x"_s));
        expectOpen(column, column == u"lng_Administrator" ? guarded : opened);
    }
    SysAnmeldungBenutzer = 0;
}

TEST_F(ShellTest, TurnoverIsFreshWhenItsWindowComesToTheFrontAndLeftAloneByABoxOverIt) {
    frmMDI& window = start();
    common::clock::set(TestFirm::day());
    const auto book = [](qint64 number) { test::book({number, TestFirm::day(), {{.price = 10}}}); };
    book(1);
    QWidget* turnover = window.screens().show(u"frmAuswertungenUmsatz"_s);
    ASSERT_TRUE(turnover);
    const auto total = [turnover] {
        return turnover->findChild<platform::DataGrid*>(u"TagesUmsatzGrid"_s)->text(0, 2);
    };
    EXPECT_EQ(total(), u"10"_s);
    book(2);
    QEvent back(QEvent::WindowActivate);
    QApplication::sendEvent(&window, &back);
    EXPECT_EQ(total(), u"10"_s);
    window.screens().show(u"frmVerwaltungKuriere"_s);
    EXPECT_EQ(total(), u"10"_s);
    window.screens().show(u"frmAuswertungenUmsatz"_s);
    EXPECT_EQ(total(), u"20"_s);
    common::clock::release();
}

TEST_F(ShellTest, MnemonicsAndShortcutsAreUnique) {
    frmMDI& window = start();
    QSet<QString> shortcuts;
    QHash<QObject*, QString> letters;
    for (const shell::MenuEntry& entry : shell::menuEntries()) {
        QAction* action = window.menuAction(QLatin1String(entry.name));
        const QString shortcut = action->shortcut().toString();
        EXPECT_FALSE(!shortcut.isEmpty() && shortcuts.contains(shortcut)) << entry.name;
        shortcuts.insert(shortcut);
        const QString mnemonic = QKeySequence::mnemonic(action->text()).toString();
        QString& used = letters[action->parent()];
        EXPECT_FALSE(!mnemonic.isEmpty() && used.contains(mnemonic.right(1))) << entry.name;
        used += mnemonic.right(1);
    }
}

TEST_F(ShellTest, ToolBarTellsWhatItsButtonsDo) {
    start();
    const auto enter = [&](const char* button) {
        QEnterEvent event(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QCoreApplication::sendEvent(find<QToolButton>(button), &event);
        return label("ToolBarToolTip");
    };
    for (QWidget* background : {find<QWidget>("ToolBarBox"), find<QMdiArea>("MdiArea")->viewport()}) {
        EXPECT_EQ(enter("ToolBarKunden"), u"Kunden Verwaltung"_s);
        EXPECT_EQ(enter("ToolBarExit"), u"Programm Beenden"_s);
        QMouseEvent event(QEvent::MouseMove, QPointF(600, 20), QPointF(600, 20), Qt::NoButton, {}, {});
        QCoreApplication::sendEvent(background, &event);
        EXPECT_EQ(label("ToolBarToolTip"), u""_s);
    }
}

TEST(LogFile, BeginsAnewAtItsLimitAndKeepsTheOneBefore) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"tavolino.log"_s);
    shell::LogFile log(path);
    log.write(u"Fehler"_s, QString(shell::LogFile::kLimit, u'x'));
    log.write(u"Fehler"_s, u"neu\nzweite Zeile"_s);
    QFile now(path);
    ASSERT_TRUE(now.open(QIODevice::ReadOnly));
    const QByteArray lines = now.readAll();
    EXPECT_TRUE(lines.endsWith("Fehler: neu zweite Zeile\n"));
    EXPECT_EQ(lines.count('\n'), 1);
    EXPECT_GT(QFileInfo(path + u".1"_s).size(), shell::LogFile::kLimit);
}
