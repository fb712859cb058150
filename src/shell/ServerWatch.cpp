#include "shell/ServerWatch.h"
#include "common/Guard.h"
#include "store/ServerState.h"
#include "store/StoreGlobals.h"

namespace shell {
namespace {

/// The store fails at once for a while after it was asked in vain.
constexpr std::chrono::milliseconds kFirst(2100), kEach(1000), kBetweenLooks(50);

} // namespace

ServerWatch::ServerWatch(std::function<bool()> ask, QObject* parent) :
    QObject(parent), m_ask(std::move(ask)) {
    store::onServerTurn([this](bool away) { turn(away); });
    m_timer.setSingleShot(true);
    common::connectGuarded(common::Origin::Timer, &m_timer, &QTimer::timeout, this,
                           [this] { m_asking ? answered() : this->ask(); });
}

ServerWatch::~ServerWatch() {
    store::onServerTurn({});
    store::setServerBack();
}

void ServerWatch::turn(bool away) {
    if (away)
        m_timer.start(kFirst);
    else
        m_timer.stop();
    Q_EMIT turned(away);
}

void ServerWatch::ask() {
    m_asking = std::make_shared<Asking>();
    m_asking->ask = m_ask;
    if (!m_ask)
        m_asking->ask = [where = store::mainConnectionString()] { return store::askServer(where); };
    std::thread([asking = m_asking] {
        asking->answers = asking->ask();
        asking->over = true;
    }).detach();
    m_timer.start(kBetweenLooks);
}

void ServerWatch::answered() {
    if (!m_asking->over)
        return m_timer.start(kBetweenLooks);
    const bool answers = std::exchange(m_asking, nullptr)->answers;
    if (answers)
        store::setServerBack();
    else
        m_timer.start(kEach);
}

} // namespace shell
