#include "common/Clock.h"
#include "orders/frmAuftragswesenAuftragserfassung.h"
#include "orders/frmAuftragswesenVorbestellungenAlarm.h"
#include "platform/UserWatch.h"
#include "platform/form/DataGrid.h"
#include "platform/net/Internet.h"
#include "store/SystemSettings.h"
#include "support/AnsweringServer.h"
#include "support/OtherStation.h"
#include "tests/screens/OrderScreenFixture.h"
#include "tests/screens/ShellFixture.h"

using namespace Qt::StringLiterals;
using orders::Col;

namespace {

const QString kWebOrder = u"INSERT INTO tbl_WebShop_Bestellungen_Master(lng_ID) VALUES(%1)"_s;

class StationsTest : public test::ShellTest {
  protected:
    frmMDI& begin() {
        start();
        app->mainWindow().findChild<platform::UserWatch*>()->milliseconds = 0;
        return app->mainWindow();
    }

    void ring(const QString& number = u"0447654321"_s) { Q_EMIT line.IncomingCall({}, number, {}); }

    void tick() { app->mainWindow().StationTimer_Timer(); }

    void hear(const QString& topic) {
        other.tells(topic);
        tick();
    }

    test::OtherStation other;
};

TEST_F(StationsTest, ACallThatAnotherStationTakesIsShownSoAndGoesByItself) {
    frmMDI& window = begin();
    ring();
    tick();
    EXPECT_EQ(label("ISDNTaste"), u"annehmen mit F9"_s);
    other.has(u"Annahme 0447654321"_s);
    other.run(u"UPDATE tbl_Verwaltung_AnruferListe SET flag_Kunde = 1"_s);
    tick();
    EXPECT_EQ(label("ISDNTaste"), u"Küche nimmt den Anruf an"_s);
    EXPECT_EQ(find<QPushButton>("ShowTelefonListeCommand")->text(), u"Anrufer"_s);
    window.takeWaitingCall();
    EXPECT_EQ(dialogs.last().text,
              u"Küche nimmt diesen Anruf bereits an. Möchten Sie ihn trotzdem annehmen?"_s);
    EXPECT_TRUE(asked.isEmpty());
    dialogs.answer(platform::kAnswerYes);
    window.takeWaitingCall();
    EXPECT_EQ(asked, QStringList{u"call 0447654321"_s});

    ring(u"0440000000"_s);
    other.has(u"Annahme 0440000000"_s);
    other.run(u"UPDATE tbl_Verwaltung_AnruferListe SET flag_Kunde = 1"_s);
    window.takeWaitingCall();
    EXPECT_EQ(asked.size(), 1) << "told, although the panel did not show it yet";
    auto* leaving = window.findChild<QTimer*>(u"AnrufGeht"_s);
    ASSERT_TRUE(leaving->isActive());
    leaving->start(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.callWaits(); }));
    ring(u"0440000000"_s);
    EXPECT_EQ(label("ISDNTaste"), u"annehmen mit F9"_s) << "rings anew";
    window.takeWaitingCall();
    EXPECT_EQ(asked.size(), 2) << "a new call is whoever's takes it first";
}

TEST_F(StationsTest, SettingsRightsAndCountsFollowAndWhatIsTypedStays) {
    frmMDI& window = begin();
    window.screens().show(u"frmEinstellungenSystem"_s);
    auto* typed = window.findChild<QPlainTextEdit*>(u"txt_Werbetext"_s);
    typed->setPlainText(u"getippt"_s);
    other.run(u"UPDATE tbl_Einstellungen_System SET txt_Werbetext = 'fremd', txt_VATNummer = '77', "
              u"dbl_MWStSatz1 = 9.5"_s);
    tick();
    EXPECT_NE(SysMWStSatz1, 9.5) << "not told yet";
    hear(u"Einstellungen"_s);
    EXPECT_EQ(SysMWStSatz1, 9.5);
    EXPECT_EQ(find<QLineEdit>("txt_VATNummer")->text(), u"77"_s);
    EXPECT_EQ(typed->toPlainText(), u"getippt"_s);
    window.screens().close(u"frmEinstellungenSystem"_s);
    EXPECT_EQ(query(u"SELECT txt_Werbetext || txt_VATNummer FROM tbl_Einstellungen_System"_s), u"fremd77"_s);
    EXPECT_TRUE(dialogs.last().text.contains(u"inzwischen an einer anderen Station geändert"_s));

    other.run(
        u"INSERT INTO tbl_Verwaltung_AnruferListe(txt_Telefon, lng_Datum, flag_Kunde) VALUES('1', %1, 0)"_s
            .arg(common::clock::now(), 0, 'f', 8));
    hear(u"Anrufe"_s);
    EXPECT_EQ(find<QPushButton>("ShowTelefonListeCommand")->text(), u"Anrufer (1)"_s);
    other.run(u"INSERT INTO tbl_Auftragswesen_Vorbestellungen_Master(lng_KundenID) VALUES(1)"_s);
    hear(u"Vorbestellungen"_s);
    EXPECT_EQ(label("MDIVorbestellung"), u"1"_s);
}

