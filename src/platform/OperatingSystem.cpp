#include "platform/OperatingSystem.h"
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <QDir>
#include <QStandardPaths>
#include <cerrno>
#include <sys/file.h>
#endif

namespace platform {

#ifdef Q_OS_WIN
namespace {

/// A text under HKEY_LOCAL_MACHINE; "" where there is none.
QString GetKeyValue(const wchar_t* key, const wchar_t* value) {
    wchar_t buffer[1024];
    DWORD size = sizeof buffer;
    const LSTATUS found = RegGetValueW(HKEY_LOCAL_MACHINE, key, value, RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ,
                                       nullptr, buffer, &size);
    return found == ERROR_SUCCESS ? QString::fromWCharArray(buffer) : QString();
}

} // namespace
#endif

QStringList systemInformation() {
#ifdef Q_OS_WIN
    QString program = GetKeyValue(L"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", L"PATH");
    if (program.isEmpty()) {
        const QString folder = GetKeyValue(L"SOFTWARE\\Microsoft\\Shared Tools Location", L"MSINFO");
        program = folder.isEmpty() ? QString() : folder + QStringLiteral("\\MSINFO32.EXE");
    }
    return program.isEmpty() ? QStringList() : QStringList{program};
#else
    const QStringList known[] = {{QStringLiteral("hardinfo2")},
                                 {QStringLiteral("hardinfo")},
                                 {QStringLiteral("kinfocenter")},
                                 {QStringLiteral("gnome-control-center"), QStringLiteral("info-overview")}};
    for (const QStringList& program : known)
        if (const QString path = QStandardPaths::findExecutable(program.first()); !path.isEmpty())
            return QStringList{path} + program.mid(1);
    return {};
#endif
}

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
