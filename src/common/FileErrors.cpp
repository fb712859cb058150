#include "common/FileErrors.h"
#include "common/RunTimeError.h"
#include <QDir>
#include <QFileInfo>
#include <cerrno>

namespace common {

using namespace Qt::StringLiterals;

namespace {

struct Known {
    int code;
    int number;
    const char16_t* sentence;
};

constexpr const char16_t* kGone = u"Der Datenträger mit der Datei \"%1\" antwortet nicht. Wurde er entfernt?";
constexpr const char16_t* kRefused = u"Die Rechte für die Datei \"%1\" fehlen.";
constexpr const char16_t* kFull = u"Der Datenträger ist voll.";

/// "%1" is the name of the file.
constexpr Known kKnown[] = {
    {EACCES, kNotWritable, kRefused},
    {EPERM, kNotWritable, kRefused},
    {ENOSPC, kDiskFull, kFull},
    {EDQUOT, kDiskFull, kFull},
    {EFBIG, kDiskFull, u"Der Datenträger nimmt eine so grosse Datei nicht auf oder ist voll."},
    {EROFS, kPlatformFailure, u"Der Datenträger ist schreibgeschützt."},
    {EIO, kPlatformFailure, kGone},
    {ENODEV, kPlatformFailure, kGone},
    {ENXIO, kPlatformFailure, kGone},
    {ESTALE, kPlatformFailure, kGone},
    {ENOENT, kPlatformFailure, u"Die Datei \"%1\" oder ihr Ordner ist nicht mehr da."},
};

} // namespace

std::error_code lastError() {
    return {errno, std::generic_category()};
}

void throwFileError(const std::error_code& error, const QString& path) {
    const QString detail = QDir::toNativeSeparators(path) + u": "_s + QString::fromStdString(error.message());
    const QString file = QFileInfo(path).fileName();
    for (const Known& known : kKnown)
        if (error.value() == known.code)
            throw RunTimeError(known.number, QString::fromUtf16(known.sentence).replace(u"%1"_s, file),
                               detail);
    throw RunTimeError(kPlatformFailure,
                       u"Die Datei \"%1\" lässt sich nicht lesen oder schreiben."_s.arg(file), detail);
}

} // namespace common
