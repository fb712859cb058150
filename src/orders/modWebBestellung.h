#pragma once
#include "desks/WebOrder.h"
#include "orders/Ausgelassen.h"
#include "orders/WorkingOrder.h"

/// Keying what the web shop delivers. Reads through RsMain.
namespace modWebBestellung {

/// Keys the lines of a web order into the rows of `order` from the first on, through the same cells and
/// checks as typed ones; a row that is taken already costs the line that would stand there. An extra does not
/// come without its product. What finds no article leaves no row behind. The order is this web order from
/// then on.
orders::Ausgelassen UebernehmeWebBestellung(orders::WorkingOrder& order, const desks::WebOrder& web);

} // namespace modWebBestellung
