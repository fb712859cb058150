#include "common/Convert.h"
#include "common/RunTimeError.h"
#include "orders/OrderStorage.h"
#include "orders/modAuftragswesenAuftragserfassung.h"
#include "orders/modBestellNummern.h"
#include "store/SystemSettings.h"
#include "support/TestDialogs.h"
#include "support/TestFirm.h"
#include "support/TestFirmServices.h"
#include <cmath>
#include <gtest/gtest.h>

using namespace modAuftragswesenAuftragserfassung;
using orders::Col;
using orders::OrderButtons;
using orders::TotalRow;
using test::TestFirm;
namespace Detail = orders::Detail;

namespace {

const QString kHeads = QStringLiteral("tbl_Auftragswesen_Bestellungen_Master");
const QString kLines = QStringLiteral("tbl_Auftragswesen_Bestellungen_Details");

struct Booking : testing::Test {
    Booking() { order.SetUp(); }

    /// Anna's order of wine and pizza with cheese.
    void takeOrder() {
        order.SucheTelefonNummer(QStringLiteral("0791234567"));
        order.PickProdukt(TestFirm::kWein, QStringLiteral("W"), 2);
        order.PickProdukt(TestFirm::kMargherita, QStringLiteral("1"), 1);
        order.PickExtra(TestFirm::kKaese, QStringLiteral(u"Käse"), 1);
    }

    void book() {
        takeOrder();
        EXPECT_TRUE(SaveBestellung(order, dialogs, navigation));
        order.ClearBestellungMaske();
    }

    QString head(const QString& column, qint64 trxNr) {
        return TestFirm::value(
            QStringLiteral("SELECT %1 FROM %2 WHERE lng_TrxNr = %3").arg(column, kHeads).arg(trxNr));
    }

    QString line(const QString& column, const QString& number) {
        return TestFirm::value(
            QStringLiteral("SELECT %1 FROM %2 WHERE dbl_TrxNr = %3").arg(column, kLines, number));
    }