TEST_F(StationsTest, ARightThatIsTakenAwayElsewhereIsGoneHere) {
    build();
    app.reset();
    {
        store::Connection main;
        main.Open(store::mainConnectionString());
        main.Execute(u"UPDATE tbl_Einstellungen_System SET lng_AnmeldungBenutzer = 1"_s);
        main.Execute(u"INSERT INTO tbl_Einstellungen_Benutzer(txt_Username, txt_Passwort, lng_Einstellungen) "
                     u"VALUES('Eva', 'x', -1)"_s);
    }
    QTimer::singleShot(0, qApp, [] {
        QWidget* login = QApplication::activeModalWidget();
        login->findChild<QLineEdit*>(u"txt_Benutzernamen"_s)->setText(u"Eva"_s);
        login->findChild<QLineEdit*>(u"txt_Passwort"_s)->setText(u"x"_s);
        login->findChild<QPushButton*>(u"cmdAnmelden"_s)->click();
    });
    frmMDI& window = begin();
    EXPECT_TRUE(window.menuAction(u"mnEinstellungenSystem"_s)->isEnabled());
    other.run(u"UPDATE tbl_Einstellungen_Benutzer SET lng_Einstellungen = 0"_s);
    hear(u"Benutzer"_s);
    EXPECT_FALSE(window.menuAction(u"mnEinstellungenSystem"_s)->isEnabled());
    other.run(u"DELETE FROM tbl_Einstellungen_Benutzer"_s);
    hear(u"Benutzer"_s);
    other.run(u"UPDATE tbl_Einstellungen_System SET lng_AnmeldungBenutzer = 0"_s);
    hear(u"Einstellungen"_s);
    EXPECT_TRUE(window.menuAction(u"mnEinstellungenSystem"_s)->isEnabled()) << "all may do all again";
}

TEST_F(StationsTest, OneStationAsksTheShopAndTheOthersSeeWhatItFound) {
    test::AnsweringServer server(test::AnsweringServer::page("<BESTELLUNGEN></BESTELLUNGEN>"));
    internet.ends.strDomainMapping = server.address();
    internet.ends.strWebShopPfad = u"laden/"_s;
    frmMDI& window = begin();
    const auto waitForAnswer = [&] {
        return QTest::qWaitFor([&] { return !find<platform::Inet>("Inet1")->StillExecuting(); });
    };
    ASSERT_TRUE(waitForAnswer());
    ASSERT_EQ(server.requests.size(), 1);
    other.has(u"Webshop-Abfrage"_s);
    for (const char16_t* id : {u"7", u"8"})
        other.run(kWebOrder.arg(QString::fromUtf16(id)));
    window.InternetLinkTimer_Timer();
    EXPECT_EQ(server.requests.size(), 1);
    EXPECT_EQ(find<QPushButton>("ShowInternetListeCommand")->text(), u"@WebShop (2)"_s);
    other.has(u"Internet Bestellung 7"_s);
    other.run(u"DELETE FROM tbl_WebShop_Bestellungen_Master WHERE lng_ID = 8"_s);
    hear(u"WebBestellungen"_s);
    EXPECT_EQ(window.internetAttention(), 0) << "both are dealt with elsewhere";
    other.isGone();
    window.InternetLinkTimer_Timer();
    ASSERT_TRUE(waitForAnswer());
    EXPECT_EQ(server.requests.size(), 2) << "the other one is gone";
}

