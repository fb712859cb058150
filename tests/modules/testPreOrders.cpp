#include "common/Clock.h"
#include "modules/OrderFixture.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "store/SystemSettings.h"
#include "support/ServerFirm.h"

using namespace modAuftragswesenVorbestellungen;
using namespace Qt::StringLiterals;
using common::dateSerial;
using common::timeSerial;
using orders::Col;
using orders::OrderButtons;
using test::TestFirm;
namespace Detail = orders::Detail;

namespace {

const QString kHeads = u"tbl_Auftragswesen_Vorbestellungen_Master"_s;
const QString kLines = u"tbl_Auftragswesen_Vorbestellungen_Details"_s;

struct PreOrders : test::OrderTest {
    PreOrders() { SysVorbestellungAutomatischZeit = 30; }

    /// Anna's order of wine and pizza with cheese, for a later day.
    qint64 store(const QString& lieferung = u"20/05/2026"_s, const QString& lieferzeit = u"18:00"_s) {
        takeOrder();
        order.ChooseKurier(TestFirm::kKurierCD, u"CD"_s);
        order.setDetail(Detail::Lieferung, lieferung);
        order.setDetail(Detail::Lieferzeit, lieferzeit);
        const qint64 number = SaveVorbestellung(order);
        order.ClearBestellungMaske();
        return number;
    }

    void set(qint64 number, const QString& assignment) {
        ConnMain.Execute(u"UPDATE %1 SET %2 WHERE lng_TrxNr = %3"_s.arg(kHeads, assignment).arg(number));
    }

