#include "platform/OperatingSystem.h"
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <QDir>
#include <cerrno>
#include <sys/file.h>
#endif

namespace platform {

QString systemFolder() {
#ifdef Q_OS_WIN
    wchar_t buffer[255];
    const UINT length = GetWindowsDirectoryW(buffer, 255);
    return QString::fromWCharArray(buffer, int(length));
#else
    return QDir::rootPath();
#endif
}

bool isHeldByAProcess(const QString& lockFile) {
#ifdef Q_OS_WIN
    Q_UNUSED(lockFile);
    return false;
#else
    QFile file(lockFile);
    return file.open(QIODevice::ReadOnly) && flock(file.handle(), LOCK_SH | LOCK_NB) != 0 &&
           errno == EWOULDBLOCK;
#endif
}

bool startProgram(const QString& file) {
    QFile program(file);
    return program.setPermissions(program.permissions() | QFile::ExeOwner) &&
           QProcess::startDetached(file, {}, QFileInfo(file).absolutePath());
}

} // namespace platform
