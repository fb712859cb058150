#include "shell/ErrorReporter.h"
#include "common/RunTimeError.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "store/ServerState.h"
#include <QCoreApplication>
#include <QScopedValueRollback>

namespace shell {
namespace {

struct Story {
    QString sentence;
    QString line;
    /// The program goes on, also in a user's own action.
    bool goesOn = false;
    /// The main window shows it and the log has it.
    bool isOutage = false;
};

QString tr(const char* text) {
    return QCoreApplication::translate("ErrorReporter", text);
}

Story storyOf(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const common::RunTimeError& failure) {
        const bool isOutage = failure.number() == common::kServerGone;
        if (isOutage)
            store::setServerAway(failure);
        const QString onwards =
            tr("Was auf dem Bildschirm steht, bleibt. Sobald wieder ein Server antwortet, "
               "geht es weiter.");
        return {isOutage ? failure.sentence() + QStringLiteral("\n\n") + onwards : failure.sentence(),
                QStringLiteral("%1 %2 | %3")
                    .arg(QString::number(failure.number()), failure.sentence(), failure.detail()),
                isOutage || failure.number() == common::kTryAgain, isOutage};
    } catch (const std::exception& failure) {
        return {tr("Ein unerwarteter Fehler ist aufgetreten."), QString::fromUtf8(failure.what())};
    } catch (...) {
        return {tr("Ein unerwarteter Fehler ist aufgetreten."), QStringLiteral("?")};
    }
}

} // namespace

void ErrorReporter::report(common::Origin origin, const std::exception_ptr& error) {
    const bool user = origin == common::Origin::User;
    const Story story = storyOf(error);
    if (!story.isOutage)
        m_log.write(user ? QStringLiteral("Fehler") : QStringLiteral("Fehler im Hintergrund"), story.line);
    // What comes by itself comes again.
    if (user || !story.goesOn)
        tell(origin, story.sentence, story.line);
    if (user && !story.goesOn)
        m_navigation.endProgram(1);
}

void ErrorReporter::tell(common::Origin origin, const QString& sentence, const QString& line) {
    if (m_telling || (origin != common::Origin::User && m_told.contains(line)))
        return;
    if (origin != common::Origin::User)
        m_told.insert(line);
    const QScopedValueRollback telling(m_telling, true);
    m_dialogs.MsgBox(sentence, platform::kStop, QStringLiteral("Tavolino"));
}

} // namespace shell
