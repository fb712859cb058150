#include "install/Bulk.h"
#include "install/Schema.h"
#include "shopserver/CatalogueReader.h"
#include "shopserver/DeskAnswer.h"
#include "shopserver/OrderForm.h"
#include "shopserver/OrderPage.h"
#include "shopserver/OrderStore.h"
#include "store/CreateDatabase.h"
#include "store/SqliteEngine.h"
#include "support/Servers.h"
#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <httplib.h>

using namespace Qt::StringLiterals;

namespace {

constexpr char kRows[] = R"(
INSERT INTO tblAbholung VALUES (20);
INSERT INTO tblLastOrder VALUES (30);
INSERT INTO tblShopStatus VALUES (0, 'shop@example.ch');
INSERT INTO tblGruppe VALUES (2, 'Getränke', 2), (1, 'Pizza', 1);
INSERT INTO tblArtikel VALUES
    (7, '<script>alert(1)</script>', 1, 14.5, 2, 'Tomaten & "Käse"', 'Tomaten & "Käse"', 'marg"herita.jpg', ''),
    (5, 'Hawaii', 1, 16.05, 1, '', '', '', ''),
    (9, 'Nur am Telefon', 3, 1, 1, '', '', '', '');
INSERT INTO tblZusatz VALUES (1, 'Käse', 2, 2), (2, 'Knoblauch', 0, 1);
INSERT INTO tblZusatzGruppe VALUES (1, 7, 1), (2, 7, 2), (3, 7, 99);
INSERT INTO tblLieferbedingungen VALUES (8004, 'Zürich', 20, 45), (8005, 'Zürich', 40, 60);
INSERT INTO tblCorpprateIdentity VALUES (1, '112233', 'red;}', 'logo_kurier.jpg', 'Pizzeria "Roma"');
INSERT INTO tblDokumente VALUES (1, 'AGB', 'Kontakt', '', '', '', 'Gr&uuml;ezi<br />zusammen', 'Danke');
INSERT INTO tblBestellzeiten VALUES (1, 0, 11, 0, 14, 0, 0, 17, 0, 1, 30), (2, -1, 11, 0, 14, 0, -1, 17, 0, 22, 0);
)";

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

/// As the desk makes it and closes it.
QByteArray upload(const QByteArray& more = {}) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"shop.mdb"_s);
    store::createDatabase(path, {});
    {
        const store::SqliteEngine engine(path, {});
        install::createTables(engine.handle(), install::Database::OnlineShop);
        install::runScript(engine.handle(), QByteArray(kRows) + more);
    }
    return contentOf(path);
}

/// Monday, 23 November 2026.
QDateTime monday(int hour, int minute, int daysOn = 0) {
    return {QDate(2026, 11, 23 + daysOn), QTime(hour, minute)};
}

constexpr char kOrder[] =
    "p7=2&p5=&p9=3&x7-1=1&x7-99=1&name=Meier&vorname=Anna+Maria&strasse=Gasse%201&plz=8004&ort="
    "z%C3%BCrich&telefon=%2B41+79+123+45+67&art=lieferung&zeit=&anmerkung=a%0D%0A<b>&beleg=r1";

} // namespace

TEST(Shop, ReadsTheUploadedCatalogue) {
    const shop::Catalogue catalogue = shop::readCatalogue(upload());
    EXPECT_FALSE(catalogue.closed);
    ASSERT_EQ(catalogue.products.size(), 2) << "one is of no category of the shop's";
    EXPECT_EQ(catalogue.products[0].name, u"Hawaii");
    EXPECT_EQ(catalogue.products[1].text, u"Tomaten & \"Käse\"");
    EXPECT_EQ(catalogue.categories[0].name, u"Pizza");
    EXPECT_EQ(catalogue.extrasOf[7], (QList<qint64>{2, 1})) << "without the one that is gone";
    EXPECT_EQ(catalogue.look.bar, u"112233");
    EXPECT_EQ(catalogue.look.text, u"FFFFFF") << "what is no colour never reaches the page";
    EXPECT_EQ(catalogue.area(8004, u"ZÜRICH"_s)->minimum, 20);
    EXPECT_EQ(catalogue.area(8005, u"Zuerich"_s)->minimum, 40);
    EXPECT_EQ(catalogue.area(8006, u"Zürich"_s), nullptr);
}

