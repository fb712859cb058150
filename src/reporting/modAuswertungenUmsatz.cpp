#include "reporting/modAuswertungenUmsatz.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "common/modFunctions.h"
#include "platform/WatchedQuery.h"
#include "platform/report/PrintTable.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include <algorithm>

using namespace Qt::StringLiterals;

namespace modAuswertungenUmsatz {
namespace {

constexpr auto kMonate = {u"Jan-", u"Feb-", u"Mar-", u"Apr-", u"Mai-", u"Jun-",
                          u"Jul-", u"Aug-", u"Sep-", u"Okt-", u"Nov-", u"Dez-"};

QString column(const Auswahl& auswahl) {
    return auswahl.mwst ? u"dbl_MWStBetrag"_s : u"dbl_TotalMitMWSt"_s;
}

int yearOf(double serial) {
    return common::formatDate(serial, u"YYYY").toInt();
}

int currentYear() {
    return yearOf(common::clock::today());
}

/// The last days of a year's months.
std::array<qint64, kPerioden> monthEnds(int year) {
    std::array<qint64, kPerioden> ends{};
    const int days[] = {31, GetTageFebruar(year), 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int month = 0; month < kPerioden; ++month)
        ends[size_t(month)] = qint64(common::dateSerial(year, month + 1, days[month]));
    return ends;
}

std::array<qint64, kPerioden> yearEnds(int last) {
    std::array<qint64, kPerioden> ends{};
    for (int i = 0; i < kPerioden; ++i)
        ends[size_t(i)] = qint64(common::dateSerial(last - (kPerioden - 1) + i, 12, 31));
    return ends;
}

/// Into the first period whose end the day does not exceed.
void addTo(Perioden& sums, const std::array<qint64, kPerioden>& ends, const Tag& tag) {
    const auto end = std::lower_bound(ends.begin(), ends.end(), tag.lng_BestellDatum);
    if (end != ends.end())
        sums[size_t(end - ends.begin())] += tag.TotalUmsatz;
}

QString daySums(const Auswahl& auswahl) {
    QString sql =
        u"SELECT lng_BestellDatum, Sum(%1) AS TotalUmsatz From tbl_Auftragswesen_Bestellungen_Master "_s.arg(
            column(auswahl));
    if (auswahl.lng_KurierID)
        sql += u"WHERE lng_KurierID = %1 "_s.arg(*auswahl.lng_KurierID);
    return sql + u"GROUP BY lng_BestellDatum ORDER BY lng_BestellDatum DESC"_s;
}

} // namespace

int GetTageFebruar(int year) {
    return modFunctions::DaysInFebruary(year);
}

double LoadUmsatzPeriode(qint64 von, qint64 bis, const Auswahl& auswahl, const platform::Progress& progress) {
    const QString between = u"lng_BestellDatum BETWEEN %1 AND %2"_s.arg(von).arg(bis);
    const QString sql =
        u"SELECT SUM(%1) AS Umsatz FROM tbl_Auftragswesen_Bestellungen_Master WHERE "_s.arg(column(auswahl)) +
        (auswahl.lng_KurierID ? u"(%1) AND lng_KurierID = %2"_s.arg(between).arg(*auswahl.lng_KurierID)
                              : between);
    return platform::readRows(sql, progress).rows.front().front().toDouble();
}

Tabellen LoadUmsatzTabellen(const Auswahl& auswahl, const platform::Progress& progress) {
    const int year = currentYear();
    const auto months = monthEnds(year);
    const auto monthsBefore = monthEnds(year - 1);
    const auto years = yearEnds(year);
    const qint64 yearBefore = years[kPerioden - 2];
    const qint64 twoYearsBefore = years[kPerioden - 3];
    Tabellen tables;
    tables.monatsPerioden = LoadMonatsPerioden();
    tables.jahresPerioden = LoadJahresPerioden();
    for (const auto& row : platform::readRows(daySums(auswahl), progress).rows) {
        const Tag tag{row[0].toLong(), row[1].toDouble()};
        if (int(tables.tage.size()) < kTage)
            tables.tage.push_back(tag);
        addTo(tables.monate, months, tag);
        addTo(tables.jahre, years, tag);
        if (tag.lng_BestellDatum > yearBefore)
            addTo(tables.monateDiesesJahr, months, tag);
        else if (tag.lng_BestellDatum > twoYearsBefore)
            addTo(tables.monateVorjahr, monthsBefore, tag);
    }
    return tables;
}

QStringList LoadMonatsPerioden() {
    QStringList names;
    for (const char16_t* month : kMonate)
        names << QString::fromUtf16(month) + QString::number(currentYear());
    return names;
}

QStringList LoadJahresPerioden() {
    QStringList names;
    for (int i = 0; i < kPerioden; ++i)
        names << QString::number(currentYear() - (kPerioden - 1 - i));
    return names;
}

Stosszeiten LoadStosszeiten(qint64 von, qint64 bis, const std::optional<qint64>& lng_KurierID,
                            const platform::Progress& progress) {
    // An order of a full hour is one of that hour, whatever the fraction of its day makes of it.
    QString sql =
        u"SELECT lng_BestellDatum % 7 AS Wochentag, CAST((dbl_BestellDatumNow - lng_BestellDatum) * "
        u"24 + 0.0001 AS INTEGER) AS Stunde, Count(*) AS Anzahl FROM "
        u"tbl_Auftragswesen_Bestellungen_Master WHERE lng_BestellDatum BETWEEN "_s +
        QString::number(von) + u" AND "_s + QString::number(bis) + u" AND lng_KundenID <> -1"_s;
    if (lng_KurierID)
        sql += u" AND lng_KurierID = %1"_s.arg(*lng_KurierID);
    Stosszeiten counts{};
    for (const auto& row :
         platform::readRows(sql + u" GROUP BY lng_BestellDatum % 7, Stunde"_s, progress).rows) {
        // Serial 2 was a Monday.
        const size_t weekday = size_t((row[0].toLong() + 5) % 7);
        const qint64 hour = row[1].toLong();
        if (hour >= 0 && hour < 24)
            counts[weekday][size_t(hour)] += row[2].toDouble();
    }
    return counts;
}

void FillPrintUmsatz(const Tabellen& tables, const QString& ccy, const platform::Progress& progress) {
    using store::sqlText;
    platform::fillPrintTable(
        u"PrintUmsatz"_s,
        u"TagPeriode,TagCcy,TagUmsatz,MonatPeriode,MonatCcy,MonatUmsatz,JahrPeriode,JahrCcy,JahrUmsatz"_s,
        kPerioden,
        [&](int row) {
            const size_t i = size_t(row);
            const bool there = i < tables.tage.size();
            return QStringList{
                there ? sqlText(common::formatDate(double(tables.tage[i].lng_BestellDatum), u"DD/MMM/YYYY"))
                      : u"''"_s,
                sqlText(ccy),
                there ? platform::sqlNumber(tables.tage[i].TotalUmsatz) : u"Null"_s,
                sqlText(tables.monatsPerioden[row]),
                sqlText(ccy),
                platform::sqlNumber(tables.monate[i]),
                sqlText(tables.jahresPerioden[row]),
                sqlText(ccy),
                platform::sqlNumber(tables.jahre[i])};
        },
        progress);
}

} // namespace modAuswertungenUmsatz
