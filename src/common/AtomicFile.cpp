#include "common/AtomicFile.h"
#include "common/FileErrors.h"
#include "common/RunTimeError.h"
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStorageInfo>
#include <filesystem>
#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace common {
namespace {

using Permissions = std::optional<QFileDevice::Permissions>;

bool isSynced(const QFileDevice& file) {
#ifdef Q_OS_UNIX
    return ::fsync(file.handle()) == 0;
#else
    Q_UNUSED(file);
    return true;
#endif
}

/// So that a power cut does not bring the former file back. Not every file system can.
void syncFolder(const QString& folder) {
#ifdef Q_OS_UNIX
    const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return;
    ::fsync(handle);
    ::close(handle);
#else
    Q_UNUSED(folder);
#endif
}

/// Whether the disk took everything. QSaveFile by itself puts a file into place whose last bytes did not fit.
bool isOnDisk(QSaveFile& file, qint64 size) {
    return file.flush() && file.size() == size && isSynced(file);
}

/// Why it failed; empty when it did not.
QString failureOfWriting(const QString& path, const QByteArray& bytes, const Permissions& permissions) {
    QSaveFile file(path);
    const bool written = file.open(QIODevice::WriteOnly) &&
                         (!permissions || file.setPermissions(*permissions)) &&
                         file.write(bytes) == bytes.size() && isOnDisk(file, bytes.size());
    return written && file.commit()
               ? QString()
               : u"%1 (%2 of %3 bytes)"_s.arg(file.errorString()).arg(file.size()).arg(bytes.size());
}

} // namespace

void writeFileAtomically(const QString& path, const QByteArray& bytes, Permissions permissions) {
    const QString reason = failureOfWriting(path, bytes, permissions);
    if (reason.isEmpty())
        return;
    const QFileInfo file(path);
    const QStorageInfo disk(file.absolutePath());
    const bool full = disk.isValid() && disk.bytesAvailable() < bytes.size();
    throw RunTimeError(full ? kDiskFull : kPlatformFailure,
                       u"Die Datei \"%1\" lässt sich nicht schreiben%2."_s.arg(
                           file.fileName(), full ? u": Der Datenträger ist voll"_s : QString()),
                       QDir::toNativeSeparators(path) + u": "_s + reason);
}

std::error_code replaceFile(const QString& path, const QString& with) {
    QFile file(with);
    if (!file.open(QIODevice::ReadOnly) || !isSynced(file))
        return lastError();
    file.close();
    std::error_code error;
    std::filesystem::rename(with.toStdU16String(), path.toStdU16String(), error);
    if (!error)
        syncFolder(QFileInfo(path).absolutePath());
    return error;
}

} // namespace common
