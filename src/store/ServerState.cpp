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
QString theSentence;
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

QString firstSentence(const common::RunTimeError& error) {
    return error.sentence().section(u". "_s, 0, 0) +
           (error.sentence().contains(u". "_s) ? u"."_s : QString());
}

bool isServerAway() {
    return away;
}

void setServerAway(const common::RunTimeError& error) {
    if (!away)
        theSentence = firstSentence(error);
    turn(true, u"No database server answers: "_s + error.detail());
}

void throwServerAway() {
    throw common::RunTimeError(common::kServerGone, theSentence, u"not asked"_s);
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
