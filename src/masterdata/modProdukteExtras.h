#pragma once
#include <QString>

/// Lookups of extras.
namespace modProdukteExtras {

/// "" for a missing extra.
QString GetExtraName(qint64 extraId);

} // namespace modProdukteExtras
