// The catalogue of the web shop, exported from the small firm.
#include "common/RunTimeError.h"
#include "shop/TransferView.h"
#include "shop/modOnlineShopDB.h"
#include "store/SqliteEngine.h"
#include "support/TestDialogs.h"
#include "support/TestFirm.h"
#include <QDir>
#include <QFile>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using test::TestFirm;

namespace {

/// Keeps the steps, and stops at one of them where it is told to.
class Steps : public shop::TransferView {
  public:
    void setStatus(const QString& text) override { m_status = text; }

    void setProgress(int value) override {
        all << u"%1 %2"_s.arg(value).arg(m_status);
        if (onStep)
            onStep(value);
    }

    QStringList all;
    std::function<void(int value)> onStep;

  private:
    QString m_status;
};

class OnlineShopDB : public testing::Test {
  protected:
    OnlineShopDB() {
        for (const char16_t* sql :
             {u"UPDATE tbl_OnlineShop_Lieferzeiten SET lng_Abholzeit = 15, lng_LastOrder = 25, "
              u"lng_ShopStatus = "
              u"-1, txt_EMailAdresse = NULL",
              u"UPDATE tbl_Verwaltung_Produkte SET flag_InternetPreis = True WHERE lng_ID IN (2, 4, 5)",
              u"UPDATE tbl_Verwaltung_Produkte SET txt_Beschreibung = 'a\"b;--\u00e9', flag_InternetBilder = "
              u"True, txt_BildKlein = '5.jpg', txt_BildGross = NULL WHERE lng_ID = 5",
              u"UPDATE tbl_Verwaltung_Produkte SET txt_BildKlein = '2.jpg', txt_BildGross = '2.png' WHERE "
              u"lng_ID "
              u"= 2",
              u"UPDATE tbl_Verwaltung_ProdukteKategorien SET flag_Internet = True WHERE lng_ID = 2",
              u"UPDATE tbl_Verwaltung_ProdukteExtras SET flag_Internet = True WHERE lng_ID IN (2, 4)",
              u"INSERT INTO tbl_Verwaltung_Produkte_Extras(lng_ProduktID, lng_ProduktExtraID) VALUES (5, "
              u"4711)",
              u"UPDATE tbl_PLZ_Verzeichnis SET bool_Liefergebiet = False, dbl_Mindestbestellmenge = 60.25",
              u"UPDATE tbl_PLZ_Verzeichnis SET bool_Liefergebiet = True WHERE lng_PLZ = 8001"})
            ConnMain.Execute(QString::fromUtf16(sql));
    }

    void create() { modOnlineShopDB::CreateOnlineShopDB(steps, dialogs); }

    static QStringList exported(const QString& table, const QString& columns = u"*"_s) {
        store::Connection shop;
        shop.Open(store::onlineShopConnectionString());
        return TestFirm::rows(u"SELECT "_s + columns + u" FROM "_s + table, shop);
    }

    QString data(const QString& name) const { return firm.folder() + u"/Data/"_s + name; }

    QStringList shopFiles() const {
        return QDir(data({})).entryList({u"DBOnlineShop*"_s}, QDir::Files | QDir::Dirs);
    }

