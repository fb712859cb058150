#include "install/Installer.h"
#include "platform/report/CupsPrinters.h"
#include "platform/report/QtReports.h"
#include "platform/report/ReportDocument.h"
#include "store/Recordset.h"
#include "tests/platform/ReportSample.h"
#include "tests/support/CupsServer.h"
#include "tests/support/TestDialogs.h"
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::ReportData;

namespace {

QString templatePath(int number) {
    return QStringLiteral(TAVOLINO_SOURCE_DIR) + u"/reports/rep_report%1.rpt"_s.arg(number);
}

QString saved(const ReportData& data, int number, const QTemporaryDir& folder) {
    const QString path = folder.filePath(u"slip.pdf"_s);
    platform::saveAsPdf(platform::ReportDocument(platform::ReportTemplate(templatePath(number)).fill(data)),
                        path);
    return path;
}

/// What the page shows, blanks and line ends folded: wrapping is the layout's affair.
QString folded(const QString& path) {
    return test::pdfText(path).simplified();
}

class ReportPrintingTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(m_server.started()) << m_server.failure().toStdString();
        install::installDatabases(m_folder.path());
        m_dataFile = m_folder.filePath(u"Data/DB_PRINT_Tavolino.mdb"_s);
        ASSERT_TRUE(QFile::exists(m_dataFile));
        store(test::slipSample());
        m_server.addQueue(u"Kueche"_s);
        m_server.addQueue(u"Haupt"_s);
        m_server.setDefault(u"Haupt"_s);
        ASSERT_TRUE(m_server.started()) << m_server.failure().toStdString();
    }

    void store(const ReportData& data) {
        store::Connection connection;
        connection.Open(u"Data Source="_s + m_dataFile + u";"_s);
        for (const auto& [table, rows] : data.tables) {
            connection.Execute(u"DELETE * FROM "_s + table);
            store::Recordset recordset;
            store::WriteRecordset target(recordset, table, connection);
            for (const auto& row : rows) {
                target->AddNew();
                for (const auto& [column, text] : row)
                    target->Fields(column) = common::Value(text);
                target->Update();
            }
        }
    }

    platform::ReportEnd print(const QString& printer, const QString& report = templatePath(1),
                              int copies = 1) {
        return platform::QtReports(m_dialogs).run({.ReportFileName = report,
                                                   .DataFile = m_dataFile,
                                                   .WindowTitle = u"Auftragsschein"_s,
                                                   .firm = u"Pizzeria Müller & Söhne"_s,
                                                   .PrinterName = printer,
                                                   .copies = copies,
                                                   .note = u"So steht es um den Auftrag."_s});
    }

    test::CupsServer m_server;
    QTemporaryDir m_folder;
    QString m_dataFile;
    test::TestDialogs m_dialogs;
};

} // namespace

TEST_F(ReportPrintingTest, EachSlipCarriesTheWholeOrderOnItsPaper) {
    const QStringList expected =
        u"10482|3071|MK|14/03/2026|18:42|19:27|Lieferzeit ca.|CHE-123.456.789 MWST|Bar|15/03/2026|"
        u"Müller & Söhne AG|8952 Schlieren|044 730 11 22|Pizza Margherita|Rohschinken San "
        u"Daniele|<klein>|12|33.00|"
        u"54.00|CHF|16.70|190.30|MWSt 8.1 %|14.73|MWSt 2.6 %|10.72|Wir danken für Ihre Bestellung!|"
        u"Pizzeria Müller & Söhne"_s.split(u'|');
    const QSizeF papers[] = {{595, 842}, {420, 595}, {227, 0}, {227, 0}}; // no height: a roll
    for (int number = 1; number <= 4; ++number) {
        print(u"Kueche"_s, templatePath(number));
        const QString pdf = m_server.waitForPdf(u"Kueche"_s, number);
        ASSERT_FALSE(pdf.isEmpty()) << "template " << number;
        const QString text = folded(pdf);
        for (const QString& part : expected)
            EXPECT_TRUE(text.contains(part)) << "template " << number << " lacks " << part.toStdString();
        const test::PdfPages pages = test::pdfPages(pdf);
        const QSizeF paper = papers[number - 1];
        EXPECT_EQ(pages.count, 1) << number;
        EXPECT_NEAR(pages.width, paper.width(), 1.5) << number;
        EXPECT_TRUE(paper.height() == 0 || qAbs(pages.height - paper.height()) < 1.5) << number;
    }
    EXPECT_TRUE(m_dialogs.said.isEmpty());
}

