#pragma once
#include "install/Schema.h"

namespace install {

/// The demo firm: an invented delivery kitchen at Dübendorf with 8 categories, 80 products in ten price
/// groups, 20 extras, 6 couriers, 400 customers, a phone book of 3,000 entries and 90 days of bookings up to
/// yesterday (common::clock). The same day gives the same rows. Telephone numbers begin with 040 and 073,
/// which nobody has.
void addDemoFirm(sqlite3* handle, Database database);

} // namespace install