    TestFirm firm;
    test::TestDialogs dialogs;
    Steps steps;
};

TEST_F(OnlineShopDB, EveryTableHasItsRows) {
    create();
    const std::pair<const char16_t*, QStringList> tables[] = {
        {u"tblAbholung", {u"15"_s}},
        {u"tblLastOrder", {u"25"_s}},
        {u"tblShopStatus", {u"-1|"_s}},
        {u"tblArtikel",
         {u"2|Pizza|2|14|2||||"_s, u"4|Gutschein|1|20|4||||"_s,
          u"5|O'Neill's|1|18|5|a\"b;--\u00e9|a\"b;--\u00e9|5.jpg|"_s}},
        {u"tblGruppe", {u"2|Pizza|1"_s}},
        {u"tblLieferbedingungen", {u"8001|Z\u00fcrich|60.25|75"_s}},
        {u"tblZusatz", {u"1|K\u00e4sesauce|1.5|9"_s, u"2|K\u00e4se|2|8"_s, u"3|Knoblauch|0|7"_s}},
        // A deleted extra and one that is not there any more stay offered, one that is not for the shop does
        // not.
        {u"tblZusatzGruppe", {u"2|2|2"_s, u"4|2|4"_s, u"5|5|4711"_s}}};
    for (const auto& [table, rows] : tables)
        EXPECT_EQ(exported(QString::fromUtf16(table)), rows) << QString::fromUtf16(table).toStdString();
    EXPECT_EQ(exported(u"tblArtikel WHERE strPics IS NULL OR strKurzBeschreibung IS NULL"_s), QStringList())
        << "a missing text is an empty one";
    EXPECT_EQ(exported(u"tblBestellzeiten"_s).mid(4, 2),
              (QStringList{u"5|0|11|0|14|0|0|17|0|23|30"_s, u"6|1|11|0|14|0|0|17|0|23|30"_s}));
    EXPECT_EQ(exported(u"tblCorpprateIdentity"_s),
              (QStringList{u"0|A32638|FFFFFF|logo_demokurier.jpg|Online Shop"_s,
                           u"1|A32638|FFFFFF|logo_kurier.jpg|Online Shop"_s}));
    EXPECT_EQ(exported(u"tblDokumente"_s, u"ID, strAGB, strKontakt, strFAQ, strWiderspruchsrecht, "
                                          u"strDatenschutz, strNews, strBestellungDanke"_s),
              TestFirm::rows(u"SELECT lng_ID, txt_DokumenteAGB, txt_DokumenteKontakt, txt_DokumenteFAQ, "
                             u"txt_DokumenteWiderspruch, txt_DokumenteDatenschutz, txt_News, "
                             u"txt_BestellungDanke FROM tbl_OnlineShop_Dokumente WHERE lng_ID = 1"_s));
    EXPECT_EQ(steps.all,
              (QStringList{u"0 Datenbank initialisieren...."_s, u"5 Datenbank: Lieferzeiten...."_s,
                           u"10 Datenbank: Produkte...."_s, u"40 Datenbank: Bestellzeiten...."_s,
                           u"45 Datenbank: Corporate Identity...."_s, u"50 Datenbank: Dokumente...."_s,
                           u"55 Datenbank: Gruppen...."_s, u"70 Datenbank: Lieferbedingungen...."_s,
                           u"75 Datenbank: Extras...."_s, u"85 Datenbank: Produkte Extras...."_s,
                           u"90 Datenbank komprimieren...."_s, u"95 Datenbank komprimiert...."_s}));
}

TEST_F(OnlineShopDB, ASecondRunReplacesTheFirst) {
    ConnMain.Execute(
        u"UPDATE tbl_Verwaltung_Produkte SET txt_Beschreibung = '%1'"_s.arg(QString(300'000, u'x')));
    create();
    const qint64 large = QFileInfo(data(u"DBOnlineShop.mdb"_s)).size();
    for (const char16_t* sql : {u"DELETE FROM tbl_OnlineShop_Lieferzeiten",
                                u"UPDATE tbl_Verwaltung_Produkte SET txt_Beschreibung = NULL"})
        ConnMain.Execute(QString::fromUtf16(sql));
    QFile left(data(u"DBOnlineShop_CLEAN.mdb"_s));
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    left.write("cut off");
    left.close();
    create();
    EXPECT_TRUE(dialogs.said.isEmpty());
    EXPECT_LT(QFileInfo(data(u"DBOnlineShop.mdb"_s)).size(), large / 4) << "not compacted";
    EXPECT_EQ(shopFiles(), QStringList{u"DBOnlineShop.mdb"_s});
    EXPECT_EQ(exported(u"tblAbholung"_s) + exported(u"tblLastOrder"_s) + exported(u"tblShopStatus"_s),
              QStringList());
    EXPECT_EQ(exported(u"tblArtikel"_s, u"ID, strBeschreibung"_s), (QStringList{u"2|"_s, u"4|"_s, u"5|"_s}));
}

TEST_F(OnlineShopDB, AnErrorBeforeTheCompactionLeavesTheFormerCatalogue) {
    create();
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte_Preise SET dbl_Preis = NULL WHERE lng_ProduktID = 4"_s);
    steps.all.clear();
    EXPECT_THROW(create(), common::RunTimeError);
    EXPECT_EQ(steps.all.last(), u"10 Datenbank: Produkte....");
    EXPECT_EQ(exported(u"tblArtikel"_s, u"dblPreis"_s), (QStringList{u"14"_s, u"20"_s, u"18"_s}));
    EXPECT_TRUE(dialogs.said.isEmpty());
    QFile::remove(data(u"DBOnlineShop.mdb"_s));
    EXPECT_THROW(create(), common::RunTimeError);
}

TEST_F(OnlineShopDB, AnyFailureOfTheCompactionIsToldAndTheFilledFileStays) {
    const QString clean = data(u"DBOnlineShop_CLEAN.mdb"_s);
    std::unique_ptr<store::SqliteEngine> other;
    const std::pair<const char*, std::function<void()>> causes[] = {
        {"the name is taken", [&] { QDir().mkpath(clean + u"/x"_s); }},
        {"open elsewhere", [&] {
             QDir(clean).removeRecursively();
             other = std::make_unique<store::SqliteEngine>(data(u"DBOnlineShop.mdb"_s), QString());
             other->query(u"SELECT * FROM tblArtikel"_s, false)->next();
         }}};
    int price = 30;
    for (const auto& [cause, prepare] : causes) {
        prepare();
        ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte_Preise SET dbl_Preis = %1"_s.arg(++price));
        create();
        ASSERT_EQ(dialogs.said.size(), 1) << cause;
        EXPECT_EQ(
            dialogs.last().text,
            u"Sie müssen die Anwendung als Administrator ausführen, damit Sie diese Funktion ausnützen "
            u"können. Drücken Sie mit der rechten Maustaste auf das Icon der Anwendung und starten Sie die "
            u"Programm 'Als Administrator ausführen'");
        EXPECT_EQ(dialogs.last().title, u"Keine Administratorenrechte");
        EXPECT_EQ(dialogs.last().style, platform::kInformation);
        EXPECT_EQ(steps.all.last(), u"90 Datenbank komprimieren....");
        EXPECT_EQ(exported(u"tblArtikel"_s, u"dblPreis"_s), QStringList(3, QString::number(price)));
        dialogs.said.clear();
    }
}

/// Killed at a step, or some time into the compaction (91).
TEST_F(OnlineShopDB, AProcessThatIsKilledLeavesOneWholeCatalogue) {
    create();
    int price = 30;
    for (const int killedAt : {0, 10, 85, 90, 91, 95}) {
        const QStringList former = exported(u"tblArtikel"_s, u"dblPreis"_s);
        ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte_Preise SET dbl_Preis = %1"_s.arg(++price));
        const pid_t child = fork();
        if (child == 0) {
            steps.onStep = [&](int value) {
                if (value == 90 && killedAt == 91)
                    ualarm(900, 0);
                if (value == killedAt)
                    kill(getpid(), SIGKILL);
            };
            create();
            _exit(0);
        }
        int state = 0;
        ASSERT_EQ(waitpid(child, &state, 0), child);
        EXPECT_EQ(exported(u"tblArtikel"_s, u"dblPreis"_s),
                  killedAt < 90 ? former : QStringList(3, QString::number(price)))
            << killedAt;
    }
    create();
    EXPECT_EQ(shopFiles(), QStringList{u"DBOnlineShop.mdb"_s});
}

} // namespace
