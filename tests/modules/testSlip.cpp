#include "modules/OrderFixture.h"
#include "orders/modAuftragswesenBestellschein.h"
#include "store/SystemSettings.h"

using namespace Qt::StringLiterals;
using orders::Col;
using test::TestFirm;

namespace {

struct Slip : test::OrderTest {
    Slip() {
        for (const char16_t* name : {u"Büro", u"Kasse", u"Küche"})
            printers.printers.append({QString::fromUtf16(name), u"driver"_s, u"port"_s});
        printers.current = printers.printers.first();
        callAnna();
    }

    void print(int target = 0) {
        modAuftragswesenBestellschein::PrintBestellung(target, order, reports, printers);
    }

    static QString info(const QString& columns) {
        return TestFirm::value(u"SELECT "_s + columns + u" FROM ZusatzInfo"_s, ConnPrint);
    }

    static QStringList rows() { return TestFirm::rows(u"SELECT * FROM BestellReport"_s, ConnPrint); }

    QStringList printed() const {
        QStringList list;
        for (const auto& run : reports.runs)
            list << QStringList(run.copies, run.PrinterName);
        return list;
    }

    test::TestPrinters printers;
    test::TestReports reports;
};

TEST_F(Slip, headAndLinesStandInThePrintTables) {
    pickWein(2);
    order.BestellungGrid.endEdit(0, Col::Rabatt, u"2"_s);
    pickPizza();
    order.PickExtra(TestFirm::kKnoblauch, u"Knoblauch"_s, 1);
    print();
    print();

    EXPECT_EQ(info(u"Auftragsnummer, Kundennummer, Kurier, Datum, Bestellzeit, Lieferzeit, [MWSt-Nr], "
                   u"Konditionen, Lieferung, Werbung"_s),
              u"1001|1|AB|15/05/2026|18:00|18:30|CHE-1|Bar|15/05/2026|Danke");
    // 24.00 - 20.35: the discount counts as VAT on the slip, the firm's practice.
    EXPECT_EQ(info(u"TotalRabatt, TotalPreis, [MWST-Satz], MWStSatz1, MWStBetrag1, MWStSatz2, MWStBetrag2"_s),
              u"2.00|36.00|-|8.10|3.65|2.60|0.35");
    EXPECT_TRUE(info(u"Adresse"_s).contains(u"Klingel defekt"_s));
    EXPECT_EQ(TestFirm::value(u"SELECT Count(*) AS N FROM ZusatzInfo"_s, ConnPrint), u"1");
    EXPECT_EQ(rows(), (QStringList{u"W|Stk.|Wein|CHF|2.00|12.00|24.00|2.00|20.35|8.10"_s,
                                   u"1|Stk.|Pizza|CHF|1.00|14.00|14.00|0.00|13.65|2.60"_s,
                                   u"|Stk.|Knoblauch|CHF|1.00|||||"_s}));
}

TEST_F(Slip, gapsAndEmptyOrders) {
    print();
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_EQ(reports.runs.size(), 1);

    pickWein();
    order.BestellungGrid.setCell(2, Col::Bezeichnung, u"Notiz"_s);
    order.BestellungGrid.setCell(2, Col::EinheitAnzahl, 0);
    // Only damaged data have a price without a quantity; the slip comes out all the same.
    order.BestellungGrid.setCell(3, Col::Bezeichnung, u"Rest"_s);
    order.BestellungGrid.setCell(3, Col::Preis, 5);
    print();
    EXPECT_EQ(rows(), (QStringList{u"W|Stk.|Wein|CHF|1.00|12.00|12.00|0.00|11.10|8.10"_s, u"|||||||||"_s,
                                   u"||Notiz|||||||"_s, u"||Rest||||5.00|0.00|0.00|0.00"_s}));
}

TEST_F(Slip, copiesAndPrinters) {
    for (const auto& [status1, status2, copies1, copies2, name1, name2, expected] :
         {std::tuple<int, int, int, int, const char16_t*, const char16_t*, const char16_t*>{
              1, 0, 1, 1, u"Kasse", u"Küche", u"Kasse"},
          {1, 1, 2, 1, u"Kasse", u"Küche", u"Kasse,Kasse,Küche"},
          // The switches are counted: the second one alone prints on the first printer.
          {0, 1, 1, 3, u"Kasse", u"Küche", u"Kasse"},
          {0, 0, 1, 1, u"Kasse", u"Küche", u""},
          {1, 1, 0, 1, u"Kasse", u"Küche", u"Küche"},
          // A name is a pattern; one that fits nothing leaves the printer as it is.
          {1, 0, 1, 1, u"K*", u"", u"Kasse"},
          {1, 0, 1, 1, u"Lager", u"", u"Büro"},
          {1, 1, 1, 1, u"Kasse", u"", u"Kasse,Kasse"}}) {
        SysPrinter1Status = qint16(status1);
        SysPrinter2Status = qint16(status2);
        SysPrinter1Copies = copies1;
        SysPrinter2Copies = copies2;
        SysPrinter1Name = QString::fromUtf16(name1);
        SysPrinter2Name = QString::fromUtf16(name2);
        reports.runs.clear();
        print();
        EXPECT_EQ(printed().join(u','), QString::fromUtf16(expected));
    }
}

TEST_F(Slip, aPrinterThatIsGivenUpGetsNoFurtherCopy) {
    SysPrinter1Status = SysPrinter2Status = 1;
    reports.onRun = [](const platform::ReportJob& job) {
        return job.PrinterName == u"Kasse"_s ? platform::ReportEnd::GivenUp : platform::ReportEnd::Done;
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
    SysPrinter1Name = u"Lager"_s;
    modAuftragswesenBestellschein::PrintBestellung(0, order, reports, printers, u"Gespeichert."_s);
    EXPECT_EQ(reports.runs.last().note,
              u"Der Drucker \"Lager\" der System Einstellungen ist nicht vorhanden. Gespeichert.");
    SysPrinter1Name = u"Kasse"_s;
    modAuftragswesenBestellschein::PrintBestellung(0, order, reports, printers, u"Gespeichert."_s);
    EXPECT_EQ(reports.runs.last().note, u"Gespeichert.");
}

TEST_F(Slip, templateAndDestination) {
    for (int vorlage = 0; vorlage < 4; ++vorlage) {
        SysVorlageBestellung = qint16(vorlage);
        print(vorlage == 0 ? 1 : 0);
        EXPECT_EQ(reports.runs.last().ReportFileName,
                  store::appPath() + u"\\Reports\\rep_report%1.rpt"_s.arg(vorlage + 1));
        EXPECT_EQ(reports.runs.last().destination, vorlage == 0 ? 0 : 1);
        EXPECT_EQ(reports.runs.last().DataFile, PfadPrintDB);
    }
    SysVorlageBestellung = 7;
    print();
    EXPECT_TRUE(reports.runs.last().ReportFileName.endsWith(u"rep_report4.rpt"_s));
}

} // namespace
