#include "install/Installer.h"
#include "install/Schema.h"
#include "store/Dialect.h"
#include "store/SqliteEngine.h"
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

/// How the statements of the program find their rows in an installation: no lookup may walk a whole table.
class InstallPlan : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        s_folder = new QTemporaryDir;
        install::installDatabases(s_folder->path());
    }

    static void TearDownTestSuite() { delete std::exchange(s_folder, nullptr); }

    static std::unique_ptr<store::SqliteEngine> open(install::Database database) {
        const install::DatabaseFile& file = install::databaseFiles()[int(database)];
        return std::make_unique<store::SqliteEngine>(s_folder->filePath(u"Data/"_s + file.fileName),
                                                     file.password);
    }

    /// One line a step.
    static QStringList plan(const store::SqliteEngine& engine, const QString& sql) {
        const QByteArray text = "EXPLAIN QUERY PLAN " + store::translate(sql, {u"flag_status"_s}).sql;
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(engine.handle(), text.constData(), -1, &statement, nullptr), SQLITE_OK)
            << sqlite3_errmsg(engine.handle()) << text.constData();
        QStringList steps;
        while (sqlite3_step(statement) == SQLITE_ROW)
            steps += QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 3)));
        sqlite3_finalize(statement);
        return steps;
    }

    static QTemporaryDir* s_folder;
};

QTemporaryDir* InstallPlan::s_folder = nullptr;

/// "{M}", "{D}", "{V}" and "{W}" stand for the long names of orders, their lines, pre-orders and their lines.
QString spelledOut(QString sql) {
    return sql.replace(u"{M}"_s, u"tbl_Auftragswesen_Bestellungen_Master"_s)
        .replace(u"{D}"_s, u"tbl_Auftragswesen_Bestellungen_Details"_s)
        .replace(u"{V}"_s, u"tbl_Auftragswesen_Vorbestellungen_Master"_s)
        .replace(u"{W}"_s, u"tbl_Auftragswesen_Vorbestellungen_Details"_s)
        .replace(u"{P}"_s, u"tbl_Verwaltung_Produkte"_s)
        .replace(u"{K}"_s, u"tbl_Verwaltung_ProdukteKategorien"_s);
}

