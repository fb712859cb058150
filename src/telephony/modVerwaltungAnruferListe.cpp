#include "telephony/modVerwaltungAnruferListe.h"
#include "common/Convert.h"
#include "store/Lookups.h"
#include "store/Stations.h"
#include "store/StoreGlobals.h"

using namespace Qt::StringLiterals;

namespace modVerwaltungAnruferListe {

QString AnruferListe() {
    return u"SELECT lng_ID, txt_Telefon, txt_Zeit, txt_Datum, lng_Datum, flag_Kunde "
           u"FROM tbl_Verwaltung_AnruferListe ORDER BY lng_Datum DESC, lng_ID DESC;"_s;
}

void MarkCallReceived(const common::Value& lng_Datum) {
    if (!lng_Datum.isNumeric())
        return;
    store::transact(ConnMain, [&] {
        store::WriteRecordset call(
            RsMain,
            u"SELECT lng_Datum, flag_Kunde FROM tbl_Verwaltung_AnruferListe WHERE lng_Datum = "_s +
                common::formatNumber(lng_Datum.toDouble(), u"0.00000000") + u" ORDER BY lng_ID"_s,
            ConnMain);
        if (call->Eof())
            return;
        call->Fields(u"flag_Kunde") = 1;
        call->Update();
        store::tellNews(store::Topic::Calls);
    });
}

qint64 MissedCalls(double since) {
    return store::findText(
               u"SELECT Count(*) AS Verpasst FROM tbl_Verwaltung_AnruferListe WHERE lng_Datum > "_s +
               common::formatNumber(since, u"0.00000000") + u" AND flag_Kunde = False"_s)
        .toLongLong();
}

void DeleteAnruferListe() {
    store::transact(ConnMain, [] {
        ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_AnruferListe"_s);
        store::tellNews(store::Topic::Calls);
    });
}

} // namespace modVerwaltungAnruferListe
