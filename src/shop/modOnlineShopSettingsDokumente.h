#pragma once
#include <QString>
#include <optional>

/// The web shop's texts and the confirmation mail, each a column under a key. The rows are those of
/// shop/SettingRows.h.
namespace modOnlineShopSettingsDokumente {

/// The document as plain text. Nothing for a missing row or an unknown key.
std::optional<QString> LoadDokument(const QString& key, qint64 id);
/// Into the row 1, encoded for the web where the document is stored so.
void SaveDokument(const QString& key, const QString& text);

} // namespace modOnlineShopSettingsDokumente
