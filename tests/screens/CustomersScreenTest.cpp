// What is the customers' own; the form itself is tried with the categories.
#include "ScreenTest.h"
#include "masterdata/frmVerwaltungKunden.h"
#include "masterdata/modVerwaltungKunden.h"
#include <QClipboard>

using namespace Qt::StringLiterals;
using test::Said;
using test::TestFirm;

namespace {

class CustomersScreenTest : public test::ScreenTest<frmVerwaltungKunden> {
  protected:
    CustomersScreenTest() { open(phoneBook); }

    /// Columns of a row, divided by "|".
    static QString row(qint64 id, const QString& columns) {
        return stored(u"SELECT %1 FROM tbl_Verwaltung_Kunden WHERE lng_ID = %2"_s.arg(columns).arg(id));
    }

    QString label(QStringView name) { return find<QLabel>(name)->text(); }

    /// Chooses a sort order by its place in the list, from the keyboard.
    void sortBy(int index) {
        auto* list = find<QComboBox>(u"combo_Sorting");
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Home);
        for (int i = 0; i < index; ++i)
            QTest::keyClick(list, Qt::Key_Down);
    }

    test::TestPhoneBook phoneBook;
};

const QString kNumbers = u"txt_Telefon, dbl_Telefon, txt_Natel, dbl_Natel"_s;

} // namespace

TEST_F(CustomersScreenTest, AddsACustomerByKeyboardAlone) {
    EXPECT_EQ(keys(), u"2 3 1"_s);
    EXPECT_EQ(rows().last(), u"1|Muster AG|Meier|Anna|Seestrasse 1|8000|Zürich|0791234567||"_s);
    EXPECT_EQ(label(u"lbl_KundenTotal"), u"3"_s);
    expectReachable();
    for (const auto& [field, typed] : {std::pair{u"txt_Firma", u"O'Neill \"Bar\""_s},
                                       {u"txt_Name", u"  D'Arcy "_s},
                                       {u"txt_Vorname", u"Zoe"_s},
                                       {u"txt_Strasse", u"Gasse 7"_s},
                                       {u"combo_Etage", u"3"_s},
                                       {u"txt_PLZ", u"CH-8005"_s},
                                       {u"txt_Ort", u"Bern"_s},
                                       {u"txt_Telefon", u"+0b44 3216789"_s},
                                       {u"txt_Natel", u"079/1112233"_s},
                                       {u"txt_EMail", u"z@x.ch"_s},
                                       {u"txt_Zusatzinfo", u"Hund"_s}}) {
        ASSERT_EQ(focusName(), QString::fromUtf16(field));
        QTest::keyClicks(QApplication::focusWidget(), typed);
        press(Qt::Key_Return);
    }
    tick(u"check_Zusatzinfo");
    tick(u"check_Newsletter");
    click(u"cmdSave");
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(row(4,
                  u"txt_Firma, txt_Name, txt_Vorname, txt_Strasse, txt_Etage, txt_PLZ, txt_Ort, txt_EMail, "
                  u"txt_Zusatzinfo, flag_Zusatzinfo, flag_ClientStatus, flag_Newsletter, date_Erfasst"_s),
              u"O'Neill \"Bar\"|D'Arcy|Zoe|Gasse 7|3. Stock|8005|Bern|z@x.ch|Hund|1|0|1|15/05/2026"_s);
    EXPECT_EQ(row(4, kNumbers), u"0443216789|443216789|0791112233|791112233"_s);
    // The list shows this one alone, so there is no next one.
    EXPECT_EQ(keys(), u"4"_s);
    click(u"cmdNext");
    EXPECT_EQ(screen->key(), -1);
    EXPECT_EQ(text(u"txt_Name"), QString());
    EXPECT_FALSE(ticked(u"check_Newsletter"));
    click(u"cmdAllClients");
    EXPECT_EQ(label(u"lbl_KundenTotal"), u"4"_s);
}

