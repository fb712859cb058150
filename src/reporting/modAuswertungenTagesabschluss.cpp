#include "reporting/modAuswertungenTagesabschluss.h"
#include "common/Convert.h"
#include "masterdata/modVerwaltungKuriere.h"
#include "platform/WatchedQuery.h"
#include "platform/report/PrintTable.h"
#include "reporting/ExactNumber.h"
#include "store/Lookups.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include <QStringList>
#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace modAuswertungenTagesabschluss {
namespace {

const QString kBar = u"tbl_Auswertungen_Barkonditionen"_s;

QString inSpan(const Spanne& spanne) {
    return u" WHERE tbl_Auftragswesen_Bestellungen_Master.dbl_BestellDatumNow >= "_s +
           exactNumber(spanne.von) + u" AND tbl_Auftragswesen_Bestellungen_Master.dbl_BestellDatumNow < "_s +
           exactNumber(spanne.bis);
}

bool isSame(const QString& one, const QString& other) {
    return one.trimmed().compare(other.trimmed(), Qt::CaseInsensitive) == 0;
}

Kondition& konditionOf(Tagesabschluss& abschluss, const QString& word) {
    for (Kondition& known : abschluss.konditionen)
        if (isSame(known.txt_Konditionen, word))
            return known;
    return abschluss.konditionen.emplace_back(Kondition{word.trimmed()});
}

QString nameOf(qint64 courier) {
    const QString code = modVerwaltungKuriere::GetKurierKurzzeichen(courier);
    return code.isEmpty() ? u"(gelöscht)"_s : code;
}

/// What a row of the close's statement tells.
enum Art : int { kBestellungen, kMwst, kStorniert };

/// One statement, so that all figures are of one moment: heads by courier and conditions, lines by VAT rate,
/// and the numbers of the cancelled orders.
QString abschlussSql(const Spanne& spanne) {
    const QString heads = u" FROM tbl_Auftragswesen_Bestellungen_Master"_s;
    const QString within = inSpan(spanne);
    return u"SELECT %1 AS Art, lng_KurierID AS Nummer, txt_Konditionen AS Wort, Count(*) AS Anzahl, "
           u"Sum(dbl_TotalMitMWSt) AS Betrag, 0 AS Netto, 0 AS Rabatt"_s.arg(kBestellungen) +
           heads + within +
           u" AND (lng_KundenID <> -1 OR lng_KundenID IS NULL) GROUP BY lng_KurierID, txt_Konditionen "_s +
           u"UNION ALL SELECT %1, dbl_MWStSatz, '', 0, Sum(dbl_PreisMitMWSt - dbl_Rabatt), "
           u"Sum(dbl_PreisOhneMWSt), Sum(dbl_Rabatt)"_s.arg(kMwst) +
           heads +
           u" INNER JOIN tbl_Auftragswesen_Bestellungen_Details ON "
           u"tbl_Auftragswesen_Bestellungen_Master.lng_TrxNr = "
           u"tbl_Auftragswesen_Bestellungen_Details.lng_TrxNrMaster"_s +
           within + u" GROUP BY dbl_MWStSatz "_s +
           u"UNION ALL SELECT %1, lng_TrxNr, '', 0, 0, 0, 0"_s.arg(kStorniert) + heads + within +
           u" AND lng_KundenID = -1 ORDER BY Art, Nummer"_s;
}

enum Spalte : size_t { kArt, kNummer, kWort, kAnzahl, kBetrag, kNetto, kRabatt };

using Row = std::vector<common::Value>;

/// All figures of whole orders are sums of these.
void addOrders(Tagesabschluss& abschluss, KurierAbrechnung& kurier, const Row& row) {
    Kondition& kondition = konditionOf(abschluss, row[kWort].toText());
    for (auto* counted : {&abschluss.bestellungen, &kurier.anzahl, &kondition.anzahl})
        *counted += row[kAnzahl].toLong();
    const double amount = row[kBetrag].toDouble();
    for (auto* summed : {&abschluss.umsatz, &kurier.umsatz, &kondition.umsatz})
        *summed += amount;
    if (kondition.bar)
        kurier.bar += amount;
}

void addRate(Tagesabschluss& abschluss, const Row& row) {
    // Rounded by rate, as it is declared: what is printed adds up.
    const double net = std::round(row[kNetto].toDouble() * 100) / 100;
    const double gross = row[kBetrag].toDouble();
    abschluss.mwst.push_back({row[kNummer].toDouble(), net, gross - net, gross});
    abschluss.rabatt += row[kRabatt].toDouble();
}

} // namespace

Spanne Geschaeftstage(qint64 von, qint64 bis) {
    return {double(von) + SysFiktiverTag, double(bis + 1) + SysFiktiverTag};
}

qint64 GeschaeftstagVon(double moment) {
    return qint64(std::floor(moment - SysFiktiverTag));
}

MwstZeile Tagesabschluss::mwstTotal() const {
    MwstZeile total{};
    for (const MwstZeile& line : mwst) {
        total.netto += line.netto;
        total.steuer += line.steuer;
        total.brutto += line.brutto;
    }
    return total;
}

double Tagesabschluss::bar() const {
    double sum = 0;
    for (const KurierAbrechnung& kurier : kuriere)
        sum += kurier.bar;
    return sum;
}

