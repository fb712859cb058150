// What is written together stands together or not at all.
#include "common/RunTimeError.h"
#include "masterdata/modProdukte.h"
#include "masterdata/modProdukteExtras.h"
#include "modules/OrderFixture.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "support/ServerFirm.h"
#include "support/StatementLog.h"

using namespace Qt::StringLiterals;
using namespace modAuftragswesenAuftragserfassung;
using namespace modAuftragswesenVorbestellungen;
using test::TestFirm;

namespace {

class Transactions : public test::OrderTest {
  protected:
    Transactions() {
        key();
        SaveBestellung(order, dialogs, navigation);
        key();
        SaveVorbestellung(order);
        key();
    }

    void key() {
        order.ClearBestellungMaske();
        takeOrder();
        order.webBestellung = 7;
    }

    /// Every value of the tables that a road may write.
    static std::string contents() {
        QStringList all;
        for (const char16_t* table :
             {u"Auftragswesen_Bestellungen_Master", u"Auftragswesen_Bestellungen_Details",
              u"Auftragswesen_Vorbestellungen_Master", u"Auftragswesen_Vorbestellungen_Details",
              u"Auftragswesen_Erledigt", u"WebShop_Bestellungen_Verbucht", u"Verwaltung_Produkte",
              u"Verwaltung_Produkte_Preise", u"Verwaltung_Produkte_Extras", u"Verwaltung_ProdukteExtras",
              u"Verwaltung_ProdukteExtras_Preise"}) {
            store::Recordset rows;
            rows.Open(u"SELECT * FROM tbl_"_s + QString::fromUtf16(table), ConnMain);
            for (int row = 0; row < rows.RecordCount(); ++row)
                for (int column = 0; column < int(rows.Columns().size()); ++column)
                    all << rows.valueAt(row, column).toText();
        }
        return all.join(u'|').toStdString();
    }
};

} // namespace

TEST_F(Transactions, AFailureOnTheWayLeavesAllAsItWas) {
    if (test::stand() != test::Stand::File)
        GTEST_SKIP() << "of the file";

    struct Case {
        const char* name;
        /// The write that fails.
        const char16_t* write;
        std::function<void()> road;
    };

    const Case cases[] = {
        {"booking", u"INSERT ON tbl_Auftragswesen_Bestellungen_Details",
         [&] { SaveBestellung(order, dialogs, navigation); }},
        {"booking of a web order", u"INSERT ON tbl_WebShop_Bestellungen_Verbucht",
         [&] { SaveBestellung(order, dialogs, navigation); }},
        {"deletion of its booking", u"DELETE ON tbl_WebShop_Bestellungen_Verbucht",
         [&] { DeleteBestellung(1000, order.Kennung()); }},
        {"change of an order", u"INSERT ON tbl_Auftragswesen_Bestellungen_Details",
         [&] { UpdateBestellung(order, 1000); }},
        {"deletion of an order", u"DELETE ON tbl_Auftragswesen_Bestellungen_Details",
         [&] { DeleteBestellung(1000, order.Kennung()); }},
        {"pre-order", u"INSERT ON tbl_Auftragswesen_Vorbestellungen_Details",
         [&] { SaveVorbestellung(order); }},
        {"deletion of a pre-order", u"DELETE ON tbl_Auftragswesen_Vorbestellungen_Details",
         [&] { DeleteVorbestellung(1); }},
        {"product", u"INSERT ON tbl_Verwaltung_Produkte_Extras",
         [&] { modProdukte::SaveProdukt(*modProdukte::LoadProdukt(TestFirm::kHawaii), -1); }},
        {"deletion of a product", u"DELETE ON tbl_Verwaltung_Produkte_Preise",
         [&] { modProdukte::DeleteProdukt(TestFirm::kBier); }},
        {"extra", u"INSERT ON tbl_Verwaltung_ProdukteExtras_Preise",
         [&] { modProdukteExtras::SaveExtra(*modProdukteExtras::LoadExtra(TestFirm::kKaese), -1); }},
        {"change of an extra", u"UPDATE ON tbl_Verwaltung_ProdukteExtras_Preise",
         [&] {
             modProdukteExtras::Extra extra = *modProdukteExtras::LoadExtra(TestFirm::kKaese);
             extra.txt_Extra = u"Gruyère"_s;
             modProdukteExtras::SaveExtra(extra, TestFirm::kKaese);
         }},
        {"deletion of an extra", u"DELETE ON tbl_Verwaltung_ProdukteExtras_Preise",
         [&] { modProdukteExtras::DeleteExtra(TestFirm::kKaesesauce); }},
    };
    for (const Case& c : cases) {
        const std::string before = contents();
        ConnMain.Execute(u"CREATE TRIGGER broken BEFORE "_s + QString::fromUtf16(c.write) +
                         u" BEGIN SELECT RAISE(ABORT, 'broken'); END"_s);
        EXPECT_THROW(c.road(), common::RunTimeError) << c.name;
        ConnMain.Execute(u"DROP TRIGGER broken"_s);
        EXPECT_FALSE(ConnMain.InTransaction()) << c.name;
        EXPECT_EQ(contents(), before) << c.name;
        c.road();
        EXPECT_NE(contents(), before) << c.name;
        key();
    }
}

/// As where the answer was lost: it is tried again, also when something was added since.
TEST_F(Transactions, StoredAgainItStandsOnceAsItIsByNow) {
    const QString booked = u"SELECT Count(*) AS N FROM tbl_Auftragswesen_Bestellungen_Master"_s;
    const auto linesOf = [](const QString& kind, qint64 number) {
        return TestFirm::value(
            u"SELECT Count(*) AS N FROM tbl_Auftragswesen_%1_Details WHERE lng_TrxNrMaster = %2"_s.arg(kind)
                .arg(number));
    };
    const auto number = SaveBestellung(order, dialogs, navigation);
    EXPECT_EQ(SaveBestellung(order, dialogs, navigation), number);
    EXPECT_EQ(TestFirm::value(booked), u"2"_s) << "the first one is the fixture's";
    pickWein();
    EXPECT_EQ(SaveBestellung(order, dialogs, navigation), number);
    EXPECT_EQ(TestFirm::value(booked), u"2"_s);
    EXPECT_EQ(linesOf(u"Bestellungen"_s, *number), u"4"_s);
    DeleteBestellung(*number, order.Kennung());
    EXPECT_EQ(linesOf(u"Bestellungen"_s, *number), u"0"_s);

    key();
    const qint64 later = SaveVorbestellung(order);
    EXPECT_EQ(SaveVorbestellung(order), later);
    EXPECT_EQ(TestFirm::count(u"tbl_Auftragswesen_Vorbestellungen_Master"_s), 2);
    EXPECT_EQ(linesOf(u"Vorbestellungen"_s, later), u"3"_s);
}

/// Another station may book meanwhile: the number is read when nobody else can write any more.
TEST_F(Transactions, ABookingReadsItsNumberInItsTransaction) {
    if (test::stand() == test::Stand::Server)
        GTEST_SKIP() << "of the file";
    const test::StatementLog log(ConnMain);
    SaveBestellung(order, dialogs, navigation);
    EXPECT_EQ(log.statements().first(), "BEGIN IMMEDIATE");
    EXPECT_EQ(log.statements().last(), "COMMIT");
    EXPECT_EQ(log.statements().count("COMMIT"), 1);
}