TEST_F(CustomersScreenTest, RefusesInTheGivenOrder) {
    for (const auto& [name, telefon, natel, message] :
         {std::tuple<QString, QString, QString, QString>{u"  "_s, u"x"_s, u"y"_s,
                                                         u"Bitte geben Sie einen Namen ein."_s},
          {u"A"_s, u" "_s, u" "_s, u"Bitte geben entweder eine Telefonnummer oder Natelnummer ein."_s},
          {u"A"_s, u"12a"_s, u"y"_s, u"Bitte geben eine gültige Telefonnummer ein."_s},
          {u"A"_s, u"12"_s, u"1,5"_s, u"Bitte geben eine gültige Natelnummer ein."_s}}) {
        put({{u"txt_Name", name}});
        for (const auto& [field, pasted] : {std::pair{u"txt_Telefon", telefon}, {u"txt_Natel", natel}}) {
            put({{field, {}}});
            find(field)->setFocus();
            QApplication::clipboard()->setText(pasted);
            press(Qt::Key_V, Qt::ControlModifier);
        }
        click(u"cmdSave");
        EXPECT_EQ(said(), (Said{{message, 0, u"Fehlende Eingabe"_s}}));
    }
    EXPECT_EQ(TestFirm::count(u"tbl_Verwaltung_Kunden"_s), 3);
}

TEST_F(CustomersScreenTest, KeepsWhateverTextIsTypedAndFindsItAgain) {
    qint64 id = 3;
    for (const QString& name : {QString(5000, u'x'), u"🍕 Pizza 🇮🇹"_s, u"بيتزا"_s, u"100 % [a] _ & ;--"_s}) {
        put({{u"txt_Name", name}, {u"txt_Telefon", u"00000000000000000000791234567"_s}});
        click(u"cmdSave");
        EXPECT_EQ(row(++id, u"txt_Name, dbl_Telefon"_s), name + u"|791234567"_s);
        put({{u"txt_Name", name}});
        click(u"cmdSearch");
        EXPECT_EQ(keys(), QString::number(id)) << name.toStdString();
        click(u"cmdClean");
    }
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(CustomersScreenTest, ChangesARowAndKeepsTheTwinOfAnEmptiedNumber) {
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Kunden SET txt_Etage = 'Estrich', date_Erfasst = 40000, "
                     u"flag_ClientStatus = 1 WHERE lng_ID = 1"_s);
    clickRow(2);
    EXPECT_EQ(label(u"lbl_KundeEinzeln") + u' ' + label(u"lbl_Erfassst"), u"1 06/07/2009"_s);
    EXPECT_EQ(chosen(u"combo_Etage"), u"Estrich"_s);
    EXPECT_EQ(find<QPlainTextEdit>(u"txt_Zusatzinfo")->toPlainText(), u"Klingel defekt"_s);
    EXPECT_TRUE(ticked(u"check_Zusatzinfo") && ticked(u"check_ClientStatus"));
    enter(u"txt_Telefon", {});
    enter(u"txt_Natel", u"0761112233"_s);
    click(u"cmdSave");
    EXPECT_EQ(row(1, kNumbers), u"|791234567|0761112233|761112233"_s);
    EXPECT_EQ(row(1, u"txt_Etage, flag_ClientStatus, date_Erfasst"_s), u"Estrich|1|15/05/2026"_s);
    // Cleaning leaves the day on show.
    EXPECT_EQ(label(u"lbl_KundeEinzeln") + u' ' + label(u"lbl_Erfassst"), u" 06/07/2009"_s);
    EXPECT_EQ(chosen(u"combo_Etage"), u"Erdgeschoss"_s);
}

