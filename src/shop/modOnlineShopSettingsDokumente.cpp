#include "shop/modOnlineShopSettingsDokumente.h"
#include "common/modFunctions.h"
#include "shop/SettingRows.h"
#include "store/Lookups.h"
#include "store/StoreGlobals.h"
#include <algorithm>

using namespace Qt::StringLiterals;

namespace modOnlineShopSettingsDokumente {
namespace {

const QString kTable = u"tbl_OnlineShop_Dokumente"_s;

struct Dokument {
    const char16_t* key;
    const char16_t* column;
    bool encoded = true;
};

/// The first one has no place in the tree of the screen.
constexpr Dokument kDokumente[] = {{u"Danke", u"txt_BestellungDanke"},
                                   {u"Kontakt", u"txt_DokumenteKontakt"},
                                   {u"AGB", u"txt_DokumenteAGB"},
                                   {u"FAQ", u"txt_DokumenteFAQ"},
                                   {u"Widerspruchsrecht", u"txt_DokumenteWiderspruch"},
                                   {u"Datenschutz", u"txt_DokumenteDatenschutz"},
                                   {u"Informationen", u"txt_News"},
                                   {u"Betreff", u"txt_EMailConfoBetreff", false},
                                   {u"ConfoText", u"txt_EMailConfoBody", false}};

const Dokument* find(const QString& key) {
    const auto* found = std::find_if(std::begin(kDokumente), std::end(kDokumente),
                                     [&](const Dokument& dokument) { return key == dokument.key; });
    return found == std::end(kDokumente) ? nullptr : found;
}

} // namespace

std::optional<QString> LoadDokument(const QString& key, qint64 id) {
    const Dokument* dokument = find(key);
    const store::OpenRecordset row(RsMain, store::rowQuery(kTable, id) + u" ;"_s, ConnMain);
    if (!dokument || row->Eof())
        return {};
    const common::Value text = row->Fields(dokument->column).Value();
    return dokument->encoded ? modFunctions::HTMLToText(text) : text.toText();
}

store::RowMark MarkDokument(const QString& key) {
    const Dokument* dokument = find(key);
    return dokument ? store::RowMark({u"SELECT %1 FROM %2 WHERE lng_ID = %3"_s.arg(
                          QString::fromUtf16(dokument->column), kTable, QString::number(shop::kFirmRow))})
                    : store::RowMark();
}

void SaveDokument(const QString& key, const QString& text, const store::RowMark& mark) {
    const Dokument* dokument = find(key);
    if (!dokument)
        return;
    store::transact(ConnMain, [&] {
        mark.require();
        store::WriteRecordset row(RsMain, store::rowQuery(kTable, shop::kFirmRow) + u';', ConnMain);
        row->Fields(dokument->column) = dokument->encoded ? modFunctions::TextToHTML(text) : text;
        row->Update();
    });
}

} // namespace modOnlineShopSettingsDokumente
