#include "common/Clock.h"
#include "common/Convert.h"
#include <QDateTime>
#include <cmath>
#include <optional>

namespace common::clock {
namespace {
std::optional<double> stopped;

/// Milliseconds that local time is ahead of UTC. Asking the system reads its time zone's file, so the answer
/// is kept for its minute: no zone changes within one, and another zone chosen in the system counts from the
/// next.
qint64 localOffset(qint64 utc) {
    constexpr qint64 kMinute = 60'000;
    static thread_local qint64 knownMinute = -1;
    static thread_local qint64 offset = 0;
    if (utc / kMinute != knownMinute) {
        knownMinute = utc / kMinute;
        offset = QDateTime::fromMSecsSinceEpoch(utc).offsetFromUtc() * qint64(1000);
    }
    return offset;
}
} // namespace

double now() {
    if (stopped)
        return *stopped;
    constexpr double kDay = 86'400'000;
    constexpr double kFirstOf1970 = 25569;
    const qint64 utc = QDateTime::currentMSecsSinceEpoch();
    return kFirstOf1970 + double(utc + localOffset(utc)) / kDay;
}

double today() {
    return std::floor(now());
}

double time() {
    const double moment = now();
    return moment - std::floor(moment);
}

void set(double serial) {
    stopped = serial;
}

void release() {
    stopped.reset();
}

} // namespace common::clock
