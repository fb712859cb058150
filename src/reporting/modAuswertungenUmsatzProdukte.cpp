#include "reporting/modAuswertungenUmsatzProdukte.h"
#include "platform/report/PrintTable.h"
#include "reporting/ExactNumber.h"
#include "reporting/modProduktUmsatz.h"
#include "store/SystemSettings.h"

using namespace Qt::StringLiterals;

namespace modAuswertungenUmsatzProdukte {

QString BestellungenSql(const Auswahl& auswahl) {
    const double lower = double(auswahl.von) + (auswahl.fiktiv ? SysFiktiverTag : auswahl.zeitVon);
    const double upper =
        auswahl.fiktiv ? double(auswahl.bis + 1) + SysFiktiverTag : double(auswahl.bis) + auswahl.zeitBis;
    const QString span = u"tbl_Auftragswesen_Bestellungen_Master.dbl_BestellDatumNow >= %1 AND "
                         u"tbl_Auftragswesen_Bestellungen_Master.dbl_BestellDatumNow <= %2"_s.arg(
                             exactNumber(lower), exactNumber(upper));
    return auswahl.lng_KurierID
               ? span + u" AND tbl_Auftragswesen_Bestellungen_Master.lng_KurierID = %1"_s.arg(
                            *auswahl.lng_KurierID)
               : span;
}

void FillPrintArtikelUmsatz(store::Recordset& rows, const QString& vonBis,
                            const platform::Progress& progress) {
    platform::setPrintHeading(u"ArtikelUmsatzVonBis"_s, vonBis);
    platform::setPrintHeading(u"Ccy"_s, SysCurrency);
    modProduktUmsatz::FillPrintUmsatz(
        u"PrintArtikelUmsatz"_s, {u"Gruppe"_s, u"Ccy"_s, u"TotalMenge"_s, u"TotalUmsatz"_s, u"TotalMWSt"_s},
        rows, progress);
}

} // namespace modAuswertungenUmsatzProdukte
