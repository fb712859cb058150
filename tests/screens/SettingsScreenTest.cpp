// The settings screen: every control's way to its global, its column and back.
#include "common/Convert.h"
#include "shell/frmEinstellungenSystem.h"
#include "shell/modEinstellungenSystem.h"
#include "store/SystemSettings.h"
#include "support/TestDialogs.h"
#include "support/TestFirm.h"
#include "support/TestFirmServices.h"
#include "tests/screens/MasterDataTest.h"
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>

using namespace Qt::StringLiterals;
using test::TestFirm;

namespace {

class SettingsScreenTest : public testing::Test {
  protected:
    SettingsScreenTest() {
        printers.printers = {{u"Kasse"_s, {}, {}}, {u"Büro"_s, {}, {}}, {u"Küche"_s, {}, {}}};
        printers.current = printers.printers.first();
    }

    ~SettingsScreenTest() override { UserAdministrator = 0; }

    void open() {
        screen = std::make_unique<frmEinstellungenSystem>(
            platform::Services{dialogs, navigation, registry, reports, printers});
        screen->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(screen.get()));
    }

    template <typename Widget = QWidget> Widget* find(const QString& name) {
        auto* found = screen->findChild<Widget*>(name);
        EXPECT_TRUE(found) << name.toStdString();
        return found;
    }

    void click(const QString& name) {
        reveal(name);
        QTest::mouseClick(find(name), Qt::LeftButton);
    }

    /// Brings the control's tab to the front.
    void reveal(const QString& name) {
        auto* tabs = find<QTabWidget>(u"SSTab1"_s);
        for (int tab = 0; tab < tabs->count(); ++tab)
            if (tabs->widget(tab)->isAncestorOf(find(name)))
                tabs->setCurrentIndex(tab);
    }

    void put(const QString& name, const QString& value) {
        reveal(name);
        if (auto* list = qobject_cast<QComboBox*>(find(name))) {
            EXPECT_GE(list->findText(value), 0) << name.toStdString() << value.toStdString();
            list->setCurrentText(value);
        } else if (auto* box = qobject_cast<QCheckBox*>(find(name))) {
            box->setChecked(value == u"1");
        } else if (auto* text = qobject_cast<QPlainTextEdit*>(find(name))) {
            text->setPlainText(value);
        } else {
            find(name)->setFocus();
            find<QLineEdit>(name)->selectAll();
            QTest::keyClicks(find(name), value);
        }
    }

    QString shown(const QString& name) {
        if (auto* list = qobject_cast<QComboBox*>(find(name)))
            return list->currentText();
        if (auto* box = qobject_cast<QCheckBox*>(find(name)))
            return QString::number(box->isChecked());
        if (auto* text = qobject_cast<QPlainTextEdit*>(find(name)))
            return text->toPlainText();
        return find<QLineEdit>(name)->text();
    }

    static QString column(const QString& name) {
        return TestFirm::value(u"SELECT "_s + name + u" FROM tbl_Einstellungen_System"_s);
    }

    TestFirm firm;
    test::TestDialogs dialogs;
    test::TestNavigation navigation;
    test::TestRegistry registry;
    test::TestReports reports;
    test::TestPrinters printers;
    std::unique_ptr<frmEinstellungenSystem> screen;
};

struct Way {
    const char16_t* control;
    QString value;
    const char16_t* column;
    QString stored;
    std::function<QString()> global;
};

template <typename Number> std::function<QString()> number(Number& global) {
    return [&global] { return common::numberToText(double(global)); };
}

std::function<QString()> text(QString& global) {
    return [&global] { return global; };
}

