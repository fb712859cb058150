#include "common/Clock.h"
#include "install/Installer.h"
#include "store/Recordset.h"
#include "store/StoreGlobals.h"
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int kToday = 46'023;

/// A demo and a small large firm, each made once and read by all tests.
class InstalledFirm : public testing::TestWithParam<bool> {
  protected:
    static void SetUpTestSuite() {
        common::clock::set(kToday + 0.5);
        for (const bool large : {false, true}) {
            install::InstallOptions options;
            options.demo = !large;
            options.large = large ? 0.001 : 0;
            s_folders[large] = std::make_unique<QTemporaryDir>();
            install::installDatabases(s_folders[large]->path(), options);
        }
        common::clock::release();
    }

    static void TearDownTestSuite() {
        for (auto& folder : s_folders)
            folder.reset();
    }

    void SetUp() override {
        store::setAppPath(s_folders[GetParam()]->path());
        store::OpenDatabases();
    }

    void TearDown() override { store::CloseDatabases(); }

    static qint64 count(const QString& from, store::Connection& connection = ConnMain) {
        store::Recordset rows;
        rows.Open(u"SELECT Count(*) AS Anzahl FROM "_s + from, connection);
        return rows.Fields(u"Anzahl").toLong();
    }

    static inline std::unique_ptr<QTemporaryDir> s_folders[2];
};

const QString kHeads = u"tbl_Auftragswesen_Bestellungen_Master"_s;
const QString kLines = u"tbl_Auftragswesen_Bestellungen_Details"_s;

/// Rows that point to nothing, and numbers that nobody can be called by twice.
TEST_P(InstalledFirm, keepsItsRelations) {
    const QString missing[] = {
        kHeads +
            u" WHERE lng_KundenID <> -1 AND lng_KundenID NOT IN (SELECT lng_ID FROM tbl_Verwaltung_Kunden)"_s,
        kHeads +
            u" WHERE lng_KurierID <> -1 AND lng_KurierID NOT IN (SELECT lng_ID FROM tbl_Verwaltung_Kuriere)"_s,
        kLines + u" WHERE lng_TrxNrMaster NOT IN (SELECT lng_TrxNr FROM "_s + kHeads + u')',
        kLines + u" WHERE lng_ProduktID NOT IN (SELECT lng_ID FROM tbl_Verwaltung_Produkte)"_s,
        kLines + u" WHERE flag_IsProdukt = 0 AND NOT EXISTS (SELECT 1 FROM tbl_Verwaltung_Produkte_Extras AS "
                 u"r WHERE "
                 u"r.lng_ProduktID = tbl_Auftragswesen_Bestellungen_Details.lng_ProduktID AND "
                 u"r.lng_ProduktExtraID = "
                 u"tbl_Auftragswesen_Bestellungen_Details.lng_ExtraID)"_s,
        u"tbl_Verwaltung_Produkte WHERE lng_ProduktGruppe NOT IN (SELECT lng_ID FROM "
        u"tbl_Verwaltung_ProdukteKategorien)"_s,
        u"(SELECT txt_Kurzzeichen FROM tbl_Verwaltung_Produkte GROUP BY txt_Kurzzeichen HAVING Count(*) > 1)"_s,
        u"(SELECT dbl_Telefon FROM tbl_Verwaltung_Kunden GROUP BY dbl_Telefon HAVING Count(dbl_Telefon) > 1)"_s,
        u"(SELECT dbl_Natel FROM tbl_Verwaltung_Kunden GROUP BY dbl_Natel HAVING Count(dbl_Natel) > 1)"_s,
        u"tbl_Verwaltung_Kunden WHERE CAST(txt_Telefon AS DOUBLE) <> coalesce(dbl_Telefon, 0) OR "
        u"CAST(txt_Natel AS DOUBLE) <> coalesce(dbl_Natel, 0) OR (dbl_Telefon IS NULL AND dbl_Natel IS NULL)"_s,
    };
    for (const QString& rows : missing)
        EXPECT_EQ(count(rows), 0) << qPrintable(rows);
    EXPECT_EQ(
        count(
            u"tbl_PhoneBook WHERE substr(txt_Telefon, 1, 3) NOT IN ('', '040') OR substr(txt_Natel, 1, 3) NOT IN ('', '073')"_s,
            ConnPhone),
        0);
}

/// The line is reckoned where every line is; here, that an order's head fits its lines.
TEST_P(InstalledFirm, booksEveryOrderWithoutGaps) {
    const QString sums =
        u"(SELECT m.*, Count(d.dbl_TrxNr) AS Zeilen, coalesce(Sum(d.dbl_PreisOhneMWSt), 0) AS Netto, "
        u"coalesce(Sum(d.dbl_PreisMitMWSt - d.dbl_Rabatt), 0) AS Brutto, Max(d.dbl_TrxNr) AS Letzte, "
        u"Sum(d.dbl_BestellZeitDouble <> m.dbl_BestellDatumNow) AS Andere FROM %1 AS m LEFT JOIN %2 AS d ON "
        u"d.lng_TrxNrMaster = m.lng_TrxNr GROUP BY m.lng_TrxNr) WHERE "_s.arg(kHeads, kLines);
    for (const char16_t* wrong :
         {u"abs(dbl_SummeOhneMWSt - Netto) > 1e-9", u"abs(dbl_TotalMitMWSt - Brutto) > 1e-9",
          u"abs(dbl_MWStBetrag - Brutto + Netto) > 1e-9", u"abs(Letzte - lng_TrxNr - Zeilen * 0.01) > 1e-9",
          u"Andere > 0", u"(Zeilen = 0) <> (lng_KundenID = -1)",
          u"(lng_KundenID = -1) <> (txt_Konditionen = 'gelöscht')"})
        EXPECT_EQ(count(sums + QString::fromUtf16(wrong)), 0) << QString::fromUtf16(wrong).toStdString();
    EXPECT_GT(count(kHeads), 500);
    // Numbers without a gap, in the order of the bookings.
    EXPECT_EQ(count(kHeads + u" WHERE lng_TrxNr > 1000 AND lng_TrxNr NOT IN (SELECT lng_TrxNr + 1 FROM "_s +
                    kHeads + u')'),
              0);
    EXPECT_EQ(
        count(
            kHeads + u" AS a INNER JOIN "_s + kHeads +
            u" AS b ON b.lng_TrxNr = a.lng_TrxNr + 1 WHERE b.dbl_BestellDatumNow < a.dbl_BestellDatumNow"_s),
        0);
}

INSTANTIATE_TEST_SUITE_P(DemoAndLarge, InstalledFirm, testing::Values(false, true),
                         [](const auto& firm) { return firm.param ? "Large" : "Demo"; });

} // namespace
