// What the screens of the statistics share, on the turnover screen; and the close of the day.
#include "ScreenTest.h"
#include "platform/chart/ChartView.h"
#include "reporting/frmAuswertungenTagesabschluss.h"
#include "reporting/frmAuswertungenUmsatz.h"
#include "store/SystemSettings.h"
#include "support/Bookings.h"
#include "support/Unzipped.h"
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using test::book;
using test::TestFirm;

namespace {

struct TurnoverTest : test::ScreenTest<frmAuswertungenUmsatz> {
    TurnoverTest() {
        ConnMain.Execute(u"UPDATE tbl_Verwaltung_Kuriere SET txt_Kurzzeichen = 'C&D' WHERE lng_ID = 2"_s);
        const double quarterPast = 0.25 / 24;
        for (int day = 0; day < 30; ++day)
            book({1000 + day,
                  TestFirm::day() - day + quarterPast,
                  {{.price = 100.0 + day}},
                  TestFirm::kAnna,
                  1 + day % 2});
        open();
    }

    QString cell(QStringView list, int row, int column) {
        const auto* model = find<platform::DataGrid>(list)->model();
        return model->index(row, column).data().toString();
    }

    QString total() { return find<QLabel>(u"lbl_TotalPreis")->text(); }

    /// As the user does it: the text is taken over when the field is left.
    void enterDate(QStringView field, const QString& date) {
        enter(field, date);
        find(u"cmdShow")->setFocus();
    }
};

using CloseTest = test::ScreenTest<frmAuswertungenTagesabschluss>;

} // namespace

TEST_F(TurnoverTest, DatesStepAndMendThemselves) {
    expectReachable(false);
    EXPECT_EQ(text(u"txt_DatumVon"), u"15/05/2026"_s);
    EXPECT_EQ(enterWay(u"txt_DatumVon", 2), u"txt_DatumVon txt_DatumBis txt_DatumVon"_s);
    for (const auto& [typed, left] : {std::pair{u"1.5.26"_s, u"01/05/2026"_s},
                                      {u"1/5/45"_s, u"01/05/2045"_s},
                                      {u"29/02/2028"_s, u"29/02/2028"_s},
                                      {u"29/02/2027"_s, u"15/05/2026"_s},
                                      {u"31/02/2026"_s, u"15/05/2026"_s},
                                      {u"abc"_s, u"15/05/2026"_s},
                                      {u"1/1/20260"_s, u"15/05/2026"_s},
                                      {QString(), u"15/05/2026"_s}}) {
        enterDate(u"txt_DatumVon", typed);
        EXPECT_EQ(text(u"txt_DatumVon"), left) << typed.toStdString();
    }
    enterDate(u"txt_DatumVon", u"31/12/2025"_s);
    click(u"cmdDatumVonFwd");
    EXPECT_EQ(text(u"txt_DatumVon"), u"01/01/2026"_s);
    find(u"txt_DatumVon")->setFocus();
    QTest::keyClick(find(u"txt_DatumVon"), Qt::Key_Down);
    click(u"cmdDatumVonBack");
    EXPECT_EQ(text(u"txt_DatumVon"), u"30/12/2025"_s);
    find<QLineEdit>(u"txt_DatumVon")->setText(u"x"_s);
    QTest::keyClick(find(u"txt_DatumVon"), Qt::Key_Up);
    EXPECT_EQ(text(u"txt_DatumVon"), u"x"_s) << "no date, no step";
    // A tab takes no focus: the date is mended all the same.
    find<QTabWidget>(u"Ansicht")->setCurrentIndex(2);
    EXPECT_EQ(text(u"txt_DatumVon"), u"15/05/2026"_s);
}

