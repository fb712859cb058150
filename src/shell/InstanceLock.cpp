#include "shell/InstanceLock.h"
#include "platform/OperatingSystem.h"
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>

namespace shell {
namespace {

/// So long another start may need between making the file and writing its name into it.
constexpr int kBeingWritten = 200;

} // namespace

InstanceLock::InstanceLock(const QString& file) : m_file(file), m_lock(file) {
    // The lock counts as long as its owner lives; one left behind by a crash does not.
    m_lock.setStaleLockTime(0);
}

InstanceLock::State InstanceLock::take() {
    if (m_lock.tryLock(0) || (computer().isEmpty() && m_lock.tryLock(kBeingWritten)))
        return State::Taken;
    if (m_lock.error() != QLockFile::LockFailedError)
        return State::Unwritable;
    const QFileInfo there(m_file);
    if (!there.isFile())
        return State::InTheWay;
    const QString holder = computer();
    if (!holder.isEmpty() && holder != QSysInfo::machineHostName())
        return State::HeldElsewhere;
    // The system holds a living owner's file, whatever stands in it and whoever may write it.
    if (platform::isHeldByAProcess(m_file))
        return State::RunsHere;
    // What another user left behind goes by the rights of the folder.
    if (!there.isWritable() && (holder.isEmpty() || !QFile::remove(m_file)))
        return State::InTheWay;
    if (QFile::exists(m_file) && !m_lock.removeStaleLockFile())
        return State::RunsHere;
    return m_lock.tryLock(0) ? State::Taken : State::RunsHere;
}

InstanceLock::State InstanceLock::takeOver() {
    // Another user's, or a damaged one, may not be written and can be removed all the same.
    if (!m_lock.removeStaleLockFile() && !platform::isHeldByAProcess(m_file))
        QFile::remove(m_file);
    return take();
}

QString InstanceLock::computer() const {
    qint64 process = 0;
    QString name, program;
    return m_lock.getLockInfo(&process, &name, &program) ? name : QString();
}

} // namespace shell
