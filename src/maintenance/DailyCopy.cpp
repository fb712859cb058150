#include "maintenance/DailyCopy.h"
#include "common/Guard.h"
#include "common/RunTimeError.h"
#include "desks/MainDesks.h"
#include "maintenance/modTagessicherung.h"
#include "platform/Progress.h"
#include "platform/RegistryStore.h"
#include "store/Stations.h"
#include <QElapsedTimer>
#include <thread>
#ifdef Q_OS_LINUX
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace maintenance {
namespace {

constexpr int kDaysBeforeTold = 3;

/// Of this thread: it works when nobody else does.
void giveWayToOthers() {
#ifdef Q_OS_LINUX
    constexpr int kThisThread = 0, kOneThread = 1, kIdleDisk = 3 << 13;
    ::setpriority(PRIO_PROCESS, kThisThread, 19);
    ::syscall(SYS_ioprio_set, kOneThread, kThisThread, kIdleDisk);
#endif
}

/// As long as it works it rests, and the disk gets what was written bit by bit.
class Pace {
  public:
    Pace() { m_working.start(); }

    void keep() {
        constexpr int kPiece = 5;
        const qint64 worked = m_working.elapsed();
        if (worked < kPiece)
            return;
        std::this_thread::sleep_for(std::chrono::milliseconds(worked));
        m_working.start();
    }

  private:
    QElapsedTimer m_working;
};

QString sentenceOf(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const common::RunTimeError& error) {
        qWarning("No daily copy: %s", error.what());
        return error.sentence();
    } catch (const std::exception& error) {
        qWarning("No daily copy: %s", error.what());
        return DailyCopy::tr("Ein unerwarteter Fehler ist aufgetreten.");
    }
}

} // namespace

DailyCopy::DailyCopy(const platform::Services& services, QObject* parent) :
    QObject(parent), m_services(services) {
    m_timer.setSingleShot(true);
    common::connectGuarded(common::Origin::Timer, &m_timer, &QTimer::timeout, this, [this] { begin(); });
}

DailyCopy::~DailyCopy() {
    giveUp();
}

void DailyCopy::startLater(std::chrono::milliseconds delay) {
    m_timer.start(delay);
}

void DailyCopy::giveUp(std::chrono::milliseconds patience) {
    m_timer.stop();
    m_givenUp = true;
    if (m_work.valid())
        m_work.wait_for(patience);
}

void DailyCopy::begin() {
    constexpr auto kLongest = 1h;
    const QDate day = modTagessicherung::Today();
    m_task = u"Tagessicherung "_s + day.toString(Qt::ISODate);
    if (!store::claim(m_task, int(std::chrono::seconds(kLongest).count())))
        return m_timer.start(kLongest);
    m_work = std::async(std::launch::async, [this, day] { work(day); });
}

void DailyCopy::settle(bool isThere) {
    constexpr auto kADay = 24h;
    if (isThere)
        store::claim(m_task, int(std::chrono::seconds(kADay).count()));
    else
        store::release(m_task);
}

void DailyCopy::work(QDate day) {
    giveWayToOthers();
    m_failure = nullptr;
    Pace pace;
    try {
        if (!modTagessicherung::IsDue(day))
            return later([this] { settle(true); });
        modTagessicherung::MakeCopy(day, [&](qint64, qint64) {
            pace.keep();
            if (m_givenUp)
                throw platform::GivenUp();
        });
    } catch (const platform::GivenUp&) {
        return;
    } catch (...) {
        m_failure = std::current_exception();
    }
    later([this] { finish(); });
}

/// In the thread of the user interface.
void DailyCopy::later(const std::function<void()>& act) {
    QMetaObject::invokeMethod(
        this, [act] { common::guarded(common::Origin::Timer, act); }, Qt::QueuedConnection);
}

void DailyCopy::finish() {
    m_work.wait();
    remember(m_failure ? sentenceOf(m_failure) : QString());
    settle(!m_failure);
    Q_EMIT done();
}

/// Kept are the days on which it failed, and the last of them.
void DailyCopy::remember(const QString& failure) {
    const QString application = u"TavolinoSettings"_s, section = u"Tagessicherung"_s, key = u"Fehlschlag"_s;
    const QStringList kept = m_services.registry.GetSetting(application, section, key, u"0 -"_s).split(u' ');
    const QString day = modTagessicherung::Today().toString(Qt::ISODate);
    if (failure.isEmpty())
        return m_services.registry.SaveSetting(application, section, key, u"0 -"_s);
    const int days = kept.value(0).toInt() + (kept.value(1) == day ? 0 : 1);
    m_services.registry.SaveSetting(application, section, key, u"%1 %2"_s.arg(days).arg(day));
    if (days >= kDaysBeforeTold)
        desks::showMessage(m_services.navigation,
                           tr("Seit %1 Tagen gelingt keine Tagessicherung: %2").arg(days).arg(failure));
}

} // namespace maintenance
