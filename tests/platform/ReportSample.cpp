#include "tests/platform/ReportSample.h"

using namespace Qt::StringLiterals;

namespace test {

namespace {

using Row = platform::ReportData::Row;

/// The first line names the columns, the others hold a row each; "|" divides them.
std::vector<Row> table(const QString& text) {
    QStringList lines = text.split(u'\n');
    const QStringList columns = lines.takeFirst().split(u'|');
    std::vector<Row> rows;
    for (const QString& line : lines) {
        const QStringList cells = line.split(u'|');
        Row row;
        for (int i = 0; i < columns.size(); ++i)
            row.emplace_back(columns[i], cells.value(i));
        rows.push_back(row);
    }
    return rows;
}

std::vector<Row> lines() {
    return table(
        uR"(Kurzzeichen|Einheit|Bezeichnung|CCy|Anzahl|Preis/Stk|Preis/Total|Rabatt|PreisOhneMWSt/Total|MWSt
P12|Stk.|Pizza Margherita|CHF|2.00|16.50|33.00|0.00|32.16|2.60
|Stk.|Knoblauch|CHF|2.00
|Stk.|Rohschinken San Daniele|CHF|2.00|3.50|7.00|0.00|6.82|2.60
P27|Stk.|Pizza Quattro Stagioni mit Büffelmozzarella, Artischocken und Gemüse vom Grill|CHF|1.00|23.50|23.50|2.35|20.61|2.60
|Stk.|ohne Oliven|CHF|1.00

S03|Pack|Grüner Salat <klein> & Brot|CHF|3.00|8.50|25.50|2.55|22.37|2.60
D01|Stk.|Tiramisù|CHF|2.00|9.00|18.00|1.80|15.79|2.60
W10|Dose|Chianti Classico 7,5 dl|CHF|1.00|34.00|34.00|3.40|28.31|8.10
B02|Dose|Bier 33 cl|CHF|12.00|4.50|54.00|5.40|44.96|8.10
X99|Stk.|Gutschein Stammkunde|CHF|1.00
M01|Stk.|Mineralwasser 1.5 l|CHF|2.00|6.00|12.00|1.20|10.53|2.60)"_s);
}

Row head() {
    Row head =
        table(
            uR"(Auftragsnummer|Kundennummer|Kurier|Datum|Bestellzeit|Lieferzeit|MWSt-Nr|Konditionen|Lieferung|TotalRabatt|TotalPreis|MWST-Satz|MWStSatz1|MWStSatz2|MWStBetrag1|MWStBetrag2
10482|3071|MK|14/03/2026|18:42|19:27|CHE-123.456.789 MWST|Bar|15/03/2026|16.70|190.30|-|8.10|2.60|14.73|10.72)"_s)
            .front();
    head.emplace_back(u"Adresse"_s, u"Müller & Söhne AG\r\nMüller Jürg\r\nZürcherstrasse 112\r\n3. Stock\r\n"
                                    u"8952 Schlieren\r\nTel: 044 730 11 22\r\nHintereingang, bitte läuten"_s);
    head.emplace_back(u"Werbung"_s,
                      u"Ab 5 Pizzen ein Tiramisù geschenkt.\nWir danken für Ihre Bestellung!"_s);
    return head;
}

} // namespace

platform::ReportData slipSample() {
    return {{{u"ZusatzInfo"_s, {head()}}, {u"BestellReport"_s, lines()}}};
}

platform::ReportData longSlipSample(int count) {
    platform::ReportData data = slipSample();
    std::vector<Row>& rows = data.tables[u"BestellReport"_s];
    const std::vector<Row> once = rows;
    rows.clear();
    for (int i = 0; i < count; ++i)
        rows.push_back(once[size_t(i) % once.size()]);
    return data;
}

} // namespace test
