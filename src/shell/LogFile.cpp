#include "shell/LogFile.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "common/OwnerFile.h"
#include <QFile>
#include <QFileInfo>
#include <atomic>
#include <mutex>

namespace shell {
namespace {

std::atomic<LogFile*> captured = nullptr;
QtMessageHandler former = nullptr;

void toLog(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    static thread_local bool isWriting = false;
    // What the log itself causes must not come back to it.
    if (LogFile* log = captured; log && !isWriting) {
        isWriting = true;
        if (type != QtDebugMsg && type != QtInfoMsg)
            log->write(QStringLiteral("Qt"), text);
        isWriting = false;
    }
    if (former)
        former(type, context, text);
}

} // namespace

void LogFile::write(const QString& kind, const QString& text) {
    // The day's copy has a thread of its own.
    static std::recursive_mutex oneAtATime;
    const std::lock_guard lock(oneAtATime);
    if (QFileInfo(m_path).size() >= kLimit) {
        QFile::remove(m_path + QStringLiteral(".1"));
        QFile::rename(m_path, m_path + QStringLiteral(".1"));
    }
    if (!common::createForOwner(m_path))
        common::keepForOwner(m_path);
    QFile file(m_path);
    if (!file.open(QIODevice::Append))
        return;
    const QString time = common::formatDate(common::clock::now(), u"YYYY-MM-DD HH:MM:SS");
    file.write(QStringLiteral("%1 %2: %3\n").arg(time, kind, text.simplified()).toUtf8());
}

void captureMessages(LogFile& log) {
    if (!captured)
        former = qInstallMessageHandler(toLog);
    captured = &log;
}

void releaseMessages() {
    if (!captured)
        return;
    captured = nullptr;
    qInstallMessageHandler(former);
}

} // namespace shell
