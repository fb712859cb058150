#pragma once
#include "platform/Progress.h"
#include "store/Connection.h"
#include "store/Rows.h"

namespace platform {

/// Has a progress stand while the store is waited for, without a known end. It must outlive the result.
store::Waiting waitingWith(const Progress& progress);
/// Rows of a query on the main database. Watched, it runs beside the user interface: calls come in meanwhile,
/// and what `progress` throws (GivenUp) breaks it off.
store::Rows readRows(const QString& sql, const Progress& progress = unwatched);

} // namespace platform