TEST_F(TurnoverTest, TablesFollowTheChoiceAtOnceAndTheTotalOnlyWhenAskedFor) {
    EXPECT_EQ(total(), QString());
    EXPECT_EQ(cell(u"TagesUmsatzGrid", 0, 0) + u'|' + cell(u"TagesUmsatzGrid", 0, 2),
              u"15/Mai/2026|100.00"_s);
    EXPECT_EQ(find<platform::DataGrid>(u"TagesUmsatzGrid")->rowCount(), 24);
    enterDate(u"txt_DatumVon", u"14/05/2026"_s);
    click(u"cmdShow");
    EXPECT_EQ(total(), u"201.00"_s);
    find<QComboBox>(u"combo_Kurier")->setCurrentIndex(2);
    Q_EMIT find<QComboBox>(u"combo_Kurier")->activated(2);
    EXPECT_EQ(cell(u"TagesUmsatzGrid", 0, 2), u"101.00"_s);
    EXPECT_EQ(cell(u"TagesUmsatzGrid", 20, 0) + cell(u"TagesUmsatzGrid", 20, 2), QString());
    EXPECT_EQ(total(), u"201.00"_s);
    click(u"cmdShow");
    EXPECT_EQ(total(), u"101.00"_s) << "his own";
    click(u"opt_MWSt");
    EXPECT_EQ(cell(u"TagesUmsatzGrid", 0, 2), u"2.56"_s);
    EXPECT_EQ(find<platform::ChartView>(u"TagesBild")->chart().series.at(0).values.size(), 15U);
    enterDate(u"txt_DatumBis", u"01/05/2026"_s);
    click(u"cmdShow");
    EXPECT_EQ(total(), u"0.00"_s) << "the end before the start";
    // Given up, choice and figures stay.
    dialogs.giveUp = true;
    click(u"opt_Umsatz");
    EXPECT_TRUE(find<QRadioButton>(u"opt_MWSt")->isChecked());
    EXPECT_EQ(cell(u"TagesUmsatzGrid", 0, 2), u"2.56"_s);
    dialogs.giveUp = false;
    // The next look is at what was booked meanwhile.
    book({2000, TestFirm::day(), {{.price = 1026}}, TestFirm::kAnna, TestFirm::kKurierCD});
    screen->hide();
    screen->show();
    EXPECT_EQ(cell(u"TagesUmsatzGrid", 0, 2), u"26.00"_s);
}

TEST_F(TurnoverTest, PeakTimesAreCountedByWeekdayHourAndCourier) {
    using Counts = std::vector<double>;
    enterDate(u"txt_DatumVon", u"13/05/2026"_s);
    find<QTabWidget>(u"Ansicht")->setCurrentIndex(2);
    const auto picture = [this](QStringView name) {
        const platform::Chart& chart = find<platform::ChartView>(name)->chart();
        return chart.isEmpty() ? Counts() : chart.series[0].values;
    };
    EXPECT_EQ(picture(u"WochentagsBild"), (Counts{0, 0, 1, 1, 1, 0, 0}));
    Counts night(24);
    for (const auto& [courier, weekday, count] :
         {std::tuple{0, 0, 3.0}, {2, 0, 1.0}, {2, 4, 1.0}, {1, 0, 2.0}, {1, 4, 0.0}}) {
        for (const auto& [list, entry] :
             {std::pair{u"combo_Kurier", courier}, {u"combo_Wochentag", weekday}}) {
            find<QComboBox>(list)->setCurrentIndex(entry);
            Q_EMIT find<QComboBox>(list)->activated(entry);
        }
        night[0] = count;
        EXPECT_EQ(picture(u"StundenBild"), count > 0 ? night : Counts()) << courier << ' ' << weekday;
    }
    EXPECT_EQ(picture(u"WochentagsBild"), (Counts{0, 0, 1, 0, 1, 0, 0}));
}

