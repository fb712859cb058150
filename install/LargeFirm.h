#pragma once
#include "install/Schema.h"

namespace install {

/// Rows for measuring. At scale 1: 200,000 customers, 1,000,000 orders with 5,000,000 lines, 1,000,000
/// entries of the phone book and 2,000 products; all but the products go with the scale. Everything as
/// derived as in the demo firm; the same day gives the same rows.
void addLargeFirm(sqlite3* handle, Database database, double scale);

} // namespace install
