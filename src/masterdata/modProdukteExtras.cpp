#include "masterdata/modProdukteExtras.h"
#include "masterdata/PrintRows.h"
#include "store/Lookups.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"

using store::OpenRecordset;
using namespace Qt::StringLiterals;

namespace modProdukteExtras {
namespace {

const masterdata::PriceTable& priceTable() {
    static const masterdata::PriceTable table{u"tbl_Verwaltung_ProdukteExtras_Preise"_s, u"lng_ExtraID"_s};
    return table;
}

QString rowQuery(qint64 key) {
    return u"SELECT * FROM tbl_Verwaltung_ProdukteExtras WHERE lng_ID = "_s + QString::number(key);
}

/// Gives the row's key, which a new row has before it is written.
qint64 saveHead(const Extra& extra, qint64 key) {
    store::WriteRecordset row(RsMain, rowQuery(key), ConnMain);
    if (row->Eof())
        row->AddNew();
    row->Fields(u"txt_Extra") = extra.txt_Extra;
    row->Fields(u"txt_Stückelung") = extra.txt_Stückelung;
    row->Fields(u"lng_Einheit") = extra.lng_Einheit;
    row->Fields(u"lng_Reihenfolge") = extra.lng_Reihenfolge;
    row->Fields(u"flag_Internet") = extra.flag_Internet;
    row->Fields(u"flag_Status") = extra.flag_Status;
    row->Fields(u"flag_Updated") = 1;
    const qint64 id = row->Fields(u"lng_ID").toLong();
    row->Update();
    return id;
}

bool flagOrMissing(qint64 key, QStringView flag) {
    OpenRecordset row(RsSecond, rowQuery(key), ConnMain);
    return row->Eof() || row->Fields(flag).Value().isTrue();
}

} // namespace

QString ExtrasListe() {
    return u"SELECT lng_ID, txt_Extra, txt_Stückelung, lng_Einheit, lng_Gruppe, dbl_Preis, lng_MWSt, "
           u"lng_Reihenfolge, flag_Internet, flag_Status FROM view_Verwaltung_ProdukteExtras ORDER BY "
           u"lng_Reihenfolge"_s;
}

void FillArtikelZusatzStamm(store::Recordset& rows) {
    using store::sqlText;
    masterdata::fillPrintTable(
        u"ArtikelZusatzStamm"_s,
        u"Bezeichnung,Stückelung,Einheit,Ccy,Preis,MWStCode,Status,PreisGruppe,Internet"_s, rows,
        [&](int row) {
            const auto value = [&](int column) { return rows.valueAt(row, column); };
            return QStringList{sqlText(value(1).toText()),           sqlText(value(2).toText()),
                               masterdata::sqlNumber(value(3)),      sqlText(SysCurrency),
                               masterdata::sqlNumber(value(5)),      masterdata::sqlNumber(value(6)),
                               masterdata::printedStatus(value(9)),  masterdata::sqlNumber(value(4)),
                               masterdata::printedInternet(value(8))};
        });
}

std::optional<Extra> LoadExtra(qint64 key) {
    Extra extra;
    {
        OpenRecordset row(RsMain, rowQuery(key), ConnMain);
        if (row->Eof())
            return {};
        extra = {row->Fields(u"txt_Extra").text(),
                 row->Fields(u"txt_Stückelung").text(),
                 row->Fields(u"lng_Einheit").toLong(),
                 row->Fields(u"lng_Reihenfolge").toLong(),
                 row->Fields(u"flag_Internet").Value().isTrue(),
                 row->Fields(u"flag_Status").Value().isTrue(),
                 {}};
    }
    extra.Preise = masterdata::loadPrices(priceTable(), key).value_or(masterdata::GruppenPreise{});
    return extra;
}

void SaveExtra(const Extra& extra, qint64 key) {
    store::Transaction transaction(ConnMain);
    masterdata::savePrices(priceTable(), saveHead(extra, key), extra.Preise);
    transaction.commit();
}

qint64 FindExtra(const QString& name, qint64 key) {
    return store::findDuplicate(u"tbl_Verwaltung_ProdukteExtras"_s, u"txt_Extra"_s, name, key);
}

bool HasExtraProdukte(qint64 key, bool inactive) {
    return key != -1 && inactive &&
           store::rowExists(u"SELECT * FROM tbl_Verwaltung_Produkte_Extras WHERE lng_ProduktExtraID = "_s +
                            QString::number(key));
}

bool CanDeleteExtra(qint64 key) {
    const QString id = QString::number(key);
    return !store::rowExists(u"SELECT * FROM tbl_Verwaltung_Produkte_Extras WHERE lng_ProduktExtraID = "_s +
                             id) &&
           !store::rowExists(u"SELECT * FROM tbl_Auftragswesen_Bestellungen_Details WHERE lng_ExtraID = "_s +
                             id) &&
           !store::rowExists(
               u"SELECT * FROM tbl_Auftragswesen_Vorbestellungen_Details WHERE lng_ExtraID = "_s + id);
}

void DeleteExtra(qint64 key) {
    store::Transaction transaction(ConnMain);
    ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_ProdukteExtras WHERE lng_ID = "_s + QString::number(key));
    masterdata::deletePrices(priceTable(), key);
    transaction.commit();
}

bool IsExtraInaktiv(qint64 key) {
    return flagOrMissing(key, u"flag_Status");
}

bool IsExtraInternet(qint64 key) {
    return flagOrMissing(key, u"flag_Internet");
}

QString GetExtraName(qint64 extraId) {
    OpenRecordset rows(RsMain,
                       u"SELECT txt_Extra FROM tbl_Verwaltung_ProdukteExtras WHERE lng_ID = "_s +
                           QString::number(extraId),
                       ConnMain);
    return rows->Eof() ? QString() : rows->Fields(u"txt_Extra").text();
}

} // namespace modProdukteExtras
