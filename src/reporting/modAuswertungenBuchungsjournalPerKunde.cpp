#include "reporting/modAuswertungenBuchungsjournalPerKunde.h"
#include "platform/WatchedQuery.h"
#include "platform/report/PrintTable.h"
#include "store/SystemSettings.h"

using namespace Qt::StringLiterals;

namespace modAuswertungenBuchungsjournalPerKunde {
namespace {

double firstValue(const QString& sql, const platform::Progress& progress) {
    const store::Rows result = platform::readRows(sql, progress);
    return result.rows.empty() ? 0 : result.rows.front().front().toDouble();
}

} // namespace

QString KundenStatistikSql(qint64 lng_KundenID) {
    return u"SELECT txt_LieferDatum AS Datum, lng_KundenID, lng_TrxNr AS AuftragsNr, "_s +
           store::sqlText(SysCurrency) +
           u" AS Ccy, dbl_TotalMitMWSt As Betrag FROM tbl_Auftragswesen_Bestellungen_Master WHERE "
           u"lng_KundenID = %1 ORDER BY lng_LieferDatum ASC, lng_TrxNr ;"_s.arg(lng_KundenID);
}

QString TopKundenSql() {
    return u"SELECT Top 20 '' AS Datum, lng_KundenID, '' AS AuftragsNr, "_s + store::sqlText(SysCurrency) +
           u" AS Ccy, SUM(dbl_TotalMitMWSt) AS Betrag FROM tbl_Auftragswesen_Bestellungen_Master WHERE "
           u"lng_KundenID >= 0 GROUP BY lng_KundenID ORDER BY SUM(dbl_TotalMitMWSt) Desc ;"_s;
}

double TotalKunde(qint64 lng_KundenID, const platform::Progress& progress) {
    return firstValue(u"SELECT SUM(dbl_TotalMitMWSt) As Betrag FROM tbl_Auftragswesen_Bestellungen_Master "
                      u"WHERE lng_KundenID = %1"_s.arg(lng_KundenID),
                      progress);
}

double TotalTopKunden(const platform::Progress& progress) {
    return firstValue(u"SELECT Top 20 SUM(dbl_TotalMitMWSt) AS Betrag FROM "
                      u"tbl_Auftragswesen_Bestellungen_Master GROUP BY lng_KundenID ORDER BY lng_KundenID;"_s,
                      progress);
}

void FillPrintKundenUmsatz(store::Recordset& rows, const QString& adresse,
                           const platform::Progress& progress) {
    platform::setPrintHeading(u"KundenUmsatzKunde"_s, adresse);
    platform::fillPrintTable(
        u"PrintKundenUmsatz"_s, u"Datum,KundenNr,AuftragsNr,Ccy,Betrag"_s, rows.RecordCount(),
        [&](int row) {
            const auto text = [&](int column) { return store::sqlText(rows.valueAt(row, column).toText()); };
            return QStringList{text(0), platform::sqlNumber(rows.valueAt(row, 1)), text(2), text(3),
                               platform::sqlNumber(rows.valueAt(row, 4))};
        },
        progress);
}

} // namespace modAuswertungenBuchungsjournalPerKunde
