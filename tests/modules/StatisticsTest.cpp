// Turnover by period, peak times, and the close of the day.
#include "common/Clock.h"
#include "reporting/modAuswertungenTagesabschluss.h"
#include "reporting/modAuswertungenUmsatz.h"
#include "store/SystemSettings.h"
#include "support/Bookings.h"
#include <gtest/gtest.h>

using namespace modAuswertungenTagesabschluss;
using namespace modAuswertungenUmsatz;
using namespace Qt::StringLiterals;
using common::dateSerial;
using common::timeSerial;
using test::book;
using test::TestFirm;

namespace {

struct Statistics : testing::Test {
    /// An order of one line, of that amount.
    void sell(double moment, double amount, qint64 courier = TestFirm::kKurierAB,
              const QString& terms = u"Bar"_s) {
        book({++number, moment, {{.price = amount}}, TestFirm::kAnna, courier, terms});
    }

    TestFirm firm;
    qint64 number = 1000;
};

} // namespace

TEST_F(Statistics, PeriodsEndWithTheirLastDayAndTheFirstOnesHoldWhatCameBefore) {
    common::clock::set(dateSerial(2028, 3, 10));
    EXPECT_EQ(GetTageFebruar(2028) * 100 + GetTageFebruar(2100), 2928);
    sell(dateSerial(2005, 6, 1), 1);
    sell(dateSerial(2017, 12, 31), 2);
    sell(dateSerial(2018, 1, 1), 4);
    sell(dateSerial(2027, 2, 28), 8);
    sell(dateSerial(2026, 12, 31), 512);
    sell(dateSerial(2027, 12, 31), 1024);
    sell(dateSerial(2028, 1, 31), 16);
    sell(dateSerial(2028, 2, 1), 32);
    sell(dateSerial(2028, 2, 29), 64);
    sell(dateSerial(2028, 3, 1), 128, TestFirm::kKurierCD);
    sell(dateSerial(2029, 1, 1), 256);
    const Tabellen all = LoadUmsatzTabellen({});
    EXPECT_EQ(all.monate[0], 1 + 2 + 4 + 8 + 16 + 512 + 1024) << "January holds all earlier years";
    EXPECT_EQ(all.monate[1], 32 + 64);
    EXPECT_EQ(all.monate[2], 128);
    EXPECT_EQ(all.jahre[0], 1 + 2) << "the oldest year holds all before it";
    EXPECT_EQ(all.jahre[1], 4);
    EXPECT_EQ(all.jahre[10], 8 + 1024);
    EXPECT_EQ(all.jahre[11], 16 + 32 + 64 + 128) << "a day behind the year is in none";
    // The picture's months are of their own year only.
    EXPECT_EQ(all.monateDiesesJahr, (Perioden{16, 96, 128}));
    EXPECT_EQ(all.monateVorjahr, (Perioden{0, 8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1024}));
    ASSERT_EQ(all.tage.size(), 11U);
    EXPECT_EQ(all.tage[0].TotalUmsatz, 256) << "but a day of its own";
    EXPECT_EQ(LoadUmsatzTabellen({.lng_KurierID = TestFirm::kKurierCD}).tage.size(), 1U);
    const Tabellen taxes = LoadUmsatzTabellen({.mwst = true});
    EXPECT_NEAR(taxes.monate[2], 128 - 128 / 1.026, 1e-9);
    EXPECT_EQ(LoadUmsatzPeriode(qint64(dateSerial(2028, 1, 31)), qint64(dateSerial(2028, 2, 29)), {}), 112);
    EXPECT_EQ(LoadUmsatzPeriode(qint64(dateSerial(2028, 2, 29)), qint64(dateSerial(2028, 1, 31)), {}), 0);
}

TEST_F(Statistics, TheNewestDaysAreShownAndAnEmptyFirmHasZeros) {
    const Tabellen none = LoadUmsatzTabellen({});
    EXPECT_TRUE(none.tage.empty());
    EXPECT_EQ(none.monate, Perioden{});
    for (int day = 0; day < 30; ++day)
        sell(TestFirm::day() - 2 * day, 1);
    const Tabellen tables = LoadUmsatzTabellen({});
    ASSERT_EQ(int(tables.tage.size()), kTage);
    EXPECT_EQ(double(tables.tage.back().lng_BestellDatum), TestFirm::day() - 2 * (kTage - 1));
    EXPECT_EQ(tables.jahre[11], 30) << "older days count on in months and years";
}

