#include "shell/modEinstellungenSystem.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include <algorithm>

using namespace Qt::StringLiterals;
using store::WriteRecordset;

namespace modEinstellungenSystem {
namespace {

void put(QStringView column, qint64 value) {
    RsMain.Fields(column) = value;
}

void putPrinters() {
    RsMain.Fields(u"txt_Printer1_Name") = SysPrinter1Name;
    RsMain.Fields(u"txt_Printer2_Name") = SysPrinter2Name;
    put(u"lng_Printer1_Copies", SysPrinter1Copies);
    put(u"lng_Printer2_Copies", SysPrinter2Copies);
    put(u"lng_Printer1_Status", SysPrinter1Status);
    put(u"lng_Printer2_Status", SysPrinter2Status);
}

void putSlip() {
    put(u"lng_VorlageBestellung", SysVorlageBestellung);
    RsMain.Fields(u"txt_Werbetext") = SysWerbetext;
    RsMain.Fields(u"dbl_MWStSatz1") = SysMWStSatz1;
    RsMain.Fields(u"dbl_MWStSatz3") = SysMWStSatz3;
    RsMain.Fields(u"txt_VATNummer") = SysVATNummer;
    put(u"lng_NoVATStatus", SysNoVATStatus);
}

void putOrders() {
    RsMain.Fields(u"lng_FiktiverTag") = SysFiktiverTag;
    put(u"lng_StandardLieferzeit", SysStandardLieferzeit);
    put(u"lng_InitTrxNr", SysInitTrxNr);
    put(u"lng_VorbestellungAutomatischStatus", SysVorbestellungAutomatischStatus);
    put(u"lng_VorbestellungAutomatischZeit", SysVorbestellungAutomatischZeit);
    put(u"lng_VorbestellungBuchungStatus", SysVorbestellungBuchungStatus);
    put(u"lng_VorbestellungBuchungZeit", SysVorbestellungBuchungZeit);
    put(u"lng_EditierungBestellungen", SysEditierungBestellungen);
}

// The invented order

struct SampleLine {
    QString code, name;
    double count, price, rate;
};

QString amount(double number) {
    return common::formatNumber(number, u"0.00");
}

double net(const SampleLine& line) {
    return line.count * line.price / (1 + line.rate / 100);
}

std::vector<SampleLine> sampleLines() {
    return {{u"12"_s, u"Pizza Margherita"_s, 2, 16.5, SysMWStSatz3},
            {{}, u"Knoblauch"_s, 1, 0, SysMWStSatz3},
            {u"S3"_s, u"Grüner Salat"_s, 1, 8.5, SysMWStSatz3},
            {u"W1"_s, u"Merlot 5 dl"_s, 1, 19, SysMWStSatz1}};
}

void writeSampleLine(const SampleLine& line) {
    const auto priced = [&](double number) { return line.price == 0 ? QString() : amount(number); };
    RsPrint.AddNew();
    RsPrint.Fields(u"Kurzzeichen") = line.code;
    RsPrint.Fields(u"Anzahl") = amount(line.count);
    RsPrint.Fields(u"Einheit") = u"Stk."_s;
    RsPrint.Fields(u"Bezeichnung") = line.name;
    RsPrint.Fields(u"CCy") = SysCurrency;
    RsPrint.Fields(u"Preis/Stk") = priced(line.price);
    RsPrint.Fields(u"Preis/Total") = priced(line.count * line.price);
    RsPrint.Fields(u"Rabatt") = priced(0);
    RsPrint.Fields(u"PreisOhneMWSt/Total") = priced(net(line));
    RsPrint.Fields(u"MWSt") = priced(line.rate);
    RsPrint.Update();
}

struct SampleSums {
    double total = 0, vat1 = 0, vat2 = 0;
};

SampleSums writeSampleLines() {
    SampleSums sums;
    const WriteRecordset rows(RsPrint, u"SELECT * FROM BestellReport"_s, ConnPrint);
    for (const SampleLine& line : sampleLines()) {
        writeSampleLine(line);
        const double price = line.count * line.price;
        sums.total += price;
        (line.rate == SysMWStSatz1 ? sums.vat1 : sums.vat2) += price - net(line);
    }
    return sums;
}

void writeSampleHead(const SampleSums& sums, const QString& werbetext, const QString& vatNummer) {
    const WriteRecordset head(RsPrint, u"ZusatzInfo"_s, ConnPrint);
    const QString today = common::formatDate(common::clock::now(), u"DD/MM/YYYY");
    head->AddNew();
    const std::pair<QStringView, QString> values[] = {
        {u"Adresse", u"Muster Anna\r\nSeestrasse 1\r\n8000 Zürich\r\nTel: 044 000 00 00"_s},
        {u"Auftragsnummer", QString::number(SysInitTrxNr)},
        {u"Kundennummer", u"1"_s},
        {u"Kurier", u"AB"_s},
        {u"Datum", today},
        {u"Bestellzeit", u"18:30"_s},
        {u"Lieferzeit", u"19:15"_s},
        {u"MWSt-Nr", vatNummer},
        {u"Konditionen", u"Bar"_s},
        {u"Lieferung", today},
        {u"TotalRabatt", amount(0)},
        {u"TotalPreis", amount(sums.total)},
        {u"MWST-Satz", u"-"_s},
        {u"Werbung", werbetext},
        {u"MWStSatz1", amount(SysMWStSatz1)},
        {u"MWStBetrag1", amount(sums.vat1)},
        {u"MWStSatz2", amount(SysMWStSatz3)},
        {u"MWStBetrag2", amount(sums.vat2)}};
    for (const auto& [column, value] : values)
        head->Fields(column) = value;
    head->Update();
}

bool hasPrintedOrder() {
    const store::OpenRecordset rows(RsPrint, u"SELECT * FROM ZusatzInfo"_s, ConnPrint);
    return !rows->Eof();
}

} // namespace

void SaveSystemSettings() {
    const WriteRecordset row(RsMain, u"SELECT * FROM tbl_Einstellungen_System;"_s, ConnMain);
    if (row->Eof())
        return;
    putPrinters();
    putSlip();
    putOrders();
    put(u"lng_AnmeldungBenutzer", SysAnmeldungBenutzer);
    RsMain.Fields(u"txt_Currency") = SysCurrency;
    RsMain.Fields(u"txt_Sprache") = SysSprache;
    row->Update();
}

int FiktiverTagStunde() {
    // Cut and not rounded, but a stored 0.958333 is 23 and not 22.
    constexpr double kRoundingOfProduct = 1e-3;
    return std::clamp(int(SysFiktiverTag * 24.0 + kRoundingOfProduct), 0, 23);
}

SampleOrder::SampleOrder(const QString& werbetext, const QString& vatNummer) {
    if (hasPrintedOrder())
        return;
    store::Transaction together(ConnPrint);
    ConnPrint.Execute(u"DELETE * FROM BestellReport"_s);
    writeSampleHead(writeSampleLines(), werbetext, vatNummer);
    together.commit();
    m_filled = true;
}

SampleOrder::~SampleOrder() {
    if (!m_filled)
        return;
    // Left behind, the rows would only be shown as a printed order until the next one is printed.
    try {
        ConnPrint.Execute(u"DELETE * FROM BestellReport"_s);
        ConnPrint.Execute(u"DELETE * FROM ZusatzInfo"_s);
    } catch (const std::exception&) {
    }
}

} // namespace modEinstellungenSystem
