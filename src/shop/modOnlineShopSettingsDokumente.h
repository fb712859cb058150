#pragma once
#include "store/RowMark.h"
#include <QString>
#include <optional>

/// The web shop's texts and the confirmation mail, each a column under a key. The rows are those of
/// shop/SettingRows.h.
namespace modOnlineShopSettingsDokumente {

/// The document as plain text. Nothing for a missing row or an unknown key.
std::optional<QString> LoadDokument(const QString& key, qint64 id);
/// Of the document in the row 1; the others do not count.
store::RowMark MarkDokument(const QString& key);
/// Into the row 1, encoded for the web where the document is stored so.
void SaveDokument(const QString& key, const QString& text, const store::RowMark& mark = {});

} // namespace modOnlineShopSettingsDokumente
