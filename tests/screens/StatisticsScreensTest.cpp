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
        for (int day = 0; day < 30; ++day)
            book({1000 + day, TestFirm::day() - day, {{.price = 100.0 + day}}, TestFirm::kAnna, 1 + day % 2});
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

TEST_F(TurnoverTest, TwelveLinesGoOnPaperAndAllIntoTheSheet) {
    click(u"cmdPrint");
    ASSERT_EQ(reports.runs.size(), 1);
    EXPECT_EQ(reports.runs[0].WindowTitle, u"Umsatz"_s);
    const QStringList lines =
        TestFirm::rows(u"SELECT TagPeriode, TagUmsatz, MonatPeriode, MonatUmsatz, JahrPeriode, "
                       u"JahrUmsatz FROM PrintUmsatz"_s,
                       ConnPrint);
    ASSERT_EQ(lines.size(), 12);
    EXPECT_EQ(lines[4], u"11/Mai/2026|104|Mai-2026|1605|2019|0"_s);
    const QTemporaryDir folder;
    dialogs.savePath = folder.filePath(u"Umsatz.xlsx"_s);
    click(u"cmdExport");
    const QString sheet = test::unzipped(dialogs.savePath, u"xl/worksheets/sheet1.xml"_s);
    EXPECT_EQ(sheet.count(u"<row "_s), 1 + 24 + 1);
    EXPECT_TRUE(sheet.contains(u"<f>SUM(C2:C25)</f><v>2676</v>"_s)) << sheet.toStdString();
    EXPECT_TRUE(sheet.contains(u"<v>%1</v>"_s.arg(TestFirm::day()))) << "a date is a date";
}

TEST_F(CloseTest, OpensOnTheRunningBusinessDayAndTheOwnerSaysWhatIsCash) {
    SysFiktiverTag = 5 / 24.0;
    TestFirm::setTime(3, 0);
    book({1, TestFirm::day() - 1 + 0.5, {{.price = 30}}});
    book({2, TestFirm::day() + 2 / 24.0, {{.price = 12}}, TestFirm::kAnna, TestFirm::kKurierCD, u"Visa"_s});
    book({3, TestFirm::day() + 0.5, {{.price = 99}}});
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
    EXPECT_EQ(couriers(), u"AB 30 30|CD 12 0"_s);
    auto* words = find<platform::DataGrid>(u"KonditionenGrid");
    ASSERT_EQ(words->text(2, 0), u"Visa"_s);
    words->setRow(2);
    click(u"cmdBar");
    EXPECT_EQ(couriers(), u"AB 30 30|CD 12 12"_s);
    EXPECT_EQ(words->row(), 2);
    // A look elsewhere, or another word for cash, asks for no other day than the one on show.
    find<QLineEdit>(u"txt_DatumBis")->setText(u"1"_s);
    screen->hide();
    screen->show();
    EXPECT_EQ(text(u"txt_DatumBis"), u"1"_s);
    EXPECT_EQ(couriers(), u"AB 30 30|CD 12 12"_s);
    for (const QStringView button : {u"cmdPrint", u"cmdPrintRolle"})
        click(button);
    ASSERT_EQ(reports.runs.size(), 2);
    EXPECT_TRUE(reports.runs[1].ReportFileName.endsWith(u"rep_TagesabschlussRolle.rpt"_s));
    EXPECT_EQ(TestFirm::rows(u"SELECT Zeitraum, Bestellungen, Umsatz, Bar FROM PrintAbschluss"_s, ConnPrint),
              QStringList{u"14/05/2026 05:00 bis 15/05/2026 05:00|2|42|42"_s});
}
