// Charts: what they tell, save and print.
#include "platform/chart/ChartCanvas.h"
#include "platform/chart/ChartFiles.h"
#include "platform/chart/ChartView.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/QtReports.h"
#include "tests/support/CupsServer.h"
#include "tests/support/FullDisk.h"
#include "tests/support/TestDialogs.h"
#include "tests/support/TestFirmServices.h"
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::Chart;
using platform::ChartPlace;

namespace {

Chart months() {
    return {.title = u"Umsatz 01/05/2026 <Zürich>"_s,
            .unit = u"CHF"_s,
            .labels = {u"Januar"_s, u"Februar"_s, u"März"_s},
            .series = {{u"2026"_s, {1234.5, -40.05, 0}}, {u"2025"_s, {900, 1200, 1100.1}}}};
}

Chart ranking(int bars) {
    Chart chart{
        .title = u"Produkte"_s, .form = u"#,0"_s, .kind = Chart::Ranked, .labels = {}, .series = {{}}};
    for (int i = 0; i < bars; ++i) {
        chart.labels << u"Produkt %1"_s.arg(i);
        chart.series[0].values.push_back((i * 7) % bars + 1);
    }
    return chart;
}

class ChartTest : public testing::Test {
  protected:
    ChartTest() {
        view.resize(800, 500);
        view.setServices({dialogs, navigation, registry, reports, printers, internet});
        view.setEmptyText(u"Keine Buchungen."_s);
    }

    void show(const Chart& chart) {
        view.setChart(chart);
        view.show();
        QApplication::setActiveWindow(&view);
        view.canvas()->setFocus();
    }

    QString note() {
        const auto* label = view.findChild<QLabel*>(u"lbl_ChartWert"_s);
        return label->isVisible() ? label->text() : QString();
    }

    QString noteAt(ChartPlace place) {
        QTest::mouseMove(view.canvas(), view.canvas()->picture()->mark(place).center().toPoint());
        return note();
    }

    QString afterKeys(std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys)
            QTest::keyClick(view.canvas(), key);
        return note();
    }

    void click(const char* button) { view.findChild<QPushButton*>(QLatin1String(button))->click(); }

    /// The screen's colour in the middle of a value's bar.
    QColor colorOf(ChartPlace place) {
        return view.canvas()->grab().toImage().pixelColor(
            view.canvas()->picture()->mark(place).center().toPoint());
    }

    test::TestDialogs dialogs;
    test::TestNavigation navigation;
    test::TestRegistry registry;
    test::TestReports reports;
    test::TestPrinters printers;
    test::TestInternet internet;
    platform::ChartView view;
    QTemporaryDir folder;
};

} // namespace

TEST_F(ChartTest, ARankedOneKeepsItsTotal) {
    const Chart shown = ranking(40).arranged();
    ASSERT_EQ(shown.labels.size(), 26);
    EXPECT_EQ(shown.labels.last(), u"Übrige (15)"_s);
    EXPECT_EQ(shown.value(0, 0), 40);
    EXPECT_EQ(shown.value(0, 25), 15 * 16 / 2);
    EXPECT_EQ(shown.labels[0], u"Produkt 17"_s);
    EXPECT_EQ(ranking(26).arranged().labels.size(), 26) << "none is called the others alone";
}

TEST_F(ChartTest, EachValueIsToldWhereItsBarStands) {
    show(months());
    EXPECT_EQ(noteAt({0, 0}), u"Januar\n2026: 1'234.50 CHF"_s);
    EXPECT_EQ(noteAt({1, 0}), u"Januar\n2025: 900.00 CHF"_s);
    EXPECT_EQ(noteAt({0, 1}), u"Februar\n2026: -40.05 CHF"_s);
    EXPECT_NE(colorOf({0, 0}), colorOf({1, 0}));
    EXPECT_EQ(colorOf({0, 1}), colorOf({0, 0})) << "the bar is where its note is";
    EXPECT_EQ(colorOf({1, 2}), colorOf({1, 0}));
    QTest::mouseMove(view.canvas(), QPoint(5, 5));
    EXPECT_EQ(note(), QString());

    EXPECT_EQ(afterKeys({Qt::Key_Right, Qt::Key_Right, Qt::Key_Down}), u"Februar\n2025: 1'200.00 CHF"_s);
    EXPECT_EQ(view.canvas()->accessibleDescription(), note());
    EXPECT_EQ(afterKeys({Qt::Key_End, Qt::Key_Up, Qt::Key_Right}), u"März\n2026: 0.00 CHF"_s);

    Chart two = ranking(5);
    two.labels[4] = QString(90, u'n');
    two.series.push_back({u"Vorjahr"_s, {9, 9, 9, 9, 9}});
    show(two);
    EXPECT_EQ(noteAt({0, 0}), two.arranged().labels[0] + u"\n5"_s);
    EXPECT_EQ(noteAt({1, 0}), two.arranged().labels[0] + u"\nVorjahr: 9"_s);
    EXPECT_NE(colorOf({0, 0}), colorOf({1, 0}));
    EXPECT_EQ(afterKeys({Qt::Key_Down, Qt::Key_Down}), two.arranged().note(0, 1));
    const auto* label = view.findChild<QLabel*>(u"lbl_ChartWert"_s);
    for (size_t index = 0; index < 5; ++index) {
        noteAt({0, index});
        EXPECT_TRUE(view.canvas()->rect().contains(label->geometry()));
    }
}