TEST(Shop, RefusesABrokenUpload) {
    const QByteArray whole = upload();
    for (const qsizetype size :
         {qsizetype(0), qsizetype(50), qsizetype(512), whole.size() / 2, whole.size() - 1})
        EXPECT_THROW(shop::readCatalogue(whole.left(size)), shop::CatalogueError) << size;
    EXPECT_THROW(shop::readCatalogue(QByteArray("<html>Fehler</html>").repeated(200)), shop::CatalogueError);
    for (const char* sql :
         {"DROP TABLE tblZusatz",
          "DROP TABLE tblGruppe; CREATE VIEW tblGruppe AS SELECT 1 AS ID, 'x' AS strArtikelGruppe,"
          " 1 AS lngOrder",
          "UPDATE tblArtikel SET dblPreis = 9e999",
          "INSERT INTO tblZusatzGruppe WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM"
          " n LIMIT 60000) SELECT i, i, 1 FROM n"})
        EXPECT_THROW(shop::readCatalogue(upload(sql)), shop::CatalogueError) << sql;
    // Whatever stands in it, reading it comes to an end.
    for (int at = 100; at < whole.size(); at += 997) {
        QByteArray spoilt = whole;
        spoilt[at] = char(spoilt[at] ^ 0xff);
        try {
            shop::readCatalogue(spoilt);
        } catch (const shop::CatalogueError&) {
        }
    }
}

TEST(Shop, TakesOrdersWithinItsTimes) {
    const shop::OrderTimes times = shop::readCatalogue(upload()).times;
    EXPECT_FALSE(times.accepts(monday(10, 59)));
    EXPECT_TRUE(times.accepts(monday(11, 0)));
    EXPECT_TRUE(times.accepts(monday(13, 30))) << "the last order";
    EXPECT_FALSE(times.accepts(monday(13, 31)));
    EXPECT_TRUE(times.accepts(monday(23, 59)));
    EXPECT_TRUE(times.accepts(monday(1, 0, 1))) << "over midnight";
    EXPECT_FALSE(times.accepts(monday(1, 1, 1)));
    EXPECT_FALSE(times.accepts(monday(12, 0, 1))) << "closed on Tuesday";
    EXPECT_EQ(times.text(1), u"11:00 bis 14:00, 17:00 bis 01:30");
    EXPECT_EQ(times.text(2), u"geschlossen");
}

TEST(Shop, TakesAnOrderFromTheForm) {
    const shop::Catalogue catalogue = shop::readCatalogue(upload());
    QStringList problems;
    const shop::Order order = shop::OrderForm(kOrder).order(catalogue, monday(12, 0), problems);
    EXPECT_EQ(problems, QStringList());
    ASSERT_EQ(order.lines.size(), 2) << "nothing that the catalogue does not offer";
    EXPECT_TRUE(order.lines[0].isProduct);
    EXPECT_EQ(order.lines[1].id, 1);
    EXPECT_EQ(order.lines[1].quantity, 2);
    EXPECT_EQ(order.total, 33.0);
    EXPECT_EQ(order.town, u"8004 zürich");
    EXPECT_EQ(order.firstName, u"Anna Maria");
    EXPECT_EQ(order.wanted, u"23. November 2026, so bald wie möglich");
    EXPECT_EQ(order.remarks, u"a\n<b>");

    const struct {
        const char *from, *to, *problem;
    } cases[] = {
        {"p7=2", "p7=0", "mindestens ein Produkt"},
        {"p7=2", "p7=-1", "ganze Zahl"},
        {"p7=2", "p7=1e9", "ganze Zahl"},
        {"p7=2", "p7=1", "liefern wir ab CHF 20.00"},
        {"name=Meier&", "name=+&", "Ihren Namen"},
        {"name=Meier",
         "name="
         "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa",
         "zu lang"},
        {"telefon=%2B41+79", "telefon=x", "Telefonnummer"},
        {"strasse=Gasse%201", "strasse=", "Strasse"},
        {"plz=8004", "plz=8006", "liefern wir leider nicht"},
        {"plz=8004", "plz=80", "PLZ und Ort"},
        {"zeit=", "zeit=2026-11-24T12:00", "innerhalb der Bestellzeiten"},
        {"zeit=", "zeit=2026-12-07T12:00", "innerhalb der Bestellzeiten"},
        {"zeit=", "zeit=2026-11-23T12:30", "mindestens 45 Minuten"},
        {"zeit=", "zeit=morgen", "innerhalb der Bestellzeiten"},
    };

    for (const auto& [from, to, problem] : cases) {
        QStringList said;
        shop::OrderForm(QByteArray(kOrder).replace(from, to)).order(catalogue, monday(12, 0), said);
        EXPECT_TRUE(said.join(u' ').contains(QString::fromUtf8(problem)))
            << to << ": " << said.join(u' ').toStdString();
    }
    QStringList said;
    shop::OrderForm(QByteArray(kOrder).replace("lieferung&zeit=", "abholung&zeit=2026-11-23T17:30"))
        .order(catalogue, monday(9, 0), said);
    EXPECT_EQ(said, QStringList());
    shop::OrderForm(kOrder).order(shop::readCatalogue(upload("UPDATE tblShopStatus SET lngShopStatus = -1")),
                                  monday(12, 0), said);
    EXPECT_TRUE(said.join(u' ').contains(u"geschlossen"_s));
}