    TestFirm firm;
    test::TestDialogs dialogs;
    test::TestNavigation navigation;
    orders::WorkingOrder order;
};

TEST_F(Booking, headIsStoredFromTheCells) {
    takeOrder();
    order.ChooseKurier(TestFirm::kKurierCD, QStringLiteral("CD"));
    order.ChooseKonditionen(QStringLiteral("Chef's 10%"));
    ASSERT_TRUE(SaveBestellung(order, dialogs, navigation));
    const double day = TestFirm::day();

    struct Case {
        const char16_t* column;
        QString value;
    };

    for (const Case& c :
         {Case{u"lng_KundenID", QStringLiteral("1")}, Case{u"lng_KurierID", QStringLiteral("2")},
          Case{u"lng_BestellDatum", QString::number(day)},
          Case{u"date_BestellDatum", QStringLiteral("15/05/2026")},
          Case{u"time_BestellZeit", QStringLiteral("18:00:00")},
          Case{u"dbl_BestellDatumNow", common::numberToText(day + 0.75)},
          Case{u"time_Lieferzeit", QStringLiteral("18:30:00")},
          Case{u"txt_Konditionen", QStringLiteral("Chef's 10%")},
          Case{u"lng_LieferDatum", QString::number(day)},
          Case{u"txt_LieferDatum", QStringLiteral("15/05/2026")},
          Case{u"dbl_SummeOhneMWSt", common::numberToText(24 / 1.081 + 16 / 1.026)},
          Case{u"dbl_MWStBetrag", common::numberToText(40 - 24 / 1.081 - 16 / 1.026)},
          Case{u"dbl_TotalMitMWSt", QStringLiteral("40")}})
        EXPECT_EQ(head(QString::fromUtf16(c.column), 1000), c.value)
            << QString::fromUtf16(c.column).toStdString();
}

TEST_F(Booking, linesCarryTheirRowInTheirNumber) {
    takeOrder();
    // A gap in row 1: what stood there moves to row 4.
    for (int col = 0; col < Col::Count; ++col) {
        order.BestellungGrid.setCell(4, col, order.BestellungGrid.cell(1, col));
        order.BestellungGrid.setCell(1, col, common::Value());
    }
    ASSERT_TRUE(SaveBestellung(order, dialogs, navigation));
    EXPECT_EQ(TestFirm::count(kLines), 3);
    EXPECT_EQ(line(QStringLiteral("lng_ProduktID"), QStringLiteral("1000.01")), u"3");
    EXPECT_EQ(line(QStringLiteral("lng_ExtraID"), QStringLiteral("1000.03")), u"2");
    EXPECT_EQ(line(QStringLiteral("lng_ProduktID"), QStringLiteral("1000.05")), u"2");

    struct Case {
        const char16_t* column;
        const char16_t* wine;
        const char16_t* cheese;
    };

    for (const Case& c : {Case{u"lng_TrxNrMaster", u"1000", u"1000"}, Case{u"flag_IsProdukt", u"1", u"0"},
                          Case{u"lng_ExtraID", u"-1", u"2"}, Case{u"dbl_Menge", u"2", u"1"},
                          Case{u"dbl_MengeIntern", u"2", u"0"}, Case{u"txt_Stückelung", u"Stk.", u"Stk."},
                          Case{u"lng_Einheit", u"1", u"1"}, Case{u"txt_Ccy", u"CHF", u"CHF"},
                          Case{u"dbl_PreisMitMWSt", u"24", u"2"}, Case{u"dbl_MWStSatz", u"8.1", u"2.6"}}) {
        EXPECT_EQ(line(QString::fromUtf16(c.column), QStringLiteral("1000.01")), QString::fromUtf16(c.wine));
        EXPECT_EQ(line(QString::fromUtf16(c.column), QStringLiteral("1000.03")),
                  QString::fromUtf16(c.cheese));
    }
    EXPECT_EQ(line(QStringLiteral("dbl_BestellZeitDouble"), QStringLiteral("1000.01")),
              common::numberToText(TestFirm::day() + 0.75));

    LoadBestellung(order, 1000);
    EXPECT_EQ(order.BestellungGrid.text(1, Col::Bezeichnung), u"");
    EXPECT_EQ(order.BestellungGrid.text(2, Col::Bezeichnung), u"Käse");
    EXPECT_EQ(order.BestellungGrid.text(4, Col::Kurzzeichen), u"1");
}

TEST_F(Booking, allHundredRowsComeBackWhereTheyWere) {
    order.SucheTelefonNummer(QStringLiteral("0791234567"));
    for (int row = 0; row < 100; ++row)
        order.PickProdukt(TestFirm::kWein, QStringLiteral("W"), row + 1);
    ASSERT_TRUE(SaveBestellung(order, dialogs, navigation));
    LoadBestellung(order, 1000);
    for (int row = 0; row < 100; ++row)
        EXPECT_EQ(order.BestellungGrid.number(row, Col::Anzahl), row + 1);
    EXPECT_DOUBLE_EQ(order.total(TotalRow::Total), 12 * 5050);
}

TEST_F(Booking, numbersAreGaplessAndTheFirstIsShownOneHigher) {
    using namespace modBestellNummern;
    EXPECT_EQ(GetLastTrxNr(), 1000);
    EXPECT_EQ(GetFirstTrxNr(), u"1000");
    EXPECT_EQ(order.detail(Detail::AuftragsNr), u"1001");
    book();
    EXPECT_EQ(head(QStringLiteral("lng_TrxNr"), 1000), u"1000");
    EXPECT_EQ(order.detail(Detail::AuftragsNr), u"1001");
    EXPECT_EQ(navigation.nextTrxNr, u"1000");
    book();
    book();
    EXPECT_EQ(GetLastTrxNr(), 1002);
    EXPECT_EQ(GetFollowingTrxNr(1000), 1001);
    EXPECT_EQ(GetFollowingTrxNr(1002), -1);
    EXPECT_EQ(GetPrecedingTrxNr(1002), 1001);
    EXPECT_EQ(GetPrecedingTrxNr(1000), -1);

    DeleteBestellung(1002, {});
    EXPECT_EQ(*GetNextTrxNr(dialogs, navigation), 1003);
}

TEST_F(Booking, withoutAnyNumberTheProgramEnds) {
    takeOrder();
    ConnMain.Execute(QStringLiteral("DELETE FROM tbl_Einstellungen_System"));
    EXPECT_FALSE(SaveBestellung(order, dialogs, navigation));
    EXPECT_TRUE(navigation.ended);
    EXPECT_EQ(dialogs.last().title, u"Schwerer Fehler");
    EXPECT_EQ(dialogs.last().text,
              u"Es konnte keine Trx-Nr gefunden werden. Das Program wird darum beendet.");
    EXPECT_EQ(dialogs.last().style, platform::kStop);
    EXPECT_EQ(TestFirm::count(kHeads), 0);
}

TEST_F(Booking, deletedOrderKeepsItsHead) {
    book();
    DeleteBestellung(1000, {});
    EXPECT_EQ(TestFirm::count(kLines), 0);
    EXPECT_EQ(head(QStringLiteral("lng_KundenID"), 1000), u"-1");
    EXPECT_EQ(head(QStringLiteral("lng_KurierID"), 1000), u"-1");
    EXPECT_EQ(head(QStringLiteral("txt_Konditionen"), 1000), u"gelöscht");
    EXPECT_EQ(head(QStringLiteral("dbl_TotalMitMWSt"), 1000), u"0");
    EXPECT_EQ(head(QStringLiteral("lng_BestellDatum"), 1000), QString::number(TestFirm::day()));

    LoadBestellung(order, 1000);
    EXPECT_EQ(order.detail(Detail::KundenNr), u"gelöscht");
    EXPECT_EQ(order.detail(Detail::Kurier), u"gelöscht");
    EXPECT_FALSE(order.KundenAdresseShown());
    EXPECT_EQ(order.buttons(), (OrderButtons{true, false, false, true, false, false}));
}

TEST_F(Booking, loadingShowsTheOrderAsBookedWithTheNamesOfToday) {
    takeOrder();
    order.ChooseKurier(TestFirm::kKurierCD, QStringLiteral("CD"));
    order.BestellungGrid.endEdit(0, Col::Rabatt, QStringLiteral("2"));
    ASSERT_TRUE(SaveBestellung(order, dialogs, navigation));
    ConnMain.Execute(
        QStringLiteral("UPDATE tbl_Verwaltung_Produkte SET txt_Produkt = 'Rotwein' WHERE lng_ID = 3"));
    ConnMain.Execute(QStringLiteral("UPDATE tbl_Verwaltung_Produkte_Preise SET dbl_Preis = 99"));
    order.SucheTelefonNummer(QStringLiteral("0799999999"));
    order.ChooseKurier(TestFirm::kKurierAB, QStringLiteral("AB"));

    LoadBestellung(order, 1000);
    EXPECT_EQ(order.detail(Detail::AuftragsNr), u"1000");
    EXPECT_EQ(order.lng_KundenID, TestFirm::kAnna);
    EXPECT_EQ(order.lng_KurierID, TestFirm::kKurierCD);
    EXPECT_EQ(order.detail(Detail::Kurier), u"CD");
    EXPECT_EQ(order.detail(Detail::Datum), u"15/05/2026");
    EXPECT_EQ(order.detail(Detail::Bestellzeit), u"18:00");
    EXPECT_EQ(order.detail(Detail::Lieferzeit), u"18:30");
    EXPECT_EQ(order.detail(Detail::Lieferung), u"15/05/2026");
    EXPECT_EQ(order.BestellungGrid.text(0, Col::Bezeichnung), u"Rotwein");
    EXPECT_EQ(order.BestellungGrid.number(0, Col::Rabatt), 2);
    EXPECT_DOUBLE_EQ(order.total(TotalRow::Total), 38);
    EXPECT_NEAR(order.total(TotalRow::MWSt3), 16 - 16 / 1.026, 1e-9);
    EXPECT_TRUE(order.KundenAdresseShown());
    EXPECT_EQ(order.buttons(), (OrderButtons{true, false, false, true, true, true}));
}

TEST_F(Booking, loadingAMissingNumberLeavesAnEmptyOrder) {
    takeOrder();
    LoadBestellung(order, 4711);
    EXPECT_EQ(order.detail(Detail::AuftragsNr), u"1001");
    EXPECT_EQ(order.detail(Detail::KundenNr), u"");
    EXPECT_EQ(order.LastFilledRow(), -1);
    EXPECT_EQ(order.buttons(), OrderButtons{});
}

TEST_F(Booking, changeKeepsNumberDateAndTime) {
    book();
    book();
    LoadBestellung(order, 1000);
    TestFirm::setTime(20, 0);
    order.RemoveLine(0);
    UpdateBestellung(order, 1000);
    EXPECT_EQ(TestFirm::count(kHeads), 2);
    EXPECT_EQ(head(QStringLiteral("dbl_TotalMitMWSt"), 1000), u"16");
    EXPECT_EQ(head(QStringLiteral("time_BestellZeit"), 1000), u"18:00:00");
    EXPECT_EQ(line(QStringLiteral("lng_ProduktID"), QStringLiteral("1000.01")), u"2");
    EXPECT_EQ(line(QStringLiteral("Count(*)"), QStringLiteral("1000.03")), u"0");
    EXPECT_EQ(line(QStringLiteral("lng_ProduktID"), QStringLiteral("1001.03")), u"2");
}

TEST_F(Booking, failedChangeLosesNothing) {
    book();
    LoadBestellung(order, 1000);
    order.setDetail(Detail::Lieferung, u"kein Datum");
    EXPECT_THROW(UpdateBestellung(order, 1000), common::RunTimeError);
    EXPECT_FALSE(ConnMain.InTransaction());
    EXPECT_EQ(head(QStringLiteral("dbl_TotalMitMWSt"), 1000), u"40");
    EXPECT_EQ(TestFirm::count(kLines), 3);
    // The work recordset is free again.
    LoadBestellung(order, 1000);
    EXPECT_EQ(order.LastFilledRow(), 2);
}

TEST_F(Booking, anOrderWhoseHeadAndLinesDisagreeIsNotStored) {
    for (const double wrong : {26.0, HUGE_VAL}) {
        takeOrder();
        order.BestellungTotalGrid.setCell(TotalRow::Total, orders::kTotalAmount, wrong);
        EXPECT_THROW(SaveBestellung(order, dialogs, navigation), common::RunTimeError);
    }
    EXPECT_EQ(TestFirm::count(kHeads), 0);
}

TEST_F(Booking, preOrdersCountByThemselves) {
    book();
    takeOrder();
    const qint64 first = *WriteOrder(order, orders::PreOrders(), orders::OrderNumber::Counter());
    const qint64 second = *WriteOrder(order, orders::PreOrders(), orders::OrderNumber::Counter());
    EXPECT_EQ(second, first + 1);
    EXPECT_EQ(TestFirm::count(kHeads), 1);
    EXPECT_EQ(
        TestFirm::value(QStringLiteral("SELECT Count(*) AS N FROM tbl_Auftragswesen_Vorbestellungen_Details "
                                       "WHERE lng_TrxNrMaster = %1")
                            .arg(second)),
        u"3");
    EXPECT_EQ(TestFirm::value(
                  QStringLiteral("SELECT lng_KundenID FROM tbl_Auftragswesen_Vorbestellungen_Master WHERE "
                                 "lng_TrxNr = %1")
                      .arg(first)),
              u"1");
}

TEST_F(Booking, saveDecidesBetweenOrderAndPreOrder) {
    using enum SaveDecision;

    struct Case {
        const char16_t* lieferung;
        const char16_t* lieferzeit;
        int status;
        std::optional<bool> answer;
        SaveDecision decision;
    };

    takeOrder();
    for (const Case& c :
         {Case{u"", u"18:30", 0, {}, KeinLieferdatum}, Case{u"15/05/2026", u"18:30", 0, {}, Bestellung},
          Case{u"16/05/2026", u"18:30", 0, {}, Bestellung},
          Case{u"17/05/2026", u"18:30", 0, {}, Vorbestellung},
          Case{u"14/05/2026", u"18:30", 0, {}, LieferdatumVergangen},
          Case{u"14/05/2026", u"23:59", 1, {}, LieferdatumVergangen},
          Case{u"irgendwann", u"18:30", 1, {}, UngueltigesLieferdatum},
          // Two hours from now are the limit, and the limit itself does not ask.
          Case{u"15/05/2026", u"20:00", 1, {}, Bestellung},
          Case{u"15/05/2026", u"20:01", 1, {}, FrageVorbestellung},
          Case{u"15/05/2026", u"22:00", 0, {}, Bestellung},
          Case{u"15/05/2026", u"22:00", 1, false, Bestellung},
          Case{u"15/05/2026", u"22:00", 1, true, Vorbestellung},
          Case{u"16/05/2026", u"08:00", 1, {}, FrageVorbestellung},
          Case{u"17/05/2026", u"08:00", 1, {}, FrageVorbestellung},
          Case{u"17/05/2026", u"08:00", 1, false, Vorbestellung}}) {
        SysVorbestellungBuchungStatus = qint16(c.status);
        order.setDetail(Detail::Lieferung, QString::fromUtf16(c.lieferung));
        order.setDetail(Detail::Lieferzeit, QString::fromUtf16(c.lieferzeit));
        EXPECT_EQ(DecideSave(order, c.answer), c.decision)
            << QString::fromUtf16(c.lieferung).toStdString() << ' '
            << QString::fromUtf16(c.lieferzeit).toStdString();
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
    book();
    takeOrder();

    struct Case {
        int number;
        bool update, erase;
    };

    for (const Case& c : {Case{1000, true, true}, Case{1001, true, false}, Case{1002, false, false}}) {
        order.setDetail(Detail::AuftragsNr, c.number);
        EXPECT_EQ(MayUpdate(order), c.update) << c.number;
        EXPECT_EQ(MayDelete(order), c.erase) << c.number;
    }

    struct Right {
        int login, restricted, administrator;
        bool may;
    };

    order.setDetail(Detail::AuftragsNr, 1000);
    for (const Right& r :
         {Right{1, 1, 0, false}, Right{0, 1, 0, true}, Right{1, 0, 0, true}, Right{1, 1, -1, true}}) {
        SysAnmeldungBenutzer = r.login;
        SysEditierungBestellungen = r.restricted;
        UserAdministrator = qint16(r.administrator);
        EXPECT_EQ(MayUpdate(order), r.may);
        EXPECT_EQ(MayDelete(order), r.may);
    }
    UserAdministrator = 0;
    order.setDetail(Detail::KundenNr, QString());
    EXPECT_FALSE(MayUpdate(order));
    EXPECT_FALSE(MayDelete(order));
}

TEST_F(Booking, workingDaySettingChangesNothingStored) {
    SysFiktiverTag = 4 / 24.0;
    TestFirm::setTime(2, 0);
    book();
    EXPECT_EQ(head(QStringLiteral("lng_BestellDatum"), 1000), QString::number(TestFirm::day()));
    EXPECT_EQ(head(QStringLiteral("time_BestellZeit"), 1000), u"02:00:00");
}

TEST_F(Booking, quickCaptureStoresTheCustomerWithItsTwin) {
    SaveKundeSchnellerfassung({QStringLiteral("0441234567"), QStringLiteral("D'Amico"), QStringLiteral("Ugo"),
                               QStringLiteral("3. Hof"), QStringLiteral("Weg 1"), QStringLiteral("8002"),
                               QStringLiteral(u"Zürich")});
    EXPECT_TRUE(order.SucheTelefonNummer(QStringLiteral("0441234567")));
    EXPECT_EQ(order.KundenAdresse(), u"D'Amico Ugo\r\nWeg 1\r\n8002 Zürich\r\nTel: 0441234567\r\n3. Hof");
    SaveKundeSchnellerfassung({QStringLiteral("044 123"), QStringLiteral("Ohne"), {}, {}, {}, {}, {}});
    EXPECT_EQ(TestFirm::value(
                  QStringLiteral("SELECT dbl_Telefon FROM tbl_Verwaltung_Kunden WHERE txt_Name = 'Ohne'")),
              u"");
}

} // namespace