TEST_F(ReportPrintingTest, UnreadyPrinterAsksAndTriesAgain) {
    const std::tuple<QString, const char*, std::function<void()>> cases[] = {
        {u"Pause"_s, "ist angehalten", [this] { m_server.resume(u"Pause"_s); }},
        {u"Ablehnend"_s, "nimmt keine Aufträge an", [this] { m_server.accept(u"Ablehnend"_s); }},
        {u"Fehlend"_s, "ist nicht vorhanden", [this] { m_server.addQueue(u"Fehlend"_s); }},
    };

    m_server.addQueue(u"Pause"_s);
    m_server.pause(u"Pause"_s);
    m_server.addQueue(u"Ablehnend"_s);
    m_server.reject(u"Ablehnend"_s);
    for (const auto& [name, says, mend] : cases) {
        m_dialogs.said.clear();
        m_dialogs.answer(platform::kAnswerRetry);
        m_dialogs.answer(platform::kAnswerRetry, mend);
        print(name);
        ASSERT_EQ(m_dialogs.said.size(), 2) << name.toStdString();
        const auto said = m_dialogs.last();
        EXPECT_TRUE(said.text.contains(u"Der Drucker \"%1\" %2."_s.arg(name, QString::fromUtf8(says))))
            << said.text.toStdString();
        EXPECT_TRUE(said.text.contains(u"So steht es um den Auftrag."_s));
        EXPECT_EQ(said.style, platform::kRetryCancel + platform::kStop);
        EXPECT_EQ(said.title, u"Auftragsschein"_s);
        EXPECT_FALSE(m_server.waitForPdf(name).isEmpty()) << name.toStdString();
    }
    EXPECT_EQ(m_server.finishedJobs(u"Haupt"_s), 0) << "the default printer stepped in";
}

TEST_F(ReportPrintingTest, CancelPrintsNowhereAndARefusedJobIsNoticed) {
    m_server.denyUser(u"Kueche"_s);
    for (const auto& [name, told] : {std::pair{u"Gibtsnicht"_s, u"ist nicht vorhanden"_s},
                                     {u""_s, u"kein Drucker"_s},
                                     {u"Kueche"_s, u"hat den Druck nicht angenommen"_s}}) {
        m_dialogs.said.clear();
        m_dialogs.answer(platform::kAnswerCancel);
        EXPECT_EQ(print(name, templatePath(1), 3), platform::ReportEnd::GivenUp);
        EXPECT_EQ(m_dialogs.said.size(), 1) << "no copy is tried any more: " << name.toStdString();
        EXPECT_TRUE(m_dialogs.last().text.contains(told)) << m_dialogs.last().text.toStdString();
    }
    EXPECT_EQ(m_server.finishedJobs(u"Haupt"_s), 0);
}