TEST_F(TurnoverTest, TwelveLinesGoOnPaperAndAllIntoTheSheet) {
    book({1, 40'000, {{.price = 50}}}); // of 2009
    screen->hide();
    screen->show();
    click(u"cmdPrint");
    ASSERT_EQ(reports.runs.size(), 1);
    EXPECT_EQ(reports.runs[0].WindowTitle, u"Umsatz"_s);
    const QStringList lines =
        TestFirm::rows(u"SELECT TagPeriode, TagUmsatz, MonatPeriode, MonatUmsatz, JahrPeriode, "
                       u"JahrUmsatz FROM PrintUmsatz"_s,
                       ConnPrint);
    ASSERT_EQ(lines.size(), 12);
    EXPECT_EQ(lines[0], u"15/Mai/2026|100|Jan-2026|50|2015|50"_s);
    EXPECT_EQ(lines[4], u"11/Mai/2026|104|Mai-2026|1605|2019|0"_s);
    EXPECT_EQ(lines[11], u"04/Mai/2026|111|Dez-2026|0|2026|3435"_s);
    const QTemporaryDir folder;
    dialogs.savePath = folder.filePath(u"Umsatz.xlsx"_s);
    click(u"cmdExport");
    const QString sheet = test::unzipped(dialogs.savePath, u"xl/worksheets/sheet1.xml"_s);
    EXPECT_EQ(sheet.count(u"<row "_s), 1 + 24 + 1);
    EXPECT_TRUE(sheet.contains(u"<f>SUM(C2:C25)</f><v>2676</v>"_s)) << sheet.toStdString();
    EXPECT_TRUE(sheet.contains(u"<v>%1</v>"_s.arg(TestFirm::day()))) << "a date is a date";
    find<QComboBox>(u"combo_Kurier")->setCurrentIndex(2);
    Q_EMIT find<QComboBox>(u"combo_Kurier")->activated(2);
    click(u"cmdExport");
    EXPECT_TRUE(test::unzipped(dialogs.savePath, u"xl/worksheets/sheet3.xml"_s)
                    .contains(u"<oddHeader>&amp;LUmsatz, Kurier C&amp;&amp;D</oddHeader>"_s))
        << "\"&\" begins a code";
}

TEST_F(CloseTest, OpensOnTheRunningBusinessDayAndTheOwnerSaysWhatIsCash) {
    SysFiktiverTag = 5 / 24.0;
    TestFirm::setTime(3, 0);
    const double noon = TestFirm::day() - 1 + 0.5;
    book({1, noon, {{.price = 32.5, .discount = 2.5, .rate = 25}, {.price = 8, .rate = 60}}});
    book({2,
          TestFirm::day() + 2 / 24.0,
          {{.price = 10, .rate = 25}},
          TestFirm::kAnna,
          TestFirm::kKurierCD,
          u"Visa"_s});
    book({3, TestFirm::day() + 0.5, {{.price = 99}}});
    for (const qint64 number : {4, 6})
        book({.number = number, .moment = noon, .customer = -1, .courier = -1});
    book({5, noon, {{.price = 5, .rate = 25}}, TestFirm::kAnna, TestFirm::kKurierCD, u"EC"_s});
    open();
    expectReachable();
    EXPECT_EQ(text(u"txt_DatumVon") + text(u"txt_DatumBis"), u"14/05/202614/05/2026"_s);
    const auto couriers = [this] {
        const auto* list = find<platform::DataGrid>(u"KuriereGrid");
        QStringList all;
        for (int row = 0; row < list->rowCount(); ++row)
            all << list->text(row, 0) + u' ' + list->text(row, 2) + u' ' + list->text(row, 3);
        return all.join(u'|');
    };
    EXPECT_EQ(couriers(), u"AB 38 38|CD 15 0"_s);
    auto* words = find<platform::DataGrid>(u"KonditionenGrid");
    ASSERT_EQ(words->text(3, 0), u"Visa"_s);
    words->setRow(3);
    click(u"cmdBar");
    EXPECT_EQ(couriers(), u"AB 38 38|CD 15 10"_s);
    EXPECT_EQ(words->row(), 3);
    // A look elsewhere, or another word for cash, asks for no other day than the one on show.
    find<QLineEdit>(u"txt_DatumBis")->setText(u"1"_s);
    screen->hide();
    screen->show();
    EXPECT_EQ(text(u"txt_DatumBis"), u"1"_s);
    EXPECT_EQ(couriers(), u"AB 38 38|CD 15 10"_s);
    const auto shown = [this](QStringView list) {
        const auto* model = find<platform::DataGrid>(list)->model();
        QStringList all;
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model->columnCount(); ++column)
                cells << model->index(row, column).data().toString();
            all << cells.join(u'|');
        }
        return all;
    };
    EXPECT_EQ(shown(u"UebersichtGrid"),
              (QStringList{u"Bestellungen|3|"_s, u"Storniert: Nr. 4, 6|2|"_s, u"Umsatz CHF||53.00"_s,
                           u"darin gewährter Rabatt||2.50"_s, u"Umsatz ohne Mehrwertsteuer||41.00"_s,
                           u"Mehrwertsteuer||12.00"_s, u"Bar in die Kasse||48.00"_s, u"Nicht bar||5.00"_s}));
    EXPECT_EQ(shown(u"KonditionenGrid"), (QStringList{u"Bar|1|38.00|Ja"_s, u"Cash|0|0.00|Ja"_s,
                                                      u"EC|1|5.00|Nein"_s, u"Visa|1|10.00|Ja"_s}));
    for (const QStringView button : {u"cmdPrint", u"cmdPrintRolle"})
        click(button);
    ASSERT_EQ(reports.runs.size(), 2);
    EXPECT_TRUE(reports.runs[1].ReportFileName.endsWith(u"rep_TagesabschlussRolle.rpt"_s));
    QStringList paper;
    for (const QString& part : {u""_s, u"MWSt"_s, u"Konditionen"_s, u"Kuriere"_s})
        paper << TestFirm::rows(u"SELECT * FROM PrintAbschluss"_s + part, ConnPrint);
    EXPECT_EQ(paper, (QStringList{u"14/05/2026 05:00 bis 15/05/2026 05:00|CHF|3|2|4, 6|53|2.5|41|12|48"_s,
                                  u"25|36|9|45"_s, u"60|5|3|8"_s, u"Bar|1|38|bar"_s, u"Cash|0|0|bar"_s,
                                  u"EC|1|5|"_s, u"Visa|1|10|bar"_s, u"AB|1|38|38"_s, u"CD|2|15|10"_s}));
    const QTemporaryDir folder;
    dialogs.savePath = folder.filePath(u"Abschluss.xlsx"_s);
    click(u"cmdExport");
    // A number's form stands behind it.
    const auto sheet = [&](int number) {
        return test::sheetRows(dialogs.savePath, number).join(u'\n').toStdString();
    };
    EXPECT_EQ(sheet(2), "A1=Satz % B1=Netto C1=Steuer D1=Brutto\n"
                        "A2=25~0.0 B2=36~#,##0.00 C2=9~#,##0.00 D2=45~#,##0.00\n"
                        "A3=60~0.0 B3=5~#,##0.00 C3=3~#,##0.00 D3=8~#,##0.00\n"
                        "B4=SUM(B2:B3)41~#,##0.00 C4=SUM(C2:C3)12~#,##0.00 D4=SUM(D2:D3)53~#,##0.00");
    EXPECT_EQ(sheet(3), "A1=Konditionen B1=Bestellungen C1=Umsatz D1=Bar\n"
                        "A2=Bar B2=1~ C2=38~#,##0.00 D2=-1~&quot;Nein&quot;;&quot;Ja&quot;\n"
                        "A3=Cash B3=0~ C3=0~#,##0.00 D3=-1~&quot;Nein&quot;;&quot;Ja&quot;\n"
                        "A4=EC B4=1~ C4=5~#,##0.00 D4=0~&quot;Nein&quot;;&quot;Ja&quot;\n"
                        "A5=Visa B5=1~ C5=10~#,##0.00 D5=-1~&quot;Nein&quot;;&quot;Ja&quot;\n"
                        "B6=SUM(B2:B5)3~ C6=SUM(C2:C5)53~#,##0.00");
    EXPECT_EQ(sheet(4), "A1=Kurier B1=Bestellungen C1=Mitgenommen D1=Schuldet der Kasse\n"
                        "A2=AB B2=1~ C2=38~#,##0.00 D2=38~#,##0.00\n"
                        "A3=CD B3=2~ C3=15~#,##0.00 D3=10~#,##0.00\n"
                        "B4=SUM(B2:B3)3~ C4=SUM(C2:C3)53~#,##0.00 D4=SUM(D2:D3)48~#,##0.00");
}
