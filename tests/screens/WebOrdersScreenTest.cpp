#include "ScreenTest.h"
#include "common/Guard.h"
#include "masterdata/modVerwaltungKunden.h"
#include "orders/WebOrderMemory.h"
#include "shop/frmInternetBestellungen.h"
#include "shop/frmInternetEMailConfo.h"
#include "support/AnsweringServer.h"

using namespace Qt::StringLiterals;
using test::AnsweringServer;
using test::Said;
using test::TestFirm;

namespace {

const QString kLines =
    u"<BESTELLUNGEN><RECORD><ISPRODUKT>1</ISPRODUKT><PRODUKTID>3</PRODUKTID><ANZAHL>2</ANZAHL></RECORD>"
    u"<RECORD><ISPRODUKT>0</ISPRODUKT><PRODUKTID>2</PRODUKTID><ANZAHL>1</ANZAHL>"
    u"<BEZEICHNUNG>Käse</BEZEICHNUNG></RECORD></BESTELLUNGEN>"_s;

/// The list of web orders on the small firm, with a server that answers what the test tells it to.
class WebOrderListTest : public test::ScreenTest<frmInternetBestellungen> {
  protected:
    WebOrderListTest() {
        internet.ends.strDomainMapping = server.address();
        internet.ends.strWebShopPfad = u"pizza/"_s;
        server.answer = AnsweringServer::page(kLines.toUtf8());
        common::setErrorHandler(
            [this](common::Origin origin, const std::exception_ptr&) { errors << origin; });
    }

    ~WebOrderListTest() override { common::setErrorHandler({}); }

    static void put(qint64 id, const QString& telefon, const QString& versandzeit = u"15. Mai 2026, 19:00"_s,
                    const QString& name = u"Meier"_s) {
        ConnMain.Execute(
            u"INSERT INTO tbl_WebShop_Bestellungen_Master VALUES(%1, 'Muster AG', %2, 'Anna', 'Seestrasse "
            u"1', '2. Stock', "
            u"'8000 Zürich', %3, 'anna@muster.ch', 'Kurier', %4, 'Bitte <b>klingeln</b>', 38.5)"_s.arg(
                QString::number(id), store::sqlText(name), store::sqlText(telefon),
                store::sqlText(versandzeit)));
    }

    static void putVorbestellung(qint64 number, qint64 kunde) {
        ConnMain.Execute(u"INSERT INTO tbl_Auftragswesen_Vorbestellungen_Master(lng_TrxNr, lng_KundenID, "
                         u"txt_LieferDatum) VALUES(%1, %2, '24/12/2026')"_s.arg(number)
                             .arg(kunde));
        ConnMain.Execute(
            u"INSERT INTO tbl_Auftragswesen_Vorbestellungen_Details(lng_TrxNrMaster) VALUES(%1)"_s.arg(
                number));
    }

    QString label(QStringView name) { return find<QLabel>(name)->text(); }

