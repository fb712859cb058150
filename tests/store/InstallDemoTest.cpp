#include "common/Clock.h"
#include "common/Convert.h"
#include "common/modFunctions.h"
#include "install/Installer.h"
#include "store/Recordset.h"
#include "store/StoreGlobals.h"
#include <QTemporaryDir>
#include <cmath>
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

struct Sums {
    int lines = 0;
    double net = 0, full = 0, food = 0, total = 0;
};

/// Adds a line to the sums of its order and tells what is wrong with it.
QString checkLine(store::Recordset& line, Sums& sums) {
    const double price = line.Fields(u"dbl_PreisMitMWSt").toDouble();
    const double discount = line.Fields(u"dbl_Rabatt").toDouble();
    const double rate = line.Fields(u"dbl_MWStSatz").toDouble();
    const double net = line.Fields(u"dbl_PreisOhneMWSt").toDouble();
    const bool product = line.Fields(u"flag_IsProdukt").toLong() == 1;
    ++sums.lines;
    sums.total += price - discount;
    sums.net += net;
    (rate == 8.1 ? sums.full : sums.food) += price - discount - net;

    QString wrong;
    // A line that a discount has gone over is net of whole rappen, even if the discount came to nothing.
    const double exact = (price - discount) / (rate / 100 + 1);
    const bool rounded = std::abs(net - std::round(exact * 100) / 100) < 1e-9;
    if (!rounded && (discount != 0 || std::abs(net - exact) > 1e-9))
        wrong += u" net"_s;
    if (rate != 8.1 && rate != 2.6)
        wrong += u" rate"_s;
    for (double percent : {10.0, 5.0}) {
        double expected = price * (percent * 0.01);
        if (discount == 0 || modFunctions::RoundRappen(expected) == common::formatNumber(discount, u"0.00"))
            break;
        if (percent == 5.0)
            wrong += u" discount"_s;
    }
    const double counted = line.Fields(u"dbl_MengeIntern").toDouble();
    if (counted != (product ? line.Fields(u"dbl_Menge").toDouble() : 0))
        wrong += u" quantity"_s;
    if (product != (line.Fields(u"lng_ExtraID").toLong() == -1))
        wrong += u" extra"_s;
    return wrong;
}

TEST_P(InstalledFirm, booksEveryOrderByTheRules) {
    store::Recordset heads, lines;
    heads.Open(u"SELECT * FROM "_s + kHeads + u" ORDER BY lng_TrxNr"_s, ConnMain, store::adOpenForwardOnly,
               store::adLockReadOnly);
    qint64 number = 1000;
    double moment = 0;
    for (; !heads.Eof(); heads.MoveNext(), ++number) {
        ASSERT_EQ(heads.Fields(u"lng_TrxNr").toLong(), number) << "a gap in the numbers";
        Sums sums;
        lines.Open(u"SELECT * FROM "_s + kLines + u" WHERE lng_TrxNrMaster = "_s + QString::number(number),
                   ConnMain, store::adOpenForwardOnly, store::adLockReadOnly);
        for (; !lines.Eof(); lines.MoveNext()) {
            EXPECT_EQ(checkLine(lines, sums).toStdString(), "") << number;
            EXPECT_NEAR(lines.Fields(u"dbl_TrxNr").toDouble(), double(number) + sums.lines * 0.01, 1e-9);
            EXPECT_EQ(lines.Fields(u"dbl_BestellZeitDouble").Value(),
                      heads.Fields(u"dbl_BestellDatumNow").Value());
        }
        lines.Close();
        EXPECT_NEAR(heads.Fields(u"dbl_SummeOhneMWSt").toDouble(), sums.net, 1e-9) << number;
        EXPECT_NEAR(heads.Fields(u"dbl_MWStBetrag").toDouble(), sums.full + sums.food, 1e-9) << number;
        EXPECT_NEAR(heads.Fields(u"dbl_TotalMitMWSt").toDouble(), sums.total, 1e-9) << number;
        const bool cancelled = heads.Fields(u"lng_KundenID").toLong() == -1;
        EXPECT_EQ(cancelled, heads.Fields(u"txt_Konditionen").text() == u"gelöscht"_s);
        EXPECT_EQ(cancelled, sums.lines == 0);
        EXPECT_LE(sums.lines, 9);
        // Numbers follow the order of the bookings.
        const double now = heads.Fields(u"dbl_BestellDatumNow").toDouble();
        EXPECT_GE(now, moment);
        EXPECT_EQ(now, double(heads.Fields(u"lng_BestellDatum").toLong()) +
                           heads.Fields(u"time_BestellZeit").Value().toSerial());
        EXPECT_EQ(heads.Fields(u"txt_LieferDatum").text(),
                  common::formatDate(double(heads.Fields(u"lng_LieferDatum").toLong()), u"DD/MM/YYYY"));
        moment = now;
    }
    EXPECT_GT(number, 1500);
}

INSTANTIATE_TEST_SUITE_P(DemoAndLarge, InstalledFirm, testing::Values(false, true),
                         [](const auto& firm) { return firm.param ? "Large" : "Demo"; });

} // namespace
