#include "maintenance/WorkApart.h"
#include "common/Guard.h"
#include <QCoreApplication>
#include <atomic>
#include <chrono>
#include <future>

namespace maintenance {

using namespace std::chrono_literals;

void workApart(const std::function<void(const platform::Progress&)>& work, const platform::Progress& shown) {
    constexpr int kSteps = 1000;
    constexpr auto kBetweenPaintings = 20ms;
    std::atomic<qint64> step = 0;
    std::future<void> end = std::async(std::launch::async, [&] {
        work([&step](qint64 done, qint64 total) { step = total > 0 ? done * kSteps / total : 0; });
    });
    const common::NestedEventLoop loop;
    do {
        shown(step, kSteps);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    } while (end.wait_for(kBetweenPaintings) != std::future_status::ready);
    end.get();
    shown(step, kSteps);
}

platform::Progress stretch(const platform::Progress& whole, int from, int to) {
    constexpr qint64 kFine = 1000;
    return [&whole, from, to](qint64 done, qint64 total) {
        const qint64 part = total > 0 ? qMin(done, total) * kFine / total : 0;
        whole(from * kFine + (to - from) * part, 100 * kFine);
    };
}

} // namespace maintenance
