#include "masterdata/Artikel.h"
#include "common/Convert.h"
#include "store/Lookups.h"
#include "store/Stations.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"

using namespace Qt::StringLiterals;

namespace masterdata {
namespace {

QString withPrices(const ArtikelTabellen& tables, qint64 key) {
    return u" FROM "_s + tables.preise + u" WHERE "_s + tables.schluessel + u" = "_s + QString::number(key);
}

QString priceRows(const ArtikelTabellen& tables, qint64 key) {
    return u"SELECT *"_s + withPrices(tables, key) + u" ORDER BY lng_Gruppe ASC;"_s;
}

} // namespace

Artikel readArtikel(store::Recordset& row, const ArtikelTabellen& tables) {
    return {.txt_Stückelung = row.Fields(u"txt_Stückelung").text(),
            .lng_Einheit = row.Fields(u"lng_Einheit").toLong(),
            .lng_Reihenfolge = row.Fields(u"lng_Reihenfolge").toLong(),
            .flag_Internet = row.Fields(tables.internet).Value().isTrue(),
            .flag_Status = row.Fields(u"flag_Status").Value().isTrue()};
}

void writeArtikel(store::Recordset& row, const ArtikelTabellen& tables, const Artikel& artikel) {
    row.Fields(u"txt_Stückelung") = artikel.txt_Stückelung;
    row.Fields(u"lng_Einheit") = artikel.lng_Einheit;
    row.Fields(u"lng_Reihenfolge") = artikel.lng_Reihenfolge;
    row.Fields(tables.internet) = artikel.flag_Internet;
    row.Fields(u"flag_Status") = artikel.flag_Status;
    row.Fields(u"flag_Updated") = 1;
}

GruppenPreise loadPrices(const ArtikelTabellen& tables, qint64 key) {
    GruppenPreise prices;
    store::OpenRecordset rows(RsMain, priceRows(tables, key), ConnMain);
    for (; !rows->Eof(); rows->MoveNext()) {
        const qint64 gruppe = rows->Fields(u"lng_Gruppe").toLong();
        if (gruppe >= 1 && gruppe <= kPriceGroups)
            prices[size_t(gruppe - 1)] = {rows->Fields(u"dbl_Preis").toDouble(),
                                          int(rows->Fields(u"lng_MWSt").toLong())};
    }
    return prices;
}

void savePrices(const ArtikelTabellen& tables, qint64 key, const GruppenPreise& prices) {
    store::WriteRecordset rows(RsMain, priceRows(tables, key), ConnMain);
    for (int i = 0; i < kPriceGroups; ++i) {
        if (rows->Eof())
            rows->AddNew();
        rows->Fields(u"dbl_Preis") = prices[size_t(i)].dbl_Preis;
        rows->Fields(u"lng_MWSt") = prices[size_t(i)].lng_MWSt;
        rows->Fields(u"lng_Gruppe") = i + 1;
        rows->Fields(tables.schluessel) = key;
        rows->Update();
        if (!rows->Eof())
            rows->MoveNext();
    }
}

QStringList rowsOf(const ArtikelTabellen& tables, qint64 key) {
    return {store::rowQuery(tables.kopf, key), u"SELECT lng_Gruppe, dbl_Preis, lng_MWSt"_s +
                                                   withPrices(tables, key) + u" ORDER BY lng_Gruppe ASC"_s};
}

void deleteArtikel(const ArtikelTabellen& tables, qint64 key, const store::RowMark& mark) {
    store::transact(ConnMain, [&] {
        mark.require();
        store::deleteRow(tables.kopf, key);
        ConnMain.Execute(u"DELETE"_s + withPrices(tables, key));
        store::tellNews(store::Topic::Catalogue);
    });
}

QStringList mwstTexts() {
    const double rates[] = {SysMWStSatz1, SysMWStSatz3, SysMWStSatz2};
    QStringList texts;
    for (int code = 0; code < 3; ++code)
        texts << u"%1 (%2)"_s.arg(code).arg(common::formatNumber(rates[code] * 0.01, u"0.00%"));
    return texts;
}

QStringList packagingWords() {
    return {u"Stk."_s, u"Paar"_s, u"Dose"_s, u"Pack"_s};
}

QString printedInternet(const common::Value& flag) {
    return store::sqlText(flag.isTrue() ? QStringLiteral("Ja") : QStringLiteral("Nein"));
}

QString printedStatus(const common::Value& inactive) {
    return store::sqlText(inactive.isTrue() ? QStringLiteral("Inaktiv") : QStringLiteral("Aktiv"));
}

} // namespace masterdata
