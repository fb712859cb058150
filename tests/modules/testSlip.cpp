#include "orders/modAuftragswesenAuftragserfassung.h"
#include "orders/modAuftragswesenBestellschein.h"
#include "store/SystemSettings.h"
#include "support/TestFirm.h"
#include "support/TestFirmServices.h"
#include <gtest/gtest.h>

using orders::Col;
using test::TestFirm;
namespace Detail = orders::Detail;

namespace {

struct Slip : testing::Test {
    Slip() {
        for (const char16_t* name : {u"Büro", u"Kasse", u"Küche"})
            printers.printers.append(
                {QString::fromUtf16(name), QStringLiteral("driver"), QStringLiteral("port")});
        printers.current = printers.printers.first();
        order.SetUp();
        order.SucheTelefonNummer(QStringLiteral("0791234567"));
    }

    void print(int target = 0) {
        modAuftragswesenBestellschein::PrintBestellung(target, order, reports, printers);
    }

    static QString info(const QString& column) {
        return TestFirm::value(QStringLiteral("SELECT [%1] FROM ZusatzInfo").arg(column), ConnPrint);
    }

    /// The rows of the slip, the columns joined by "|".
    static QStringList rows() {
        QStringList all;
        store::OpenRecordset report(RsPrint, QStringLiteral("SELECT * FROM BestellReport"), ConnPrint);
        for (; !report->Eof(); report->MoveNext()) {
            QStringList cells;
            for (const store::Column& column : report->Columns())
                cells << report->Fields(column.name).text();
            all << cells.join(QLatin1Char('|'));
        }
        return all;
    }

    QStringList printed() const {
        QStringList list;
        for (const auto& run : reports.runs)
            list << QStringList(run.copies, run.PrinterName);
        return list;
    }

    TestFirm firm;
    orders::WorkingOrder order;
    test::TestPrinters printers;
    test::TestReports reports;
};

TEST_F(Slip, headAndLinesStandInThePrintTables) {
    order.PickProdukt(TestFirm::kWein, QStringLiteral("W"), 2);
    order.BestellungGrid.endEdit(0, Col::Rabatt, QStringLiteral("2"));
    order.PickProdukt(TestFirm::kMargherita, QStringLiteral("1"), 1);
    order.PickExtra(TestFirm::kKnoblauch, QStringLiteral("Knoblauch"), 1);
    print();
    print();

    struct Case {
        const char16_t* column;
        const char16_t* value;
    };

    for (const Case& c :
         {Case{u"Auftragsnummer", u"1001"}, Case{u"Kundennummer", u"1"}, Case{u"Kurier", u"AB"},
          Case{u"Datum", u"15/05/2026"}, Case{u"Bestellzeit", u"18:00"}, Case{u"Lieferzeit", u"18:30"},
          Case{u"MWSt-Nr", u"CHE-1"}, Case{u"Konditionen", u"Bar"}, Case{u"Lieferung", u"15/05/2026"},
          Case{u"TotalRabatt", u"2.00"}, Case{u"TotalPreis", u"36.00"}, Case{u"MWST-Satz", u"-"},
          Case{u"Werbung", u"Danke"}, Case{u"MWStSatz1", u"8.10"}, Case{u"MWStSatz2", u"2.60"},
          // 24.00 - 20.35: the discount counts as VAT on the slip, the firm's practice.
          Case{u"MWStBetrag1", u"3.65"}, Case{u"MWStBetrag2", u"0.35"}})
        EXPECT_EQ(info(QString::fromUtf16(c.column)), QString::fromUtf16(c.value));
    EXPECT_TRUE(info(QStringLiteral("Adresse")).contains(QStringLiteral("Klingel defekt")));
    EXPECT_EQ(TestFirm::value(QStringLiteral("SELECT Count(*) AS N FROM ZusatzInfo"), ConnPrint), u"1");
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("W|Stk.|Wein|CHF|2.00|12.00|24.00|2.00|20.35|8.10"),
                                   QStringLiteral("1|Stk.|Pizza|CHF|1.00|14.00|14.00|0.00|13.65|2.60"),
                                   QStringLiteral("|Stk.|Knoblauch|CHF|1.00|||||")}));
}

TEST_F(Slip, gapsAndEmptyOrders) {
    print();
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_EQ(reports.runs.size(), 1);

    order.PickProdukt(TestFirm::kWein, QStringLiteral("W"), 1);
    order.BestellungGrid.setCell(2, Col::Bezeichnung, QStringLiteral("Notiz"));
    order.BestellungGrid.setCell(2, Col::EinheitAnzahl, 0);
    // Only damaged data have a price without a quantity; the slip comes out all the same.
    order.BestellungGrid.setCell(3, Col::Bezeichnung, QStringLiteral("Rest"));
    order.BestellungGrid.setCell(3, Col::Preis, 5);
    print();
    EXPECT_EQ(rows(), (QStringList{QStringLiteral("W|Stk.|Wein|CHF|1.00|12.00|12.00|0.00|11.10|8.10"),
                                   QStringLiteral("|||||||||"), QStringLiteral("||Notiz|||||||"),
                                   QStringLiteral("||Rest||||5.00|0.00|0.00|0.00")}));
}