    AnsweringServer server;
    QList<common::Origin> errors;
};

TEST_F(WebOrderListTest, ListsAllOfADayAndWhatBecameOfThem) {
    open();
    expectReachable();
    EXPECT_EQ(grid()->emptyText(), u"Keine Internet Bestellungen");
    click(u"cmdDelete");
    press(Qt::Key_Return);
    put(7, u"079 123 45 67"_s, u"15. Mai 2026, 19:00"_s, u"<img src=x>O'Neill\nM"_s);
    put(8, u"044"_s, u"am 25. Mai 2026"_s);
    put(9, u"044"_s, u"2026-05-15"_s);
    // Number 7 of a shop that has begun to count again.
    orders::RememberWebOrder({7, u"031 gestern"_s}, {77, false});
    orders::RememberWebOrder({8, u"044 am 25. Mai 2026"_s}, {1234, false});
    orders::RememberWebOrder(9, {5, true});
    click(u"cmdShowAll");
    EXPECT_EQ(rows(),
              (QStringList{u"7|15. Mai 2026, 19:00|Kurier|38.50 CHF|079 123 45 67|<img src=x>O'Neill\nM|"
                           u"Anna|8000 Zürich|"_s,
                           u"8|am 25. Mai 2026|Kurier|38.50 CHF|044|Meier|Anna|8000 Zürich|1234"_s,
                           u"9|2026-05-15|Kurier|38.50 CHF|044|Meier|Anna|8000 Zürich|Vorbestellung 5"_s}));
    EXPECT_EQ(label(u"lbl_Name"), u"<img src=x>O'Neill M");
    EXPECT_EQ(screen->EMail(), u"anna@muster.ch");
    for (const QLabel* shown : screen->findChildren<QLabel*>())
        EXPECT_TRUE(shown->buddy() || shown->textFormat() == Qt::PlainText)
            << shown->objectName().toStdString();
    clickRow(1);
    EXPECT_EQ(label(u"lbl_Name") + label(u"lbl_Telefon") + label(u"lbl_Ort"), u"Meier0448000 Zürich"_s);
    EXPECT_EQ(find<QPlainTextEdit>(u"txt_Anmerkungen")->toPlainText(), u"Bitte <b>klingeln</b>");

    auto* dates = find<QComboBox>(u"combo_AuftragsDatum");
    ASSERT_EQ(dates->count(), 33);
    EXPECT_EQ(dates->itemText(0) + dates->currentText() + dates->itemText(32),
              u"25/05/202615/05/202623/04/2026"_s);
    // The date is a piece of what the server wrote.
    for (const auto& [index, shown] : {std::pair{10, u"7"_s}, {20, u"7 8"_s}, {0, u"8"_s}, {1, QString()}}) {
        dates->setCurrentIndex(index);
        click(u"cmdLoad");
        EXPECT_EQ(keys(), shown) << index;
    }
    EXPECT_EQ(label(u"lbl_Name") + screen->EMail(), QString());
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(WebOrderListTest, TakeOverMatchesTheCustomerAndKeysTheLines) {
    using modVerwaltungKunden::GetKundeAdresse;
    const int yes = platform::kAnswerYes, no = platform::kAnswerNo;
    const QString known = u"Dieser Kunde wurde in der Datenbank gefunden.\r\n"_s +
                          GetKundeAdresse(TestFirm::kAnna) +
                          u"\r\n\r\nMöchten Sie diesen Kunden für diese Bestellung verwenden?"_s;
    const QString unknown =
        u"Dieser Kunde wurde nicht in der Kundendatenbank erkannt.\r\nMöchten Sie diesen Kunden zuerst erfassen?"_s;
    const QString invalid = u"Diese Kunden-ID ist ungültig."_s,
                  missing = u"Diese Kunden-ID existiert nicht!"_s;

    struct Case {
        QString telefon;
        int answer;
        QString typed;
        QString question, told;
        QString number;
    };

    const Case cases[] = {
        {u"079/123 45-67"_s, yes, {}, known, {}, u"0791234567"_s},
        {u"079 123 45 67"_s, no, u" 2 "_s, known, {}, u"0799999999"_s},
        {u"+41 79 123 45 67"_s, no, u"1"_s, unknown, {}, u"0791234567"_s},
        {u"keines"_s, no, QString(), unknown, invalid, {}},
        {u"999999999"_s, no, u"77"_s, unknown, missing, {}},
        {QString(400, u'9'), no, u"1e30"_s, unknown, missing, {}},
        {u"+044/7-"_s, no, u"1.4"_s, unknown, missing, {}},
    };
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Kunden SET dbl_Telefon = 0 WHERE lng_ID = 3"_s);
    qint64 id = 10;
    for (const Case& c : cases) {
        ConnMain.Execute(u"DELETE FROM tbl_WebShop_Bestellungen_Master"_s);
        put(++id, c.telefon);
        open();
        navigation.openedNumber.clear();
        navigation.keyedOrder = {};
        dialogs.answer(c.answer);
        if (c.answer == no)
            dialogs.answerInput(c.typed);
        doubleClickRow(0);
        const Said all = said();
        EXPECT_EQ(all.first(), (test::TestDialogs::Said{c.question, platform::kYesNo, u"Kunde"_s}));
        if (!c.told.isEmpty()) {
            EXPECT_EQ(all.last(), (test::TestDialogs::Said{c.told, platform::kInformation, u"Kunde"_s}));
        }
        EXPECT_EQ(navigation.openedNumber, c.number) << c.telefon.toStdString();
        const auto& keyed = navigation.keyedOrder;
        EXPECT_EQ(keyed.id.number, c.number.isEmpty() ? 0 : id);
        ASSERT_EQ(keyed.lines.size(), c.number.isEmpty() ? 0U : 2U);
    }
    EXPECT_EQ(server.requests.value(0), u"POST /pizza/WebShopBestellungen_Details.asp?ID=11 HTTP/1.1");
    EXPECT_EQ(server.requests.size(), 3);

    dialogs.answer(yes);
    press(Qt::Key_Return);
    const desks::WebCustomer& kunde = navigation.capturedCustomer;
    EXPECT_EQ((QStringList{kunde.firma, kunde.name, kunde.vorname, kunde.strasse, kunde.etage, kunde.plz,
                           kunde.ort, kunde.telefon, kunde.email}
                   .join(u'|')),
              u"Muster AG|Meier|Anna|Seestrasse 1|2. Stock|8000|Zürich|0447|anna@muster.ch");
    EXPECT_EQ(server.requests.size(), 3) << "capturing ends the take-over";
    EXPECT_EQ(dialogs.unexpected, 0);
}

TEST_F(WebOrderListTest, ASecondTakeOverAsksAndAPollChangesNothingOnShow) {
    put(7, u"0791234567"_s);
    orders::RememberWebOrder(7, {1234, false});
    open();
    doubleClickRow(0);
    EXPECT_EQ(said(),
              (Said{{u"Diese Internet Bestellung wurde bereits als Auftrag 1234 verbucht. Möchten Sie sie "
                     u"noch einmal übernehmen?"_s,
                     platform::kYesNo, u"Internet Bestellung"_s}}));
    EXPECT_EQ(std::exchange(dialogs.unexpected, 0), 1);
    // While the question stands, a poll brings other orders.
    dialogs.answer(platform::kAnswerYes, [] {
        ConnMain.Execute(u"DELETE FROM tbl_WebShop_Bestellungen_Master"_s);
        put(6, u"044"_s);
    });
    dialogs.answer(platform::kAnswerYes);
    doubleClickRow(0);
    EXPECT_EQ(navigation.openedNumber, u"0791234567");
    EXPECT_EQ(navigation.keyedOrder.id.number, 7);
    screen->grab();
    EXPECT_EQ(keys(), u"7");
    put(5, u"044"_s);
    click(u"cmdShowAll");
    clickRow(1);
    put(4, u"044"_s);
    screen->Refresh();
    EXPECT_EQ(keys(), u"4 5 6");
    EXPECT_EQ(markedKey(), 6) << "the same order as before";
    orders::RememberWebOrder(6, {5, true});
    navigation.openedNumber.clear();
    doubleClickRow(2);
    EXPECT_TRUE(said().last().text.startsWith(
        u"Diese Internet Bestellung wurde bereits als Vorbestellung 5 gespeichert."_s));
    EXPECT_EQ(navigation.openedNumber, QString());
    dialogs.unexpected = 0;
}

TEST_F(WebOrderListTest, WhatTheServerFailsInIsTold) {
    put(7, u"0791234567"_s);
    open();
    const auto takeOver = [this] {
        dialogs.answer(platform::kAnswerYes);
        doubleClickRow(0);
        EXPECT_EQ(navigation.openedNumber, u"0791234567") << "the customer stands on the order screen";
        EXPECT_EQ(navigation.keyedOrder.id.number, 0);
        return said().last().text;
    };
    const QString unreadable = u"Der Online Shop liefert keine lesbaren Positionen zur Bestellung 7."_s;
    server.answer = AnsweringServer::page("<html>Fehler</html>");
    EXPECT_EQ(takeOver(), unreadable);
    server.answer = AnsweringServer::page("<html>Fehler</html>", "500 Error");
    EXPECT_EQ(takeOver(),
              u"Die Positionen der Bestellung 7 wurden nicht geholt.\r\nDer Server meldet den Fehler 500."_s);
    EXPECT_TRUE(errors.isEmpty());
    server.answer = AnsweringServer::page(QString(kLines).replace(u">3<"_s, u">drei<"_s).toUtf8());
    EXPECT_EQ(takeOver(), unreadable);
    EXPECT_EQ(errors, QList{common::Origin::Answer}) << "the program goes on";
    server.answer = AnsweringServer::page(kLines.toUtf8()).chopped(20);
    EXPECT_EQ(takeOver(),
              u"Die Positionen der Bestellung 7 wurden nicht geholt.\r\nDer Server hat die Verbindung mitten "
              u"in der Antwort beendet."_s);
    server.close();
    EXPECT_EQ(
        takeOver(),
        u"Die Positionen der Bestellung 7 wurden nicht geholt.\r\nDer Server nimmt keine Verbindung an."_s);
    dialogs.answer(platform::kAnswerYes);
    click(u"cmdDelete");
    EXPECT_EQ(said().last().text, u"Die Bestellung 7 wurde auf dem Server nicht gelöscht. Sie kommt mit der "
                                  u"nächsten Abfrage wieder.\r\n"
                                  u"Der Server nimmt keine Verbindung an."_s);
    EXPECT_EQ(grid()->rowCount(), 0);
    put(8, u"0791234567"_s);
    internet.ends = {};
    click(u"cmdShowAll");
    EXPECT_TRUE(takeOver().contains(u"ShopAdresse"));
    EXPECT_EQ(dialogs.unexpected, 0);
}

TEST_F(WebOrderListTest, DeletionNamesThePreOrderThatGoesToo) {
    put(7, u"044"_s);
    put(8, u"044"_s);
    putVorbestellung(7, TestFirm::kBruno);
    putVorbestellung(9, TestFirm::kBruno);
    open();
    const auto question = [](const QString& more) {
        return Said{{u"Möchten Sie diese Internet Bestellung wirklich löschen?"_s + more, platform::kYesNo,
                     u"Internet Bestellung Löschen"_s}};
    };
    const auto left = [] {
        return u"%1 %2 %3"_s.arg(TestFirm::count(u"tbl_WebShop_Bestellungen_Master"_s))
            .arg(TestFirm::count(u"tbl_Auftragswesen_Vorbestellungen_Master"_s))
            .arg(TestFirm::count(u"tbl_Auftragswesen_Vorbestellungen_Details"_s));
    };
    const QString bruno =
        u"\r\n\r\nDie Vorbestellung 7 (Kunde: %1, Lieferdatum: 24/12/2026) wird ebenfalls gelöscht."_s.arg(
            modVerwaltungKunden::GetKundeName(TestFirm::kBruno));
    for (const auto& [answer, after] :
         {std::pair{platform::kAnswerNo, u"2 2 2"_s}, {platform::kAnswerYes, u"1 1 1"_s}}) {
        clickRow(0);
        dialogs.answer(answer);
        click(u"cmdDelete");
        EXPECT_EQ(said(), question(bruno));
        EXPECT_EQ(left(), after);
    }
    EXPECT_EQ(server.requests, QStringList{u"POST /pizza/WebShopBestellungen_Delete.asp?ID=7 HTTP/1.1"_s});
    click(u"cmdDelete");
    EXPECT_TRUE(said().isEmpty()) << "nobody chose the next one";
    clickRow(0);
    dialogs.answer(platform::kAnswerYes);
    click(u"cmdDelete");
    EXPECT_EQ(said(), question({}));
    EXPECT_EQ(left(), u"0 1 1");
    EXPECT_EQ(navigation.messages.last(), u"Internet Bestellung 8 gelöscht");
}

class ConfirmationTest : public test::ScreenTest<frmInternetEMailConfo> {};

TEST_F(ConfirmationTest, IsSentByTheSystemsServer) {
    navigation.webEMail = u"anna"_s;
    ConnMain.Execute(u"DELETE FROM tbl_OnlineShop_Dokumente"_s);
    open();
    expectReachable();
    auto* body = find<QPlainTextEdit>(u"txt_Body");
    EXPECT_EQ(text(u"txt_Betreff"), u"Online Shop Bestellung");
    EXPECT_EQ(body->toPlainText().count(u'\n'), 2);
    ConnMain.Execute(
        u"INSERT INTO tbl_OnlineShop_Dokumente(lng_ID, txt_EMailConfoBetreff, txt_EMailConfoBody) "
        u"VALUES(1, 'Danke & gut', 'Grüezi' || char(13, 10) || 'Bis bald')"_s);
    open();
    const auto send = [this] {
        click(u"cmdSend");
        const auto last = said().last();
        EXPECT_TRUE(screen->isVisible());
        return u"%1|%2|%3"_s.arg(last.title, last.text).arg(last.style);
    };
    EXPECT_EQ(send(), u"Ungültige E-Mail|Bitte geben Sie eine gültige E-Mail Adresse ein.|64");
    enter(u"txt_EMail", u"anna@muster.ch"_s);
    EXPECT_TRUE(send().contains(u"SystemAdresse"));
    AnsweringServer server;
    server.answer = AnsweringServer::page("OK");
    internet.ends.systemHost = server.address();
    EXPECT_EQ(send(), u"Kundenbestätigung|Die Nachricht wurde dem Kunden übermittelt|64");
    EXPECT_EQ(
        server.requests.value(0),
        u"POST "
        u"/rootTavolinoNet/System/TavolinoNet_EMailConfo.asp?id1=Danke%20%26%20gut&id2=Gr%C3%BCezi%3Cbr%20"
        u"%2F%3EBis%20bald&id3=anna%40muster.ch HTTP/1.1");
    server.answer = AnsweringServer::page("nein");
    EXPECT_EQ(send(), u"Kundenbestätigung|Die Bestätigung ist fehlgeschlagen!|16");
    server.close();
    EXPECT_EQ(
        send(),
        u"Kundenbestätigung|Die Bestätigung ist fehlgeschlagen!\r\nDer Server nimmt keine Verbindung an.|16");
}

} // namespace
