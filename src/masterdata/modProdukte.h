#pragma once
#include <QString>

/// Lookups of products; "" for a missing one.
namespace modProdukte {

QString GetProduktKurzzeichen(qint64 produktId);
QString GetProduktName(qint64 produktId);

} // namespace modProdukte
