// What is the customers' own; the form itself is tried with the categories.
#include "MasterDataTest.h"
#include "masterdata/frmVerwaltungKunden.h"
#include "masterdata/modVerwaltungKunden.h"
#include <QClipboard>
#include <QLabel>

using namespace Qt::StringLiterals;
using modVerwaltungTelefonbuch::PhoneBookEntry;
using modVerwaltungTelefonbuch::PhoneBookQuery;
using test::Said;
using test::TestFirm;

namespace {

class TestDirectory : public telephony::PhoneBook {
  public:
    std::optional<PhoneBookEntry> FindPhoneBookEntry(const QString&) override { return {}; }

    std::optional<PhoneBookEntry> SearchPhoneBook(const PhoneBookQuery& fields) override {
        asked = fields.number + u'|' + fields.name + u'|' + fields.street + u'|' + fields.postcode + u'|' +
                fields.town;
        return entry;
    }

    QString asked;
    std::optional<PhoneBookEntry> entry;
};

struct WithDirectory {
    TestDirectory phoneBook;
};

struct CustomersScreen : WithDirectory, frmVerwaltungKunden {
    explicit CustomersScreen(const platform::Services& services) : frmVerwaltungKunden(services, phoneBook) {}
};

class CustomersScreenTest : public test::MasterDataTest<CustomersScreen> {
  protected:
    static QString column(const char16_t* name, qint64 id) {
        return stored(u"SELECT "_s + QString::fromUtf16(name) +
                      u" FROM tbl_Verwaltung_Kunden WHERE lng_ID = "_s + QString::number(id));
    }

    /// Columns of a row, divided by "|".
    static QString row(qint64 id, std::initializer_list<const char16_t*> columns) {
        QStringList values;
        for (const char16_t* name : columns)
            values << column(name, id);
        return values.join(u'|');
    }

    /// Keys of the rows on show.
    QString ids() {
        QStringList keys;
        for (int i = 0; i < grid()->rowCount(); ++i)
            keys << grid()->text(i, 0);
        return keys.join(u' ');
    }

    QString label(const char16_t* name) { return find<QLabel>(name)->text(); }

    void put(const char16_t* field, const QString& text) { find<QLineEdit>(field)->setText(text); }

    /// Chooses a sort order by its place in the list, from the keyboard.
    void sortBy(int index) {
        auto* list = find<QComboBox>(u"combo_Sorting");
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Home);
        for (int i = 0; i < index; ++i)
            QTest::keyClick(list, Qt::Key_Down);
    }
};

constexpr std::initializer_list<const char16_t*> kNumbers = {u"txt_Telefon", u"dbl_Telefon", u"txt_Natel",
                                                             u"dbl_Natel"};

} // namespace

TEST_F(CustomersScreenTest, OpensWithAllCustomersByName) {
    EXPECT_EQ(ids(), u"2 3 1"_s);
    EXPECT_EQ(rows().last(), u"1|Muster AG|Meier|Anna|Seestrasse 1|8000|Zürich|0791234567||"_s);
    EXPECT_EQ(label(u"lbl_KundenTotal"), u"3"_s);
    EXPECT_EQ(label(u"lbl_KundeEinzeln"), QString());
    EXPECT_EQ(focusName(), u"txt_Firma"_s);
    EXPECT_EQ(find<QComboBox>(u"combo_Etage")->count(), 16);
    EXPECT_EQ(chosen(u"combo_Etage"), u"Erdgeschoss"_s);
    EXPECT_EQ(chosen(u"combo_Sorting"), u"Name"_s);
    EXPECT_FALSE(find<QPushButton>(u"cmdDelete")->isEnabled());
    EXPECT_EQ(screen.minimumSize(), screen.maximumSize());
    expectReachable();
}

