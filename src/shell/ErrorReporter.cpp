#include "shell/ErrorReporter.h"
#include "common/RunTimeError.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include <QCoreApplication>
#include <QScopedValueRollback>

namespace shell {
namespace {

struct Story {
    QString sentence;
    QString line;
    /// A server that is away comes back; the order on the screen waits for it.
    bool goesOn = false;
};

QString tr(const char* text) {
    return QCoreApplication::translate("ErrorReporter", text);
}

Story storyOf(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const common::RunTimeError& failure) {
        return {failure.sentence(),
                QStringLiteral("%1 %2 | %3")
                    .arg(QString::number(failure.number()), failure.sentence(), failure.detail()),
                failure.number() == common::kServerGone || failure.number() == common::kTryAgain};
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
    m_log.write(user ? QStringLiteral("Fehler") : QStringLiteral("Fehler im Hintergrund"), story.line);
    tell(origin, story.sentence);
    if (user && !story.goesOn)
        m_navigation.endProgram(1);
}

void ErrorReporter::tell(common::Origin origin, const QString& sentence) {
    if (m_telling || (origin != common::Origin::User && m_told.contains(sentence)))
        return;
    if (origin != common::Origin::User)
        m_told.insert(sentence);
    const QScopedValueRollback telling(m_telling, true);
    m_dialogs.MsgBox(sentence, platform::kStop, QStringLiteral("Tavolino"));
}

} // namespace shell