/// Two values a control, so that one of them differs from what was there.
std::vector<std::pair<Way, QString>> ways() {
    return {
        {{u"combo_Printer1_Name", u"Büro"_s, u"txt_Printer1_Name", u"Büro"_s, text(SysPrinter1Name)},
         u"Küche"_s},
        {{u"combo_Printer1_Copies", u"09"_s, u"lng_Printer1_Copies", u"9"_s, number(SysPrinter1Copies)},
         u"02"_s},
        {{u"check_Printer1_Status", u"0"_s, u"lng_Printer1_Status", u"0"_s, number(SysPrinter1Status)},
         u"1"_s},
        {{u"combo_Printer2_Name", u"Kasse"_s, u"txt_Printer2_Name", u"Kasse"_s, text(SysPrinter2Name)},
         u"Büro"_s},
        {{u"combo_Printer2_Copies", u"03"_s, u"lng_Printer2_Copies", u"3"_s, number(SysPrinter2Copies)},
         u"01"_s},
        {{u"check_Printer2_Status", u"1"_s, u"lng_Printer2_Status", u"1"_s, number(SysPrinter2Status)},
         u"0"_s},
        {{u"combo_DruckVorlage", u"Vorlage Nr. 3"_s, u"lng_VorlageBestellung", u"2"_s,
          number(SysVorlageBestellung)},
         u"Vorlage Nr. 1"_s},
        {{u"txt_Werbetext", u"Zwei\nZeilen"_s, u"txt_Werbetext", u"Zwei\nZeilen"_s, text(SysWerbetext)},
         u"Rabatt'10\""_s},
        {{u"txt_MWST1", u"7.7"_s, u"dbl_MWStSatz1", u"7.7"_s, number(SysMWStSatz1)}, u"8.1"_s},
        {{u"txt_MWST3", u"2.5"_s, u"dbl_MWStSatz3", u"2.5"_s, number(SysMWStSatz3)}, u"2.6"_s},
        {{u"txt_VATNummer", u"CHE-123"_s, u"txt_VATNummer", u"CHE-123"_s, text(SysVATNummer)}, u"x"_s},
        {{u"check_NoVAT", u"1"_s, u"lng_NoVATStatus", u"1"_s, number(SysNoVATStatus)}, u"0"_s},
        {{u"combo_FiktiverTag", u"03:00 - 03:00"_s, u"lng_FiktiverTag", u"0.125"_s, number(SysFiktiverTag)},
         u"23:00 - 23:00"_s},
        {{u"combo_StandardLieferzeit", u"330"_s, u"lng_StandardLieferzeit", u"330"_s,
          number(SysStandardLieferzeit)},
         u"10"_s},
        {{u"txt_TrxNr", u"4711"_s, u"lng_InitTrxNr", u"4711"_s, number(SysInitTrxNr)}, u"1"_s},
        {{u"check_VorbestellungAutomatisch", u"1"_s, u"lng_VorbestellungAutomatischStatus", u"1"_s,
          number(SysVorbestellungAutomatischStatus)},
         u"0"_s},
        {{u"combo_VorbestellungAutomatisch", u"180"_s, u"lng_VorbestellungAutomatischZeit", u"180"_s,
          number(SysVorbestellungAutomatischZeit)},
         u"00"_s},
        {{u"check_VorbestellungBuchung", u"1"_s, u"lng_VorbestellungBuchungStatus", u"1"_s,
          number(SysVorbestellungBuchungStatus)},
         u"0"_s},
        {{u"combo_VorbestellungBuchung", u"06"_s, u"lng_VorbestellungBuchungZeit", u"6"_s,
          number(SysVorbestellungBuchungZeit)},
         u"00"_s},
        {{u"combo_Currency", u"EUR"_s, u"txt_Currency", u"EUR"_s, text(SysCurrency)}, u"CHF"_s},
        {{u"combo_Language", u"Deutsch"_s, u"txt_Sprache", u"Deutsch"_s, text(SysSprache)}, u"Deutsch"_s},
        {{u"check_EditierungBestellungen", u"1"_s, u"lng_EditierungBestellungen", u"1"_s,
          number(SysEditierungBestellungen)},
         u"0"_s},
        {{u"check_AnmeldungUser", u"1"_s, u"lng_AnmeldungBenutzer", u"1"_s, number(SysAnmeldungBenutzer)},
         u"0"_s},
    };
}

QString nameOf(const char16_t* text) {
    return QString::fromUtf16(text);
}

} // namespace

