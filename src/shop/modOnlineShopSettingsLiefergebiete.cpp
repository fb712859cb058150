#include "shop/modOnlineShopSettingsLiefergebiete.h"
#include "store/Lookups.h"
#include "store/StoreGlobals.h"

using store::OpenRecordset;
using namespace Qt::StringLiterals;

namespace modOnlineShopSettingsLiefergebiete {
namespace {

const QString kTable = u"tbl_PLZ_Verzeichnis"_s;

} // namespace

QString Liefergebiete() {
    return u"SELECT lng_ID, txt_Land, lng_PLZ, txt_Ort, dbl_Mindestbestellmenge, lng_Lieferzeiten, "
           u"txt_Kurier, bool_Liefergebiet FROM tbl_PLZ_Verzeichnis ORDER BY lng_PLZ ASC, txt_Ort, txt_Land, lng_ID;"_s;
}

std::optional<Liefergebiet> LoadLiefergebiet(qint64 key) {
    OpenRecordset row(RsMain, store::rowQuery(kTable, key), ConnMain);
    if (row->Eof())
        return {};
    return Liefergebiet{.txt_Land = row->Fields(u"txt_Land").text(),
                        .lng_PLZ = row->Fields(u"lng_PLZ").toLong(),
                        .txt_Ort = row->Fields(u"txt_Ort").text(),
                        .dbl_Mindestbestellmenge = row->Fields(u"dbl_Mindestbestellmenge").toDouble(),
                        .lng_Lieferzeiten = row->Fields(u"lng_Lieferzeiten").toLong(),
                        .txt_Kurier = row->Fields(u"txt_Kurier").text(),
                        .bool_Liefergebiet = row->Fields(u"bool_Liefergebiet").Value().isTrue()};
}

store::RowMark MarkLiefergebiet(qint64 key) {
    return store::markRow(kTable, key);
}

void SaveLiefergebiet(const Liefergebiet& gebiet, qint64 key, const store::RowMark& mark) {
    store::transact(ConnMain, [&] {
        mark.require();
        store::WriteRecordset row(RsMain, store::rowQuery(kTable, key), ConnMain);
        if (row->Eof())
            row->AddNew();
        row->Fields(u"txt_Land") = gebiet.txt_Land;
        row->Fields(u"lng_PLZ") = gebiet.lng_PLZ;
        row->Fields(u"txt_Ort") = gebiet.txt_Ort;
        row->Fields(u"dbl_Mindestbestellmenge") = gebiet.dbl_Mindestbestellmenge;
        row->Fields(u"lng_Lieferzeiten") = gebiet.lng_Lieferzeiten;
        row->Fields(u"txt_Kurier") = gebiet.txt_Kurier;
        row->Fields(u"bool_Liefergebiet") = gebiet.bool_Liefergebiet;
        row->Update();
    });
}

qint64 FindLiefergebiet(const QString& land, qint64 plz, const QString& ort) {
    return store::findKey(u"SELECT * FROM tbl_PLZ_Verzeichnis WHERE txt_Land = "_s + store::sqlText(land) +
                          u" AND lng_PLZ = "_s + QString::number(plz) + u" AND txt_Ort = "_s +
                          store::sqlText(ort) + u" ORDER BY lng_ID"_s);
}

void DeleteLiefergebiet(qint64 key, const store::RowMark& mark) {
    store::deleteMarked(kTable, key, mark);
}

} // namespace modOnlineShopSettingsLiefergebiete
