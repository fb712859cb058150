#include "orders/modAuftragswesenBestellschein.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "common/Like.h"
#include "common/modFunctions.h"
#include "platform/report/PrintTable.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include <algorithm>
#include <array>
#include <optional>

using common::Value;
using orders::Col;
using orders::WorkingOrder;
using platform::ReportJob;
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

void writeHead(const WorkingOrder& order, const QString& werbetext) {
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
    head->Fields(u"Werbung") = werbetext;
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

void writeSlip(const WorkingOrder& order, const QString& werbetext) {
    store::transact(ConnPrint, [&] {
        writeHead(order, werbetext);
        writeVat(writeLines(order));
    });
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

/// The template of the slip before, from 0.
int lastVorlage = 0;

QString slipFile() {
    if (SysVorlageBestellung >= 0 && SysVorlageBestellung <= 3)
        lastVorlage = SysVorlageBestellung;
    return QStringLiteral("rep_report%1.rpt").arg(lastVorlage + 1);
}

ReportJob slipJob(const platform::Printer& printer, int destination) {
    ReportJob job = platform::installedReport(slipFile(), QStringLiteral("Auftragsschein"));
    job.PrinterName = printer.DeviceName;
    job.PrinterDriver = printer.DriverName;
    job.PrinterPort = printer.Port;
    job.destination = destination;
    return job;
}

/// The first whose name fits the entry's, which is a pattern.
std::optional<platform::Printer> printerFor(const PrinterEntry& entry, platform::Printers& printers) {
    for (const platform::Printer& printer : printers.all())
        if (common::like(printer.DeviceName, entry.name))
            return printer;
    return std::nullopt;
}

QString missingPrinter(const QString& name) {
    return QStringLiteral("Der Drucker \"%1\" der System Einstellungen ist nicht vorhanden.").arg(name);
}

// The invented order

struct SampleLine {
    QString code, name;
    double count, price, rate;
};

void fillSampleHead(WorkingOrder& order, const QString& vatNummer) {
    const QString today = common::formatDate(common::clock::now(), u"DD/MM/YYYY");
    order.ShowKundenAdresse(
        QStringLiteral(u"Muster Anna\r\nSeestrasse 1\r\n8000 Zürich\r\nTel: 044 000 00 00"));
    const std::pair<orders::DetailCell, QString> head[] = {
        {Detail::AuftragsNr, QString::number(SysInitTrxNr)},
        {Detail::KundenNr, QStringLiteral("1")},
        {Detail::Kurier, QStringLiteral("AB")},
        {Detail::Datum, today},
        {Detail::Bestellzeit, QStringLiteral("18:30")},
        {Detail::Lieferzeit, QStringLiteral("19:15")},
        {Detail::MWStNr, vatNummer},
        {Detail::Konditionen, QStringLiteral("Bar")},
        {Detail::Lieferung, today}};
    for (const auto& [cell, text] : head)
        order.setDetail(cell, text);
}

void fillSampleLines(WorkingOrder& order) {
    const SampleLine lines[] = {
        {QStringLiteral("12"), QStringLiteral("Pizza Margherita"), 2, 33, SysMWStSatz3},
        {{}, QStringLiteral("Knoblauch"), 1, 0, SysMWStSatz3},
        {QStringLiteral("S3"), QStringLiteral(u"Grüner Salat"), 1, 8.5, SysMWStSatz3},
        {QStringLiteral("W1"), QStringLiteral("Merlot 5 dl"), 1, 19, SysMWStSatz1}};
    int row = 0;
    for (const SampleLine& line : lines) {
        const std::pair<int, Value> cells[] = {
            {Col::Kurzzeichen, line.code}, {Col::Anzahl, line.count}, {Col::Einheit, QStringLiteral("Stk.")},
            {Col::Bezeichnung, line.name}, {Col::Ccy, SysCurrency},   {Col::Preis, line.price},
            {Col::MWSt, line.rate}};
        for (const auto& [col, value] : cells)
            order.BestellungGrid.setCell(row, col, value);
        order.BestellungGrid_Change(row++, Col::Preis);
    }
}

bool hasPrintedOrder() {
    const store::OpenRecordset rows(RsPrint, QStringLiteral("SELECT * FROM ZusatzInfo"), ConnPrint);
    return !rows->Eof();
}

/// Left behind, the rows would be shown as a printed order.
void emptySlip() {
    store::transact(ConnPrint, [&] {
        ConnPrint.Execute(QStringLiteral("DELETE * FROM BestellReport"));
        ConnPrint.Execute(QStringLiteral("DELETE * FROM ZusatzInfo"));
    });
}

} // namespace

void PrintBestellung(int Ziel, const WorkingOrder& order, platform::Reports& reports,
                     platform::Printers& printers, const QString& note) {
    writeSlip(order, SysWerbetext);
    platform::Printer printer = printers.defaultPrinter();
    QStringList givenUp;
    for (const PrinterEntry& entry : entriesInUse()) {
        const auto found = printerFor(entry, printers);
        // One that is not found leaves the printer as it was, also that of the entry before.
        printer = found.value_or(printer);
        if (givenUp.contains(printer.DeviceName))
            continue;
        ReportJob job = slipJob(printer, Ziel == 1 ? ReportJob::kToWindow : ReportJob::kToPrinter);
        job.copies = entry.copies;
        job.note = found || entry.name.isEmpty()
                       ? note
                       : (missingPrinter(entry.name) + QLatin1Char(' ') + note).trimmed();
        const platform::ReportEnd end = reports.run(job);
        if (end == platform::ReportEnd::Unusable)
            return;
        if (end == platform::ReportEnd::GivenUp)
            givenUp << printer.DeviceName;
    }
}

void PreviewVorlage(platform::Reports& reports, platform::Printers& printers, const QString& werbetext,
                    const QString& vatNummer) {
    const bool sample = !hasPrintedOrder();
    if (sample) {
        WorkingOrder order;
        fillSampleHead(order, vatNummer);
        fillSampleLines(order);
        writeSlip(order, werbetext);
    }
    reports.run(slipJob(printers.defaultPrinter(), ReportJob::kToWindow));
    if (sample)
        emptySlip();
}

} // namespace modAuftragswesenBestellschein
