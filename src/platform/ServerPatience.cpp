#include "platform/ServerPatience.h"
#include "common/RunTimeError.h"
#include "platform/Dialogs.h"
#include "store/ServerState.h"
#include <QCoreApplication>
#include <exception>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// What no server answered; nothing where the work is done.
std::optional<QString> tryOnce(const std::function<void()>& work) {
    try {
        work();
        return std::nullopt;
    } catch (const common::RunTimeError& error) {
        if (error.number() != common::kServerGone)
            throw;
        store::setServerAway(error);
        return store::firstSentence(error);
    }
}

} // namespace

bool untilServerAnswers(Dialogs& dialogs, const QString& meanwhile, const std::function<void()>& work) {
    const std::optional<QString> problem = tryOnce(work);
    if (!problem)
        return true;
    std::exception_ptr failure;
    const auto waits = [&] {
        try {
            return store::isServerAway() || tryOnce(work);
        } catch (...) {
            // Not through the frames of the dialog.
            failure = std::current_exception();
            return false;
        }
    };
    const QString onwards = QCoreApplication::translate(
        "ServerPatience", "Tavolino versucht es jede Sekunde wieder und fährt von selbst weiter.");
    const bool done = dialogs.WaitForServer(waits, *problem + u"\n\n"_s + meanwhile + u' ' + onwards);
    if (failure)
        std::rethrow_exception(failure);
    return done;
}

} // namespace platform
