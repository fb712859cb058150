// The upload, to a real FTP server and a web shop.
#include "screens/ScreenTest.h"
#include "screens/ShellFixture.h"
#include "shop/frmOnlineShopTransfer.h"
#include "support/AnsweringServer.h"
#include "support/Servers.h"
#include <QDir>
#include <QElapsedTimer>
#include <QListWidget>
#include <QProgressBar>

using namespace Qt::StringLiterals;
using test::TestFirm;

namespace {

/// What would stand in the log.
class Log {
  public:
    Log() : m_former(qInstallMessageHandler(&Log::take)) { lines().clear(); }

    ~Log() { qInstallMessageHandler(m_former); }

    static QStringList& lines() {
        static QStringList all;
        return all;
    }

  private:
    static void take(QtMsgType, const QMessageLogContext&, const QString& line) { lines() << line; }

    QtMessageHandler m_former;
};

void write(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(bytes);
}

QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Two products with both pictures, one of which has lost its large file; one without pictures in the shop
/// and a deleted one, marked as well.
void markPictures(const QString& folder) {
    ConnMain.Execute(
        u"UPDATE tbl_Verwaltung_Produkte SET flag_InternetBilder = True, flag_UpdatedPicSmall = 1, "
        "flag_UpdatedPicLarge = 1, txt_BildKlein = lng_ID & '.jpg', txt_BildGross = lng_ID & "
        "'.png' WHERE lng_ID <= 4"_s);
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte SET flag_InternetBilder = False WHERE lng_ID = 3"_s);
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte SET flag_Status = True WHERE lng_ID = 4"_s);
    for (const char16_t* name : {u"Pictures_Small/1.jpg", u"Pictures_Small/2.jpg", u"Pictures_Large/2.png",
                                 u"Pictures_Large/3.png", u"Pictures_Large/4.png", u"logo_kurier.jpg"})
        write(folder + u"/Internet/"_s + QString::fromUtf16(name), QString::fromUtf16(name).toUtf8());
}

/// Keys of the products whose pictures are marked: small, large.
QString marked() {
    const auto keys = [](const QString& flag) {
        return TestFirm::rows(u"SELECT lng_ID FROM tbl_Verwaltung_Produkte WHERE "_s + flag +
                              u" = 1 ORDER BY "
                              u"lng_ID"_s)
            .join(u',');
    };
    return keys(u"flag_UpdatedPicSmall"_s) + u" | "_s + keys(u"flag_UpdatedPicLarge"_s);
}

class OnlineShopTransfer : public test::ScreenTest<frmOnlineShopTransfer> {
  protected:
    OnlineShopTransfer() {
        markPictures(firm.folder());
        internet.ends = servers.endpoints();
        web.answer = test::AnsweringServer::page("OK");
    }

    /// Asks a web server that only counts, instead of the shop.
    void countCalls() { internet.ends.strDomainMapping = web.address(); }

    void openWithConsent() {
        open();
        tick(u"check_Agreement");
        QObject::connect(bar(), &QProgressBar::valueChanged, bar(), [this](int value) {
            values << value;
            if (onValue)
                onValue(value);
        });
    }

    void openAndRun() {
        openWithConsent();
        click(u"cmdUpdate");
    }

    QProgressBar* bar() { return find<QProgressBar>(u"ProgressBar"); }

    QString shown(QStringView label) { return find<QLabel>(label)->text(); }

    QStringList lines() {
        QStringList all;
        const auto* list = find<QListWidget>(u"listStatusMsg");
        for (int row = 0; row < list->count(); ++row)
            all << list->item(row)->text();
        return all;
    }

    /// The files that stand on the server.
    QStringList arrived() {
        QStringList all;
        for (const QString& name :
             {u"ProduktPics/Large/1.png"_s, u"ProduktPics/Large/2.png"_s, u"ProduktPics/Large/3.png"_s,
              u"ProduktPics/Large/4.png"_s, u"ProduktPics/Small/1.jpg"_s, u"ProduktPics/Small/2.jpg"_s,
              u"Pictures/logo_kurier.jpg"_s, u"TavolinoShopDB.asp"_s})
            if (QFile::exists(servers.file(name)))
                all << name;
        return all;
    }

