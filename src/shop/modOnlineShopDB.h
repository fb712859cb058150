#pragma once
#include <QString>

namespace platform {
class Dialogs;
}

namespace shop {
class TransferView;
}

/// The catalogue of the web shop: a database of its own, which goes up to the shop's server as a file.
namespace modOnlineShopDB {

/// Path of the file.
QString DatabaseFile();

/// Empties the shop's database, fills it from the main database and compacts it. A value that is missing in a
/// column of numbers throws kSqlFailure, a missing file kFileNotFound; the former catalogue stands then. A
/// compaction that fails is told in a box, whatever the reason, and leaves the filled file as it is.
void CreateOnlineShopDB(shop::TransferView& view, platform::Dialogs& dialogs);

} // namespace modOnlineShopDB
