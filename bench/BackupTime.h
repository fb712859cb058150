#pragma once
#include <QString>

namespace bench {

/// Milliseconds of work on the whole main database.
struct BackupTime {
    /// A backup as the owner makes it, checked and on the disk; beside it the engine's `VACUUM INTO`, the new
    /// file in the old one's place and a copy of it, both on the disk.
    double backup = 0, bare = 0;
    /// Booking an order while the day's copy is being made, and while none is; the copy itself.
    double bookingMeanwhile = 0, booking = 0, dailyCopy = 0;
};

/// On an installation that nobody has open, `times` times. `copy` is the same database for the other side.
BackupTime measureBackup(const QString& folder, const QString& copy, int times);

} // namespace bench
