#include "platform/form/DataGrid.h"
#include "platform/net/Internet.h"
#include "support/AnsweringServer.h"
#include "tests/screens/ShellFixture.h"

using namespace Qt::StringLiterals;
using test::AnsweringServer;

namespace {

QByteArray record(int id, const QByteArray& total = "42.50") {
    QByteArray text = "<RECORD><ID>" + QByteArray::number(id) + "</ID>";
    for (const char* tag : {"FIRMA", "NAME", "VORNAME", "STRASSE", "ETAGE", "PLZORT", "TELEFON", "EMAIL",
                            "VERSANDART", "VERSANDZEIT", "ANMERKUNG"})
        text += QByteArray("<") + tag + ">x</" + tag + ">";
    return text + "<TOTAL>" + total + "</TOTAL></RECORD>";
}

QByteArray orders(const QByteArray& records) {
    return AnsweringServer::page("<BESTELLUNGEN>" + records + "</BESTELLUNGEN>");
}

class WebShopPollTest : public test::ShellTest {
  protected:
    WebShopPollTest() {
        internet.ends.strDomainMapping = server.address();
        internet.ends.strWebShopPfad = u"laden/"_s;
        procedures.beep = [this] { ++beeps; };
        server.answer = orders({});
        start();
        waitForAnswer();
    }

    frmMDI& window() { return app->mainWindow(); }

    void waitForAnswer() {
        const auto* control = find<platform::Inet>("Inet1");
        ASSERT_TRUE(QTest::qWaitFor([&] { return !control->StillExecuting(); }));
    }

    void poll(const QByteArray& answer) {
        server.answer = answer;
        window().InternetLinkTimer_Timer();
        waitForAnswer();
    }

    /// Keys of the stored orders.
    QString stored() {
        QStringList keys;
        store::Recordset rows;
        for (rows.Open(u"SELECT lng_ID FROM tbl_WebShop_Bestellungen_Master ORDER BY lng_ID"_s, ConnMain,
                       store::adOpenForwardOnly, store::adLockReadOnly);
             !rows.Eof(); rows.MoveNext())
            keys << rows.Fields(u"lng_ID").Value().toText();
        return keys.join(u' ');
    }

    QString panel() { return find<QPushButton>("ShowInternetListeCommand")->text(); }

    AnsweringServer server;
    int beeps = 0;
};

} // namespace

TEST_F(WebShopPollTest, CallsWithEachSecondUntilTheListIsOpened) {
    EXPECT_EQ(server.requests, QStringList{u"POST /laden/WebShopBestellungen_Master.asp HTTP/1.1"_s});
    window().TimerBeep_Timer();
    EXPECT_EQ(beeps, 0) << "no orders, no sound";

    poll(orders(record(7) + record(9)));
    EXPECT_EQ(stored(), u"7 9"_s);
    EXPECT_EQ(panel(), u"@WebShop (2)"_s);
    window().TimerBeep_Timer();
    window().TimerBeep_Timer();
    EXPECT_EQ(beeps, 2);
    poll(orders({}));
    EXPECT_EQ(stored(), u""_s);
    EXPECT_EQ(window().internetAttention(), 3) << "a poll without orders does not end it";

    server.answer = orders(record(11));
    QTest::keyClick(&window(), Qt::Key_F11);
    EXPECT_EQ(dialogs.serverCalls, 1) << "the list is of this moment";
    EXPECT_EQ(stored(), u"11"_s);
    EXPECT_TRUE(window().screens().open(u"frmInternetBestellungen"_s));
    EXPECT_EQ(panel(), u"@WebShop"_s);
    window().TimerBeep_Timer();
    EXPECT_EQ(beeps, 2);
    poll(orders(record(11)));
    EXPECT_EQ(window().internetAttention(), 3) << "what is not dealt with calls again";
    server.answer = orders(record(12));
    window().ShowInternetListeCommand_Click();
    EXPECT_EQ(find<platform::DataGrid>("BestellungGrid")->text(0, 0), u"12") << "the list stood open";
}

TEST_F(WebShopPollTest, FailuresChangeNothingAndABrokenAnswerIsToldOnce) {
    poll(orders(record(7)));
    window().setInternetAttention(0);
    const QByteArray whole = orders(record(8));

    struct Case {
        QByteArray answer;
        int boxes;
    };

    for (const Case& c : {Case{whole.left(whole.size() - 40), 0}, Case{orders(record(8, "abc")), 1},
                          Case{orders(record(9, "abc")), 0}}) {
        poll(c.answer);
        EXPECT_EQ(stored(), u"7"_s) << c.answer.constData();
        EXPECT_EQ(window().internetAttention(), 0);
        EXPECT_EQ(std::exchange(dialogs.said, {}).size(), c.boxes) << c.answer.constData();
        EXPECT_FALSE(ConnMain.InTransaction());
    }
    server.answer = orders(record(9, "abc"));
    window().ShowInternetListeCommand_Click();
    EXPECT_EQ(stored(), u"7"_s);
    EXPECT_TRUE(window().screens().open(u"frmInternetBestellungen"_s)) << "the list opens all the same";
    EXPECT_TRUE(ended.isEmpty());
    // An error page is an answer without orders.
    poll(AnsweringServer::page("<html>Fehler</html>", "500 Internal Server Error"));
    EXPECT_EQ(stored(), u""_s);
    EXPECT_EQ(window().internetAttention(), 0);

    server.close();
    window().ShowInternetListeCommand_Click();
    EXPECT_TRUE(dialogs.last().text.contains(u"nimmt keine Verbindung an"_s))
        << dialogs.last().text.toStdString();
}

TEST_F(WebShopPollTest, APollThatComesWhileOneRunsIsSkipped) {
    server.answer.clear();
    const auto before = server.requests.size();
    for (int i = 0; i < 3; ++i)
        window().InternetLinkTimer_Timer();
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.requests.size() > before; }));
    QTest::qWait(50);
    EXPECT_EQ(server.requests.size(), before + 1);
}
