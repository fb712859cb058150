#include "masterdata/modProdukteKategorien.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "store/Lookups.h"
#include "store/Stations.h"
#include "store/StoreGlobals.h"
#include <QCoreApplication>

using store::OpenRecordset;
using namespace Qt::StringLiterals;

namespace modProdukteKategorien {
namespace {

const QString kTable = u"tbl_Verwaltung_ProdukteKategorien"_s;

QString tr(const char* text) {
    return QCoreApplication::translate("modProdukteKategorien", text);
}

} // namespace

QString ProduktGruppenListe() {
    return u"SELECT lng_ID, txt_ProduktGruppe, lng_Reihenfolge, flag_Internet "
           u"FROM tbl_Verwaltung_ProdukteKategorien ORDER BY lng_Reihenfolge, lng_ID"_s;
}

std::optional<ProduktGruppe> LoadProduktGruppe(qint64 key) {
    OpenRecordset row(RsMain, store::rowQuery(kTable, key), ConnMain);
    if (row->Eof())
        return {};
    return ProduktGruppe{row->Fields(u"txt_ProduktGruppe").text(), row->Fields(u"lng_Reihenfolge").toLong(),
                         row->Fields(u"flag_Internet").Value().isTrue()};
}

store::RowMark MarkProduktGruppe(qint64 key) {
    return store::markRow(kTable, key);
}

void SaveProduktGruppe(const ProduktGruppe& gruppe, qint64 key, const store::RowMark& mark) {
    store::transact(ConnMain, [&] {
        mark.require();
        store::WriteRecordset row(RsMain, store::rowQuery(kTable, key), ConnMain);
        if (row->Eof())
            row->AddNew();
        row->Fields(u"txt_ProduktGruppe") = gruppe.txt_ProduktGruppe;
        row->Fields(u"lng_Reihenfolge") = gruppe.lng_Reihenfolge;
        row->Fields(u"flag_Internet") = gruppe.flag_Internet;
        row->Fields(u"lng_Updated") = 1;
        row->Update();
        store::tellNews(store::Topic::Catalogue);
    });
}

qint64 FindProduktGruppe(const QString& name, qint64 key) {
    return store::findDuplicate(kTable, u"txt_ProduktGruppe"_s, name, key);
}

bool CanDeleteProduktGruppe(qint64 key) {
    return !store::isReferredTo(key, {u"SELECT * FROM tbl_Verwaltung_Produkte WHERE lng_ProduktGruppe = "});
}

void DeleteProduktGruppe(qint64 key, const store::RowMark& mark) {
    store::deleteMarked(kTable, key, mark);
    store::tellNews(store::Topic::Catalogue);
}

bool CheckProduktGruppenDefined(platform::Dialogs& dialogs, platform::Navigation& navigation) {
    {
        OpenRecordset rows(
            RsMain, u"SELECT Count(*) AS TotalKategories FROM tbl_Verwaltung_ProdukteKategorien"_s, ConnMain);
        if (rows->Fields(u"TotalKategories").toLong() > 0)
            return true;
    }
    dialogs.MsgBox(tr("Sie müssen zu erst mindestens eine Produkt Gruppe definieren, bevor Sie die Prokukte "
                      "erfassen können."),
                   platform::kOk, tr("Fehlende Eingabe"));
    navigation.showScreen(u"frmProdukteKategorien"_s);
    return false;
}

} // namespace modProdukteKategorien