TEST_F(CustomersScreenTest, AddsACustomerByKeyboardAlone) {
    struct Step {
        const char16_t* field;
        QString typed;
    };

    const Step steps[] = {{u"txt_Firma", u"O'Neill \"Bar\""_s},
                          {u"txt_Name", u"  D'Arcy "_s},
                          {u"txt_Vorname", u"Zoe"_s},
                          {u"txt_Strasse", u"Gasse 7"_s},
                          {u"combo_Etage", u"3"_s},
                          {u"txt_PLZ", u"CH-8005"_s},
                          {u"txt_Ort", u"Bern"_s},
                          {u"txt_Telefon", u"+0b44 3216789"_s},
                          {u"txt_Natel", u"079/1112233"_s},
                          {u"txt_EMail", u"z@x.ch"_s},
                          {u"txt_Zusatzinfo", u"Hund"_s}};
    for (const Step& step : steps) {
        ASSERT_EQ(focusName(), QString::fromUtf16(step.field));
        QTest::keyClicks(QApplication::focusWidget(), step.typed);
        press(Qt::Key_Return);
    }
    tick(u"check_Zusatzinfo");
    tick(u"check_Newsletter");
    find<QPushButton>(u"cmdSave")->setFocus();
    press(Qt::Key_Return);
    EXPECT_TRUE(said().isEmpty());
    EXPECT_EQ(row(4, {u"txt_Firma", u"txt_Name", u"txt_Vorname", u"txt_Strasse", u"txt_Etage", u"txt_PLZ",
                      u"txt_Ort", u"txt_EMail", u"txt_Zusatzinfo"}),
              u"O'Neill \"Bar\"|D'Arcy|Zoe|Gasse 7|3. Stock|8005|Bern|z@x.ch|Hund"_s);
    EXPECT_EQ(row(4, kNumbers), u"0443216789|443216789|0791112233|791112233"_s);
    EXPECT_EQ(row(4, {u"flag_Zusatzinfo", u"flag_ClientStatus", u"flag_Newsletter", u"date_Erfasst"}),
              u"1|0|1|15/05/2026"_s);
    // The list shows this one alone, so there is no next one.
    EXPECT_EQ(ids(), u"4"_s);
    EXPECT_EQ(label(u"lbl_KundenTotal"), u"1"_s);
    click(u"cmdNext");
    EXPECT_EQ(screen.property("ClientID").toLongLong(), -1);
    EXPECT_EQ(text(u"txt_Name"), QString());
    EXPECT_FALSE(ticked(u"check_Newsletter"));
    click(u"cmdAllClients");
    EXPECT_EQ(label(u"lbl_KundenTotal"), u"4"_s);
}

TEST_F(CustomersScreenTest, RefusesInTheGivenOrder) {
    struct Case {
        QString name, telefon, natel, message;
    };

    for (const Case& c :
         {Case{u"  "_s, u"x"_s, u"y"_s, u"Bitte geben Sie einen Namen ein."_s},
          Case{u"A"_s, u" "_s, u" "_s, u"Bitte geben entweder eine Telefonnummer oder Natelnummer ein."_s},
          Case{u"A"_s, u"12a"_s, u"y"_s, u"Bitte geben eine gültige Telefonnummer ein."_s},
          Case{u"A"_s, u"12"_s, u"1,5"_s, u"Bitte geben eine gültige Natelnummer ein."_s}}) {
        put(u"txt_Name", c.name);
        for (const auto& [field, pasted] : {std::pair{u"txt_Telefon", c.telefon}, {u"txt_Natel", c.natel}}) {
            put(field, {});
            find<QLineEdit>(field)->setFocus();
            QApplication::clipboard()->setText(pasted);
            press(Qt::Key_V, Qt::ControlModifier);
        }
        click(u"cmdSave");
        EXPECT_EQ(said(), (Said{{c.message, 0, u"Fehlende Eingabe"_s}}));
    }
    EXPECT_EQ(TestFirm::count(u"tbl_Verwaltung_Kunden"_s), 3);
}

TEST_F(CustomersScreenTest, KeepsWhateverTextIsTyped) {
    qint64 id = 3;
    for (const QString& name : {QString(5000, u'x'), u"🍕 Pizza 🇮🇹"_s, u"بيتزا"_s, u"100 % [a] _ & ;--"_s}) {
        put(u"txt_Name", name);
        put(u"txt_Telefon", u"00000000000000000000791234567"_s);
        click(u"cmdSave");
        EXPECT_EQ(column(u"txt_Name", ++id), name);
        EXPECT_EQ(column(u"dbl_Telefon", id), u"791234567"_s);
        // And it is found again.
        put(u"txt_Name", name);
        click(u"cmdSearch");
        EXPECT_EQ(ids(), QString::number(id)) << name.toStdString();
        click(u"cmdClean");
    }
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(CustomersScreenTest, ChangesARowAndKeepsTheTwinOfAnEmptiedNumber) {
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Kunden SET txt_Etage = 'Estrich', date_Erfasst = 40000, "
                     u"flag_ClientStatus = 1 WHERE lng_ID = 1"_s);
    clickRow(2);
    EXPECT_EQ(label(u"lbl_KundeEinzeln"), u"1"_s);
    EXPECT_EQ(label(u"lbl_Erfassst"), u"06/07/2009"_s);
    EXPECT_EQ(chosen(u"combo_Etage"), u"Estrich"_s);
    EXPECT_EQ(find<QPlainTextEdit>(u"txt_Zusatzinfo")->toPlainText(), u"Klingel defekt"_s);
    EXPECT_TRUE(ticked(u"check_Zusatzinfo"));
    EXPECT_TRUE(ticked(u"check_ClientStatus"));
    enter(u"txt_Telefon", {});
    enter(u"txt_Natel", u"0761112233"_s);
    click(u"cmdSave");
    EXPECT_EQ(row(1, kNumbers), u"|791234567|0761112233|761112233"_s);
    EXPECT_EQ(modVerwaltungKunden::FindKundeByTelefon(791234567), 1);
    EXPECT_EQ(row(1, {u"txt_Etage", u"flag_ClientStatus", u"date_Erfasst"}), u"Estrich|1|15/05/2026"_s);
    // Cleaning leaves the day on show.
    EXPECT_EQ(label(u"lbl_Erfassst"), u"06/07/2009"_s);
    EXPECT_EQ(label(u"lbl_KundeEinzeln"), QString());
    EXPECT_EQ(chosen(u"combo_Etage"), u"Erdgeschoss"_s);
}

