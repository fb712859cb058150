#include "masterdata/modProdukteExtras.h"
#include "platform/report/PrintTable.h"
#include "store/Lookups.h"
#include "store/Stations.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"

using store::OpenRecordset;
using namespace Qt::StringLiterals;

namespace modProdukteExtras {
namespace {

const masterdata::ArtikelTabellen kTables{u"tbl_Verwaltung_ProdukteExtras"_s, u"flag_Internet"_s,
                                          u"tbl_Verwaltung_ProdukteExtras_Preise"_s, u"lng_ExtraID"_s};

/// Gives the row's key, which a new row has before it is written.
qint64 saveHead(const Extra& extra, qint64 key) {
    store::WriteRecordset row(RsMain, store::rowQuery(kTables.kopf, key), ConnMain);
    if (row->Eof())
        row->AddNew();
    row->Fields(u"txt_Extra") = extra.txt_Extra;
    masterdata::writeArtikel(*row, kTables, extra.Artikel);
    const qint64 id = row->Fields(u"lng_ID").toLong();
    row->Update();
    return id;
}

bool flagOrMissing(qint64 key, QStringView flag) {
    OpenRecordset row(RsSecond, store::rowQuery(kTables.kopf, key), ConnMain);
    return row->Eof() || row->Fields(flag).Value().isTrue();
}

} // namespace

QString ExtrasListe() {
    return u"SELECT lng_ID, txt_Extra, txt_Stückelung, lng_Einheit, lng_Gruppe, dbl_Preis, lng_MWSt, "
           u"lng_Reihenfolge, flag_Internet, flag_Status FROM view_Verwaltung_ProdukteExtras ORDER BY "
           u"lng_Reihenfolge, lng_ID"_s;
}

void FillArtikelZusatzStamm(store::Recordset& rows, const platform::Progress& progress) {
    using store::sqlText;
    platform::fillPrintTable(
        u"ArtikelZusatzStamm"_s,
        u"Bezeichnung,Stückelung,Einheit,Ccy,Preis,MWStCode,Status,PreisGruppe,Internet"_s,
        rows.RecordCount(),
        [&](int row) {
            const auto value = [&](int column) { return rows.valueAt(row, column); };
            return QStringList{sqlText(value(1).toText()),           sqlText(value(2).toText()),
                               platform::sqlNumber(value(3)),        sqlText(SysCurrency),
                               platform::sqlNumber(value(5)),        platform::sqlNumber(value(6)),
                               masterdata::printedStatus(value(9)),  platform::sqlNumber(value(4)),
                               masterdata::printedInternet(value(8))};
        },
        progress);
}

std::optional<Extra> LoadExtra(qint64 key) {
    Extra extra;
    {
        OpenRecordset row(RsMain, store::rowQuery(kTables.kopf, key), ConnMain);
        if (row->Eof())
            return {};
        extra = {row->Fields(u"txt_Extra").text(), masterdata::readArtikel(*row, kTables)};
    }
    extra.Artikel.Preise = masterdata::loadPrices(kTables, key);
    return extra;
}

store::RowMark MarkExtra(qint64 key) {
    return store::RowMark(masterdata::rowsOf(kTables, key));
}

void SaveExtra(const Extra& extra, qint64 key, const store::RowMark& mark) {
    store::transact(ConnMain, [&] {
        mark.require();
        masterdata::savePrices(kTables, saveHead(extra, key), extra.Artikel.Preise);
        store::tellNews(store::Topic::Catalogue);
    });
}

qint64 FindExtra(const QString& name, qint64 key) {
    return store::findDuplicate(kTables.kopf, u"txt_Extra"_s, name, key);
}

bool HasExtraProdukte(qint64 key, bool inactive) {
    return key != -1 && inactive &&
           store::isReferredTo(key,
                               {u"SELECT * FROM tbl_Verwaltung_Produkte_Extras WHERE lng_ProduktExtraID = "});
}

bool CanDeleteExtra(qint64 key) {
    return !store::isReferredTo(
        key, {u"SELECT * FROM tbl_Verwaltung_Produkte_Extras WHERE lng_ProduktExtraID = ",
              u"SELECT * FROM tbl_Auftragswesen_Bestellungen_Details WHERE lng_ExtraID = ",
              u"SELECT * FROM tbl_Auftragswesen_Vorbestellungen_Details WHERE lng_ExtraID = "});
}

void DeleteExtra(qint64 key, const store::RowMark& mark) {
    masterdata::deleteArtikel(kTables, key, mark);
}

bool IsExtraInaktiv(qint64 key) {
    return flagOrMissing(key, u"flag_Status");
}

bool IsExtraInternet(qint64 key) {
    return flagOrMissing(key, u"flag_Internet");
}

QString GetExtraName(qint64 extraId) {
    return store::findText(u"SELECT txt_Extra FROM tbl_Verwaltung_ProdukteExtras WHERE lng_ID = "_s +
                           QString::number(extraId));
}

} // namespace modProdukteExtras
