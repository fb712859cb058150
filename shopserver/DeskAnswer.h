#pragma once
#include "shopserver/Order.h"
#include <QByteArray>

/// The tagged texts that the desk reads, in UTF-8. A value stands as plain text: its "<" and ">" become "‹"
/// and "›", so that no value is ever a tag, and control characters become blanks, but for line ends.
namespace shop {

QByteArray headsAnswer(const QList<Order>& orders);
QByteArray linesAnswer(const QList<OrderLine>& lines);

} // namespace shop
