#include "shop/modOnlineShopSettingsBestellzeiten.h"
#include "common/Convert.h"
#include "store/StoreGlobals.h"

using common::Value;
using store::OpenRecordset;
using namespace Qt::StringLiterals;

namespace modOnlineShopSettingsBestellzeiten {
namespace {

const QString kTage = u"SELECT * FROM tbl_OnlineShop_Bestellzeiten ORDER BY lngWochentag ASC;"_s;
const QString kLieferzeiten = u"SELECT * FROM tbl_OnlineShop_Lieferzeiten"_s;
constexpr const char16_t* kZeiten[] = {u"VonStunden", u"VonMinuten", u"BisStunden", u"BisMinuten"};

Periode read(store::Recordset& row, const QString& name) {
    Periode periode;
    for (size_t i = 0; i < periode.zeiten.size(); ++i) {
        const Value zeit = row.Fields(name + QString::fromUtf16(kZeiten[i])).Value();
        if (!zeit.isNull())
            periode.zeiten[i] = common::formatNumber(zeit.toDouble(), u"00");
    }
    periode.geschlossen = row.Fields(name + u"Geschlossen"_s).Value().isTrue();
    return periode;
}

void write(store::Recordset& row, const QString& name, const Periode& periode) {
    for (size_t i = 0; i < periode.zeiten.size(); ++i) {
        const QString& zeit = periode.zeiten[i];
        row.Fields(name + QString::fromUtf16(kZeiten[i])) =
            zeit.isEmpty() ? Value() : Value(zeit.toLongLong());
    }
    row.Fields(name + u"Geschlossen"_s) = periode.geschlossen ? 1 : 0;
}

void saveTage(const std::vector<Wochentag>& tage) {
    for (store::WriteRecordset rows(RsMain, kTage, ConnMain); !rows->Eof(); rows->MoveNext()) {
        const qint64 index = rows->Fields(u"lngWochentag").toLong() - 1;
        if (index < 0 || index >= qint64(tage.size()))
            continue;
        write(*rows, u"lngMittag"_s, tage[size_t(index)].mittag);
        write(*rows, u"lngAbend"_s, tage[size_t(index)].abend);
        rows->Update();
    }
}

void saveLieferzeiten(const Lieferzeiten& zeiten) {
    store::WriteRecordset row(RsMain, kLieferzeiten, ConnMain);
    if (row->Eof())
        row->AddNew();
    row->Fields(u"lng_Abholzeit") = zeiten.lng_Abholzeit;
    row->Fields(u"lng_LastOrder") = zeiten.lng_LastOrder;
    row->Fields(u"lng_ShopStatus") = zeiten.geschlossen ? -1 : 0;
    row->Fields(u"txt_EMailAdresse") = zeiten.txt_EMailAdresse;
    row->Update();
}

} // namespace

Bestellzeiten LoadBestellzeiten() {
    Bestellzeiten zeiten;
    for (OpenRecordset rows(RsMain, kTage, ConnMain); !rows->Eof(); rows->MoveNext())
        zeiten.tage.push_back({rows->Fields(u"lngWochentag").toLong(), read(*rows, u"lngMittag"_s),
                               read(*rows, u"lngAbend"_s)});
    const OpenRecordset row(RsMain, kLieferzeiten + u';', ConnMain);
    if (!row->Eof())
        zeiten.lieferzeiten = {row->Fields(u"lng_Abholzeit").toLong(), row->Fields(u"lng_LastOrder").toLong(),
                               row->Fields(u"lng_ShopStatus").Value().isTrue(),
                               row->Fields(u"txt_EMailAdresse").text()};
    return zeiten;
}

store::RowMark MarkBestellzeiten() {
    return store::RowMark({kTage, kLieferzeiten});
}

void SaveBestellzeiten(const Bestellzeiten& zeiten, const store::RowMark& mark) {
    store::transact(ConnMain, [&] {
        mark.require();
        saveTage(zeiten.tage);
        saveLieferzeiten(*zeiten.lieferzeiten);
    });
}

} // namespace modOnlineShopSettingsBestellzeiten