    qint64 due(double moment) {
        common::clock::set(moment);
        return FindFaelligeVorbestellung().value_or(-1);
    }
};

TEST_F(PreOrders, AreStoredUnderTheirOwnCountAndComeBackAsComingOrders) {
    const qint64 first = store();
    const qint64 number = store();
    EXPECT_EQ(number, first + 1);
    EXPECT_EQ(TestFirm::count(u"tbl_Auftragswesen_Bestellungen_Master"_s), 0);
    EXPECT_EQ(TestFirm::value(u"SELECT lng_KurierID, lng_LieferDatum, txt_LieferDatum, dbl_TotalMitMWSt FROM "
                              u"%1 WHERE lng_TrxNr = %2"_s.arg(kHeads)
                                  .arg(number)),
              u"2|46162|20/05/2026|40");
    common::clock::set(dateSerial(2026, 5, 19) + timeSerial(9, 5));
    OpenVorbestellung(order, number);
    EXPECT_EQ(head({Detail::AuftragsNr, Detail::Kurier, Detail::Datum, Detail::Bestellzeit,
                    Detail::Lieferzeit, Detail::Lieferung}),
              u"1001|CD|19/Mai/2026|09:05|18:00|20/05/2026")
        << "a coming order, not the pre-order's number";
    EXPECT_EQ(order.lng_KundenID, TestFirm::kAnna);
    EXPECT_EQ(order.lng_KurierID, TestFirm::kKurierCD);
    EXPECT_EQ(names(4), u"Wein|Pizza|Käse|");
    EXPECT_DOUBLE_EQ(total(), 40);
    EXPECT_TRUE(order.KundenAdresseShown());
    EXPECT_EQ(order.buttons(), (OrderButtons{true, false, true, true, false, false}));
}

TEST_F(PreOrders, BookingTwiceGivesTwoOrdersAndThePreOrderStays) {
    const qint64 number = store();
    common::clock::set(dateSerial(2026, 5, 20) + 0.5);
    for (int i = 0; i < 2; ++i) {
        OpenVorbestellung(order, number);
        ASSERT_TRUE(modAuftragswesenAuftragserfassung::SaveBestellung(order, dialogs, navigation));
    }
    EXPECT_EQ(TestFirm::count(u"tbl_Auftragswesen_Bestellungen_Master"_s), 2);
    EXPECT_EQ(TestFirm::count(u"tbl_Auftragswesen_Bestellungen_Details"_s), 6);
    EXPECT_EQ(TestFirm::count(kHeads), 1);
    EXPECT_EQ(TestFirm::count(kLines), 3);
}

TEST_F(PreOrders, DeletingLeavesNothingButTheOthers) {
    store();
    const qint64 number = store();
    DeleteVorbestellung(number);
    EXPECT_EQ(TestFirm::count(kHeads), 1);
    EXPECT_EQ(TestFirm::count(kLines), 3);
    ::store::CloseDatabases();
    ::store::OpenDatabases();
    EXPECT_GT(store(), number) << "a number given to the staff is never used again";
    OpenVorbestellung(order, number);
    EXPECT_EQ(order.detail(Detail::KundenNr), u"");
    EXPECT_EQ(order.LastFilledRow(), -1);
}

TEST_F(PreOrders, TheFirstDueOneIsFoundFromTheMinuteOn) {
    const double day = dateSerial(2026, 5, 20);
    EXPECT_EQ(due(day), -1);
    const qint64 evening = store(u"20/05/2026"_s, u"18:00"_s);
    const qint64 noon = store(u"20/05/2026"_s, u"12:00"_s);
    EXPECT_EQ(due(day + timeSerial(11, 29, 59)), -1);
    EXPECT_EQ(due(day + timeSerial(11, 30)), noon);
    EXPECT_EQ(due(day + timeSerial(17, 29, 59)), noon);
    EXPECT_EQ(due(day + 400), noon) << "the past stays due";
    DeleteVorbestellung(noon);
    EXPECT_EQ(due(day + timeSerial(17, 29, 59)), -1);
    EXPECT_EQ(due(day + timeSerial(17, 30)), evening);
    // The minute is met exactly, whatever the fractions round to.
    for (const int minute : {30, 61, 359, 721, 1021, 1439}) {
        set(evening, u"time_Lieferzeit = "_s + common::numberToText(timeSerial(minute / 60, minute % 60)));
        ASSERT_EQ(due(day + timeSerial((minute - 30) / 60, (minute - 30) % 60)), evening) << minute;
    }
    EXPECT_EQ(due(day - 1 + timeSerial(23, 45)), -1);
    set(evening, u"time_Lieferzeit = 0"_s);
    EXPECT_EQ(due(day - 1 + timeSerial(23, 45)), evening) << "across midnight";
}

TEST_F(PreOrders, WhatCannotBeReadHidesNothing) {
    if (test::stand() != test::Stand::File)
        GTEST_SKIP() << "of the file";
    const qint64 damaged = store(u"15/05/2026"_s, u"10:00"_s);
    const qint64 sound = store(u"15/05/2026"_s, u"11:00"_s);
    const double now = TestFirm::day() + 0.75;
    EXPECT_EQ(due(now), damaged);
    for (const char16_t* damage :
         {u"lng_LieferDatum = NULL", u"lng_LieferDatum = 'kaputt'", u"lng_LieferDatum = ''",
          u"lng_LieferDatum = 1e300", u"lng_LieferDatum = -5", u"time_Lieferzeit = NULL",
          u"time_Lieferzeit = 'bald'", u"time_Lieferzeit = ''"}) {
        const std::string what = QString::fromUtf16(damage).toStdString();
        set(damaged, u"lng_LieferDatum = 46157, time_Lieferzeit = 0.4"_s);
        EXPECT_EQ(due(now), damaged) << what;
        set(damaged, QString::fromUtf16(damage));
        EXPECT_EQ(due(now), sound) << what;
        CheckVorbestellungAlarm(navigation);
        EXPECT_EQ(navigation.vorbestellungCount, 2) << what;
        // It can still be opened, and its missing date or time is the user's to fill in.
        OpenVorbestellung(order, damaged);
        EXPECT_TRUE(order.detail(Detail::Lieferung).isEmpty() || order.detail(Detail::Lieferzeit).isEmpty())
            << what;
        EXPECT_DOUBLE_EQ(total(), 40);
    }
    set(damaged, u"time_Lieferzeit = 0.4, lng_LieferDatum = 46157, txt_LieferDatum = 'kaputt'"_s);
    OpenVorbestellung(order, damaged);
    EXPECT_EQ(order.detail(Detail::Lieferung), u"");
    set(damaged,
        u"time_Lieferzeit = '09:30', lng_LieferDatum = '15/05/2026', txt_LieferDatum = '15/05/2026'"_s);
    DeleteVorbestellung(sound);
    EXPECT_EQ(due(now), damaged) << "a text that is a date is one";
}

TEST_F(PreOrders, WhoseCustomerCourierOrProductHasGoneKeepItsAmounts) {
    const qint64 number = store();
    for (const char16_t* table : {u"tbl_Verwaltung_Kunden", u"tbl_Verwaltung_Kuriere",
                                  u"tbl_Verwaltung_Produkte", u"tbl_Verwaltung_ProdukteExtras"})
        ConnMain.Execute(u"DELETE FROM "_s + QString::fromUtf16(table));
    OpenVorbestellung(order, number);
    EXPECT_EQ(order.detail(Detail::Kurier), u"") << "the booking asks for a courier";
    EXPECT_EQ(names(3), u"gelöscht|gelöscht|gelöscht");
    ASSERT_TRUE(modAuftragswesenAuftragserfassung::SaveBestellung(order, dialogs, navigation));
    EXPECT_EQ(TestFirm::value(u"SELECT sum(dbl_PreisMitMWSt) FROM tbl_Auftragswesen_Bestellungen_Details"_s),
              u"40");
}

TEST_F(PreOrders, TheCheckCountsAndTellsTheShell) {
    CheckVorbestellungAlarm(navigation);
    EXPECT_EQ(navigation.vorbestellungCount, 0);
    EXPECT_TRUE(navigation.alarms.isEmpty());
    const qint64 number = store(u"15/05/2026"_s, u"18:30"_s);
    for (int tick = 0; tick < 2; ++tick)
        CheckVorbestellungAlarm(navigation);
    EXPECT_EQ(navigation.alarms, QList<qint64>(2, number));
    EXPECT_EQ(navigation.vorbestellungCount, 1);
}

} // namespace
