#include "common/Convert.h"
#include "common/Like.h"
#include "common/modFunctions.h"
#include <gtest/gtest.h>

using common::Serial;
using common::Value;

namespace {

TEST(RoundRappen, roundsToFiveAfterCuttingToRappen) {
    struct Case {
        double amount;
        double rounded;
        const char16_t* text;
    };

    for (const Case& c :
         {Case{0, 0, u"0.00"}, Case{12.379, 12.35, u"12.35"}, Case{12.38, 12.40, u"12.40"},
          Case{12.32, 12.30, u"12.30"}, Case{12.329, 12.30, u"12.30"}, Case{12.33, 12.35, u"12.35"},
          Case{-12.38, -12.40, u"-12.40"}, Case{1.23, 1.25, u"1.25"}, Case{9.98, 10, u"10.00"},
          Case{0.02, 0, u"0.00"}, Case{-0.02, 0, u"0.00"}, Case{0.29, 0.30, u"0.30"}}) {
        double amount = c.amount;
        EXPECT_EQ(modFunctions::RoundRappen(amount), QString::fromUtf16(c.text)) << c.amount;
        EXPECT_NEAR(amount, c.rounded, 1e-8) << c.amount;
    }
}

TEST(RoundRappen, leavesEveryRoundAmountAsItIs) {
    for (int coins = 0; coins <= 20'000; ++coins) {
        double amount = coins / 20.0;
        const QString before = common::formatNumber(amount, u"0.00");
        ASSERT_EQ(modFunctions::RoundRappen(amount), before);
        ASSERT_EQ(modFunctions::RoundRappen(amount), before);
    }
}

TEST(RoundRappen, constantsAreSinglePrecision) {
    double amount = 12.35;
    modFunctions::RoundRappen(amount);
    EXPECT_EQ(amount, 12.3 + double(0.05F));
    // Rounding what is rounded changes nothing.
    EXPECT_EQ(modFunctions::RoundRappen(amount), u"12.35");
    EXPECT_EQ(amount, 12.3 + double(0.05F));
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

TEST(Functions, phoneNumberKeepsDigitsInOrder) {
    QString text = QStringLiteral("+41 (0)79 123-45.67");
    EXPECT_EQ(modFunctions::CleanTelefonNummer(text), u"410791234567");
    EXPECT_EQ(text, u" 41  0 79 123 45 67");
}

TEST(Functions, february) {
    EXPECT_EQ(modFunctions::DaysInFebruary(2024), 29);
    EXPECT_EQ(modFunctions::DaysInFebruary(2026), 28);
    EXPECT_EQ(modFunctions::DaysInFebruary(1900), 28);
    EXPECT_EQ(modFunctions::DaysInFebruary(2000), 29);
}

TEST(Functions, htmlAndBack) {
    EXPECT_EQ(modFunctions::TextToHTML({}), u" ");
    EXPECT_EQ(modFunctions::HTMLToText({}), u" ");
    EXPECT_EQ(modFunctions::TextToHTML(Value(u"Öl & \"Käse\"\r\n<ß>")),
              u"&Ouml;l &amp; &quot;K&auml;se&quot;<br /><ß>");
    EXPECT_EQ(modFunctions::HTMLToText(Value(u"&Ouml;l &AMP; K&auml;se<br />&amp;ouml;")),
              u"Öl & Käse\r\n&ouml;");
}

TEST(Functions, urlEncodesInItsOwnOrder) {
    EXPECT_EQ(modFunctions::TextToURL({}), u" ");
    EXPECT_EQ(modFunctions::TextToURL(Value(u"%")), u"%25");
    EXPECT_EQ(modFunctions::TextToURL(Value(u"!\"#$")), u"%2521%2522%2523%2524");
    EXPECT_EQ(modFunctions::TextToURL(Value(u"a b&c=d_é~")), u"a%20b%26c%3Dd%5Fé~");
    EXPECT_EQ(modFunctions::TextToURL(Value(u"x\r\ny")), u"x%3Cbr%20%2F%3Ey");
}

TEST(Functions, mailAddresses) {
    struct Case {
        const char16_t* list;
        bool valid;
        const char16_t* message;
    };

    for (const Case& c : {Case{u"anna@firma.ch", true, u""}, Case{u" Anna@Firma.CH ;", true, u""},
                          Case{u"a@b.c", false, u"a@b.c : Too short!"},
                          Case{u"an na@firma.ch", false, u"an na@firma.ch : Invalid character in email!"},
                          Case{u"anna.firma", false, u"anna.firma : Missing the @ or .!"},
                          Case{u"an@na@firma.ch", false, u"an@na@firma.ch : Too many @!"},
                          Case{u"@firma.ch", false, u"@firma.ch : Invalid format!"},
                          Case{u"anna@firma..ch", false, u"anna@firma..ch : Invalid format!"},
                          Case{u"anna@firma.info", false, u"anna@firma.info : Suffix too long!"},
                          Case{u"anna@firma.c", false, u"anna@firma.c : Suffix too short!"},
                          // One good address is enough; the message is that of the last one.
                          Case{u"anna@firma.ch;x@y.z", true, u"x@y.z : Too short!"},
                          Case{u"x@y.z;anna@firma.ch", true, u""}}) {
        QString message = QStringLiteral("before");
        EXPECT_EQ(modFunctions::IsValidEmailAddress(QString::fromUtf16(c.list), message), c.valid);
        EXPECT_EQ(message, QString::fromUtf16(c.message));
    }
}

TEST(Like, patterns) {
    struct Case {
        const char16_t* text;
        const char16_t* pattern;
        bool fits;
    };

    for (const Case& c :
         {Case{u"Kasse 1", u"Kasse 1", true}, Case{u"Kasse 1", u"kasse 1", false},
          Case{u"Kasse 1", u"Kasse *", true}, Case{u"Kasse 12", u"Kasse #", false},
          Case{u"Kasse 1", u"Kasse #", true}, Case{u"", u"*", true}, Case{u"", u"?", false},
          Case{u"abcbc", u"*bc", true}, Case{u"abcbcd", u"*bc", false}, Case{u"a]", u"a]", true},
          Case{u"HP [Bar", u"HP [Bar", true}, Case{u"a-", u"a[a-]", true}, Case{u"x", u"[!x]", false},
          Case{u"aXbXc", u"a*X?", true}, Case{u"Kasse 1", u"", false}})
        EXPECT_EQ(common::like(c.text, c.pattern), c.fits) << QString::fromUtf16(c.pattern).toStdString();
}

} // namespace
