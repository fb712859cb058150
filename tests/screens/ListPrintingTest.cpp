// Lists on paper and as spreadsheets.
#include "ScreenTest.h"
#include "common/RunTimeError.h"
#include "masterdata/frmProdukte.h"
#include "masterdata/frmProdukteExtras.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/QtReports.h"
#include "platform/report/SheetExport.h"
#include "reporting/frmAuswertungenBuchungsjournal.h"
#include "store/FirmName.h"
#include "store/SystemSettings.h"
#include "support/CupsServer.h"
#include "support/FullDisk.h"
#include "support/Unzipped.h"
#include <QAction>
#include <QDir>
#include <QMenu>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using test::TestFirm;

namespace {

/// The installed report file over the firm's print database.
QString pdfOf(const QString& reportFile, const QTemporaryDir& folder) {
    const platform::ReportTemplate report(QStringLiteral(TAVOLINO_SOURCE_DIR) + u"/reports/"_s + reportFile);
    const QString path = folder.filePath(u"list.pdf"_s);
    platform::ReportData data = platform::readPrintTables(PfadPrintDB, report.sections());
    data.firm = store::firmName();
    platform::saveAsPdf(platform::ReportDocument(report.fill(data)), path);
    return path;
}

class ProductListTest : public test::MasterDataTest<frmProdukte> {
  protected:
    QTemporaryDir folder;
};

using JournalListTest = test::ScreenTest<frmAuswertungenBuchungsjournal>;
using ExtrasListTest = test::MasterDataTest<frmProdukteExtras>;

} // namespace

TEST_F(ProductListTest, PrintsTheRowsOnShowThroughThePrintTable) {
    QFile settings(firm.folder() + u"/tavolino.ini"_s);
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.write("[Firma]\nName=Pizzeria Müller & Söhne, Zürich\n");
    settings.close();
    printers.current = {u"Kasse"_s, u"PS"_s, u"socket"_s};
    dialogs.chosenPrinter = platform::PrinterChoice{{u"Büro"_s, {}, {}}, platform::ReportJob::kLandscape};
    ConnMain.Execute(
        u"UPDATE tbl_Verwaltung_Produkte SET txt_Produkt = 'Zuppa ''Nonna''' WHERE lng_ID = 2"_s);
    ConnMain.Execute(
        u"UPDATE tbl_Verwaltung_Produkte_Preise SET dbl_Preis = 1234.5 WHERE lng_ProduktID = 2"_s);
    screen->FormatGrid();
    ASSERT_GT(grid()->rowCount(), 0);
    click(u"DruckerCommand");
    ASSERT_EQ(dialogs.primed.size(), 1);
    EXPECT_EQ(dialogs.primed.first().printer.DeviceName, u"Kasse"_s);
    EXPECT_EQ(TestFirm::value(u"SELECT Count(*) AS N FROM ArtikelStamm"_s, ConnPrint).toInt(),
              grid()->rowCount());
    ASSERT_EQ(reports.runs.size(), 1);
    const platform::ReportJob& run = reports.runs.first();
    EXPECT_TRUE(run.ReportFileName.endsWith(u"\\Reports\\rep_Produkte.rpt"_s));
    EXPECT_EQ(run.PrinterName, u"Büro"_s);
    EXPECT_EQ((QList<int>{run.destination, run.windowState, run.orientation}),
              (QList<int>{platform::ReportJob::kToWindow, platform::ReportJob::kMaximized,
                          platform::ReportJob::kLandscape}));

    const QString text = test::pdfText(pdfOf(u"rep_Produkte.rpt"_s, folder)).simplified();
    for (int row = 0; row < grid()->rowCount(); ++row)
        EXPECT_TRUE(text.contains(grid()->text(row, 3))) << grid()->text(row, 3).toStdString();
    for (const char16_t* part :
         {u"1'234.50", u"Pizzeria Müller & Söhne, Zürich", u"15/05/2026", u"Seite 1 von 1"})
        EXPECT_TRUE(text.contains(QString::fromUtf16(part))) << text.toStdString();

    dialogs.cancelPrinter = true;
    click(u"DruckerCommand");
    EXPECT_EQ(reports.runs.size(), 1);

    // Given up, nothing is printed.
    dialogs.giveUp = true;
    choose(u"combo_Sort_Kategorie", u"Getränke"_s);
    click(u"DruckerCommand");
    EXPECT_EQ(dialogs.primed.size(), 2);
    EXPECT_EQ(TestFirm::value(u"SELECT Count(*) AS N FROM ArtikelStamm"_s, ConnPrint), u"0"_s);
}

TEST_F(ProductListTest, ALongListBearsItsHeadingsOnEveryPage) {
    // So long that it is laid out in pieces; with a name that runs over several pages.
    constexpr int kRows = 900;
    store::Transaction together(ConnPrint);
    for (int i = 0; i < kRows; ++i)
        ConnPrint.Execute(
            u"INSERT INTO ArtikelStamm(Kurzzeichen, Produkt, Preis) VALUES('k%1', 'Nr. %1 %2', %1)"_s.arg(
                QString::number(i), i == 260 ? QString(30000, u'x') : QString()));
    together.commit();
    const QString text = test::pdfText(pdfOf(u"rep_Produkte.rpt"_s, folder));
    const auto pages = text.count(u'\f');
    EXPECT_GT(pages, 1);
    EXPECT_EQ(text.count(u"Stückelung"_s), pages);
    EXPECT_TRUE(text.contains(u"Seite %1 von %1"_s.arg(pages)));
    EXPECT_EQ(text.count(u"Nr. "_s), kRows);
    EXPECT_GE(text.count(u'x'), 30000);
    EXPECT_EQ(text.count(u"Produktliste"_s), pages + 1) << "the title on the first page and all heads";
}