TEST(Shop, NoTextBreaksThePageOrTheAnswer) {
    const shop::Catalogue catalogue = shop::readCatalogue(upload());
    const QByteArray page =
        shop::orderPage(catalogue, shop::OrderForm("name=%22%3E<b>"), {u"<i>"_s}, monday(12, 0), u"r"_s);
    EXPECT_FALSE(page.contains("<script")) << page.toStdString();
    EXPECT_FALSE(page.contains("<b>"));
    EXPECT_FALSE(page.contains("<i>"));
    EXPECT_TRUE(page.contains("ProduktPics/Small/marg%22herita.jpg"));
    EXPECT_TRUE(page.contains("Gr&uuml;ezi<br />zusammen"));

    shop::Order order;
    order.id = 3;
    order.surname = u"</NAME><TOTAL>0</TOTAL></RECORD>\x01&amp;"_s;
    order.total = 1234.5;
    EXPECT_EQ(
        shop::headsAnswer({order}),
        "<BESTELLUNGEN><RECORD><ID>3</ID><FIRMA></FIRMA><NAME>‹/NAME›‹TOTAL›0‹/TOTAL›‹/RECORD› &amp;</NAME>"
        "<VORNAME></VORNAME><STRASSE></STRASSE><ETAGE></ETAGE><PLZORT></PLZORT><TELEFON></TELEFON><EMAIL></"
        "EMAIL>"
        "<VERSANDART></VERSANDART><VERSANDZEIT></VERSANDZEIT><ANMERKUNG></ANMERKUNG><TOTAL>1234.50</TOTAL>"
        "</RECORD></BESTELLUNGEN>");
    EXPECT_EQ(shop::headsAnswer({}), "<BESTELLUNGEN></BESTELLUNGEN>");
    EXPECT_EQ(shop::linesAnswer({{false, 8, 2, u"<x>"_s}}),
              "<BESTELLUNGEN><RECORD><ISPRODUKT>0</ISPRODUKT><PRODUKTID>8</PRODUKTID><ANZAHL>2</ANZAHL>"
              "<BEZEICHNUNG>‹x›</BEZEICHNUNG></RECORD></BESTELLUNGEN>");
}