Tagesabschluss LoadTagesabschluss(const Spanne& spanne, const platform::Progress& progress) {
    Tagesabschluss abschluss;
    for (const Row& row : platform::readRows(u"SELECT txt_Konditionen, lng_Bar FROM "_s + kBar).rows)
        konditionOf(abschluss, row[0].toText()).bar = row[1].isTrue();
    std::optional<qint64> courier;
    for (const Row& row : platform::readRows(abschlussSql(spanne), progress).rows) {
        switch (row[kArt].toLong()) {
        case kBestellungen:
            if (courier != row[kNummer].toLong())
                abschluss.kuriere.push_back({nameOf(row[kNummer].toLong())});
            courier = row[kNummer].toLong();
            addOrders(abschluss, abschluss.kuriere.back(), row);
            break;
        case kMwst:
            addRate(abschluss, row);
            break;
        default:
            abschluss.storniert.push_back(row[kNummer].toLong());
        }
    }
    const auto byName = [](const QString& a, const QString& b) {
        return a.compare(b, Qt::CaseInsensitive) < 0;
    };
    std::sort(abschluss.konditionen.begin(), abschluss.konditionen.end(),
              [&](const auto& a, const auto& b) { return byName(a.txt_Konditionen, b.txt_Konditionen); });
    std::sort(abschluss.kuriere.begin(), abschluss.kuriere.end(),
              [&](const auto& a, const auto& b) { return byName(a.kurier, b.kurier); });
    return abschluss;
}

void SetBar(const QString& konditionen, bool bar) {
    const QString word = store::sqlText(konditionen.trimmed());
    const QString flag = QString::number(int(bar));
    store::transact(ConnMain, [&] {
        if (ConnMain.Execute(u"UPDATE "_s + kBar + u" SET lng_Bar = "_s + flag +
                             u" WHERE txt_Konditionen = "_s + word) == 0)
            ConnMain.Execute(u"INSERT INTO "_s + kBar + u"(txt_Konditionen, lng_Bar) VALUES("_s + word +
                             u", "_s + flag + u')');
    });
}

void FillPrintTagesabschluss(const Tagesabschluss& abschluss, const QString& zeitraum, const QString& ccy) {
    using platform::sqlNumber;
    using store::sqlText;
    const auto fill = [](const QString& table, const QStringList& columns, size_t count,
                         const std::function<QStringList(size_t)>& values) {
        ConnPrint.Execute(u"CREATE TABLE IF NOT EXISTS "_s + table + u" ("_s + columns.join(u", "_s) + u')');
        QStringList names;
        for (const QString& column : columns)
            names << column.section(u' ', 0, 0);
        platform::fillPrintTable(
            table, names.join(u','), int(count), [&](int row) { return values(size_t(row)); },
            platform::unwatched);
    };
    QStringList cancelled;
    for (const qint64 number : abschluss.storniert)
        cancelled << QString::number(number);
    const MwstZeile taxes = abschluss.mwstTotal();
    fill(u"PrintAbschluss"_s,
         {u"Zeitraum TEXT"_s, u"Ccy TEXT"_s, u"Bestellungen INTEGER"_s, u"Storniert INTEGER"_s,
          u"Nummern TEXT"_s, u"Umsatz DOUBLE"_s, u"Rabatt DOUBLE"_s, u"Netto DOUBLE"_s, u"MWSt DOUBLE"_s,
          u"Bar DOUBLE"_s},
         1, [&](size_t) {
             return QStringList{sqlText(zeitraum),
                                sqlText(ccy),
                                sqlNumber(abschluss.bestellungen),
                                sqlNumber(qint64(abschluss.storniert.size())),
                                sqlText(cancelled.join(u", "_s)),
                                sqlNumber(abschluss.umsatz),
                                sqlNumber(abschluss.rabatt),
                                sqlNumber(taxes.netto),
                                sqlNumber(taxes.steuer),
                                sqlNumber(abschluss.bar())};
         });
    fill(u"PrintAbschlussMWSt"_s, {u"Satz DOUBLE"_s, u"Netto DOUBLE"_s, u"MWSt DOUBLE"_s, u"Brutto DOUBLE"_s},
         abschluss.mwst.size(), [&](size_t i) {
             const MwstZeile& line = abschluss.mwst[i];
             return QStringList{sqlNumber(line.satz), sqlNumber(line.netto), sqlNumber(line.steuer),
                                sqlNumber(line.brutto)};
         });
    fill(u"PrintAbschlussKonditionen"_s,
         {u"Konditionen TEXT"_s, u"Anzahl INTEGER"_s, u"Betrag DOUBLE"_s, u"Bar TEXT"_s},
         abschluss.konditionen.size(), [&](size_t i) {
             const Kondition& word = abschluss.konditionen[i];
             return QStringList{sqlText(word.txt_Konditionen), sqlNumber(word.anzahl), sqlNumber(word.umsatz),
                                sqlText(word.bar ? u"bar"_s : QString())};
         });
    fill(u"PrintAbschlussKuriere"_s,
         {u"Kurier TEXT"_s, u"Anzahl INTEGER"_s, u"Betrag DOUBLE"_s, u"Bar DOUBLE"_s},
         abschluss.kuriere.size(), [&](size_t i) {
             const KurierAbrechnung& kurier = abschluss.kuriere[i];
             return QStringList{sqlText(kurier.kurier), sqlNumber(kurier.anzahl), sqlNumber(kurier.umsatz),
                                sqlNumber(kurier.bar)};
         });
}

} // namespace modAuswertungenTagesabschluss
