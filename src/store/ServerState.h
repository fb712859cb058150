#pragma once
#include <QString>
#include <functional>

namespace common {
class RunTimeError;
}

/// Whether a database server answers, as far as this program knows. While none does, the main connection is
/// not asked at all: what needs it fails at once (kServerGone) and freezes no window.
namespace store {

/// What follows it is about one statement, or for whoever has to find out.
QString firstSentence(const common::RunTimeError& error);

bool isServerAway();
/// It was asked in vain (kServerGone). Stands in the log once an outage.
void setServerAway(const common::RunTimeError& error);
/// What it was asked in vain last, again.
[[noreturn]] void throwServerAway();
/// It answers again.
void setServerBack();
/// Told once at each turn; one listener, none by default.
void onServerTurn(std::function<void(bool away)> listener);

/// Does what can be left out while no server answers. False where it was left out.
bool ifServerAnswers(const std::function<void()>& work);

/// How many attempts at a transaction had to be done anew.
qint64 repeatedTransactions();
void countRepeatedTransaction();

/// Whether a server answers, asked by a new connection. From any thread.
bool askServer(const QString& connectionString);

} // namespace store