TEST_F(ProductListTest, ThePreviewSavesAPdf) {
    QDir().mkpath(firm.folder() + u"/Reports"_s);
    QFile::copy(QStringLiteral(TAVOLINO_SOURCE_DIR) + u"/reports/rep_Kundenliste.rpt"_s,
                firm.folder() + u"/Reports/rep_Kundenliste.rpt"_s);
    ConnPrint.Execute(u"INSERT INTO KundenStamm(KundenNr, Namen, Ort, Telefon) VALUES(7, 'Meier', 'Zürich', "
                      u"'0791234567')"_s);
    platform::QtReports(dialogs).run(
        {.ReportFileName = store::appPath() + u"\\Reports\\rep_Kundenliste.rpt"_s,
         .DataFile = PfadPrintDB,
         .WindowTitle = u"Kundenliste"_s,
         .firm = {},
         .destination = platform::ReportJob::kToWindow});
    platform::PreviewWindow* preview = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* found = qobject_cast<platform::PreviewWindow*>(window))
            preview = found;
    ASSERT_TRUE(preview);
    auto* save = preview->findChild<QAction*>(u"cmdSavePdf"_s);
    save->trigger(); // cancelled
    dialogs.savePath = folder.filePath(u"no/such/folder.pdf"_s);
    save->trigger();
    EXPECT_TRUE(dialogs.last().text.contains(u"lässt sich nicht schreiben"_s));
    dialogs.savePath = folder.filePath(u"Kunden.pdf"_s);
    save->trigger();
    save->trigger(); // replaced
    {
        const test::FullDisk full(1000);
        save->trigger();
    }
    EXPECT_EQ(dialogs.said.size(), 2) << "a full disk is told";
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"Kunden.pdf"_s});
    EXPECT_EQ(dialogs.suggested.last(), u"Kundenliste.pdf"_s);
    const QString text = test::pdfText(dialogs.savePath);
    EXPECT_TRUE(text.contains(u"Meier"_s));
    EXPECT_TRUE(text.contains(u"0791234567"_s)) << text.toStdString();
    delete preview;
}

TEST_F(ProductListTest, TheListBecomesASpreadsheet) {
    dialogs.savePath = folder.filePath(u"Produkte.xlsx"_s);
    Q_EMIT grid()->rowContextMenu(0, grid()->mapToGlobal(QPoint(5, 5)));
    auto* menu = grid()->findChild<QMenu*>();
    ASSERT_TRUE(menu);
    menu->actions().first()->trigger();
    menu->close();
    EXPECT_TRUE(said().isEmpty());
    ASSERT_TRUE(QFile::exists(dialogs.savePath));
    const QString strings = test::unzipped(dialogs.savePath, u"xl/sharedStrings.xml"_s);
    const QString sheet = test::unzipped(dialogs.savePath, u"xl/worksheets/sheet1.xml"_s);
    EXPECT_EQ(sheet.count(u"<row "_s), grid()->rowCount() + 1);
    EXPECT_TRUE(strings.contains(u"Kurzzeichen"_s)) << strings.toStdString();
    for (int row = 0; row < grid()->rowCount(); ++row) {
        EXPECT_TRUE(strings.contains(grid()->text(row, 3).toHtmlEscaped()));
        // A price is a number and not a text.
        EXPECT_TRUE(sheet.contains(u"<v>"_s + grid()->text(row, 7) + u"</v>"_s)) << sheet.toStdString();
    }
    EXPECT_TRUE(
        test::unzipped(dialogs.savePath, u"xl/styles.xml"_s).contains(u"&quot;Nein&quot;;&quot;Ja&quot;"_s));
    {
        const test::FullDisk full(1000);
        EXPECT_THROW(platform::saveAsXlsx({platform::sheetOf(*grid(), u"Liste"_s)}, dialogs.savePath),
                     common::RunTimeError);
    }
    EXPECT_EQ(test::unzipped(dialogs.savePath, u"xl/worksheets/sheet1.xml"_s), sheet)
        << "the former one stays";
}

TEST_F(ExtrasListTest, PrintsItsRows) {
    click(u"DruckerCommand");
    EXPECT_TRUE(reports.runs.at(0).ReportFileName.endsWith(u"\\Reports\\rep_ProdukteExtras.rpt"_s));
    const QTemporaryDir folder;
    const QString text = test::pdfText(pdfOf(u"rep_ProdukteExtras.rpt"_s, folder)).simplified();
    for (const char16_t* part : {u"Knoblauch", u"Käse", u"Käsesauce", u"1.50 CHF"})
        EXPECT_TRUE(text.contains(QString::fromUtf16(part))) << text.toStdString();
}

TEST_F(JournalListTest, PrintsItsRowsWithTheirTotal) {
    open();
    ConnMain.Execute(
        u"INSERT INTO tbl_Auftragswesen_Bestellungen_Master(lng_TrxNr, lng_KundenID, lng_KurierID, "
        "lng_BestellDatum, date_BestellDatum, dbl_TotalMitMWSt) VALUES (7, 1, 1, 46157, 46157, "
        "1234.5), (8, -1, -1, 46157, 46157, 0), (9, 2, 2, 46157, 46157, 0.05)"_s);
    click(u"cmdPrint");
    const QTemporaryDir folder;
    const QString text = test::pdfText(pdfOf(u"rep_Buchungsjournal.rpt"_s, folder)).simplified();
    for (const char16_t* part : {u"15/05/2026 - 15/05/2026", u"15/05/2026 7 Meier Anna AB 1'234.50",
                                 u"15/05/2026 8 STORNIERT 0.00", u"Total Umsatz 1'234.55", u"Seite 1 von 1"})
        EXPECT_TRUE(text.contains(QString::fromUtf16(part))) << text.toStdString();
}
