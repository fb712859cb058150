#include "common/Convert.h"
#include "common/Like.h"
#include "common/modFunctions.h"
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using common::Serial;
using common::Value;

namespace {

TEST(RoundRappen, roundsToFiveAfterCuttingToRappen) {
    for (const auto& [before, rounded, text] : {std::tuple<double, double, const char16_t*>{0, 0, u"0.00"},
                                                {12.379, 12.35, u"12.35"},
                                                {12.38, 12.40, u"12.40"},
                                                {12.32, 12.30, u"12.30"},
                                                {12.329, 12.30, u"12.30"},
                                                {12.33, 12.35, u"12.35"},
                                                {-12.38, -12.40, u"-12.40"},
                                                {1.23, 1.25, u"1.25"},
                                                {9.98, 10, u"10.00"},
                                                {0.02, 0, u"0.00"},
                                                {-0.02, 0, u"0.00"},
                                                {0.29, 0.30, u"0.30"}}) {
        double amount = before;
        EXPECT_EQ(modFunctions::RoundRappen(amount), QString::fromUtf16(text)) << before;
        EXPECT_NEAR(amount, rounded, 1e-8) << before;
    }
}

TEST(RoundRappen, leavesEveryRoundAmountAsItIs) {
    for (int coins = 0; coins <= 20'000; ++coins) {
        double amount = coins / 20.0;
        const QString before = common::formatNumber(amount, u"0.00");
        for (int twice = 0; twice < 2; ++twice)
            ASSERT_EQ(modFunctions::RoundRappen(amount), before);
    }
    double amount = 12.35;
    modFunctions::RoundRappen(amount);
    EXPECT_EQ(amount, 12.3 + double(0.05F)) << "the constants are of single precision";
}

TEST(Functions, dateWithShortYearLandsInThisCentury) {
    struct Case {
        Value date;
        const char16_t* text;
    };

    for (const Case& c :
         {Case{Value(u"5/6/45"), u"05/06/2045"}, Case{Value(u"5/6/1945"), u"05/06/1945"},
          Case{Value(Serial{46023}), u"01/01/2026"}, Case{Value(Serial{46023.99}), u"01/01/2026"},
          Case{Value(u"01/Mär/26"), u"01/03/2026"}, Case{Value(Serial{16593}), u"05/06/1945"},
          Case{Value(u"31/12/79"), u"31/12/2079"}, Case{Value(u"01/01/80"), u"01/01/1980"}})
        EXPECT_EQ(modFunctions::FormatDateDDMMYYYY(c.date), QString::fromUtf16(c.text));
}

TEST(Like, patterns) {
    for (const auto& [text, pattern, fits] :
         {std::tuple<const char16_t*, const char16_t*, bool>{u"Kasse 1", u"Kasse 1", true},
          {u"Kasse 1", u"kasse 1", false},
          {u"Kasse 1", u"Kasse *", true},
          {u"Kasse 12", u"Kasse #", false},
          {u"Kasse 1", u"Kasse #", true},
          {u"", u"*", true},
          {u"", u"?", false},
          {u"abcbc", u"*bc", true},
          {u"abcbcd", u"*bc", false},
          {u"a]", u"a]", true},
          {u"HP [Bar", u"HP [Bar", true},
          {u"a-", u"a[a-]", true},
          {u"x", u"[!x]", false},
          {u"aXbXc", u"a*X?", true},
          {u"Kasse 1", u"", false}})
        EXPECT_EQ(common::like(text, pattern), fits) << QString::fromUtf16(pattern).toStdString();
}

} // namespace