TEST_F(CustomersScreenTest, SearchesByTheFieldsOfTheMask) {
    ConnMain.Execute(u"INSERT INTO tbl_Verwaltung_Kunden(txt_Name, txt_Ort, dbl_Telefon, txt_EMail) "
                     u"VALUES('O''Neill', 'Bern', 443216789, 'a_b@x.ch')"_s);

    struct Case {
        const char16_t* field;
        QString value;
        QString found;
    };

    const Case cases[] = {{u"txt_Name", u"meier"_s, u"1"_s},
                          {u"txt_Name", u"%e%"_s, u"1 4"_s},
                          {u"txt_Name", u"o'neill"_s, u"4"_s},
                          {u"txt_Name", u" o'neill"_s, {}},
                          {u"txt_Name", u"O'%"_s, u"4"_s},
                          {u"txt_Name", u"' OR '1'='1"_s, {}},
                          {u"txt_Firma", u"%"_s, u"1"_s},
                          {u"txt_Vorname", u"ann_"_s, u"1"_s},
                          {u"txt_Strasse", u"see%"_s, u"1"_s},
                          {u"txt_PLZ", u"800_"_s, u"2 1"_s},
                          {u"txt_Ort", u"ZÜRICH"_s, u"2 1"_s},
                          {u"txt_Telefon", u"443216789"_s, u"4"_s},
                          {u"txt_Telefon", u"00791234567"_s, u"1"_s},
                          {u"txt_Natel", u"0799999999"_s, u"2"_s},
                          {u"txt_EMail", u"a_b@x.ch"_s, u"4"_s},
                          {u"txt_EMail", u"a%"_s, {}}};
    for (const Case& c : cases) {
        click(u"cmdClean");
        put(c.field, c.value);
        click(u"cmdSearch");
        EXPECT_EQ(ids(), c.found) << c.value.toStdString();
    }
    // Fields add up.
    click(u"cmdClean");
    put(u"txt_Ort", u"Zürich"_s);
    put(u"txt_Natel", u"799999999"_s);
    click(u"cmdSearch");
    EXPECT_EQ(ids(), u"2"_s);
    EXPECT_EQ(label(u"lbl_KundenTotal"), u"1"_s);
    // What is no number does not count, nor do blanks, the note and the flags: nothing happens then.
    click(u"cmdClean");
    put(u"txt_Telefon", u"079x"_s);
    put(u"txt_Name", u"  "_s);
    find<QPlainTextEdit>(u"txt_Zusatzinfo")->setPlainText(u"Hund"_s);
    tick(u"check_Newsletter");
    click(u"cmdSearch");
    EXPECT_EQ(ids(), u"2"_s);
    EXPECT_TRUE(said().isEmpty());
}

TEST_F(CustomersScreenTest, SortsAndWalksTheList) {
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Kunden SET date_Erfasst = 50000 - lng_ID"_s);
    click(u"cmdAllClients");
    click(u"cmdPrevious");
    EXPECT_EQ(screen.key(), 0);
    click(u"cmdNext");
    EXPECT_EQ(screen.key(), 3);
    click(u"cmdNext");
    EXPECT_EQ(screen.key(), 1);
    EXPECT_EQ(text(u"txt_Name"), u"Meier"_s);
    click(u"cmdNext");
    EXPECT_EQ(screen.key(), 1);
    click(u"cmdPrevious");
    EXPECT_EQ(screen.key(), 3);
    EXPECT_EQ(grid()->row(), 1);

    sortBy(0);
    EXPECT_EQ(ids(), u"1 2 3"_s);
    click(u"cmdNext");
    EXPECT_EQ(screen.key(), 2);
    sortBy(3);
    EXPECT_EQ(ids(), u"3 1 2"_s);
    sortBy(5); // telephone numbers as texts
    EXPECT_EQ(ids(), u"2 3 1"_s);
    sortBy(7);
    EXPECT_EQ(ids(), u"3 2 1"_s);
    EXPECT_EQ(rows().first().section(u'|', -1), u"18/11/2036"_s);
    clickRow(2);
    EXPECT_EQ(text(u"txt_Name"), u"Meier"_s);
    click(u"cmdPrevious");
    EXPECT_EQ(screen.key(), 2);
}

