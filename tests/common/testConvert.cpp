#include "common/Clock.h"
#include "common/Convert.h"
#include "common/RunTimeError.h"
#include "common/Value.h"
#include <gtest/gtest.h>

using common::Serial;
using common::Value;

namespace {

constexpr double kFirstOf2026 = 46023;

TEST(Convert, parsesNumbersAndNothingElse) {
    const std::tuple<const char16_t*, double> cases[] = {
        {u"0791234567", 791234567},  {u"  12.50 ", 12.5}, {u"-3", -3}, {u"+3", 3},
        {u"1'234'567.5", 1234567.5}, {u".5", 0.5},        {u"5.", 5},  {u"1e3", 1000},
        {u"2.5E-2", 0.025}};
    for (const auto& [text, expected] : cases) {
        const auto number = common::parseNumber(QString::fromUtf16(text));
        ASSERT_TRUE(number.has_value()) << QString::fromUtf16(text).toStdString();
        EXPECT_DOUBLE_EQ(*number, expected);
    }
    for (const char16_t* text : {u"", u" ", u"1,5", u"1.2.3", u"12a", u"Inf", u"NaN", u"0x10", u"'1", u"1'",
                                 u"1''0", u"1.0'0", u"--1", u"1 2", u"e5", u"1e", u".", u"-", u"1e999"})
        EXPECT_FALSE(common::isNumeric(QString::fromUtf16(text))) << QString::fromUtf16(text).toStdString();
}

TEST(Convert, numberToTextIsPlain) {
    for (const auto& [number, text] : {std::pair{41791234567.0, u"41791234567"},
                                       {123456789012345.0, u"123456789012345"},
                                       {0.1 + 0.2, u"0.3"},
                                       {77 + 3 * 0.01, u"77.03"},
                                       {-0.0, u"0"},
                                       {-12.5, u"-12.5"}})
        EXPECT_EQ(common::numberToText(number), QString::fromUtf16(text));
}

TEST(Convert, formatsByDecimalDigits) {
    for (const auto& [number, form, text] :
         {std::tuple<double, const char16_t*, const char16_t*>{2.675, u"0.00", u"2.68"},
          {1.005, u"0.00", u"1.01"},
          {-2.675, u"0.00", u"-2.68"},
          {-0.004, u"0.00", u"0.00"},
          {0.005, u"0.00", u"0.01"},
          {9.995, u"0.00", u"10.00"},
          {999.999, u"0.00", u"1000.00"},
          {0, u"0.00", u"0.00"},
          {0.0004, u"0.00", u"0.00"},
          {1e-9, u"0.00", u"0.00"},
          {0.5, u"0", u"1"},
          {0.49, u"0", u"0"},
          {7, u"00", u"07"},
          {123, u"00", u"123"},
          {7.65, u"0.0", u"7.7"},
          {1234567.891, u"#,##0.00", u"1'234'567.89"},
          {-1234.5, u"#,0.00", u"-1'234.50"},
          {12, u"#,0.00", u"12.00"},
          {0.077, u"0.00%", u"7.70%"},
          {0, u"0.00%", u"0.00%"},
          {1.5, u"0.00 ", u"1.50 "},
          {46023.5, u"0.00000000", u"46023.50000000"},
          {12.3 + double(0.05F), u"0.00", u"12.35"}})
        EXPECT_EQ(common::formatNumber(number, form), QString::fromUtf16(text)) << number;
}

TEST(Convert, parsesDates) {
    common::clock::set(kFirstOf2026 + 40.5);

    for (const auto& [text, expected] : {std::tuple<const char16_t*, double>{u"01/01/2026", kFirstOf2026},
                                         {u"1.1.26", kFirstOf2026},
                                         {u"2026-01-01", kFirstOf2026},
                                         {u"01-Jan-2026", kFirstOf2026},
                                         {u"01/MÄR/2026", kFirstOf2026 + 59},
                                         {u"1.März.2026", kFirstOf2026 + 59},
                                         {u"1/1", kFirstOf2026},
                                         {u"01/01/2026 12:00", kFirstOf2026 + 0.5},
                                         {u"01/01/2026  06:00:00", kFirstOf2026 + 0.25},
                                         {u"18:00", 0.75},
                                         {u"29/02/2028", kFirstOf2026 + 789},
                                         {u"5/6/45", 16593},
                                         {u"01/01/29", 47119},
                                         {u"30/12/1899", 0}}) {
        const auto serial = common::parseDate(QString::fromUtf16(text));
        ASSERT_TRUE(serial.has_value()) << QString::fromUtf16(text).toStdString();
        EXPECT_DOUBLE_EQ(*serial, expected) << QString::fromUtf16(text).toStdString();
    }
    for (const char16_t* text :
         {u"31/02/2026", u"29/02/2026", u"25:00", u"12:60", u"abc", u"", u"1", u"1/13/2026", u"1/Mai/",
          u"1/1/2026 x", u"1/1/2026/1", u"12", u"00/01/2026", u"1/1/126"})
        EXPECT_FALSE(common::isDate(QString::fromUtf16(text))) << QString::fromUtf16(text).toStdString();
    common::clock::release();
}

TEST(Convert, formatsDates) {
    const double evening = kFirstOf2026 + 60 + common::timeSerial(18, 5, 9);
    EXPECT_EQ(common::formatDate(evening, u"DD/MM/YYYY"), u"02/03/2026");
    EXPECT_EQ(common::formatDate(evening, u"DD/MMM/YYYY"), u"02/Mär/2026");
    EXPECT_EQ(common::formatDate(evening, u"D. MMMM YY"), u"2. März 26");
    EXPECT_EQ(common::formatDate(evening, u"DDMMMYYYY"), u"02Mär2026");
    EXPECT_EQ(common::formatDate(evening, u"HH:MM:SS"), u"18:05:09");
    EXPECT_EQ(common::formatDate(evening, u"DD/MM/YYYY HH:MM"), u"02/03/2026 18:05");
    // A minute and a day last to their end, whatever date and time are told apart.
    const double lastMoment = kFirstOf2026 + common::timeSerial(23, 59, 59) + 0.999 / 86'400;
    EXPECT_EQ(common::formatDate(lastMoment, u"DD/MM/YYYY HH:MM:SS"), u"01/01/2026 23:59:59");
    for (const int minute : {5, 485, 1085, 1439})
        EXPECT_EQ(common::wholeSeconds(kFirstOf2026 + minute / 1440.0), kFirstOf2026 * 86'400 + minute * 60);
    EXPECT_EQ(common::dateSerial(2026, 1, 1), kFirstOf2026);
    EXPECT_THROW(common::dateSerial(2026, 2, 30), common::RunTimeError);
}

TEST(Value, convertsByTheRulesOfTheForms) {
    EXPECT_EQ(Value().toText(), u"");
    EXPECT_EQ(Value().toDouble(), 0);
    EXPECT_EQ(Value(u"").toDouble(), 0);
    EXPECT_EQ(Value(u"0791234567").toDouble(), 791234567);
    EXPECT_EQ(Value(true).toLong(), -1);
    EXPECT_EQ(Value(2.5).toLong(), 2);
    EXPECT_EQ(Value(3.5).toLong(), 4);
    EXPECT_EQ(Value(u"18:00").toSerial(), 0.75);
    EXPECT_EQ(Value(Serial{46023.75}).toText(), u"01/01/2026 18:00:00");
    EXPECT_EQ(Value(Serial{46023}).toText(), u"01/01/2026");
    EXPECT_EQ(Value(Serial{0.75}).toText(), u"18:00:00");
    EXPECT_EQ(Value(u"5.50").toText(), u"5.50");
    EXPECT_TRUE(Value(u"12").isNumeric());
    EXPECT_FALSE(Value().isNumeric());
    EXPECT_THROW(Value(u"abc").toDouble(), common::RunTimeError);
    EXPECT_THROW(Value(u"abc").toSerial(), common::RunTimeError);
}

} // namespace
