#include "common/AtomicFile.h"
#include "common/RunTimeError.h"
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStorageInfo>
#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace common {
namespace {

using Permissions = std::optional<QFileDevice::Permissions>;

/// Whether the disk took everything. QSaveFile by itself puts a file into place whose last bytes did not fit.
bool isOnDisk(QSaveFile& file, qint64 size) {
    if (!file.flush() || file.size() != size)
        return false;
#ifdef Q_OS_UNIX
    return ::fsync(file.handle()) == 0;
#else
    return true;
#endif
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

} // namespace common
