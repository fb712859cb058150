#include "maintenance/WorkApart.h"
#include "common/Guard.h"
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <atomic>
#include <chrono>
#include <future>

namespace maintenance {

using namespace std::chrono_literals;

namespace {

/// As long as it lives, what the user does reaches nobody: it would answer, unread, what is told afterwards.
class Deaf : public QObject {
  public:
    Deaf() { QCoreApplication::instance()->installEventFilter(this); }

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::TouchBegin:
            return true;
        case QEvent::Close:
            event->ignore();
            return true;
        default:
            return false;
        }
    }
};

} // namespace

void workApart(const std::function<void(const platform::Progress&)>& work, const platform::Progress& shown) {
    constexpr int kSteps = 1000;
    constexpr auto kBetweenPaintings = 20ms;
    constexpr auto kAfterwards = 150ms;
    std::atomic<qint64> step = 0;
    std::future<void> end = std::async(std::launch::async, [&] {
        work([&step](qint64 done, qint64 total) { step = total > 0 ? done * kSteps / total : 0; });
    });
    const common::NestedEventLoop loop;
    {
        const Deaf deaf;
        do {
            shown(step, kSteps);
            QCoreApplication::processEvents();
        } while (end.wait_for(kBetweenPaintings) != std::future_status::ready);
        // What was typed last may still be on its way.
        for (QDeadlineTimer rest(kAfterwards); !rest.hasExpired(); end.wait_for(kBetweenPaintings))
            QCoreApplication::processEvents();
    }
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
