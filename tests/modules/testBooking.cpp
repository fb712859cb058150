#include "common/RunTimeError.h"
#include "modules/OrderFixture.h"
#include "orders/OrderDraft.h"
#include "orders/OrderStorage.h"
#include "orders/modBestellNummern.h"
#include "store/SystemSettings.h"
#include <cmath>

using namespace modAuftragswesenAuftragserfassung;
using namespace Qt::StringLiterals;
using orders::Col;
using orders::OrderButtons;
using orders::TotalRow;
using test::TestFirm;
namespace Detail = orders::Detail;

namespace {

const QString kHeads = u"tbl_Auftragswesen_Bestellungen_Master"_s;
const QString kLines = u"tbl_Auftragswesen_Bestellungen_Details"_s;

struct Booking : test::OrderTest {
    static QString stored(const QString& column, qint64 trxNr) {
        return TestFirm::value(u"SELECT %1 FROM %2 WHERE lng_TrxNr = %3"_s.arg(column, kHeads).arg(trxNr));
    }

    /// The products of an order's lines, as "number|product".
    static QString lines(qint64 trxNr) {
        return TestFirm::rows(u"SELECT dbl_TrxNr, lng_ProduktID FROM %1 WHERE lng_TrxNrMaster = %2 ORDER BY "
                              u"dbl_TrxNr"_s.arg(kLines)
                                  .arg(trxNr))
            .join(u' ');
    }
};

TEST_F(Booking, aLineCarriesItsRowInItsNumber) {
    takeOrder();
    // A gap in row 1: what stood there moves to row 4.
    for (int col = 0; col < Col::Count; ++col) {
        order.BestellungGrid.setCell(4, col, order.BestellungGrid.cell(1, col));
        order.BestellungGrid.setCell(1, col, common::Value());
    }
    EXPECT_EQ(book(), 1000);
    EXPECT_EQ(lines(1000), u"1000.01|3 1000.03|2 1000.05|2");
    LoadBestellung(order, 1000);
    EXPECT_EQ(names(5), u"Wein||Käse||Pizza");

    order.ClearBestellungMaske();
    callAnna();
    for (int row = 0; row < 100; ++row)
        pickWein(row + 1);
    LoadBestellung(order, book());
    for (int row = 0; row < 100; ++row)
        EXPECT_EQ(number(row, Col::Anzahl), row + 1);
    EXPECT_DOUBLE_EQ(total(), 12 * 5050);
}

TEST_F(Booking, numbersAreGaplessAndTheFirstIsShownOneHigher) {
    using namespace modBestellNummern;
    EXPECT_EQ(GetLastTrxNr(), 1000);
    EXPECT_EQ(GetFirstTrxNr(), u"1000");
    EXPECT_EQ(order.detail(Detail::AuftragsNr), u"1001");
    for (const qint64 number : {1000, 1001, 1002}) {
        takeOrder();
        EXPECT_EQ(book(), number);
        EXPECT_EQ(navigation.nextTrxNr, QString::number(number));
    }
    EXPECT_EQ(GetLastTrxNr(), 1002);
    EXPECT_EQ(GetFollowingTrxNr(1000), 1001);
    EXPECT_EQ(GetFollowingTrxNr(1002), -1);
    EXPECT_EQ(GetPrecedingTrxNr(1002), 1001);
    EXPECT_EQ(GetPrecedingTrxNr(1000), -1);
    DeleteBestellung(1002, {});
    EXPECT_EQ(*GetNextTrxNr(dialogs, navigation), 1003);
}

TEST_F(Booking, aDeletedOrderKeepsItsHead) {
    takeOrder();
    book();
    DeleteBestellung(1000, {});
    EXPECT_EQ(lines(1000), u"");
    EXPECT_EQ(
        stored(u"lng_KundenID, lng_KurierID, txt_Konditionen, dbl_TotalMitMWSt, lng_BestellDatum"_s, 1000),
        u"-1|-1|gelöscht|0|%1"_s.arg(TestFirm::day()));
    LoadBestellung(order, 1000);
    EXPECT_EQ(head({Detail::KundenNr, Detail::Kurier}), u"gelöscht|gelöscht");
    EXPECT_FALSE(order.KundenAdresseShown());
    EXPECT_EQ(order.buttons(), (OrderButtons{true, false, false, true, false, false}));

    LoadBestellung(order, 4711);
    EXPECT_EQ(head({Detail::AuftragsNr, Detail::KundenNr}), u"1001|") << "a number that nobody booked";
    EXPECT_EQ(order.buttons(), OrderButtons{});
}

TEST_F(Booking, loadingShowsTheOrderAsBookedWithTheNamesOfToday) {
    takeOrder();
    order.ChooseKurier(TestFirm::kKurierCD, u"CD"_s);
    order.ChooseKonditionen(u"Chef's 10%"_s);
    order.BestellungGrid.endEdit(0, Col::Rabatt, u"2"_s);
    book();
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte SET txt_Produkt = 'Rotwein' WHERE lng_ID = 3"_s);
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte_Preise SET dbl_Preis = 99"_s);
    order.SucheTelefonNummer(u"0799999999"_s);
    order.ChooseKurier(TestFirm::kKurierAB, u"AB"_s);

    LoadBestellung(order, 1000);
    EXPECT_EQ(head({Detail::AuftragsNr, Detail::Kurier, Detail::Datum, Detail::Bestellzeit,
                    Detail::Lieferzeit, Detail::Lieferung, Detail::Konditionen}),
              u"1000|CD|15/05/2026|18:00|18:30|15/05/2026|Chef's 10%");
    EXPECT_EQ(order.lng_KundenID, TestFirm::kAnna);
    EXPECT_EQ(order.lng_KurierID, TestFirm::kKurierCD);
    EXPECT_EQ(line(0, {Col::Bezeichnung, Col::Preis, Col::Rabatt}), u"Rotwein|24|2");
    EXPECT_DOUBLE_EQ(total(), 38);
    EXPECT_NEAR(total(TotalRow::MWSt3), 16 - 16 / 1.026, 1e-9);
    EXPECT_TRUE(order.KundenAdresseShown());
    EXPECT_EQ(order.buttons(), (OrderButtons{true, false, false, true, true, true}));
}

TEST_F(Booking, aChangeKeepsNumberDateAndTime) {
    for (int i = 0; i < 2; ++i) {
        takeOrder();
        book();
    }
    LoadBestellung(order, 1000);
    TestFirm::setTime(20, 0);
    order.RemoveLine(0);
    UpdateBestellung(order, 1000);
    EXPECT_EQ(stored(u"dbl_TotalMitMWSt, time_BestellZeit"_s, 1000), u"16|18:00:00");
    EXPECT_EQ(lines(1000), u"1000.01|2 1000.02|2");
    EXPECT_EQ(lines(1001), u"1001.01|3 1001.02|2 1001.03|2");
}

TEST_F(Booking, whatAnotherStationDidToTheOrderIsNotOverwritten) {
    takeOrder();
    book();
    const auto all = [] {
        return TestFirm::rows(u"SELECT * FROM "_s + kHeads) + TestFirm::rows(u"SELECT * FROM "_s + kLines);
    };
    orders::OrderDraft draft(order, firm.folder() + u"/entwurf"_s);
    const QString byOthers[] = {u"UPDATE %1 SET dbl_Rabatt = 1 WHERE dbl_TrxNr = 1000.02"_s.arg(kLines),
                                u"UPDATE %1 SET txt_Konditionen = 'Karte'"_s.arg(kHeads)};
    for (const QString& change : byOthers)
        for (const bool afterACrash : {false, true}) {
            LoadBestellung(order, 1000);
            order.RemoveLine(0);
            draft.flush();
            if (afterACrash) {
                order.gelesen = {};
                ASSERT_TRUE(orders::OrderDraft::restore(firm.folder() + u"/entwurf"_s, order));
            }
            orders::RequireAsRead(order.gelesen, 1000);
            ConnMain.Execute(change);
            const QStringList before = all();
            EXPECT_THROW(UpdateBestellung(order, 1000), store::Overtaken) << change.toStdString();
            EXPECT_THROW(DeleteBestellung(1000, order.Kennung(), order.gelesen), store::Overtaken);
            EXPECT_EQ(all(), before);
            ConnMain.Execute(u"UPDATE %1 SET dbl_Rabatt = 0"_s.arg(kLines));
            ConnMain.Execute(u"UPDATE %1 SET txt_Konditionen = 'Bar'"_s.arg(kHeads));
        }
    LoadBestellung(order, 1000);
    DeleteBestellung(1000, {});
    try {
        UpdateBestellung(order, 1000);
        ADD_FAILURE();
    } catch (const store::Overtaken& overtaken) {
        EXPECT_TRUE(overtaken.isGone()) << "its head is there still, but cancelled";
    }
}

TEST_F(Booking, aNumberThatBelongedToNobodyIsCapturedOnce) {
    const QString number = u"0441112233"_s;
    EXPECT_TRUE(SaveKundeSchnellerfassung({number, u"Eva"_s, {}, {}, {}, {}, {}}, 441112233));
    EXPECT_FALSE(SaveKundeSchnellerfassung({number, u"Eve"_s, {}, {}, {}, {}, {}}, 441112233));
    EXPECT_EQ(
        TestFirm::value(u"SELECT Count(*), Max(txt_Name) FROM tbl_Verwaltung_Kunden WHERE dbl_Telefon = "
                        u"441112233"_s),
        u"1|Eva"_s);
}

TEST_F(Booking, withoutAnyNumberTheProgramEnds) {
    takeOrder();
    ConnMain.Execute(u"DELETE FROM tbl_Einstellungen_System"_s);
    EXPECT_FALSE(SaveBestellung(order, dialogs, navigation));
    EXPECT_TRUE(navigation.ended);
    EXPECT_EQ(dialogs.last().title, u"Schwerer Fehler");
    EXPECT_EQ(dialogs.last().text,
              u"Es konnte keine Trx-Nr gefunden werden. Das Program wird darum beendet.");
    EXPECT_EQ(dialogs.last().style, platform::kStop);
    EXPECT_EQ(TestFirm::count(kHeads), 0);
}

TEST_F(Booking, anOrderWhoseHeadAndLinesDisagreeIsNotStored) {
    for (const double wrong : {26.0, HUGE_VAL}) {
        takeOrder();
        order.BestellungTotalGrid.setCell(TotalRow::Total, orders::kTotalAmount, wrong);
        EXPECT_THROW(SaveBestellung(order, dialogs, navigation), common::RunTimeError);
    }
    EXPECT_EQ(TestFirm::count(kHeads), 0);
}

TEST_F(Booking, saveDecidesBetweenOrderAndPreOrder) {
    using enum SaveDecision;

    takeOrder();
    for (const auto& [lieferung, lieferzeit, status, answer, decision] :
         {std::tuple<const char16_t*, const char16_t*, int, std::optional<bool>, SaveDecision>{
              u"", u"18:30", 0, {}, KeinLieferdatum},
          {u"15/05/2026", u"18:30", 0, {}, Bestellung},
          {u"16/05/2026", u"18:30", 0, {}, Bestellung},
          {u"17/05/2026", u"18:30", 0, {}, Vorbestellung},
          {u"14/05/2026", u"18:30", 0, {}, LieferdatumVergangen},
          {u"14/05/2026", u"23:59", 1, {}, LieferdatumVergangen},
          {u"irgendwann", u"18:30", 1, {}, UngueltigesLieferdatum},
          // Two hours from now are the limit, and the limit itself does not ask.
          {u"15/05/2026", u"20:00", 1, {}, Bestellung},
          {u"15/05/2026", u"20:01", 1, {}, FrageVorbestellung},
          {u"15/05/2026", u"22:00", 0, {}, Bestellung},
          {u"15/05/2026", u"22:00", 1, false, Bestellung},
          {u"15/05/2026", u"22:00", 1, true, Vorbestellung},
          {u"16/05/2026", u"08:00", 1, {}, FrageVorbestellung},
          {u"17/05/2026", u"08:00", 1, {}, FrageVorbestellung},
          {u"17/05/2026", u"08:00", 1, false, Vorbestellung}}) {
        SysVorbestellungBuchungStatus = qint16(status);
        order.setDetail(Detail::Lieferung, QString::fromUtf16(lieferung));
        order.setDetail(Detail::Lieferzeit, QString::fromUtf16(lieferzeit));
        EXPECT_EQ(DecideSave(order, answer), decision) << QString::fromUtf16(lieferung).toStdString() << ' '
                                                       << QString::fromUtf16(lieferzeit).toStdString();
    }
    // A pre-order needs no courier, an order does.
    order.setDetail(Detail::Kurier, QString());
    EXPECT_EQ(DecideSave(order, true), Vorbestellung);
    order.setDetail(Detail::Lieferung, u"15/05/2026");
    EXPECT_EQ(DecideSave(order, false), KeinKurier);
    order.ClearBestellungMaske();
    EXPECT_EQ(DecideSave(order), KeineTelefonNummer);
}

TEST_F(Booking, changeReachesTheComingNumberAndDeleteDoesNot) {
    EXPECT_FALSE(MayUpdate(order));
    takeOrder();
    book();
    takeOrder();

    for (const auto& [number, update, erase] :
         {std::tuple<int, bool, bool>{1000, true, true}, {1001, true, false}, {1002, false, false}}) {
        order.setDetail(Detail::AuftragsNr, number);
        EXPECT_EQ(MayUpdate(order), update) << number;
        EXPECT_EQ(MayDelete(order), erase) << number;
    }

    order.setDetail(Detail::AuftragsNr, 1000);
    const std::tuple<int, int, int, bool> cases[] = {
        {1, 1, 0, false}, {0, 1, 0, true}, {1, 0, 0, true}, {1, 1, -1, true}};
    for (const auto& [login, restricted, administrator, may] : cases) {
        SysAnmeldungBenutzer = login;
        SysEditierungBestellungen = restricted;
        UserAdministrator = qint16(administrator);
        EXPECT_EQ(MayUpdate(order), may);
        EXPECT_EQ(MayDelete(order), may);
    }
    UserAdministrator = 0;
    order.setDetail(Detail::KundenNr, QString());
    EXPECT_FALSE(MayUpdate(order));
    EXPECT_FALSE(MayDelete(order));
}

} // namespace