TEST_F(CustomersScreenTest, SearchesByTheFieldsOfTheMask) {
    ConnMain.Execute(u"INSERT INTO tbl_Verwaltung_Kunden(txt_Name, txt_Ort, dbl_Telefon, txt_EMail) "
                     u"VALUES('O''Neill', 'Bern', 443216789, 'a_b@x.ch')"_s);
    for (const auto& [field, value, found] : {std::tuple{u"txt_Name", u"meier"_s, u"1"_s},
                                              {u"txt_Name", u"%e%"_s, u"1 4"_s},
                                              {u"txt_Name", u"o'neill"_s, u"4"_s},
                                              {u"txt_Name", u" o'neill"_s, u""_s},
                                              {u"txt_Name", u"' OR '1'='1"_s, u""_s},
                                              {u"txt_Firma", u"%"_s, u"1"_s},
                                              {u"txt_Vorname", u"ann_"_s, u"1"_s},
                                              {u"txt_Strasse", u"see%"_s, u"1"_s},
                                              {u"txt_PLZ", u"800_"_s, u"2 1"_s},
                                              {u"txt_Ort", u"ZÜRICH"_s, u"2 1"_s},
                                              {u"txt_Telefon", u"443216789"_s, u"4"_s},
                                              {u"txt_Telefon", u"00791234567"_s, u"1"_s},
                                              {u"txt_Natel", u"0799999999"_s, u"2"_s},
                                              {u"txt_EMail", u"a_b@x.ch"_s, u"4"_s},
                                              {u"txt_EMail", u"a%"_s, u""_s}}) {
        click(u"cmdClean");
        put({{field, value}});
        click(u"cmdSearch");
        EXPECT_EQ(keys(), found) << value.toStdString();
    }
    // Fields add up.
    click(u"cmdClean");
    put({{u"txt_Ort", u"Zürich"_s}, {u"txt_Natel", u"799999999"_s}});
    click(u"cmdSearch");
    EXPECT_EQ(keys(), u"2"_s);
    // What is no number does not count, nor do blanks, the note and the flags: nothing happens then.
    click(u"cmdClean");
    put({{u"txt_Telefon", u"079x"_s}, {u"txt_Name", u"  "_s}});
    find<QPlainTextEdit>(u"txt_Zusatzinfo")->setPlainText(u"Hund"_s);
    tick(u"check_Newsletter");
    click(u"cmdSearch");
    EXPECT_EQ(keys(), u"2"_s);
    EXPECT_TRUE(said().isEmpty());

    // The rows on show are those that are printed.
    click(u"DruckerCommand");
    EXPECT_EQ(TestFirm::rows(u"SELECT KundenNr, Anrede, Namen, Plz, Telefon FROM KundenStamm"_s, ConnPrint),
              QStringList{u"2||Bruno|8001|"_s});
}

TEST_F(CustomersScreenTest, SortsAndWalksTheList) {
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Kunden SET date_Erfasst = 50000 - lng_ID"_s);
    click(u"cmdAllClients");
    for (const auto& [button, key] : {std::pair{u"cmdPrevious", 0},
                                      {u"cmdNext", 3},
                                      {u"cmdNext", 1},
                                      {u"cmdNext", 1},
                                      {u"cmdPrevious", 3}}) {
        click(button);
        EXPECT_EQ(screen->key(), key);
    }
    EXPECT_EQ(text(u"txt_Name"), u"Clara"_s);
    EXPECT_EQ(grid()->row(), 1);
    // By number, town, telephone number as a text, and day.
    for (const auto& [order, sorted] :
         {std::pair{0, u"1 2 3"}, {3, u"3 1 2"}, {5, u"2 3 1"}, {7, u"3 2 1"}}) {
        sortBy(order);
        EXPECT_EQ(keys(), sorted) << order;
    }
    EXPECT_EQ(rows().first().section(u'|', -1), u"18/11/2036"_s);
    clickRow(2);
    click(u"cmdPrevious");
    EXPECT_EQ(screen->key(), 2);
}

TEST_F(CustomersScreenTest, PassesOverACustomerWhoIsGone) {
    ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_Kunden WHERE lng_ID = 3"_s);
    click(u"cmdNext");
    EXPECT_EQ(screen->key(), -1);
    EXPECT_EQ(markedKey(), -1);
    click(u"cmdNext");
    EXPECT_EQ(screen->key(), 1);
    grid()->setFocus();
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_EQ(screen->key(), 2);
}