TEST_F(SettingsScreenTest, EveryControlReachesItsGlobalItsColumnAndComesBack) {
    open();
    for (const auto& [way, other] : ways())
        put(nameOf(way.control), way.value);
    click(u"cmdClose"_s);
    EXPECT_TRUE(screen->isHidden());
    EXPECT_EQ(navigation.nextTrxNr, u"4711"_s) << "the first number in the main window";
    for (const auto& [way, other] : ways()) {
        EXPECT_EQ(way.global(), way.stored) << nameOf(way.control).toStdString();
        EXPECT_EQ(column(nameOf(way.column)), way.stored) << nameOf(way.control).toStdString();
    }
    store::LoadSystemSettings();
    SysAnmeldungBenutzer = 0; // else the restriction just set is out of reach
    open();
    for (const auto& [way, other] : ways())
        EXPECT_EQ(shown(nameOf(way.control)),
                  nameOf(way.control) == u"check_AnmeldungUser" ? u"0"_s : way.value)
            << nameOf(way.control).toStdString();
    // The window's cross saves as well.
    for (const auto& [way, other] : ways())
        put(nameOf(way.control), other);
    screen->close();
    open();
    for (const auto& [way, other] : ways())
        EXPECT_EQ(shown(nameOf(way.control)), other) << nameOf(way.control).toStdString();
    EXPECT_TRUE(dialogs.said.isEmpty());
    // The installed version is not the screen's.
    EXPECT_EQ(column(u"lng_SoftwareVersion_Major"_s).toInt(), TAVOLINO_VERSION_MAJOR);
}

TEST_F(SettingsScreenTest, TheWorkingDayEndsAtEveryHourOfTheList) {
    for (int hour = 0; hour < 24; ++hour) {
        open();
        find<QComboBox>(u"combo_FiktiverTag"_s)->setCurrentIndex(hour);
        screen->close();
        store::LoadSystemSettings();
        EXPECT_DOUBLE_EQ(SysFiktiverTag, hour / 24.0);
        EXPECT_EQ(modEinstellungenSystem::FiktiverTagStunde(), hour);
    }
    // Six decimals, as another program may have stored it.
    SysFiktiverTag = 0.958333;
    open();
    EXPECT_EQ(shown(u"combo_FiktiverTag"_s), u"23:00 - 23:00"_s);
    SysFiktiverTag = 0.5 + 0.9 / 24;
    EXPECT_EQ(modEinstellungenSystem::FiktiverTagStunde(), 12);
}

TEST_F(SettingsScreenTest, BadNumbersAreResetSilently) {
    open();

    const struct {
        const char16_t* field;
        QString typed, left;
    } cases[] = {{u"txt_MWST1", u"acht"_s, u"8.1"_s},  {u"txt_MWST1", u"7,7"_s, u"8.1"_s},
                 {u"txt_MWST3", u" "_s, u"2.6"_s},     {u"txt_MWST1", u"7.65"_s, u"7.65"_s},
                 {u"txt_TrxNr", u"1x2-3"_s, u"123"_s}, {u"txt_TrxNr", u"9999999999"_s, u"1000"_s}};

    for (const auto& [field, typed, left] : cases) {
        put(nameOf(field), typed);
        find(u"cmdClose"_s)->setFocus();
        EXPECT_EQ(shown(nameOf(field)), left) << typed.toStdString();
    }
    find<QLineEdit>(u"txt_TrxNr"_s)->clear();
    put(u"txt_MWST3"_s, u"x"_s);
    // The focus is still in the field.
    screen->close();
    EXPECT_EQ(SysMWStSatz1, 7.7);
    EXPECT_EQ(column(u"dbl_MWStSatz1"_s), u"7.7"_s);
    EXPECT_EQ(SysMWStSatz3, 2.6);
    EXPECT_EQ(SysInitTrxNr, 1000);
    EXPECT_TRUE(dialogs.said.isEmpty());
}