TEST_F(InstallPlan, everyLookupHasItsIndex) {
    const char* const lookups[] = {
        // Customers.
        "SELECT lng_ID FROM tbl_Verwaltung_Kunden WHERE dbl_Telefon = 400000001 OR dbl_Natel = 400000001",
        "SELECT * FROM tbl_Verwaltung_Kunden WHERE lng_ID = 3",
        "SELECT * FROM tbl_Verwaltung_Kunden WHERE txt_Firma LIKE 'Bl%' ORDER BY txt_Name ASC",
        "SELECT * FROM tbl_Verwaltung_Kunden WHERE txt_Name LIKE 'Meier' ORDER BY txt_Name ASC",
        "SELECT * FROM tbl_Verwaltung_Kunden WHERE txt_Vorname LIKE 'A%' ORDER BY txt_Name ASC",
        "SELECT * FROM tbl_Verwaltung_Kunden WHERE txt_Strasse LIKE 'Dorf%' ORDER BY txt_Name ASC",
        "SELECT * FROM tbl_Verwaltung_Kunden WHERE txt_PLZ LIKE '8600' AND txt_Ort LIKE 'D%' ORDER BY "
        "txt_Name ASC",
        "SELECT * FROM tbl_Verwaltung_Kunden WHERE txt_EMail = 'a@b.ch' ORDER BY txt_Name ASC",
        // Catalogue.
        "SELECT * FROM view_Verwaltung_Produkte WHERE lng_ID = 5 AND lng_Gruppe = 1",
        "SELECT * FROM view_Verwaltung_Produkte WHERE txt_Kurzzeichen LIKE 'MA%' AND lng_Gruppe = 1",
        "SELECT * FROM view_Verwaltung_Produkte WHERE txt_Produkt LIKE 'Pi%' AND lng_Gruppe = 1",
        "SELECT lng_ID, txt_Kurzzeichen FROM view_Verwaltung_Produkte WHERE lng_ProduktGruppe = 1 AND "
        "lng_Gruppe = 1 "
        "AND flag_Status = 0 ORDER BY lng_Reihenfolge ASC ;",
        "SELECT * FROM {P} WHERE txt_Kurzzeichen = 'A' AND lng_ID <> 4 AND lng_ProduktGruppe = 2;",
        "SELECT * FROM {P} WHERE lng_ProduktGruppe = 2",
        "SELECT * FROM tbl_Verwaltung_Produkte_Preise WHERE lng_ProduktID = 4 ORDER BY lng_Gruppe ASC;",
        "SELECT * FROM tbl_Verwaltung_Produkte_Extras WHERE lng_ProduktID = 4",
        "SELECT * FROM tbl_Verwaltung_Produkte_Extras WHERE lng_ProduktExtraID = 4",
        "SELECT * FROM view_Verwaltung_ProdukteExtras WHERE lng_ID = 3",
        "SELECT * FROM view_Verwaltung_ProdukteExtras WHERE txt_Extra LIKE 'Moz%' AND lng_Gruppe = 1",
        "SELECT * FROM tbl_Verwaltung_ProdukteExtras_Preise WHERE lng_ExtraID = 4 ORDER BY lng_Gruppe ASC;",
        "SELECT tbl_Verwaltung_ProdukteExtras.lng_ID, tbl_Verwaltung_ProdukteExtras.txt_Extra FROM "
        "tbl_Verwaltung_ProdukteExtras, tbl_Verwaltung_Produkte_Extras WHERE "
        "tbl_Verwaltung_Produkte_Extras.lng_ProduktID = 4 AND tbl_Verwaltung_ProdukteExtras.lng_ID = "
        "tbl_Verwaltung_Produkte_Extras.lng_ProduktExtraID AND tbl_Verwaltung_ProdukteExtras.flag_Status = 0 "
        "ORDER BY tbl_Verwaltung_ProdukteExtras.lng_Reihenfolge ASC;",
        "SELECT lng_ID FROM tbl_Verwaltung_Kuriere WHERE txt_Kurzzeichen = 'A';",
        "SELECT * FROM {K} WHERE txt_ProduktGruppe = 'A';",
        "SELECT * FROM tbl_Einstellungen_Benutzer WHERE txt_Username = 'A';",
        "SELECT * FROM tbl_PLZ_Verzeichnis WHERE txt_Land = 'CH' AND lng_PLZ = 8600 AND txt_Ort = "
        "'Dübendorf'",
        // Orders and pre-orders.
        "SELECT TOP 1 lng_TrxNr FROM {M} WHERE lng_TrxNr > 5 ORDER BY lng_TrxNr ;",
        "SELECT * FROM {M} WHERE lng_TrxNr = 4",
        "SELECT * FROM {D} WHERE lng_TrxNrMaster = 4",
        "DELETE FROM {D} WHERE lng_TrxNrMaster = 4",
        "SELECT * FROM {D} WHERE lng_ProduktID = 4",
        "SELECT * FROM {D} WHERE lng_ExtraID = 4",
        "SELECT * FROM {M} WHERE lng_KurierID = 4",
        "SELECT lng_TrxNr, txt_LieferDatum, time_Lieferzeit, lng_KundenID FROM {V} WHERE lng_LieferDatum = "
        "46000",
        "SELECT * FROM {V} WHERE lng_KundenID = 4",
        "SELECT * FROM {V} WHERE lng_KurierID = 4",
        "DELETE FROM {W} WHERE lng_TrxNrMaster = 4",
        "SELECT * FROM {W} WHERE lng_ProduktID = 4",
        "SELECT * FROM {W} WHERE lng_ExtraID = 4",
        // Calls.
        "UPDATE tbl_Verwaltung_AnruferListe SET flag_Kunde = 1 WHERE txt_Telefon = '0400000001'",
        "SELECT lng_Datum, flag_Kunde FROM tbl_Verwaltung_AnruferListe WHERE lng_Datum = 46000.12345678",
        // Journal and statistics of a span of days.
        "SELECT date_BestellDatum, lng_BestellDatum, lng_TrxNr, txt_Buchungstext, txt_Kurier, "
        "dbl_TotalMitMWSt From "
        "view_Auswertungen_Buchungsjournal WHERE lng_BestellDatum >= 46000 AND lng_BestellDatum <= 46000 ",
        "SELECT (SELECT txt_Kurzzeichen FROM {P} WHERE {D}.lng_ProduktID = {P}.lng_ID) AS Gruppe, "
        "Sum({D}.dbl_MengeIntern) AS TotalMenge FROM {M} INNER JOIN {D} ON {M}.lng_TrxNr = "
        "{D}.lng_TrxNrMaster WHERE "
        "{M}.dbl_BestellDatumNow >= 46000.2 AND  {M}.dbl_BestellDatumNow <= 46001.2 GROUP BY "
        "{D}.lng_ProduktID;",
        "SELECT {K}.txt_ProduktGruppe AS Gruppe, Sum({D}.dbl_MengeIntern) AS TotalMenge FROM {M}, {K}, {D}, "
        "{P} WHERE "
        "{M}.lng_TrxNr = {D}.lng_TrxNrMaster AND {M}.dbl_BestellDatumNow >= 46000.2 AND "
        "{M}.dbl_BestellDatumNow <= "
        "46001.2 AND {M}.lng_Kurierid = '3' AND {K}.lng_ID = {P}.lng_ProduktGruppe AND {P}.lng_ID = "
        "{D}.lng_ProduktID "
        "GROUP BY {K}.txt_ProduktGruppe;",
        "SELECT {K}.txt_ProduktGruppe AS Produkte, Sum({D}.dbl_MengeIntern) AS TotalMenge From {M}, {K}, "
        "{D}, {P} "
        "WHERE {M}.lng_KundenID = 3 AND {M}.lng_BestellDatum >=46000 AND {M}.lng_BestellDatum <= 46010 AND "
        "{K}.lng_ID = {P}.lng_ProduktGruppe AND {P}.lng_ID = {D}.lng_ProduktID And {M}.lng_TrxNr = "
        "{D}.lng_TrxNrMaster GROUP BY {K}.txt_ProduktGruppe;",
    };
    const auto engine = open(install::Database::Main);
    for (const char* sql : lookups) {
        const QStringList steps = plan(*engine, spelledOut(QString::fromUtf8(sql)));
        EXPECT_FALSE(steps.isEmpty()) << sql;
        for (const QString& step : steps)
            EXPECT_FALSE(step.startsWith(u"SCAN"_s)) << sql << "\n" << qPrintable(step);
    }
}