TEST_F(CustomersScreenTest, DeletesOnlyWhomNoOrderKnowsAndOnlyAfterYes) {
    clickRow(2);
    expectDeletion(u"tbl_Auftragswesen_%1_Master"_s, u"lng_KundenID"_s,
                   {u"Dieser Kunde kann nicht gelöscht werden, da bereits Buchungen bestehen."_s, 64,
                    u"Löschen Kunde"_s},
                   {{u"Möchten Sie diesen Kunden wirklich löschen?"_s, 4, u"Löschen Kunde"_s}});
    EXPECT_EQ(keys(), u"2 3"_s);
    EXPECT_EQ(label(u"lbl_KundenTotal"), u"2"_s);
    EXPECT_EQ(TestFirm::count(u"tbl_Verwaltung_Kunden"_s), 2);
}

TEST_F(CustomersScreenTest, HandsACustomerOverAndIsHandedOne) {
    click(u"cmdAuftragserfassung");
    EXPECT_EQ(navigation.shown, QStringList{u"frmAuftragswesenAuftragserfassung"_s});
    EXPECT_TRUE(navigation.openedNumber.isNull());
    put({{u"txt_Vorname", u"bleibt nicht"_s}});
    screen->openCustomer(TestFirm::kBruno);
    EXPECT_EQ(text(u"txt_Name") + text(u"txt_Vorname"), u"Bruno"_s);
    click(u"cmdAuftragserfassung");
    EXPECT_EQ(navigation.openedNumber, u"0799999999"_s);
}

TEST_F(CustomersScreenTest, TakesAnAddressFromTheDirectory) {
    put({{u"txt_Name", u"Mei%"_s}, {u"txt_Natel", u"0791112233"_s}, {u"txt_Ort", u"Bern"_s}});
    click(u"cmdSearchPhoneBook");
    EXPECT_EQ(text(u"txt_Name"), u"Mei%"_s);
    put({{u"txt_Telefon", u"0311112233"_s}});
    phoneBook.entry = {u"N"_s, u"V"_s, u"S"_s, u"3000"_s, u"O"_s, u"BE"_s, u"031"_s, {}};
    click(u"cmdSearchPhoneBook");
    EXPECT_EQ(phoneBook.asked, (QStringList{u"0791112233|Mei%|||Bern"_s, u"0311112233|Mei%|||Bern"_s}));
    QStringList taken;
    for (const char16_t* field :
         {u"txt_Name", u"txt_Vorname", u"txt_Strasse", u"txt_PLZ", u"txt_Ort", u"txt_Telefon", u"txt_Natel"})
        taken << text(field);
    EXPECT_EQ(taken.join(u'|'), u"N|V|S|3000|O|031|"_s);
}

TEST_F(CustomersScreenTest, OffersACustomerOfTheWebShopToBeStored) {
    for (const auto& [floor, stored] :
         {std::pair{u"3. Stock"_s, u"3. Stock"_s}, {u"Dach"_s, u"Erdgeschoss"_s}}) {
        screen->openCustomer(TestFirm::kAnna);
        screen->captureCustomer({u"<b>AG</b>"_s, u"<script>"_s, u"Zoë\r\nMia"_s, u"Gasse 7"_s, floor,
                                 u"8005"_s, u"Bern"_s, u"0443216789"_s, u"z@x.ch"_s});
        EXPECT_TRUE(screen->isMaximized());
        EXPECT_EQ(screen->key(), -1);
        click(u"cmdSave");
        EXPECT_EQ(row(TestFirm::count(u"tbl_Verwaltung_Kunden"_s),
                      u"txt_Firma, txt_Name, txt_Vorname, txt_Strasse, txt_Etage, txt_PLZ, txt_Ort, "
                      u"dbl_Telefon, txt_EMail, txt_Zusatzinfo, flag_Zusatzinfo"_s),
                  u"<b>AG</b>|<script>|Zoë  Mia|Gasse 7|%1|8005|Bern|443216789|z@x.ch||0"_s.arg(stored));
    }
    EXPECT_EQ(TestFirm::count(u"tbl_Verwaltung_Kunden"_s), 5);
}