TEST_F(StationsTest, TheListOfWebOrdersTellsWhoHasOneAndStaysOnItsRow) {
    frmMDI& window = begin();
    for (const char16_t* id : {u"7", u"8"})
        other.run(kWebOrder.arg(QString::fromUtf16(id)));
    window.screens().show(u"frmInternetBestellungen"_s);
    auto* grid = find<platform::DataGrid>("BestellungGrid");
    grid->setRow(1);
    other.has(u"Internet Bestellung 8"_s);
    other.run(u"DELETE FROM tbl_WebShop_Bestellungen_Master WHERE lng_ID = 7"_s);
    hear(u"WebBestellungen"_s);
    ASSERT_EQ(grid->rowCount(), 1);
    EXPECT_EQ(grid->row(), 0);
    EXPECT_EQ(grid->text(0, 13), u"bei Küche"_s);
    Q_EMIT grid->rowActivated(0);
    EXPECT_EQ(dialogs.last().text, u"Küche bearbeitet diese Internet Bestellung bereits. Möchten Sie sie "
                                   "trotzdem übernehmen?"_s);
    EXPECT_EQ(dialogs.said.size(), 1) << "left to the other one";
}

TEST_F(StationsTest, TheAlarmGoesWhereAnotherStationHasThePreOrder) {
    frmMDI& window = begin();
    SysVorbestellungAutomatischStatus = 1;
    ConnMain.Execute(u"INSERT INTO tbl_Auftragswesen_Vorbestellungen_Master(lng_KundenID, lng_LieferDatum, "
                     u"time_Lieferzeit) VALUES(1, 40000, 0.5)"_s);
    const auto alarm = [&] { return window.findChild<frmAuftragswesenVorbestellungenAlarm*>(); };
    window.VorbestellungTimer_Timer();
    ASSERT_TRUE(alarm() && alarm()->isVisible());
    const qint64 number = alarm()->Faellig();
    other.has(u"Vorbestellung %1"_s.arg(number));
    hear(u"Vorbestellungen"_s);
    EXPECT_FALSE(alarm() && alarm()->isVisible());
    EXPECT_EQ(label("MDIMeldung"), u"Küche bearbeitet die Vorbestellung %1"_s.arg(number));
    window.VorbestellungTimer_Timer();
    EXPECT_FALSE(alarm() && alarm()->isVisible());
    other.isGone();
    window.VorbestellungTimer_Timer();
    EXPECT_TRUE(alarm() && alarm()->isVisible()) << "nobody has dealt with it";
}

class StationsOrderTest : public test::OrderScreen<test::TestDialogs> {
  protected:
    StationsOrderTest() { store::stationNews().start(); }

    void follow(const QString& topic) {
        other.tells(topic);
        store::stationNews().look();
        store::stationNews().show();
    }

    platform::DataGrid* products() { return find<platform::DataGrid>(u"ProdukteGrid"); }

    test::OtherStation other;
};

TEST_F(StationsOrderTest, TheCatalogueChangesBehindTheOrder) {
    search(u"0791234567"_s);
    order().PickProdukt(test::TestFirm::kWein, u"W"_s, 2);
    const QString price = cell(0, Col::Preis);
    const int rows = products()->rowCount();
    ASSERT_GT(rows, 1);
    products()->setRow(1);
    const QString marked = products()->text(1, 1);
    auto* lines = find<platform::CellGrid>(u"BestellungGrid");
    lines->goTo({1, Col::Kurzzeichen});
    lines->setFocus();
    type(u"1"_s);
    QWidget* const editor = QApplication::focusWidget();
    other.run(u"UPDATE tbl_Verwaltung_Produkte_Preise SET dbl_Preis = 99"_s);
    other.run(u"UPDATE tbl_Verwaltung_Produkte SET flag_Status = -1 WHERE lng_ID = %1"_s.arg(
        products()->value(0, 0).toLong()));
    follow(u"Katalog"_s);
    EXPECT_EQ(products()->rowCount(), rows - 1);
    EXPECT_EQ(products()->text(products()->row(), 1), marked);
    EXPECT_EQ(cell(0, Col::Preis), price) << "what is keyed keeps its price";
    EXPECT_EQ(QApplication::focusWidget(), editor);
    EXPECT_EQ(qobject_cast<QLineEdit*>(editor)->text(), u"1"_s);
}

} // namespace
