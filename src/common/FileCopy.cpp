#include "common/FileCopy.h"
#include "common/FileErrors.h"
#include "common/OwnerFile.h"
#include <QFile>
#include <cerrno>
#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace common {

namespace {

constexpr qint64 kPiece = 1 << 20;

void require(bool done, const QString& path) {
    if (!done)
        throwFileError(lastError(), path);
}

void bringToDisk(const QFile& file) {
#ifdef Q_OS_UNIX
    require(::fsync(file.handle()) == 0, file.fileName());
#else
    Q_UNUSED(file);
#endif
}

void copyBytes(QFile& source, QFile& target, const std::function<void(qint64, qint64)>& progress) {
    const qint64 total = source.size();
    QByteArray piece(kPiece, Qt::Uninitialized);
    for (qint64 done = 0; done < total;) {
        const qint64 read = source.read(piece.data(), kPiece);
        require(read > 0, source.fileName());
        for (qint64 written = 0; written < read;) {
            const qint64 taken = target.write(piece.constData() + written, read - written);
            require(taken > 0, target.fileName());
            written += taken;
        }
        done += read;
        if (progress)
            progress(done, total);
    }
}

} // namespace

void copyFile(const QString& from, const QString& to, const std::function<void(qint64, qint64)>& progress) {
    QFile source(from), target(to);
    errno = 0;
    require(source.open(QIODevice::ReadOnly | QIODevice::Unbuffered), from);
    require(createForOwner(to), to);
    try {
        require(target.open(QIODevice::WriteOnly | QIODevice::Unbuffered), to);
        copyBytes(source, target, progress);
        bringToDisk(target);
    } catch (...) {
        target.remove();
        throw;
    }
}

bool haveSameBytes(const QString& one, const QString& other,
                   const std::function<void(qint64, qint64)>& progress) {
    QFile first(one), second(other);
    errno = 0;
    require(first.open(QIODevice::ReadOnly | QIODevice::Unbuffered), one);
    require(second.open(QIODevice::ReadOnly | QIODevice::Unbuffered), other);
    const qint64 total = first.size();
    if (second.size() != total)
        return false;
    for (qint64 done = 0; done < total; done += kPiece) {
        const QByteArray piece = first.read(kPiece);
        require(!piece.isEmpty(), one);
        if (second.read(kPiece) != piece)
            return false;
        if (progress)
            progress(done, total);
    }
    return true;
}

void syncFile(const QString& path) {
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), path);
    bringToDisk(file);
}

} // namespace common