TEST_F(ReportPrintingTest, BrokenReportOrDataIsToldAndReturns) {
    const QString broken = m_folder.filePath(u"rep_broken.rpt"_s);
    QFile file(broken);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<html>{{#ZusatzInfo}}");
    file.close();
    EXPECT_EQ(print(u"Kueche"_s, broken, 3), platform::ReportEnd::Unusable);
    print(u"Kueche"_s, m_folder.path() + u"\\Reports\\rep_fehlt.rpt"_s);
    m_dataFile = m_folder.filePath(u"fehlt.mdb"_s);
    print(u"Kueche"_s);
    ASSERT_EQ(m_dialogs.said.size(), 3);
    EXPECT_TRUE(m_dialogs.said[0].text.contains(u"\"rep_broken.rpt\" ist nicht verwendbar"_s));
    EXPECT_TRUE(m_dialogs.said[1].text.contains(u"\"rep_fehlt.rpt\" wurde nicht gefunden"_s));
    for (const auto& said : m_dialogs.said)
        EXPECT_EQ(said.style, platform::kOk + platform::kStop);
    EXPECT_EQ(m_server.finishedJobs(u"Kueche"_s), 0);
}

TEST_F(ReportPrintingTest, ThePrintersAreTheSystemsOfTheMoment) {
    platform::CupsPrinters printers;
    QStringList names;
    for (const platform::Printer& printer : printers.all())
        names << printer.DeviceName;
    EXPECT_EQ(names, (QStringList{u"Haupt"_s, u"Kueche"_s}));
    EXPECT_EQ(printers.defaultPrinter().DeviceName, u"Haupt"_s);
    EXPECT_TRUE(printers.defaultPrinter().Port.startsWith(u"file:"_s));
    print(u"Haupt"_s);
    m_server.setDefault(u"Kueche"_s);
    EXPECT_EQ(printers.defaultPrinter().DeviceName, u"Kueche"_s) << "also after a report was printed";
}

TEST(ReportLayoutTest, RollIsAsLongAsItsText) {
    const QTemporaryDir folder;
    for (int number : {3, 4}) {
        const double once = test::pdfPages(saved(test::longSlipSample(12), number, folder)).height;
        const test::PdfPages twice = test::pdfPages(saved(test::longSlipSample(24), number, folder));
        const test::PdfPages thrice = test::pdfPages(saved(test::longSlipSample(36), number, folder));
        EXPECT_EQ(thrice.count, 1);
        EXPECT_GT(twice.height, once + 12 * 9);
        EXPECT_NEAR(thrice.height - twice.height, twice.height - once, 4) << "paper beyond the text";
        EXPECT_TRUE(folded(folder.filePath(u"slip.pdf"_s)).contains(u"Wir danken für Ihre Bestellung!"_s));
    }
}

TEST(ReportLayoutTest, LongOrderFillsPagesWithHeadingsAndNumbers) {
    const QTemporaryDir folder;
    for (int number : {1, 2}) {
        const QString path = saved(test::longSlipSample(100), number, folder);
        const QString text = test::pdfText(path);
        const int pages = test::pdfPages(path).count;
        EXPECT_GT(pages, 1);
        EXPECT_EQ(text.count(u"Bezeichnung"_s),
                  pages - (text.split(u'\f').at(pages - 1).contains(u"Menge"_s) ? 0 : 1));
        for (int page = 1; page <= pages; ++page)
            EXPECT_TRUE(text.contains(u"Seite %1 von %2"_s.arg(page).arg(pages)));
        EXPECT_EQ(text.count(u"Tiramisù"_s), 8 + 1) << "eight lines and the advertising";
    }
}

TEST(ReportLayoutTest, OddLinesKeepTheirPlace) {
    const QTemporaryDir folder;
    const ReportData sample = test::slipSample();
    const auto textOf = [&](int number, std::vector<ReportData::Row> lines) {
        ReportData data = sample;
        data.tables[u"BestellReport"_s] = std::move(lines);
        return folded(saved(data, number, folder));
    };
    const auto& rows = sample.tables.at(u"BestellReport"_s);
    ReportData::Row longWord = rows[0];
    for (auto& [column, text] : longWord)
        text = column == u"Bezeichnung"_s ? QString(70, u'W') : text;
    for (int number = 1; number <= 4; ++number) {
        const QString wide = textOf(number, {longWord});
        EXPECT_TRUE(wide.contains(u"33.00"_s)) << "a long word pushes no amount off: " << number;
        EXPECT_EQ(wide.count(u'W'), 70 + textOf(number, {rows[0]}).count(u'W')) << number;
        const QString free = textOf(number, {rows[1], rows[5], rows[10]});
        EXPECT_TRUE(free.contains(u"Knoblauch"_s) && free.contains(u"Gutschein Stammkunde"_s)) << number;
        EXPECT_FALSE(free.contains(u"0.00"_s)) << "neither a line without a price nor a gap has an amount";
        EXPECT_TRUE(textOf(number, {}).contains(u"10482"_s)) << "without lines there is the head: " << number;
    }
}
