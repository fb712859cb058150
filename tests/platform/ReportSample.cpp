#include "tests/platform/ReportSample.h"

using namespace Qt::StringLiterals;

namespace test {

namespace {

using Row = platform::ReportData::Row;

Row line(const QStringList& cells) {
    static const QStringList columns{
        u"Kurzzeichen"_s, u"Einheit"_s, u"Bezeichnung"_s,         u"CCy"_s, u"Anzahl"_s, u"Preis/Stk"_s,
        u"Preis/Total"_s, u"Rabatt"_s,  u"PreisOhneMWSt/Total"_s, u"MWSt"_s};
    Row row;
    for (int i = 0; i < columns.size(); ++i)
        row.emplace_back(columns[i], cells.value(i));
    return row;
}

std::vector<Row> lines() {
    return {
        line({u"P12"_s, u"Stk."_s, u"Pizza Margherita"_s, u"CHF"_s, u"2.00"_s, u"16.50"_s, u"33.00"_s,
              u"0.00"_s, u"32.16"_s, u"2.60"_s}),
        line({u""_s, u"Stk."_s, u"Knoblauch"_s, u"CHF"_s, u"2.00"_s, u""_s, u""_s, u""_s, u""_s, u""_s}),
        line({u""_s, u"Stk."_s, u"Rohschinken San Daniele"_s, u"CHF"_s, u"2.00"_s, u"3.50"_s, u"7.00"_s,
              u"0.00"_s, u"6.82"_s, u"2.60"_s}),
        line({u"P27"_s, u"Stk."_s,
              u"Pizza Quattro Stagioni mit Büffelmozzarella, Artischocken und Gemüse vom Grill"_s, u"CHF"_s,
              u"1.00"_s, u"23.50"_s, u"23.50"_s, u"2.35"_s, u"20.61"_s, u"2.60"_s}),
        line({u""_s, u"Stk."_s, u"ohne Oliven"_s, u"CHF"_s, u"1.00"_s, u""_s, u""_s, u""_s, u""_s, u""_s}),
        line({}),
        line({u"S03"_s, u"Pack"_s, u"Grüner Salat <klein> & Brot"_s, u"CHF"_s, u"3.00"_s, u"8.50"_s,
              u"25.50"_s, u"2.55"_s, u"22.37"_s, u"2.60"_s}),
        line({u"D01"_s, u"Stk."_s, u"Tiramisù"_s, u"CHF"_s, u"2.00"_s, u"9.00"_s, u"18.00"_s, u"1.80"_s,
              u"15.79"_s, u"2.60"_s}),
        line({u"W10"_s, u"Dose"_s, u"Chianti Classico 7,5 dl"_s, u"CHF"_s, u"1.00"_s, u"34.00"_s, u"34.00"_s,
              u"3.40"_s, u"28.31"_s, u"8.10"_s}),
        line({u"B02"_s, u"Dose"_s, u"Bier 33 cl"_s, u"CHF"_s, u"12.00"_s, u"4.50"_s, u"54.00"_s, u"5.40"_s,
              u"44.96"_s, u"8.10"_s}),
        line({u"X99"_s, u"Stk."_s, u"Gutschein Stammkunde"_s, u"CHF"_s, u"1.00"_s, u""_s, u""_s, u""_s, u""_s,
              u""_s}),
        line({u"M01"_s, u"Stk."_s, u"Mineralwasser 1.5 l"_s, u"CHF"_s, u"2.00"_s, u"6.00"_s, u"12.00"_s,
              u"1.20"_s, u"10.53"_s, u"2.60"_s}),
    };
}

Row head() {
    return {
        {u"Adresse"_s,
         u"Müller & Söhne AG\r\nMüller Jürg\r\nZürcherstrasse 112\r\n3. Stock\r\n8952 Schlieren\r\nTel: 044 730 11 22\r\nHintereingang, bitte läuten"_s},
        {u"Auftragsnummer"_s, u"10482"_s},
        {u"Kundennummer"_s, u"3071"_s},
        {u"Kurier"_s, u"MK"_s},
        {u"Datum"_s, u"14/03/2026"_s},
        {u"Bestellzeit"_s, u"18:42"_s},
        {u"Lieferzeit"_s, u"19:27"_s},
        {u"MWSt-Nr"_s, u"CHE-123.456.789 MWST"_s},
        {u"Konditionen"_s, u"Bar"_s},
        {u"Lieferung"_s, u"15/03/2026"_s},
        {u"TotalRabatt"_s, u"16.70"_s},
        {u"TotalPreis"_s, u"190.30"_s},
        {u"MWST-Satz"_s, u"-"_s},
        {u"Werbung"_s, u"Ab 5 Pizzen ein Tiramisù geschenkt.\nWir danken für Ihre Bestellung!"_s},
        {u"MWStSatz1"_s, u"8.10"_s},
        {u"MWStSatz2"_s, u"2.60"_s},
        {u"MWStBetrag1"_s, u"14.73"_s},
        {u"MWStBetrag2"_s, u"10.72"_s}};
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
