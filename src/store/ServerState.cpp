#include "store/ServerState.h"
#include "common/RunTimeError.h"
#include "store/ConnectionString.h"
#include "store/Engine.h"
#include <atomic>
#include <utility>

namespace store {

using namespace Qt::StringLiterals;

namespace {

bool away = false;
std::atomic<qint64> repeated = 0;
std::function<void(bool)> theListener;

void turn(bool now, const QString& logged) {
    if (std::exchange(away, now) == now)
        return;
    qWarning("%s", qUtf8Printable(logged));
    if (theListener)
        theListener(now);
}

} // namespace

bool isServerAway() {
    return away;
}

void setServerAway(const common::RunTimeError& error) {
    turn(true, u"No database server answers: "_s + error.detail());
}

void setServerBack() {
    turn(false, u"A database server answers again"_s);
}

void onServerTurn(std::function<void(bool)> listener) {
    theListener = std::move(listener);
}

bool ifServerAnswers(const std::function<void()>& work) {
    try {
        work();
        return true;
    } catch (const common::RunTimeError& error) {
        if (error.number() != common::kServerGone)
            throw;
        setServerAway(error);
        return false;
    }
}

qint64 repeatedTransactions() {
    return repeated;
}

void countRepeatedTransaction() {
    ++repeated;
}

bool askServer(const QString& connectionString) {
    try {
        openEngine(ConnectionString::parse(connectionString));
        return true;
    } catch (const common::RunTimeError& error) {
        // What else is wrong the main connection tells.
        return error.number() != common::kServerGone;
    }
}

} // namespace store
