#include "common/Convert.h"
#include "masterdata/modVerwaltungKunden.h"
#include "masterdata/modVerwaltungKuriere.h"
#include "support/TestFirm.h"
#include "telephony/modTelefonie.h"
#include "telephony/modVerwaltungAnruferListe.h"
#include "telephony/modVerwaltungTelefonbuch.h"
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::TestFirm;

namespace {

struct Lookups : testing::Test {
    TestFirm firm;
};

TEST_F(Lookups, customersAreFoundByTheirNumericTwinsAndCouriersByTheirCodes) {
    using namespace modVerwaltungKunden;
    using namespace modVerwaltungKuriere;
    EXPECT_EQ(FindKundeByTelefon(791234567), TestFirm::kAnna);
    EXPECT_EQ(FindKundeByTelefon(799999999), TestFirm::kBruno);
    EXPECT_TRUE(KundeExistsByTelefon(799999999));
    EXPECT_FALSE(KundeExistsByTelefon(441112233)) << "a number with blanks has no twin";
    EXPECT_TRUE(KundeExists(TestFirm::kClara));
    EXPECT_FALSE(KundeExists(99));
    EXPECT_EQ(GetKundeTelefon(TestFirm::kAnna), u"0791234567");
    EXPECT_EQ(GetKundeTelefon(TestFirm::kBruno), u"0799999999");
    EXPECT_EQ(CheckKurierKurzzeichen(u"cd"_s), u"CD");
    EXPECT_EQ(CheckKurierKurzzeichen(u"x' OR '1'='1"_s), u"");
    EXPECT_EQ(FindKurierByKurzzeichen(u"C%"_s), 0);
    EXPECT_EQ(FillKurierMenu().at(0).text, u"CD");
}

TEST_F(Lookups, everyCallIsRecordedAndMarkedByItsText) {
    TestFirm::setTime(19, 5);
    for (const QString& number : {u"0791234567"_s, u"791234567"_s, QString(), u"O'Brien"_s, u"0791234567"_s})
        modTelefonie::RecordCall(number);
    const auto calls = [](const QString& what) {
        return TestFirm::value(u"SELECT "_s + what + u" FROM tbl_Verwaltung_AnruferListe"_s);
    };
    EXPECT_EQ(calls(u"Count(*) || ' ' || min(txt_Zeit) || ' ' || max(txt_Datum)"_s),
              u"5 19:05:00 15/05/2026");
    EXPECT_NEAR(calls(u"lng_Datum"_s).toDouble(), TestFirm::day() + common::timeSerial(19, 5), 1e-8);
    const QString taken = u"Sum(flag_Kunde <> 0) AS N"_s;
    EXPECT_EQ(calls(taken), u"0");
    modTelefonie::MarkCallTaken(u"0791234567"_s);
    EXPECT_EQ(calls(taken), u"2");
    modTelefonie::MarkCallTaken(u"O'Brien"_s);
    EXPECT_EQ(calls(taken), u"3");
    EXPECT_EQ(modVerwaltungAnruferListe::MissedCalls(TestFirm::day()), 2);
    EXPECT_EQ(modVerwaltungAnruferListe::MissedCalls(TestFirm::day() + 0.9), 0);
    modTelefonie::RecordCall(u"044"_s, 3);
    EXPECT_EQ(calls(u"Count(*)"_s), u"3");
    EXPECT_EQ(calls(taken), u"2") << "the oldest went";
}

TEST_F(Lookups, addressBlockLeavesOutWhatIsEmpty) {
    using modVerwaltungKunden::GetKundeAdresse;
    EXPECT_EQ(GetKundeAdresse(TestFirm::kAnna),
              u"Muster AG\r\nMeier Anna\r\nSeestrasse 1\r\n2. Stock\r\n8000 Zürich\r\n"
              u"Tel: 0791234567\r\nKlingel defekt");
    // The street's line stays, and the note is not to be shown.
    EXPECT_EQ(GetKundeAdresse(TestFirm::kBruno), u"Bruno \r\n\r\n8001 Zürich\r\nTel: 0799999999\r\n");
    EXPECT_EQ(GetKundeAdresse(TestFirm::kClara), u"Clara \r\n\r\n \r\nTel: 044 111 22 33\r\n");
    EXPECT_EQ(GetKundeAdresse(99), u"");
}

TEST_F(Lookups, phoneBookComparesTextsAndStopsAtHundred) {
    const auto add = [](const QString& telefon, const QString& natel) {
        ConnPhone.Execute(u"INSERT INTO tbl_PhoneBook(txt_Name, txt_Telefon, txt_Natel) VALUES('X', "_s +
                          store::sqlText(telefon) + u", "_s + store::sqlText(natel) + u")"_s);
    };
    const auto hits = [](const QString& number) {
        return TestFirm::rows(modVerwaltungTelefonbuch::FindPhoneBookEntrySql(number), ConnPhone).size();
    };
    add(u"0441112233"_s, QString());
    add(QString(), u"0441112233"_s);
    add(u"441112233"_s, QString());
    for (int i = 0; i < 105; ++i)
        add(u"0550000000"_s, QString());
    EXPECT_EQ(hits(u"0441112233"_s), 2);
    EXPECT_EQ(hits(u"0550000000"_s), 100);
    EXPECT_EQ(hits(u"' OR '1'='1"_s), 0);
    // Who calls: the directory where no customer has the number, customers by number and not by text.
    const QString anna = modVerwaltungKunden::GetKundeName(TestFirm::kAnna);
    EXPECT_FALSE(anna.isEmpty());
    EXPECT_EQ(modTelefonie::CallerName(u"791234567"_s), anna);
    EXPECT_EQ(modTelefonie::CallerName(u"0441112233"_s), u"X");
    for (const QString& nobody : {u"0440000000"_s, QString(), u"anonym"_s})
        EXPECT_EQ(modTelefonie::CallerName(nobody), u"");
}

TEST_F(Lookups, phoneBookSearchesByAnyField) {
    using modVerwaltungTelefonbuch::PhoneBookQuery;
    ConnPhone.Execute(u"DELETE FROM tbl_PhoneBook"_s);
    for (const char16_t* row : {u"'Meier', 'Seestrasse 1', '8000', 'Zürich', '0441112233', ''",
                                u"'Meierhans', 'Seeweg 2', '3000', 'Bern', '', '0791112233'",
                                u"'O''Neill', 'Gasse 3', '3012', 'Bern', '0310000000', ''"})
        ConnPhone.Execute(u"INSERT INTO tbl_PhoneBook(txt_Name, txt_Strasse, txt_PLZ, txt_Ort, "
                          "txt_Telefon, txt_Natel) VALUES("_s +
                          QString::fromUtf16(row) + QLatin1Char(')'));
    const auto found = [](const PhoneBookQuery& fields) {
        QStringList names;
        for (const QString& row :
             TestFirm::rows(modVerwaltungTelefonbuch::SearchPhoneBookSql(fields), ConnPhone))
            names << row.section(u'|', 0, 0);
        return names.join(u' ');
    };
    EXPECT_EQ(found({.name = u"meier"_s}), u"Meier");
    EXPECT_EQ(found({.name = u"Mei%"_s}), u"Meier Meierhans");
    EXPECT_EQ(found({.name = u"o'n%"_s}), u"O'Neill");
    EXPECT_EQ(found({.number = u"0791112233"_s}), u"Meierhans");
    EXPECT_EQ(found({.street = u"see%"_s, .town = u"bern"_s}), u"Meierhans");
    EXPECT_EQ(found({.postcode = u"30__"_s}), u"Meierhans O'Neill");
    EXPECT_EQ(found({.number = u"0441112233"_s, .name = u"O%"_s}), u"");
    const QString blanks = u"  "_s;
    EXPECT_EQ(modVerwaltungTelefonbuch::SearchPhoneBookSql({blanks, blanks, blanks, blanks, blanks}),
              QString());
}

} // namespace