TEST_F(CustomersScreenTest, DeletesOnlyWhomNoOrderKnowsAndOnlyAfterYes) {
    const Said refusal{{u"Dieser Kunde kann nicht gelöscht werden, da bereits Buchungen bestehen."_s, 64,
                        u"Löschen Kunde"_s}};
    const Said question{{u"Möchten Sie diesen Kunden wirklich löschen?"_s, 4, u"Löschen Kunde"_s}};
    for (const char16_t* table :
         {u"tbl_Auftragswesen_Bestellungen_Master", u"tbl_Auftragswesen_Vorbestellungen_Master"}) {
        const QString name = QString::fromUtf16(table);
        ConnMain.Execute(u"INSERT INTO "_s + name + u"(lng_KundenID) VALUES(1)"_s);
        clickRow(2);
        click(u"cmdDelete");
        EXPECT_EQ(said(), refusal);
        ConnMain.Execute(u"DELETE FROM "_s + name);
    }
    dialogs.answer(platform::kAnswerNo);
    click(u"cmdDelete");
    EXPECT_EQ(said(), question);
    EXPECT_EQ(screen.key(), 1);
    dialogs.answer(platform::kAnswerYes);
    click(u"cmdDelete");
    EXPECT_EQ(said(), question);
    EXPECT_EQ(ids(), u"2 3"_s);
    EXPECT_EQ(label(u"lbl_KundenTotal"), u"2"_s);
    EXPECT_EQ(screen.key(), -1);
    EXPECT_EQ(TestFirm::count(u"tbl_Verwaltung_Kunden"_s), 2);
}

TEST_F(CustomersScreenTest, PrintsTheRowsOnShow) {
    put(u"txt_Ort", u"Zürich"_s);
    click(u"cmdSearch");
    click(u"DruckerCommand");
    const auto printed = [](const char16_t* column) {
        return TestFirm::value(
            u"SELECT "_s + QString::fromUtf16(column) + u" FROM KundenStamm WHERE KundenNr = 1"_s, ConnPrint);
    };
    EXPECT_EQ(TestFirm::value(u"SELECT Count(*) AS N FROM KundenStamm"_s, ConnPrint), u"2"_s);
    EXPECT_EQ(printed(u"Anrede") + u'|' + printed(u"Namen") + u'|' + printed(u"Plz") + u'|' +
                  printed(u"Telefon"),
              u"Muster AG|Meier|8000|0791234567"_s);
}

TEST_F(CustomersScreenTest, HandsACustomerOverAndIsHandedOne) {
    click(u"cmdAuftragserfassung");
    EXPECT_EQ(navigation.shown, QStringList{u"frmAuftragswesenAuftragserfassung"_s});
    EXPECT_TRUE(navigation.openedNumber.isNull());
    put(u"txt_Vorname", u"bleibt nicht"_s);
    screen.openCustomer(TestFirm::kBruno);
    EXPECT_EQ(text(u"txt_Name"), u"Bruno"_s);
    EXPECT_EQ(text(u"txt_Vorname"), QString());
    click(u"cmdAuftragserfassung");
    EXPECT_EQ(navigation.openedNumber, u"0799999999"_s);
}

TEST_F(CustomersScreenTest, TakesAnAddressFromTheDirectory) {
    put(u"txt_Name", u"Mei%"_s);
    put(u"txt_Natel", u"0791112233"_s);
    put(u"txt_Ort", u"Bern"_s);
    click(u"cmdSearchPhoneBook");
    EXPECT_EQ(screen.phoneBook.asked, u"0791112233|Mei%|||Bern"_s);
    EXPECT_EQ(text(u"txt_Name"), u"Mei%"_s);
    put(u"txt_Telefon", u"0311112233"_s);
    screen.phoneBook.entry = PhoneBookEntry{u"N"_s, u"V"_s, u"S"_s, u"3000"_s, u"O"_s, u"BE"_s, u"031"_s, {}};
    click(u"cmdSearchPhoneBook");
    EXPECT_EQ(screen.phoneBook.asked.section(u'|', 0, 0), u"0311112233"_s);
    for (const auto& [field, value] : {std::pair{u"txt_Name", u"N"_s},
                                       {u"txt_Vorname", u"V"_s},
                                       {u"txt_Strasse", u"S"_s},
                                       {u"txt_PLZ", u"3000"_s},
                                       {u"txt_Ort", u"O"_s},
                                       {u"txt_Telefon", u"031"_s},
                                       {u"txt_Natel", u""_s}})
        EXPECT_EQ(text(field), value);
}
