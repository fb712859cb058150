#include "orders/modAuftragswesenBestellschein.h"
#include "common/Convert.h"
#include "common/Like.h"
#include "common/modFunctions.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include <algorithm>
#include <array>

using common::Value;
using orders::Col;
using orders::WorkingOrder;
using store::WriteRecordset;
namespace Detail = orders::Detail;

namespace modAuftragswesenBestellschein {
namespace {

QString amount(double number) {
    return common::formatNumber(number, u"0.00");
}

double discountOf(const WorkingOrder& order) {
    double sum = 0;
    for (int row = 0; row < order.BestellungGrid.rows(); ++row)
        sum += order.BestellungGrid.number(row, Col::Rabatt);
    return sum;
}

void writeHead(const WorkingOrder& order) {
    WriteRecordset head(RsPrint, QStringLiteral("ZusatzInfo"), ConnPrint);
    if (head->Eof())
        head->AddNew();
    const QString datum = order.detail(Detail::Datum);
    head->Fields(u"Adresse") = order.KundenAdresse();
    head->Fields(u"Auftragsnummer") = order.detail(Detail::AuftragsNr);
    head->Fields(u"Kundennummer") = order.detail(Detail::KundenNr);
    head->Fields(u"Kurier") = order.detail(Detail::Kurier);
    head->Fields(u"Datum") = datum.isEmpty() ? QString() : modFunctions::FormatDateDDMMYYYY(datum);
    head->Fields(u"Bestellzeit") = order.detail(Detail::Bestellzeit);
    head->Fields(u"Lieferzeit") = order.detail(Detail::Lieferzeit);
    head->Fields(u"MWSt-Nr") = order.detail(Detail::MWStNr);
    head->Fields(u"Konditionen") = order.detail(Detail::Konditionen);
    head->Fields(u"Lieferung") = order.detail(Detail::Lieferung);
    head->Fields(u"TotalRabatt") = amount(discountOf(order));
    head->Fields(u"TotalPreis") = amount(order.total(orders::TotalRow::Total));
    head->Fields(u"MWST-Satz") = QStringLiteral("-");
    head->Fields(u"Werbung") = SysWerbetext;
    head->Update();
}

/// The VAT lines of the slip, which has a reckoning of its own: taken from the printed texts, discount
/// included.
struct SlipVat {
    double betrag1 = 0, betrag2 = 0;
};

void writeLine(const WorkingOrder& order, int row, SlipVat& vat) {
    const auto number = [&](int col) { return order.BestellungGrid.number(row, col); };
    const double anzahl = number(Col::Anzahl);
    const double preis = number(Col::Preis);
    // A line without charge prints no amounts.
    const auto priced = [&](double value) { return preis == 0 ? QString() : amount(value); };
    const QString total = priced(preis);
    const QString netto = priced(number(Col::PreisOhneMWSt));
    const QString satz = priced(number(Col::MWSt));
    RsPrint.AddNew();
    RsPrint.Fields(u"Kurzzeichen") = order.BestellungGrid.text(row, Col::Kurzzeichen);
    RsPrint.Fields(u"Einheit") = order.BestellungGrid.text(row, Col::Einheit);
    RsPrint.Fields(u"Bezeichnung") = order.BestellungGrid.text(row, Col::Bezeichnung);
    RsPrint.Fields(u"CCy") = order.BestellungGrid.text(row, Col::Ccy);
    RsPrint.Fields(u"Anzahl") = anzahl == 0 ? QString() : amount(anzahl);
    RsPrint.Fields(u"Preis/Stk") = anzahl == 0 ? QString() : priced(preis / anzahl);
    RsPrint.Fields(u"Preis/Total") = total;
    RsPrint.Fields(u"Rabatt") = priced(number(Col::Rabatt));
    RsPrint.Fields(u"PreisOhneMWSt/Total") = netto;
    RsPrint.Fields(u"MWSt") = satz;
    RsPrint.Update();

    const double charged = Value(total).toDouble() - Value(netto).toDouble();
    if (Value(satz).toDouble() == SysMWStSatz1)
        vat.betrag1 += charged;
    if (Value(satz).toDouble() == SysMWStSatz3)
        vat.betrag2 += charged;
}

SlipVat writeLines(const WorkingOrder& order) {
    SlipVat vat;
    ConnPrint.Execute(QStringLiteral("DELETE * FROM BestellReport"));
    const WriteRecordset lines(RsPrint, QStringLiteral("SELECT * FROM BestellReport"), ConnPrint);
    const int last = order.LastFilledRow();
    for (int row = 0; row <= last; ++row)
        writeLine(order, row, vat);
    return vat;
}

void writeVat(const SlipVat& vat) {
    ConnPrint.Execute(QStringLiteral("UPDATE ZusatzInfo SET MWStSatz1 = '") + amount(SysMWStSatz1) +
                      QStringLiteral("',MWStSatz2 = '") + amount(SysMWStSatz3) +
                      QStringLiteral("', MWStBetrag1 = '") + amount(vat.betrag1) +
                      QStringLiteral("', MWStBetrag2 = '") + amount(vat.betrag2) + QStringLiteral("' ;"));
}

struct PrinterEntry {
    QString name;
    int copies;
};

/// The switches are counted and not chosen: with only the second one on, the first entry prints. Meant so.
std::vector<PrinterEntry> entriesInUse() {
    const std::array<PrinterEntry, 2> entries = {
        {{SysPrinter1Name, SysPrinter1Copies}, {SysPrinter2Name, SysPrinter2Copies}}};
    const int count = std::clamp(SysPrinter1Status + SysPrinter2Status, 0, 2);
    return {entries.begin(), entries.begin() + count};
}

void runReport(int Ziel, platform::ReportControl& report, const platform::Printer& printer) {
    if (SysVorlageBestellung >= 0 && SysVorlageBestellung <= 3)
        report.ReportFileName = store::appPath() + QStringLiteral("\\Reports\\rep_report") +
                                QString::number(SysVorlageBestellung + 1) + QStringLiteral(".rpt");
    report.DataFile = PfadPrintDB;
    report.WindowTitle = QStringLiteral("Auftragsschein");
    report.windowState = platform::ReportControl::kNormal;
    report.orientation = platform::ReportControl::kAsDesigned;
    report.PrinterDriver = printer.DriverName;
    report.PrinterName = printer.DeviceName;
    report.PrinterPort = printer.Port;
    report.destination = Ziel == 1 ? platform::ReportControl::kToWindow : platform::ReportControl::kToPrinter;
    report.PrintReport();
}

void runCopies(int Ziel, platform::ReportControl& report, platform::Printers& printers) {
    for (const PrinterEntry& entry : entriesInUse()) {
        const QList<platform::Printer> all = printers.all();
        const auto match = std::find_if(all.begin(), all.end(), [&](const platform::Printer& printer) {
            return common::like(printer.DeviceName, entry.name);
        });
        if (match != all.end())
            printers.setDefaultPrinter(*match);
        for (int copy = 0; copy < entry.copies; ++copy)
            runReport(Ziel, report, printers.defaultPrinter());
    }
}

} // namespace

void PrintBestellung(int Ziel, const WorkingOrder& order, platform::ReportControl& report,
                     platform::Printers& printers) {
    writeHead(order);
    writeVat(writeLines(order));
    const platform::Printer remembered = printers.defaultPrinter();
    try {
        runCopies(Ziel, report, printers);
    } catch (...) {
        printers.setDefaultPrinter(remembered);
        throw;
    }
    printers.setDefaultPrinter(remembered);
}

void PreviewVorlage(platform::ReportControl& report, platform::Printers& printers) {
    runReport(1, report, printers.defaultPrinter());
}

} // namespace modAuftragswesenBestellschein