TEST(Shop, ServesFromTheUploadToTheConfirmation) {
    const QTemporaryDir folder;
    const QString root = folder.filePath(u"ftp"_s);
    const std::string path = "/" + test::WebShop::kFolder.toString().toStdString();
    QDir().mkpath(root + QString::fromStdString(path) + u"Pictures"_s);
    const auto file = [&](const char* name) {
        return root + QString::fromStdString(path) + QLatin1String(name);
    };
    test::WebShop server(root);
    ASSERT_TRUE(server.start());
    auto client = std::make_unique<httplib::Client>("127.0.0.1", server.port());
    const auto post = [&](const std::string& name, const std::string& body = {}) {
        const httplib::Result result = client->Post(path + name, body, "application/x-www-form-urlencoded");
        return result ? std::to_string(result->status) + ' ' + result->body : "nothing";
    };
    const std::string transfer = "TavolinoShopDataTransferAccessToSQL.asp";

    EXPECT_EQ(client->Get(path + "Page_Order.asp")->status, 503);
    EXPECT_TRUE(post(transfer).starts_with("500 FEHLER"));
    write(file("TavolinoShopDB.asp"),
          upload("UPDATE tblBestellzeiten SET lngAbendVonStunden = 0, lngAbendBisStunden ="
                 " 23, lngAbendBisMinuten = 59, lngAbendGeschlossen = 0; INSERT INTO"
                 " tblBestellzeiten SELECT lngWochentag + 2 * n, 1, 0, 0, 0, 0, 0, 0, 0,"
                 " 23, 59 FROM tblBestellzeiten, (SELECT 1 AS n UNION SELECT 2 UNION"
                 " SELECT 3); UPDATE tblLastOrder SET lngLieferzeit = 0"));
    EXPECT_EQ(post(transfer), "200 OK");
    write(file("TavolinoShopDB.asp"), "broken");
    EXPECT_TRUE(post(transfer).starts_with("500 FEHLER"));
    EXPECT_NE(client->Get(path + "Page_Order.asp")->body.find("Hawaii"), std::string::npos)
        << "the last one in force";

    // The same page sent twice is one order.
    EXPECT_TRUE(post("Page_Order.asp", kOrder).starts_with("200"));
    EXPECT_TRUE(post("Page_Order.asp", kOrder).starts_with("200"));
    EXPECT_TRUE(post("Page_Order.asp", kOrder + std::string("&firma=x")).starts_with("200"))
        << "changed: another one";
    EXPECT_TRUE(post("Page_Order.asp", "p7=1").starts_with("422"));
    EXPECT_NE(post("Page_Order.asp", std::string(400'000, 'x')).substr(0, 3), "200");
    EXPECT_EQ(server.addOrder(R"({"ID": 77, "NAME": "Späth", "ZEILEN": [{"PRODUKTID": 5, "ANZAHL": -3}]})"),
              77);
    server.kill();
    ASSERT_TRUE(server.start());
    client = std::make_unique<httplib::Client>("127.0.0.1", server.port());
    const std::string orders = post("WebShopBestellungen_Master.asp");
    EXPECT_NE(orders.find("<ID>1</ID>"), std::string::npos) << orders;
    EXPECT_NE(orders.find("<ID>77</ID><FIRMA></FIRMA><NAME>Späth</NAME>"), std::string::npos) << orders;
    EXPECT_NE(orders.find("<ID>2</ID><FIRMA>x</FIRMA>"), std::string::npos) << orders;
    EXPECT_EQ(orders.find("<ID>3</ID>"), std::string::npos) << orders;
    EXPECT_NE(post("WebShopBestellungen_Details.asp?ID=77").find("<ANZAHL>-3</ANZAHL>"), std::string::npos);
    EXPECT_EQ(post("WebShopBestellungen_Delete.asp?ID=77"), "200 OK");
    EXPECT_EQ(post("WebShopBestellungen_Details.asp?ID=77"), "200 <BESTELLUNGEN></BESTELLUNGEN>");
    EXPECT_NE(client->Get(path + "WebShopBestellungen_Delete.asp?ID=1")->status, 200)
        << "a link deletes nothing";

    client->Post(
        "/rootTavolinoNet/System/TavolinoNet_EMailConfo.asp?id1=Gr%C3%BCezi%2521&id2=a%3Cbr%20%2F%3Eb&"
        "id3=anna%40example%2Ech");
    EXPECT_TRUE(server.confirmations().contains(u" an anna@example.ch: Grüezi!\na\nb\n"_s))
        << server.confirmations().toStdString();

    write(file("Pictures/logo.jpg"), "picture");
    write(file("Pictures/page.html"), "<script>");
    EXPECT_EQ(client->Get(path + "Pictures/logo.jpg")->body, "picture");
    for (const char* other : {"Pictures/page.html", "TavolinoShopDB.asp", "Pictures/..%2FTavolinoShopDB.asp",
                              "Pictures/%2e%2e/%2e%2e/logo.jpg"})
        EXPECT_EQ(client->Get(path + other)->status, 404) << other;
    EXPECT_FALSE(server.log().contains(u"example"_s)) << "no query in the log";
}