TEST_F(Slip, copiesAndPrinters) {
    struct Case {
        int status1, status2, copies1, copies2;
        const char16_t* name1;
        const char16_t* name2;
        const char16_t* printed;
    };

    for (const Case& c :
         {Case{1, 0, 1, 1, u"Kasse", u"Küche", u"Kasse"},
          Case{1, 1, 2, 1, u"Kasse", u"Küche", u"Kasse,Kasse,Küche"},
          // The switches are counted: the second one alone prints on the first printer.
          Case{0, 1, 1, 3, u"Kasse", u"Küche", u"Kasse"}, Case{0, 0, 1, 1, u"Kasse", u"Küche", u""},
          Case{1, 1, 0, 1, u"Kasse", u"Küche", u"Küche"},
          // A name is a pattern; one that fits nothing leaves the printer as it is.
          Case{1, 0, 1, 1, u"K*", u"", u"Kasse"}, Case{1, 0, 1, 1, u"Lager", u"", u"Büro"},
          Case{1, 1, 1, 1, u"Kasse", u"", u"Kasse,Kasse"}}) {
        SysPrinter1Status = qint16(c.status1);
        SysPrinter2Status = qint16(c.status2);
        SysPrinter1Copies = c.copies1;
        SysPrinter2Copies = c.copies2;
        SysPrinter1Name = QString::fromUtf16(c.name1);
        SysPrinter2Name = QString::fromUtf16(c.name2);
        reports.runs.clear();
        print();
        EXPECT_EQ(printed().join(QLatin1Char(',')), QString::fromUtf16(c.printed));
    }
}

TEST_F(Slip, aPrinterThatIsGivenUpGetsNoFurtherCopy) {
    SysPrinter1Status = SysPrinter2Status = 1;
    reports.onRun = [](const platform::ReportJob& job) {
        return job.PrinterName == QStringLiteral("Kasse") ? platform::ReportEnd::GivenUp
                                                          : platform::ReportEnd::Done;
    };
    for (const auto& [second, ran] : {std::pair{u"Küche", 2}, {u"Kasse", 1}}) {
        SysPrinter2Name = QString::fromUtf16(second);
        reports.runs.clear();
        print();
        EXPECT_EQ(reports.runs.size(), ran);
    }
    reports.onRun = [](const platform::ReportJob&) { return platform::ReportEnd::Unusable; };
    reports.runs.clear();
    print();
    EXPECT_EQ(reports.runs.size(), 1) << "the template fails on every printer";
}

TEST_F(Slip, theNoteTellsWhichPrinterIsMissing) {
    SysPrinter1Name = QStringLiteral("Lager");
    modAuftragswesenBestellschein::PrintBestellung(0, order, reports, printers,
                                                   QStringLiteral("Gespeichert."));
    EXPECT_EQ(reports.runs.last().note,
              u"Der Drucker \"Lager\" der System Einstellungen ist nicht vorhanden. Gespeichert.");
    SysPrinter1Name = QStringLiteral("Kasse");
    modAuftragswesenBestellschein::PrintBestellung(0, order, reports, printers,
                                                   QStringLiteral("Gespeichert."));
    EXPECT_EQ(reports.runs.last().note, u"Gespeichert.");
}

TEST_F(Slip, templateAndDestination) {
    for (int vorlage = 0; vorlage < 4; ++vorlage) {
        SysVorlageBestellung = qint16(vorlage);
        print(vorlage == 0 ? 1 : 0);
        EXPECT_EQ(reports.runs.last().ReportFileName,
                  store::appPath() + QStringLiteral("\\Reports\\rep_report%1.rpt").arg(vorlage + 1));
        EXPECT_EQ(reports.runs.last().destination, vorlage == 0 ? 0 : 1);
        EXPECT_EQ(reports.runs.last().DataFile, PfadPrintDB);
    }
    SysVorlageBestellung = 7;
    print();
    EXPECT_TRUE(reports.runs.last().ReportFileName.endsWith(QStringLiteral("rep_report4.rpt")));
}

TEST_F(Slip, aLoadedOrderPrintsAsItStands) {
    order.PickProdukt(TestFirm::kWein, QStringLiteral("W"), 1);
    test::TestNavigation navigation;
    modAuftragswesenAuftragserfassung::LoadBestellung(order, 4711);
    print(1);
    EXPECT_EQ(info(QStringLiteral("Datum")), u"");
    EXPECT_TRUE(rows().isEmpty());
}

} // namespace
