// The settings screen: every control's way to its global, its column and back.
#include "screens/ScreenTest.h"
#include "shell/frmEinstellungenSystem.h"
#include "shell/modEinstellungenBenutzer.h"
#include "store/SystemSettings.h"
#include <QRegularExpression>
#include <QTabWidget>

using namespace Qt::StringLiterals;
using test::TestFirm;

namespace {

class SettingsScreenTest : public test::ScreenTest<frmEinstellungenSystem> {
  protected:
    SettingsScreenTest() {
        for (const char16_t* name : {u"Kasse", u"Büro", u"Küche"})
            printers.printers.append({QString::fromUtf16(name), {}, {}});
        printers.current = printers.printers.first();
    }

    ~SettingsScreenTest() override { UserAdministrator = 0; }

    void click(const QString& name) {
        reveal(name);
        ScreenTest::click(name);
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
        return stored(u"SELECT "_s + name + u" FROM tbl_Einstellungen_System"_s);
    }
};

/// A text for the control that differs from what stands in it, to begin with or after the first round.
QString otherText(const QWidget& control, store::SettingKind kind, bool again) {
    using enum store::SettingKind;
    if (const auto* list = qobject_cast<const QComboBox*>(&control))
        return list->itemText(again ? 0 : list->count() - 1);
    if (kind == Flag)
        return again ? u"0"_s : u"1"_s;
    if (kind == Rate)
        return again ? u"8.1"_s : u"7.7"_s;
    if (kind == Typed)
        return again ? u"1"_s : u"4711"_s;
    return again ? u"Rabatt'10\""_s : control.inherits("QLineEdit") ? u"CHE-123"_s : u"Zwei\nZeilen"_s;
}

QString nameOf(const char16_t* text) {
    return QString::fromUtf16(text);
}

} // namespace

TEST_F(SettingsScreenTest, EveryColumnHasItsControlAndComesBack) {
    open();
    QStringList columns, controls;
    for (const store::Setting& setting : store::settings()) {
        columns << nameOf(setting.column);
        controls << nameOf(setting.control);
    }
    store::Recordset row;
    row.Open(u"SELECT * FROM tbl_Einstellungen_System"_s, ConnMain);
    for (const store::Column& column : row.Columns())
        if (!column.name.startsWith(u"lng_SoftwareVersion") && column.name != u"lng_ID") {
            EXPECT_EQ(columns.count(column.name), 1) << column.name.toStdString();
        }
    row.Close();
    for (const auto* control : screen->findChildren<QWidget*>(QRegularExpression(u"^(combo|check|txt)_"_s)))
        EXPECT_EQ(controls.count(control->objectName()), 1) << control->objectName().toStdString();

    for (const bool again : {false, true}) {
        QStringList typed;
        for (const store::Setting& setting : store::settings()) {
            const QString name = nameOf(setting.control);
            typed << otherText(*find(name), setting.kind, again);
            put(name, typed.last());
        }
        screen->close();
        EXPECT_EQ(navigation.nextTrxNr, QString::number(SysInitTrxNr))
            << "the first number in the main window";
        store::LoadSystemSettings();
        UserAdministrator = -1; // else the restriction just set is out of reach
        open();
        for (qsizetype i = 0; i < typed.size(); ++i)
            EXPECT_EQ(shown(controls[i]), typed[i]) << controls[i].toStdString();
    }
    EXPECT_EQ(SysMWStSatz1, 8.1);
    EXPECT_TRUE(dialogs.said.isEmpty());
    // The installed version is not the screen's.
    EXPECT_EQ(column(u"lng_SoftwareVersion_Major"_s).toInt(), TAVOLINO_VERSION_MAJOR);
}

TEST_F(SettingsScreenTest, FollowsWhatIsSwitchedElsewhereAndKeepsWhatIsTyped) {
    open();
    put(u"txt_VATNummer"_s, u"neu"_s);
    modEinstellungenBenutzer::SaveAnmeldung(true);
    EXPECT_EQ(shown(u"check_AnmeldungUser"_s), u"1"_s);
    screen->close();
    EXPECT_EQ(column(u"lng_AnmeldungBenutzer"_s), u"1"_s);
    EXPECT_EQ(SysVATNummer, u"neu"_s);
}

TEST_F(SettingsScreenTest, TheWorkingDayEndsAtAnHourOfTheList) {
    for (const int hour : {0, 3, 23}) {
        open();
        find<QComboBox>(u"combo_FiktiverTag"_s)->setCurrentIndex(hour);
        screen->close();
        store::LoadSystemSettings();
        EXPECT_DOUBLE_EQ(SysFiktiverTag, hour / 24.0);
        EXPECT_EQ(store::FiktiverTagStunde(), hour);
    }
    // Six decimals, as another program may have stored it.
    SysFiktiverTag = 0.958333;
    open();
    EXPECT_EQ(shown(u"combo_FiktiverTag"_s), u"23:00 - 23:00"_s);
    SysFiktiverTag = 0.5 + 0.9 / 24;
    EXPECT_EQ(store::FiktiverTagStunde(), 12);
}

TEST_F(SettingsScreenTest, BadNumbersAreResetSilently) {
    open();

    const std::tuple<const char16_t*, QString, QString> cases[] = {
        {u"txt_MWST1", u"acht"_s, u"8.1"_s},  {u"txt_MWST1", u"7,7"_s, u"8.1"_s},
        {u"txt_MWST3", u" "_s, u"2.6"_s},     {u"txt_MWST1", u"1e300"_s, u"8.1"_s},
        {u"txt_MWST3", u"-100"_s, u"2.6"_s},  {u"txt_MWST1", u"7.65"_s, u"7.65"_s},
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
    const std::tuple<int, int, int, bool> cases[] = {{0, 0, 0, true}, {0, 1, 0, true},  {1, 0, 0, true},
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
