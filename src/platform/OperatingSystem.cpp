#include "platform/OperatingSystem.h"
#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <QDir>
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

} // namespace platform
