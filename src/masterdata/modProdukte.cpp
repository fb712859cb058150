#include "masterdata/modProdukte.h"
#include "masterdata/modProdukteExtras.h"
#include "platform/report/PrintTable.h"
#include "store/Lookups.h"
#include "store/Stations.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include <algorithm>
#include <memory>

using masterdata::PictureSize;
using masterdata::ProduktBild;
using store::OpenRecordset;
using namespace Qt::StringLiterals;

namespace modProdukte {
namespace {

const masterdata::ArtikelTabellen kTables{u"tbl_Verwaltung_Produkte"_s, u"flag_InternetPreis"_s,
                                          u"tbl_Verwaltung_Produkte_Preise"_s, u"lng_ProduktID"_s};

/// The query delivers the entries from the last to the first one.
std::vector<store::Eintrag> turnedRound(const QString& sql) {
    std::vector<store::Eintrag> entries = store::entriesOf(sql);
    std::reverse(entries.begin(), entries.end());
    return entries;
}

std::optional<Produkt> loadHead(qint64 key) {
    OpenRecordset row(RsMain, store::rowQuery(kTables.kopf, key), ConnMain);
    if (row->Eof())
        return {};
    return Produkt{.lng_ProduktGruppe = row->Fields(u"lng_ProduktGruppe").toLong(),
                   .txt_Kurzzeichen = row->Fields(u"txt_Kurzzeichen").text(),
                   .txt_Produkt = row->Fields(u"txt_Produkt").text(),
                   .txt_Beschreibung = row->Fields(u"txt_Beschreibung").text(),
                   .Artikel = masterdata::readArtikel(*row, kTables),
                   .flag_InternetBilder = row->Fields(u"flag_InternetBilder").Value().isTrue(),
                   .BildKlein = {row->Fields(u"txt_BildKlein").text()},
                   .BildGross = {row->Fields(u"txt_BildGross").text()}};
}

QList<qint64> loadExtras(qint64 key) {
    QList<qint64> extras;
    OpenRecordset rows(RsMain,
                       u"SELECT * FROM tbl_Verwaltung_Produkte_Extras WHERE lng_ProduktID = "_s +
                           QString::number(key),
                       ConnMain);
    for (; !rows->Eof(); rows->MoveNext())
        extras << rows->Fields(u"lng_ProduktExtraID").toLong();
    return extras;
}

/// The name of a changed picture. A deleted one leaves the key and a bare point: the firm's sign that the
/// picture went away.
QString pictureName(qint64 id, const ProduktBild& bild) {
    return QString::number(id) + u'.' + masterdata::extensionOf(bild.datei);
}

/// Gives the row's key, which a new row has before it is written.
qint64 saveHead(const Produkt& produkt, qint64 key) {
    store::WriteRecordset row(RsMain, store::rowQuery(kTables.kopf, key), ConnMain);
    if (row->Eof())
        row->AddNew();
    row->Fields(u"lng_ProduktGruppe") = produkt.lng_ProduktGruppe;
    row->Fields(u"txt_Kurzzeichen") = produkt.txt_Kurzzeichen;
    row->Fields(u"txt_Produkt") = produkt.txt_Produkt;
    row->Fields(u"txt_Beschreibung") = produkt.txt_Beschreibung;
    masterdata::writeArtikel(*row, kTables, produkt.Artikel);
    row->Fields(u"flag_UpdatedPicSmall") = produkt.BildKlein.geaendert;
    row->Fields(u"flag_UpdatedPicLarge") = produkt.BildGross.geaendert;
    row->Fields(u"flag_InternetBilder") = produkt.flag_InternetBilder;
    const qint64 id = row->Fields(u"lng_ID").toLong();
    if (produkt.BildKlein.geaendert)
        row->Fields(u"txt_BildKlein") = pictureName(id, produkt.BildKlein);
    if (produkt.BildGross.geaendert)
        row->Fields(u"txt_BildGross") = pictureName(id, produkt.BildGross);
    row->Update();
    return id;
}

void saveExtras(qint64 id, const QList<qint64>& extras) {
    ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_Produkte_Extras WHERE lng_ProduktID = "_s +
                     QString::number(id));
    store::WriteRecordset rows(RsMain, u"SELECT * FROM tbl_Verwaltung_Produkte_Extras;"_s, ConnMain);
    for (const qint64 extra : extras) {
        if (modProdukteExtras::IsExtraInaktiv(extra))
            continue;
        rows->AddNew();
        rows->Fields(u"lng_ProduktID") = id;
        rows->Fields(u"lng_ProduktExtraID") = extra;
        rows->Update();
    }
}

/// Null where the picture did not change, or went away.
std::unique_ptr<masterdata::NewPicture> newPicture(PictureSize size, const ProduktBild& bild, qint64 id) {
    if (!bild.geaendert || bild.datei.isEmpty())
        return {};
    return std::make_unique<masterdata::NewPicture>(size, bild.datei, id);
}

} // namespace

