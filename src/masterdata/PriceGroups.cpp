#include "masterdata/PriceGroups.h"
#include "common/Convert.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"

using namespace Qt::StringLiterals;

namespace masterdata {
namespace {

QString rowsOf(const PriceTable& table, qint64 key) {
    return u"SELECT * FROM "_s + table.name + u" WHERE "_s + table.keyColumn + u" = "_s +
           QString::number(key) + u" ORDER BY lng_Gruppe ASC;"_s;
}

} // namespace

std::optional<GruppenPreise> loadPrices(const PriceTable& table, qint64 key) {
    store::OpenRecordset rows(RsMain, rowsOf(table, key), ConnMain);
    if (rows->Eof())
        return {};
    GruppenPreise prices;
    for (; !rows->Eof(); rows->MoveNext()) {
        const qint64 gruppe = rows->Fields(u"lng_Gruppe").toLong();
        if (gruppe >= 1 && gruppe <= kPriceGroups)
            prices[size_t(gruppe - 1)] = {rows->Fields(u"dbl_Preis").toDouble(),
                                          int(rows->Fields(u"lng_MWSt").toLong())};
    }
    return prices;
}

void savePrices(const PriceTable& table, qint64 key, const GruppenPreise& prices) {
    store::WriteRecordset rows(RsMain, rowsOf(table, key), ConnMain);
    for (int i = 0; i < kPriceGroups; ++i) {
        if (rows->Eof())
            rows->AddNew();
        rows->Fields(u"dbl_Preis") = prices[size_t(i)].dbl_Preis;
        rows->Fields(u"lng_MWSt") = prices[size_t(i)].lng_MWSt;
        rows->Fields(u"lng_Gruppe") = i + 1;
        rows->Fields(table.keyColumn) = key;
        rows->Update();
        if (!rows->Eof())
            rows->MoveNext();
    }
}

void deletePrices(const PriceTable& table, qint64 key) {
    ConnMain.Execute(u"DELETE FROM "_s + table.name + u" WHERE "_s + table.keyColumn + u" = "_s +
                     QString::number(key));
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

} // namespace masterdata
