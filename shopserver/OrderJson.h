#pragma once
#include "shopserver/Order.h"
#include <QByteArray>

namespace shop {

/// An order out of a JSON object with the names of the desk's answer, `ID` for a number of one's own, and the
/// lines as an array `ZEILEN` with `ISPRODUKT`, `PRODUKTID`, `ANZAHL` and `BEZEICHNUNG`. Nothing is checked
/// against the catalogue. Throws std::invalid_argument.
Order orderOfJson(const QByteArray& json, const QDateTime& now);

} // namespace shop
