#include "masterdata/modVerwaltungKuriere.h"
#include "store/StoreGlobals.h"

using store::OpenRecordset;

namespace modVerwaltungKuriere {

QString CheckKurierKurzzeichen(const QString& kurzzeichen) {
    OpenRecordset rows(
        RsMain,
        QStringLiteral("SELECT txt_Kurzzeichen FROM tbl_Verwaltung_Kuriere WHERE txt_Kurzzeichen = ") +
            store::sqlText(kurzzeichen) + QStringLiteral(" ;"),
        ConnMain);
    return rows->Eof() ? QString() : rows->Fields(u"txt_Kurzzeichen").text();
}

qint64 FindKurierByKurzzeichen(const QString& kurzzeichen) {
    OpenRecordset rows(RsMain,
                       QStringLiteral("SELECT lng_ID FROM tbl_Verwaltung_Kuriere WHERE txt_Kurzzeichen = ") +
                           store::sqlText(kurzzeichen) + QStringLiteral(";"),
                       ConnMain);
    return rows->Eof() ? 0 : rows->Fields(u"lng_ID").toLong();
}

QString GetKurierKurzzeichen(qint64 kurierId) {
    OpenRecordset rows(RsMain,
                       QStringLiteral("SELECT txt_Kurzzeichen FROM tbl_Verwaltung_Kuriere WHERE lng_ID = ") +
                           QString::number(kurierId),
                       ConnMain);
    return rows->Eof() ? QString() : rows->Fields(u"txt_Kurzzeichen").text();
}

QString GetFirstKurier() {
    OpenRecordset rows(
        RsMain,
        QStringLiteral("SELECT TOP 1 txt_Kurzzeichen FROM tbl_Verwaltung_Kuriere ORDER BY lng_ID ASC"),
        ConnMain);
    return rows->Eof() ? QString() : rows->Fields(u"txt_Kurzzeichen").text();
}

std::vector<KurierEintrag> FillKurierMenu() {
    std::vector<KurierEintrag> entries;
    OpenRecordset rows(
        RsMain,
        QStringLiteral(
            "SELECT lng_ID, txt_Kurzzeichen FROM tbl_Verwaltung_Kuriere ORDER BY lng_Reihenfolge ASC"),
        ConnMain);
    for (; !rows->Eof(); rows->MoveNext())
        entries.push_back({rows->Fields(u"lng_ID").toLong(), rows->Fields(u"txt_Kurzzeichen").text()});
    return entries;
}

} // namespace modVerwaltungKuriere
