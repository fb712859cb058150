#include "masterdata/modVerwaltungKuriere.h"
#include "store/Stations.h"
#include "store/StoreGlobals.h"

using store::OpenRecordset;
using namespace Qt::StringLiterals;

namespace modVerwaltungKuriere {
namespace {

const QString kTable = u"tbl_Verwaltung_Kuriere"_s;

} // namespace

QString KuriereListe() {
    return u"SELECT lng_ID, txt_Kurzzeichen, txt_Bezeichnung, lng_Reihenfolge FROM tbl_Verwaltung_Kuriere "
           u"ORDER BY lng_Reihenfolge, lng_ID"_s;
}

std::optional<Kurier> LoadKurier(qint64 key) {
    OpenRecordset row(RsMain, store::rowQuery(kTable, key), ConnMain);
    if (row->Eof())
        return {};
    return Kurier{row->Fields(u"txt_Kurzzeichen").text(), row->Fields(u"txt_Bezeichnung").text(),
                  row->Fields(u"lng_Reihenfolge").toLong()};
}

store::RowMark MarkKurier(qint64 key) {
    return store::markRow(kTable, key);
}

void SaveKurier(const Kurier& kurier, qint64 key, const store::RowMark& mark) {
    store::transact(ConnMain, [&] {
        mark.require();
        store::WriteRecordset row(RsMain, store::rowQuery(kTable, key), ConnMain);
        if (row->Eof())
            row->AddNew();
        row->Fields(u"txt_Kurzzeichen") = kurier.txt_Kurzzeichen;
        row->Fields(u"txt_Bezeichnung") = kurier.txt_Bezeichnung;
        row->Fields(u"lng_Reihenfolge") = kurier.lng_Reihenfolge;
        row->Update();
        store::tellNews(store::Topic::Catalogue);
    });
}

qint64 FindKurier(const QString& kurzzeichen, qint64 key) {
    return store::findDuplicate(kTable, u"txt_Kurzzeichen"_s, kurzzeichen, key);
}

bool CanDeleteKurier(qint64 key) {
    return !store::isReferredTo(
        key, {u"SELECT * FROM tbl_Auftragswesen_Bestellungen_Master WHERE lng_KurierID = ",
              u"SELECT * FROM tbl_Auftragswesen_Vorbestellungen_Master WHERE lng_KurierID = "});
}

void DeleteKurier(qint64 key, const store::RowMark& mark) {
    store::deleteMarked(kTable, key, mark);
    store::tellNews(store::Topic::Catalogue);
}

QString CheckKurierKurzzeichen(const QString& kurzzeichen) {
    return store::findText(u"SELECT txt_Kurzzeichen FROM tbl_Verwaltung_Kuriere WHERE txt_Kurzzeichen = "_s +
                           store::sqlText(kurzzeichen) + u" ORDER BY lng_ID ;"_s);
}

qint64 FindKurierByKurzzeichen(const QString& kurzzeichen) {
    return std::max<qint64>(
        0, store::findKey(u"SELECT lng_ID FROM tbl_Verwaltung_Kuriere WHERE txt_Kurzzeichen = "_s +
                          store::sqlText(kurzzeichen) + u" ORDER BY lng_ID;"_s));
}

QString GetKurierKurzzeichen(qint64 kurierId) {
    return store::findText(u"SELECT txt_Kurzzeichen FROM tbl_Verwaltung_Kuriere WHERE lng_ID = "_s +
                           QString::number(kurierId));
}

QString GetFirstKurier() {
    return store::findText(u"SELECT TOP 1 txt_Kurzzeichen FROM tbl_Verwaltung_Kuriere ORDER BY lng_ID ASC"_s);
}

std::vector<store::Eintrag> FillKurierMenu() {
    return store::entriesOf(
        u"SELECT lng_ID, txt_Kurzzeichen FROM tbl_Verwaltung_Kuriere ORDER BY lng_Reihenfolge ASC, lng_ID"_s);
}

std::vector<store::Eintrag> FillKurierCombo() {
    return store::entriesOf(u"SELECT lng_ID, txt_Kurzzeichen FROM tbl_Verwaltung_Kuriere ORDER BY lng_ID"_s);
}

} // namespace modVerwaltungKuriere