TEST_F(InstallPlan, sumsAreReadFromAnIndexAlone) {
    const char* const sums[] = {
        "SELECT lng_BestellDatum, Sum(dbl_TotalMitMWSt) AS TotalUmsatz From {M} GROUP BY lng_BestellDatum "
        "ORDER BY "
        "lng_BestellDatum DESC",
        "SELECT lng_BestellDatum, Sum(dbl_MWStBetrag) AS TotalUmsatz From {M} WHERE lng_KurierID = 2 GROUP "
        "BY "
        "lng_BestellDatum ORDER BY lng_BestellDatum DESC",
        "SELECT SUM(dbl_MWStBetrag) AS Umsatz FROM {M} WHERE lng_BestellDatum BETWEEN 46000 AND 46010",
        "SELECT SUM(dbl_TotalMitMWSt) AS Umsatz FROM {M} WHERE (lng_BestellDatum BETWEEN 46000 AND 46010) "
        "AND "
        "lng_KurierID = 3",
        "SELECT SUM(dbl_TotalMitMWSt) As Betrag FROM {M} WHERE lng_KundenID = 3",
        "SELECT Top 20 lng_KundenID, SUM(dbl_TotalMitMWSt) AS Betrag FROM {M} WHERE lng_KundenID >= 0 GROUP "
        "BY "
        "lng_KundenID ORDER BY SUM(dbl_TotalMitMWSt) Desc ;",
        "SELECT SUM(dbl_TotalMitMWSt) AS TotalBetrag FROM view_Auswertungen_Buchungsjournal ",
        "SELECT SUM(dbl_TotalMitMWSt) AS TotalBetrag FROM view_Auswertungen_Buchungsjournal Where "
        "lng_BestellDatum >= 46000 And lng_BestellDatum <= 46000  AND lng_KurierID = 2 ",
    };
    const auto engine = open(install::Database::Main);
    for (const char* sql : sums) {
        const QStringList steps = plan(*engine, spelledOut(QString::fromUtf8(sql)));
        ASSERT_FALSE(steps.isEmpty()) << sql;
        EXPECT_TRUE(steps.first().contains(u"COVERING INDEX"_s)) << sql << "\n" << qPrintable(steps.first());
    }
}

TEST_F(InstallPlan, thePhoneBookIsSearchedByEveryField) {
    const auto engine = open(install::Database::PhoneBook);
    for (const char16_t* condition :
         {u"(txt_Telefon = '0400000001' OR txt_Natel = '0400000001')", u"txt_Name LIKE 'Meier'",
          u"txt_Strasse LIKE 'Dorf%'", u"txt_PLZ LIKE '8600'", u"txt_Ort LIKE 'Z%' AND txt_Name LIKE 'M%'"}) {
        const QString sql =
            u"SELECT TOP 100 txt_Name FROM tbl_PhoneBook  WHERE "_s + QString::fromUtf16(condition);
        const QStringList steps = plan(*engine, sql);
        ASSERT_FALSE(steps.isEmpty());
        for (const QString& step : steps)
            EXPECT_FALSE(step.startsWith(u"SCAN"_s)) << qPrintable(sql + u'\n' + step);
    }
}

} // namespace
