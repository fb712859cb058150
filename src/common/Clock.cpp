#include "common/Clock.h"
#include "common/Convert.h"
#include <QDateTime>
#include <cmath>
#include <optional>

namespace common::clock {
namespace {
std::optional<double> stopped;
}

double now() {
    if (stopped)
        return *stopped;
    const QDateTime local = QDateTime::currentDateTime();
    const QDate date = local.date();
    return dateSerial(date.year(), date.month(), date.day()) +
           local.time().msecsSinceStartOfDay() / 86'400'000.0;
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