TEST_F(Statistics, AnHourBeginsWithItsFirstMinute) {
    const double monday = dateSerial(2026, 10, 26);
    for (int hour = 0; hour < 24; ++hour)
        sell(monday + timeSerial(hour, 0), 1);
    sell(monday + timeSerial(23, 59, 59), 1);
    // The night in which the clock goes back has its half past two twice.
    sell(monday - 1 + timeSerial(2, 30), 1);
    sell(monday - 1 + timeSerial(2, 30), 1);
    book({.number = 1, .moment = monday, .customer = -1});
    const Stosszeiten counts = LoadStosszeiten(qint64(monday) - 1, qint64(monday), {});
    for (size_t hour = 0; hour < 23; ++hour)
        EXPECT_EQ(counts[0][hour], 1) << hour;
    EXPECT_EQ(counts[0][23], 2);
    EXPECT_EQ(counts[6][2], 2);
}

TEST_F(Statistics, TheCloseOfADayIsWholeAndNoOrderStandsInTwo) {
    SysFiktiverTag = 5 / 24.0;
    const double day = TestFirm::day();
    book({1, day + timeSerial(5, 0), {{.price = 20, .discount = 2}, {.price = 12, .rate = 8.1}}});
    book({2, day + timeSerial(23, 0), {{.price = 40}}, TestFirm::kBruno, TestFirm::kKurierCD, u"EC"_s});
    book({3, day + 1 + timeSerial(4, 59), {{.price = 7}}, TestFirm::kBruno, TestFirm::kKurierCD, u" bar "_s});
    book({4, day + 1 + timeSerial(5, 0), {{.price = 100}}});
    book({.number = 5, .moment = day + 0.5, .customer = -1, .courier = -1, .terms = u"gelöscht"_s});
    book({6, day + 0.5, {{.price = 3}}, TestFirm::kAnna, 4711});
    EXPECT_EQ(GeschaeftstagVon(day + 1 + timeSerial(4, 59)), qint64(day));
    EXPECT_EQ(GeschaeftstagVon(day + 1 + timeSerial(5, 0)), qint64(day) + 1);
    const Tagesabschluss close = LoadTagesabschluss(Geschaeftstage(qint64(day), qint64(day)));
    EXPECT_EQ(close.bestellungen, 4);
    EXPECT_EQ(close.storniert, std::vector<qint64>{5});
    EXPECT_EQ(close.umsatz, 30 + 40 + 7 + 3);
    EXPECT_EQ(close.rabatt, 2);
    ASSERT_EQ(close.mwst.size(), 2U);
    EXPECT_EQ(close.mwst[0].brutto, 18 + 40 + 7 + 3);
    EXPECT_NEAR(close.mwst[1].steuer, 0.90, 1e-9) << "in whole rappen";
    EXPECT_NEAR(close.mwstTotal().brutto, close.umsatz, 1e-9);
    QStringList told;
    for (const KurierAbrechnung& kurier : close.kuriere)
        told << u"%1 %2 %3 %4"_s.arg(kurier.kurier).arg(kurier.anzahl).arg(kurier.umsatz).arg(kurier.bar);
    for (const Kondition& word : close.konditionen)
        told << u"%1 %2 %3 %4"_s.arg(word.txt_Konditionen).arg(word.anzahl).arg(word.umsatz).arg(word.bar);
    EXPECT_EQ(told, (QStringList{u"(gelöscht) 1 3 3"_s, u"AB 1 30 30"_s, u"CD 2 47 7"_s, u"Bar 3 40 1"_s,
                                 u"Cash 0 0 1"_s, u"EC 1 40 0"_s}));
    EXPECT_EQ(close.bar(), 40);
    const Tagesabschluss both = LoadTagesabschluss(Geschaeftstage(qint64(day), qint64(day) + 1));
    const Tagesabschluss next = LoadTagesabschluss(Geschaeftstage(qint64(day) + 1, qint64(day) + 1));
    EXPECT_EQ(both.umsatz, close.umsatz + next.umsatz);
    EXPECT_EQ(LoadTagesabschluss(Geschaeftstage(qint64(day), qint64(day) - 1)).bestellungen, 0);
}

TEST_F(Statistics, TheOwnerSaysWhatIsCash) {
    sell(TestFirm::day() + 0.5, 10, TestFirm::kKurierAB, u"O'Check"_s);
    const Spanne day = Geschaeftstage(qint64(TestFirm::day()), qint64(TestFirm::day()));
    EXPECT_EQ(LoadTagesabschluss(day).bar(), 0);
    SetBar(u" o'check "_s, true);
    EXPECT_EQ(LoadTagesabschluss(day).bar(), 10);
    SetBar(u"O'Check"_s, false);
    SetBar(u"Cash"_s, false);
    const Tagesabschluss close = LoadTagesabschluss(day);
    EXPECT_EQ(close.bar(), 0);
    EXPECT_EQ(close.konditionen.size(), 3U) << "what was told once can be told again";
}