TEST_F(SettingsScreenTest, APrinterThatIsGoneIsForgottenOnClosing) {
    open();
    EXPECT_EQ(shown(u"combo_Printer1_Name"_s), u"Kasse"_s);
    screen->close();
    EXPECT_EQ(SysPrinter1Name, u"Kasse"_s);
    printers.printers.removeFirst();
    open();
    EXPECT_EQ(shown(u"combo_Printer1_Name"_s), QString());
    EXPECT_EQ(SysPrinter1Name, u"Kasse"_s);
    screen->close();
    EXPECT_EQ(SysPrinter1Name, QString());
    EXPECT_EQ(SysPrinter2Name, u"Küche"_s);
    printers.printers.clear();
    open();
    screen->close();
    EXPECT_EQ(column(u"txt_Printer2_Name"_s), QString());
}

TEST_F(SettingsScreenTest, OnlyAnAdministratorLiftsTheRestriction) {
    const struct {
        int restricted, login, administrator;
        bool visible;
    } cases[] = {{0, 0, 0, true}, {0, 1, 0, true},  {1, 0, 0, true},
                 {1, 1, 1, true}, {1, 1, 0, false}, {1, 0, 1, true}};

    for (const auto& [restricted, login, administrator, visible] : cases) {
        SysEditierungBestellungen = restricted;
        SysAnmeldungBenutzer = login;
        UserAdministrator = qint16(administrator);
        open();
        reveal(u"check_EditierungBestellungen"_s);
        EXPECT_EQ(find(u"check_EditierungBestellungen"_s)->isVisible(), visible);
        screen->close();
        EXPECT_EQ(SysEditierungBestellungen, restricted);
    }
}

TEST_F(SettingsScreenTest, AValueThatTheListLacksIsKept) {
    SysStandardLieferzeit = 37;
    SysPrinter1Copies = 12;
    open();
    screen->close();
    EXPECT_EQ(SysStandardLieferzeit, 37);
    EXPECT_EQ(SysPrinter1Copies, 12);
}

TEST_F(SettingsScreenTest, PreviewsTheTemplateOfTheMomentOverASampleOrTheLastOrder) {
    const auto rows = [](const QString& table) {
        return TestFirm::value(u"SELECT Count(*) AS N FROM "_s + table, ConnPrint).toInt();
    };
    QString total, werbetext;
    reports.onRun = [&](const platform::ReportJob&) {
        total = TestFirm::value(u"SELECT TotalPreis FROM ZusatzInfo"_s, ConnPrint);
        werbetext = TestFirm::value(u"SELECT Werbung FROM ZusatzInfo"_s, ConnPrint);
        EXPECT_GT(rows(u"BestellReport"_s), 0);
        return platform::ReportEnd::Done;
    };
    open();
    put(u"combo_DruckVorlage"_s, u"Vorlage Nr. 4"_s);
    EXPECT_EQ(SysVorlageBestellung, 3); // at once
    put(u"txt_Werbetext"_s, u"Neu"_s);
    click(u"cmdPreview"_s);
    EXPECT_EQ(werbetext, u"Neu"_s) << "as typed, before it is taken over";
    ASSERT_EQ(reports.runs.size(), 1);
    EXPECT_TRUE(reports.runs.last().ReportFileName.endsWith(u"\\Reports\\rep_report4.rpt"_s));
    EXPECT_EQ(reports.runs.last().destination, int(platform::ReportJob::kToWindow));
    EXPECT_EQ(reports.runs.last().DataFile, PfadPrintDB);
    EXPECT_EQ(total, u"60.50"_s); // 2 x 16.50 + 8.50 + 19.00
    EXPECT_EQ(rows(u"BestellReport"_s), 0);
    EXPECT_EQ(rows(u"ZusatzInfo"_s), 0);

    ConnPrint.Execute(u"INSERT INTO ZusatzInfo(TotalPreis) VALUES('12.00')"_s);
    ConnPrint.Execute(u"INSERT INTO BestellReport(Bezeichnung) VALUES('Pizza')"_s);
    click(u"cmdPreview"_s);
    EXPECT_EQ(total, u"12.00"_s);
    EXPECT_EQ(rows(u"BestellReport"_s), 1);
}