TEST_F(ChartTest, TheColoursFollowThePalette) {
    show(months());
    view.canvas()->clearFocus();
    const QColor light = colorOf({0, 0});
    QPalette dark = view.palette();
    dark.setColor(QPalette::Base, QColor(0x20, 0x20, 0x20));
    dark.setColor(QPalette::Text, Qt::white);
    view.setPalette(dark);
    EXPECT_GT(colorOf({0, 0}).lightness(), light.lightness() + 60);
    EXPECT_EQ(view.canvas()->grab().toImage().pixelColor(3, 3), QColor(0x20, 0x20, 0x20));
    const QImage saved = QImage::fromData(platform::pngOf(view.chart()));
    EXPECT_EQ(saved.pixelColor(3, 3), QColor(Qt::white)) << "on paper never";
}

TEST_F(ChartTest, ItIsSavedAsTheNameTells) {
    show({});
    EXPECT_FALSE(view.findChild<QPushButton*>(u"cmdBildSpeichern"_s)->isEnabled());
    show(months());
    dialogs.savePath = folder.filePath(u"a.png"_s);
    click("cmdBildSpeichern");
    EXPECT_TRUE(dialogs.suggested.last().endsWith(u".png|svg"_s));
    const QImage picture(dialogs.savePath);
    EXPECT_EQ(picture.size(), QSize(1600, 900));
    {
        const test::FullDisk full(1000);
        click("cmdBildSpeichern");
    }
    ASSERT_EQ(dialogs.said.size(), 1);
    EXPECT_TRUE(dialogs.last().text.startsWith(u"Die Datei \"a.png\" lässt sich nicht schreiben"_s));
    EXPECT_EQ(QImage(dialogs.savePath), picture) << "the former one stays";
    dialogs.savePath = folder.filePath(u"a.SVG"_s);
    click("cmdBildSpeichern");
    QFile file(dialogs.savePath);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString svg = QString::fromUtf8(file.readAll());
    for (const char16_t* text : {u"Umsatz 01/05/2026 &lt;Zürich&gt;", u"1'234.50", u"März", u"2025"})
        EXPECT_TRUE(svg.contains(u">%1</text>"_s.arg(QString::fromUtf16(text)))) << svg.toStdString();
}

TEST_F(ChartTest, ItIsPrintedOnTheRoadOfTheLists) {
    show(months());
    dialogs.cancelPrinter = true;
    click("cmdBildDrucken");
    EXPECT_TRUE(reports.runs.isEmpty());
    dialogs.cancelPrinter = false;
    click("cmdBildDrucken");
    EXPECT_EQ(dialogs.primed.last().orientation, platform::ReportJob::kLandscape);
    ASSERT_EQ(reports.runs.size(), 1);
    platform::ReportJob job = reports.runs.first();
    EXPECT_EQ(job.windowState, int(platform::ReportJob::kMaximized));
    job.orientation = platform::ReportJob::kPortrait;
    ASSERT_EQ(platform::QtReports(dialogs).run(job), platform::ReportEnd::Done);
    platform::PreviewWindow* preview = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* found = qobject_cast<platform::PreviewWindow*>(window))
            preview = found;
    ASSERT_TRUE(preview);
    EXPECT_FALSE(preview->report().page().isLandscape()) << "as it was chosen";
    dialogs.savePath = folder.filePath(u"a.pdf"_s);
    platform::saveAsPdf(preview->report(), dialogs.savePath);
    delete preview;
    const QString text = test::pdfText(dialogs.savePath).simplified();
    for (const QString& part :
         {u"Umsatz 01/05/2026 <Zürich>"_s, u"1'234.50"_s, u"Februar"_s, u"Seite 1 von 1"_s})
        EXPECT_TRUE(text.contains(part)) << text.toStdString();
}
