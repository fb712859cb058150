#include "reporting/modAuswertungenBuchungsjournal.h"
#include "platform/WatchedQuery.h"
#include "platform/report/PrintTable.h"
#include "store/StoreGlobals.h"

using namespace Qt::StringLiterals;

namespace modAuswertungenBuchungsjournal {
namespace {

QString clause(const Auswahl& auswahl) {
    QString text;
    if (auswahl.tage)
        text = u" Where lng_BestellDatum >= %1 And lng_BestellDatum <= %2 "_s.arg(auswahl.tage->von)
                   .arg(auswahl.tage->bis);
    if (auswahl.lng_KurierID)
        text += (auswahl.tage ? u" AND lng_KurierID = %1 "_s : u"WHERE lng_KurierID = %1 "_s)
                    .arg(*auswahl.lng_KurierID);
    return text;
}

QString textOrNull(const common::Value& value) {
    return value.isNull() ? u"Null"_s : store::sqlText(value.toText());
}

} // namespace

QString Buchungen(const Auswahl& auswahl) {
    return u"SELECT date_BestellDatum, lng_BestellDatum, lng_TrxNr, txt_Buchungstext, txt_Kurier, "
           "dbl_TotalMitMWSt From view_Auswertungen_Buchungsjournal "_s +
           clause(auswahl) +
           (auswahl.tage || auswahl.lng_KurierID ? u"ORDER BY lng_BestellDatum, lng_TrxNr"_s
                                                 : u"ORDER BY lng_TrxNr"_s);
}

QString TotalBuchungen(const Auswahl& auswahl) {
    return u"SELECT SUM(dbl_TotalMitMWSt) AS TotalBetrag FROM view_Auswertungen_Buchungsjournal "_s +
           clause(auswahl);
}

double TotalBetrag(const QString& sql, const platform::Progress& progress) {
    const common::Value sum = platform::readRows(sql, progress).rows.at(0).at(0);
    return sum.isNull() ? 0 : sum.toDouble();
}

bool IstStorniert(const QString& buchungstext) {
    return buchungstext.trimmed().toUpper() == u"STORNIERT";
}

QString Ueberschrift(bool datum, bool kurier, const QString& vonBis, const QString& kurierText) {
    return (datum ? vonBis : u"Alle Buchungen"_s) + (kurier ? u" / Kurier: "_s + kurierText : QString());
}

void FillPrintBuchungsJournal(const QString& sql, const platform::Progress& progress) {
    store::Recordset rows;
    rows.SetKey(kKey);
    rows.Open(sql, ConnMain, store::adOpenStatic, store::adLockReadOnly);
    rows.Fetch(platform::waitingWith(progress));
    platform::fillPrintTable(
        u"PrintBuchungsJournal"_s, u"Datum,AuftragsNr,Buchung,Kurier,Betrag"_s, rows.RecordCount(),
        [&rows](int row) -> QStringList {
            return {platform::sqlNumber(rows.valueAt(row, kDatum)),
                    platform::sqlNumber(rows.valueAt(row, kTrxNr)),
                    textOrNull(rows.valueAt(row, kBuchungstext)), textOrNull(rows.valueAt(row, kKurier)),
                    platform::sqlNumber(rows.valueAt(row, kTotal))};
        },
        progress);
}

} // namespace modAuswertungenBuchungsjournal