QString ProdukteListe() {
    return u"SELECT lng_ID, lng_ProduktGruppe, txt_Kurzzeichen, txt_Produkt, txt_Stückelung, lng_Einheit, "
           u"lng_Gruppe, dbl_Preis, lng_MWSt, lng_Reihenfolge, flag_InternetPreis, flag_Status FROM "
           u"view_Verwaltung_Produkte ORDER BY lng_Reihenfolge, lng_ID"_s;
}

void FillArtikelStamm(store::Recordset& rows, const QString& kategorie, const platform::Progress& progress) {
    using store::sqlText;
    platform::fillPrintTable(
        u"ArtikelStamm"_s,
        u"Kurzzeichen,Produkt,ProduktGruppe,Stückelung,Einheit,Ccy,Preis,MWStCode,Status,PreisGruppe,Internet"_s,
        rows.RecordCount(),
        [&](int row) {
            const auto value = [&](int column) { return rows.valueAt(row, column); };
            return QStringList{sqlText(value(2).toText()),
                               sqlText(value(3).toText()),
                               sqlText(kategorie),
                               sqlText(value(4).toText()),
                               platform::sqlNumber(value(5)),
                               sqlText(SysCurrency),
                               platform::sqlNumber(value(7)),
                               platform::sqlNumber(value(8)),
                               masterdata::printedStatus(value(11)),
                               platform::sqlNumber(value(6)),
                               masterdata::printedInternet(value(10))};
        },
        progress);
}

std::vector<store::Eintrag> Kategorien() {
    return turnedRound(u"SELECT lng_ID, txt_ProduktGruppe FROM tbl_Verwaltung_ProdukteKategorien ORDER BY "
                       u"lng_Reihenfolge DESC, lng_ID;"_s);
}

std::vector<store::Eintrag> AktiveExtras() {
    return turnedRound(u"SELECT lng_ID, txt_Extra FROM tbl_Verwaltung_ProdukteExtras WHERE flag_Status = "
                       u"False ORDER BY lng_Reihenfolge DESC, lng_ID;"_s);
}

std::optional<Produkt> LoadProdukt(qint64 key) {
    auto produkt = loadHead(key);
    if (!produkt)
        return {};
    produkt->Artikel.Preise = masterdata::loadPrices(kTables, key);
    produkt->Extras = loadExtras(key);
    return produkt;
}

store::RowMark MarkProdukt(qint64 key) {
    return store::RowMark(masterdata::rowsOf(kTables, key)
                          << u"SELECT lng_ProduktExtraID FROM tbl_Verwaltung_Produkte_Extras WHERE "
                             u"lng_ProduktID = %1 ORDER BY lng_ProduktExtraID"_s.arg(key));
}

void SaveProdukt(const Produkt& produkt, qint64 key, const store::RowMark& mark) {
    decltype(newPicture(PictureSize::Klein, produkt.BildKlein, key)) klein, gross;
    store::transact(ConnMain, [&] {
        mark.require();
        const qint64 id = saveHead(produkt, key);
        masterdata::savePrices(kTables, id, produkt.Artikel.Preise);
        saveExtras(id, produkt.Extras);
        store::tellNews(store::Topic::Catalogue);
        // A picture that cannot be copied leaves the product as it was, and a product that cannot be stored
        // its pictures.
        klein = newPicture(PictureSize::Klein, produkt.BildKlein, id);
        gross = newPicture(PictureSize::Gross, produkt.BildGross, id);
    });
    for (const auto* picture : {&klein, &gross})
        if (*picture)
            (*picture)->publish();
}

qint64 FindKurzzeichen(const QString& kurzzeichen, qint64 key, qint64 kategorie) {
    const QString inCategory = u" AND lng_ProduktGruppe = "_s + QString::number(kategorie) + u';';
    const QString sql =
        u"SELECT * FROM tbl_Verwaltung_Produkte WHERE txt_Kurzzeichen = "_s + store::sqlText(kurzzeichen);
    return store::findKey(key == -1 ? sql + inCategory
                                    : sql + u" AND lng_ID <> "_s + QString::number(key) + inCategory);
}

bool CanDeleteProdukt(qint64 key) {
    return !store::isReferredTo(
        key, {u"SELECT * FROM tbl_Verwaltung_Produkte_Extras WHERE lng_ProduktID = ",
              u"SELECT * FROM tbl_Auftragswesen_Bestellungen_Details WHERE lng_ProduktID = ",
              u"SELECT * FROM tbl_Auftragswesen_Vorbestellungen_Details WHERE lng_ProduktID = "});
}

void DeleteProdukt(qint64 key, const store::RowMark& mark) {
    masterdata::deleteArtikel(kTables, key, mark);
}

QString GetProduktKurzzeichen(qint64 produktId) {
    return store::findText(u"SELECT txt_Kurzzeichen FROM tbl_Verwaltung_Produkte WHERE lng_ID = "_s +
                           QString::number(produktId));
}

QString GetProduktName(qint64 produktId) {
    return store::findText(u"SELECT txt_Produkt FROM tbl_Verwaltung_Produkte WHERE lng_ID = "_s +
                           QString::number(produktId));
}

} // namespace modProdukte
