#include "common/Convert.h"
#include "masterdata/modVerwaltungKunden.h"
#include "masterdata/modVerwaltungKuriere.h"
#include "support/TestFirm.h"
#include "telephony/modTelefonie.h"
#include "telephony/modVerwaltungAnruferListe.h"
#include "telephony/modVerwaltungTelefonbuch.h"
#include <gtest/gtest.h>

using test::TestFirm;

namespace {

struct Lookups : testing::Test {
    TestFirm firm;
};

TEST_F(Lookups, customersAreFoundByTheirNumericTwins) {
    using namespace modVerwaltungKunden;
    EXPECT_EQ(FindKundeByTelefon(791234567), TestFirm::kAnna);
    EXPECT_EQ(FindKundeByTelefon(799999999), TestFirm::kBruno);
    EXPECT_TRUE(KundeExistsByTelefon(799999999));
    // A number with blanks has no twin.
    EXPECT_EQ(FindKundeByTelefon(441112233), -1);
    EXPECT_FALSE(KundeExistsByTelefon(441112233));
    EXPECT_TRUE(KundeExists(TestFirm::kClara));
    EXPECT_FALSE(KundeExists(99));
    EXPECT_EQ(GetKundeTelefon(TestFirm::kAnna), u"0791234567");
    EXPECT_EQ(GetKundeTelefon(TestFirm::kBruno), u"0799999999");
    EXPECT_EQ(GetKundeTelefon(99), u"");
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

TEST_F(Lookups, couriers) {
    using namespace modVerwaltungKuriere;
    EXPECT_EQ(GetFirstKurier(), u"AB");
    EXPECT_EQ(CheckKurierKurzzeichen(QStringLiteral("cd")), u"CD");
    EXPECT_EQ(CheckKurierKurzzeichen(QStringLiteral("x' OR '1'='1")), u"");
    EXPECT_EQ(FindKurierByKurzzeichen(QStringLiteral("CD")), TestFirm::kKurierCD);
    EXPECT_EQ(FindKurierByKurzzeichen(QStringLiteral("C%")), 0);
    EXPECT_EQ(GetKurierKurzzeichen(99), u"");
    const auto menu = FillKurierMenu();
    ASSERT_EQ(menu.size(), 2u);
    EXPECT_EQ(menu[0].text, u"CD");
    EXPECT_EQ(menu[1].lng_ID, TestFirm::kKurierAB);
    ConnMain.Execute(QStringLiteral("DELETE FROM tbl_Verwaltung_Kuriere"));
    EXPECT_EQ(GetFirstKurier(), u"");
}

TEST_F(Lookups, everyCallIsRecordedAndMarkedByItsText) {
    TestFirm::setTime(19, 5);
    for (const QString& number : {QStringLiteral("0791234567"), QStringLiteral("791234567"), QString(),
                                  QStringLiteral("O'Brien"), QStringLiteral("0791234567")})
        modTelefonie::RecordCall(number);
    EXPECT_EQ(TestFirm::count(QStringLiteral("tbl_Verwaltung_AnruferListe")), 5);
    EXPECT_EQ(TestFirm::value(QStringLiteral("SELECT txt_Zeit FROM tbl_Verwaltung_AnruferListe")),
              u"19:05:00");
    EXPECT_EQ(TestFirm::value(QStringLiteral("SELECT txt_Datum FROM tbl_Verwaltung_AnruferListe")),
              u"15/05/2026");
    const double moment =
        TestFirm::value(QStringLiteral("SELECT lng_Datum FROM tbl_Verwaltung_AnruferListe")).toDouble();
    EXPECT_NEAR(moment, TestFirm::day() + common::timeSerial(19, 5), 1e-8);

    const auto taken = [] {
        return TestFirm::value(
            QStringLiteral("SELECT Count(*) AS N FROM tbl_Verwaltung_AnruferListe WHERE flag_Kunde = True"));
    };
    EXPECT_EQ(taken(), u"0");
    modTelefonie::MarkCallTaken(QStringLiteral("0791234567"));
    EXPECT_EQ(taken(), u"2");
    modTelefonie::MarkCallTaken(QStringLiteral("O'Brien"));
    EXPECT_EQ(taken(), u"3");

    EXPECT_EQ(modVerwaltungAnruferListe::MissedCalls(TestFirm::day()), 2);
    EXPECT_EQ(modVerwaltungAnruferListe::MissedCalls(TestFirm::day() + 0.9), 0);
    modTelefonie::RecordCall(QStringLiteral("044"), 3);
    EXPECT_EQ(TestFirm::count(QStringLiteral("tbl_Verwaltung_AnruferListe")), 3);
    EXPECT_EQ(taken(), u"2") << "the oldest went";
}

TEST_F(Lookups, phoneBookComparesTextsAndStopsAtHundred) {
    const auto add = [](const QString& telefon, const QString& natel) {
        ConnPhone.Execute(
            QStringLiteral("INSERT INTO tbl_PhoneBook(txt_Name, txt_Telefon, txt_Natel) VALUES('X', ") +
            store::sqlText(telefon) + QStringLiteral(", ") + store::sqlText(natel) + QStringLiteral(")"));
    };
    const auto hits = [](const QString& number) {
        store::Recordset rows;
        rows.Open(modVerwaltungTelefonbuch::FindPhoneBookEntrySql(number), ConnPhone, store::adOpenStatic,
                  store::adLockReadOnly);
        return rows.RecordCount();
    };
    add(QStringLiteral("0441112233"), QString());
    add(QString(), QStringLiteral("0441112233"));
    add(QStringLiteral("441112233"), QString());
    for (int i = 0; i < 105; ++i)
        add(QStringLiteral("0550000000"), QString());
    EXPECT_EQ(hits(QStringLiteral("0441112233")), 2);
    EXPECT_EQ(hits(QStringLiteral("0550000000")), 100);
    EXPECT_EQ(hits(QStringLiteral("' OR '1'='1")), 0);
    // Who calls: the directory where no customer has the number, customers by number and not by text.
    const QString anna = modVerwaltungKunden::GetKundeName(TestFirm::kAnna);
    EXPECT_FALSE(anna.isEmpty());
    EXPECT_EQ(modTelefonie::CallerName(QStringLiteral("791234567")), anna);
    EXPECT_EQ(modTelefonie::CallerName(QStringLiteral("0441112233")), u"X");
    for (const QString& nobody : {QStringLiteral("0440000000"), QString(), QStringLiteral("anonym")})
        EXPECT_EQ(modTelefonie::CallerName(nobody), u"");
}

TEST_F(Lookups, phoneBookSearchesByAnyField) {
    using modVerwaltungTelefonbuch::PhoneBookQuery;
    ConnPhone.Execute(QStringLiteral("DELETE FROM tbl_PhoneBook"));
    for (const char16_t* row : {u"'Meier', 'Seestrasse 1', '8000', 'Zürich', '0441112233', ''",
                                u"'Meierhans', 'Seeweg 2', '3000', 'Bern', '', '0791112233'",
                                u"'O''Neill', 'Gasse 3', '3012', 'Bern', '0310000000', ''"})
        ConnPhone.Execute(QStringLiteral("INSERT INTO tbl_PhoneBook(txt_Name, txt_Strasse, txt_PLZ, txt_Ort, "
                                         "txt_Telefon, txt_Natel) VALUES(") +
                          QString::fromUtf16(row) + QLatin1Char(')'));
    const auto found = [](const PhoneBookQuery& fields) {
        QStringList names;
        for (store::OpenRecordset rows(RsMain, modVerwaltungTelefonbuch::SearchPhoneBookSql(fields),
                                       ConnPhone);
             !rows->Eof(); rows->MoveNext())
            names << rows->Fields(u"txt_Name").text();
        return names.join(QLatin1Char(' '));
    };
    EXPECT_EQ(found({.name = QStringLiteral("meier")}), u"Meier");
    EXPECT_EQ(found({.name = QStringLiteral("Mei%")}), u"Meier Meierhans");
    EXPECT_EQ(found({.name = QStringLiteral("o'n%")}), u"O'Neill");
    EXPECT_EQ(found({.number = QStringLiteral("0791112233")}), u"Meierhans");
    EXPECT_EQ(found({.street = QStringLiteral("see%"), .town = QStringLiteral("bern")}), u"Meierhans");
    EXPECT_EQ(found({.postcode = QStringLiteral("30__")}), u"Meierhans O'Neill");
    EXPECT_EQ(found({.number = QStringLiteral("0441112233"), .name = QStringLiteral("O%")}), u"");
    const QString blanks = QStringLiteral("  ");
    EXPECT_EQ(modVerwaltungTelefonbuch::SearchPhoneBookSql({blanks, blanks, blanks, blanks, blanks}),
              QString());
}

} // namespace
