#pragma once
#include <QString>
#include <optional>

/// The web shop's texts and the confirmation mail, each a column under a key. The row 1 is the firm's, the
/// row 0 what came with the installation.
namespace modOnlineShopSettingsDokumente {

constexpr qint64 kFirmRow = 1;
constexpr qint64 kDefaultRow = 0;

/// The document as plain text. Nothing for a missing row or an unknown key.
std::optional<QString> LoadDokument(const QString& key, qint64 id);
/// Into the row 1, encoded for the web where the document is stored so.
void SaveDokument(const QString& key, const QString& text);

} // namespace modOnlineShopSettingsDokumente