    test::ShopServers servers;
    test::AnsweringServer web;
    QList<int> values;
    std::function<void(int value)> onValue;
};

TEST_F(OnlineShopTransfer, EverythingArrivesAndTheShopTakesItOver) {
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte SET flag_InternetPreis = True"_s);
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_ProdukteKategorien SET flag_Internet = True"_s);
    open();
    EXPECT_EQ(shown(u"lbl_PfadInternetAdresse"),
              internet.ends.strDomainMapping + u"/kunden/pizzeria/Page_Order.asp"_s);
    EXPECT_EQ(shown(u"lblDateiTyp") + shown(u"lblDateiVerzeichnis") + shown(u"lblDateiName"),
              u"no actionno rootno data");
    EXPECT_TRUE(ticked(u"check_Pictures") && ticked(u"check_DB") && !ticked(u"check_Agreement"));
    EXPECT_FALSE(find(u"cmdUpdate")->isEnabled());
    expectReachable();
    openAndRun();
    EXPECT_EQ(arrived(), (QStringList{u"ProduktPics/Large/2.png"_s, u"ProduktPics/Small/1.jpg"_s,
                                      u"ProduktPics/Small/2.jpg"_s, u"Pictures/logo_kurier.jpg"_s,
                                      u"TavolinoShopDB.asp"_s}));
    EXPECT_EQ(read(servers.file(u"ProduktPics/Small/2.jpg"_s)), "Pictures_Small/2.jpg");
    EXPECT_EQ(read(servers.file(u"TavolinoShopDB.asp"_s)), read(firm.folder() + u"/Data/DBOnlineShop.mdb"_s));
    EXPECT_EQ(marked(), u"3,4 | 3,4") << "the lost file's product as well";
    // The export, the log-in, four pictures, one of them gone, the database.
    EXPECT_EQ(values.mid(0, 11), (QList<int>{5, 10, 40, 45, 50, 55, 70, 75, 85, 90, 95}));
    EXPECT_EQ(values.mid(11, 6), (QList<int>{0, 100, 1, 2, 3, 4}));
    EXPECT_EQ(values.at(17), 0);
    EXPECT_EQ(values.last(), 100);
    EXPECT_EQ(lines(),
              (QStringList{u"HTTP request redirected to 127.0.0.1"_s, u"Connecting to server...127.0.0.1"_s,
                           u"Connected to 127.0.0.1"_s, u"Closing connection"_s, u"Connection closed"_s,
                           u"Closed"_s, u"No connection"_s}));
    EXPECT_EQ(shown(u"lblDateiTyp"), u"Upload beendet.");
    EXPECT_EQ(shown(u"lblDateiVerzeichnis") + shown(u"lblDateiName") + shown(u"lblStatus"), u"");
    EXPECT_TRUE(bar()->isHidden());
    EXPECT_EQ(bar()->maximum(), 100);
    EXPECT_TRUE(find(u"cmdUpdate")->isEnabled());
    EXPECT_EQ(navigation.messages, QStringList{u"Online Shop: Daten übertragen"_s});
    EXPECT_TRUE(said().isEmpty());
    tick(u"check_Agreement");
    EXPECT_FALSE(find(u"cmdUpdate")->isEnabled());
}

TEST_F(OnlineShopTransfer, WhatIsNotTickedStaysAndTheScriptIsCalledInAnyCase) {
    countCalls();
    openWithConsent();
    tick(u"check_Pictures");
    tick(u"check_DB");
    click(u"cmdUpdate");
    EXPECT_EQ(arrived(), QStringList());
    EXPECT_EQ(marked(), u"1,2,3,4 | 1,2,3,4");
    EXPECT_EQ(values.last(), 100) << "the log-in";
    EXPECT_TRUE(values.contains(95)) << "the export";
    tick(u"check_DB");
    click(u"cmdUpdate");
    EXPECT_EQ(arrived(), QStringList{u"TavolinoShopDB.asp"_s});
    tick(u"check_DB");
    tick(u"check_Pictures");
    ConnMain.Execute(
        u"UPDATE tbl_Verwaltung_Produkte SET flag_UpdatedPicSmall = 0, flag_UpdatedPicLarge = 0"_s);
    values.clear();
    click(u"cmdUpdate");
    EXPECT_EQ(arrived(), (QStringList{u"Pictures/logo_kurier.jpg"_s, u"TavolinoShopDB.asp"_s}));
    EXPECT_EQ(values.last(), 100) << "no picture moves the bar";
    EXPECT_EQ(web.requests,
              QStringList(3, u"POST /kunden/pizzeria/TavolinoShopDataTransferAccessToSQL.asp HTTP/1.1"_s));
    EXPECT_EQ(navigation.messages.size(), 3);
}

TEST_F(OnlineShopTransfer, WithoutEndPointsNothingBegins) {
    internet.ends.strFTPServer.clear();
    openAndRun();
    ASSERT_EQ(dialogs.said.size(), 1);
    EXPECT_TRUE(dialogs.last().text.contains(u"FtpServer")) << dialogs.last().text.toStdString();
    EXPECT_TRUE(values.isEmpty());
    EXPECT_TRUE(find(u"cmdUpdate")->isEnabled());
}

TEST_F(OnlineShopTransfer, AFailedLogInSkipsTheUploadAndIsTold) {
    struct Case {
        const char* name;
        std::function<void()> cause;
        QString message, logged;
        bool connects;
    };

    const Case cases[] = {{"password", [&] { internet.ends.strFTPPassword = u"falsch-4711"_s; },
                           u"der Server weist Benutzer oder Passwort ab"_s, u"12014"_s, true},
                          {"name", [&] { internet.ends.strFTPServer = u"nobody.invalid"_s; },
                           u"der Name des Servers wird nicht gefunden"_s, u"12007"_s, false},
                          {"refused",
                           [&] {
                               internet.ends = servers.endpoints();
                               servers.ftp.kill();
                           },
                           u"der Server ist nicht erreichbar"_s, u"12029"_s, false}};
    for (const Case& failure : cases) {
        SCOPED_TRACE(failure.name);
        failure.cause();
        countCalls();
        const Log log;
        openAndRun();
        EXPECT_EQ(arrived(), QStringList());
        EXPECT_EQ(marked(), u"1,2,3,4 | 1,2,3,4");
        EXPECT_TRUE(web.requests.isEmpty());
        EXPECT_EQ(lines().contains(u"Connected to 127.0.0.1"_s), failure.connects);
        EXPECT_FALSE(lines().contains(u"Connection closed"_s));
        EXPECT_EQ(lines().mid(lines().size() - 2), (QStringList{u"Closed"_s, u"No connection"_s}));
        EXPECT_EQ(shown(u"lblDateiTyp"), u"no action") << "not \"Upload beendet.\"";
        EXPECT_EQ(navigation.messages.last(), u"Online Shop: Anmeldung fehlgeschlagen, "_s + failure.message);
        const QString logged = Log::lines().join(u'\n');
        EXPECT_TRUE(logged.contains(u"log-in: "_s + failure.logged)) << logged.toStdString();
        EXPECT_FALSE(logged.contains(u"geheim") || logged.contains(u"4711")) << logged.toStdString();
        EXPECT_FALSE(QApplication::overrideCursor());
    }
}

TEST_F(OnlineShopTransfer, AServerThatGoesBetweenTwoFilesDoesNotStopTheSequence) {
    countCalls();
    const Log log;
    // Behind the pictures of the first product; what the user puts in the place of a sent one stays marked.
    onValue = [this](int value) {
        if (bar()->maximum() != 4 || value != 2)
            return;
        servers.ftp.kill();
        write(firm.folder() + u"/Internet/Pictures_Large/2.png"_s, "newer");
        QFile newer(firm.folder() + u"/Internet/Pictures_Large/2.png"_s);
        ASSERT_TRUE(newer.open(QIODevice::ReadWrite));
        newer.setFileTime(QDateTime::currentDateTime().addSecs(60), QFile::FileModificationTime);
    };
    openAndRun();
    EXPECT_EQ(arrived(), QStringList{u"ProduktPics/Large/2.png"_s});
    EXPECT_EQ(marked(), u"3,4 | 2,3,4");
    EXPECT_EQ(web.requests.size(), 1);
    EXPECT_EQ(shown(u"lblDateiTyp"), u"Upload beendet.");
    EXPECT_EQ(navigation.messages.last(), u"Online Shop: 4 Dateien sind nicht angekommen");
    EXPECT_EQ(Log::lines().filter(u"Upload to the web shop, kunden/pizzeria/"_s).size(), 4)
        << Log::lines().join(u'\n').toStdString();
    // Whether the shop takes the data over is told as well.
    ASSERT_TRUE(servers.ftp.start());
    internet.ends = servers.endpoints();
    countCalls();
    web.close();
    onValue = {};
    click(u"cmdUpdate");
    EXPECT_EQ(navigation.messages.last(), u"Online Shop: Der Shop hat die Daten nicht übernommen");
}

TEST_F(OnlineShopTransfer, ClosingTheScreenGivesTheUploadUp) {
    countCalls();
    const Log log;
    for (const bool isDeleted : {false, true}) {
        SCOPED_TRACE(isDeleted);
        openWithConsent();
        int ticks = 0;
        QTimer ticking;
        QObject::connect(&ticking, &QTimer::timeout, &ticking, [&] { ++ticks; });
        QElapsedTimer sinceClosed;
        bool wasOpen = false;
        onValue = [&](int value) {
            if (bar()->maximum() != 4 || value != 2)
                return;
            // Silent from now on.
            servers.ftp.pause();
            ticking.start(10);
            QTimer::singleShot(300, screen.get(), [&] {
                sinceClosed.start();
                tick(u"check_Agreement");
                tick(u"check_Agreement");
                EXPECT_FALSE(find(u"cmdUpdate")->isEnabled()) << "while a run is under way";
                screen->close();
                wasOpen = screen->isVisible();
                if (isDeleted)
                    screen.reset();
            });
        };
        // Not by the mouse, whose event would outlive the screen here.
        QTimer::singleShot(0, find<QPushButton>(u"cmdUpdate"), &QPushButton::click);
        EXPECT_TRUE(QTest::qWaitFor([&] { return sinceClosed.isValid() && !(screen && screen->isVisible()); },
                                    10'000));
        EXPECT_LT(sinceClosed.elapsed(), 3000);
        EXPECT_TRUE(wasOpen) << "not before the run has come to its end";
        EXPECT_GT(ticks, 10) << "the event loop stood still";
        EXPECT_EQ(marked(), u"1,2,3,4 | 3,4") << "the kind under way stays marked";
        EXPECT_TRUE(web.requests.isEmpty()) << "the server would take half of it over";
        servers.ftp.resume();
        ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte SET flag_UpdatedPicLarge = 1 WHERE lng_ID <= 4"_s);
    }
    EXPECT_EQ(navigation.messages, QStringList{u"Online Shop: Die Übertragung ist abgebrochen"_s});
}

class ShopShell : public test::ShellTest {
  protected:
    test::ShopServers servers;
};

TEST_F(ShopShell, ARunIsBroughtToItsEndBeforeItsScreenGoes) {
    internet.ends = servers.endpoints();
    frmMDI& window = start();
    window.show();
    const std::function<void(QMdiSubWindow&)> roads[] = {
        [](QMdiSubWindow& frame) { frame.close(); }, [&](QMdiSubWindow&) { window.screens().closeAll(); }};
    for (const auto& closeIt : roads) {
        find<QToolButton>("ToolBarInternetTransfer")->click();
        const QPointer<QWidget> screen = window.screens().open(u"frmOnlineShopTransfer"_s);
        ASSERT_TRUE(screen);
        screen->findChild<QCheckBox*>(u"check_Agreement"_s)->click();
        servers.ftp.pause();
        QTimer::singleShot(300, screen, [&] {
            closeIt(*qobject_cast<QMdiSubWindow*>(screen->parentWidget()));
            EXPECT_TRUE(screen && screen->isVisible());
        });
        screen->findChild<QPushButton*>(u"cmdUpdate"_s)->click();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !screen; }, 5000));
        EXPECT_FALSE(window.screens().open(u"frmOnlineShopTransfer"_s));
        servers.ftp.resume();
    }
    EXPECT_EQ(label("MDIMeldung"), u"Online Shop: Die Übertragung ist abgebrochen");
    EXPECT_TRUE(ended.isEmpty());
}

} // namespace
