#include "common/OwnerFile.h"
#include <QFile>

namespace common {

bool createForOwner(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner);
}

void keepForOwner(const QString& path) {
    constexpr QFile::Permissions kOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                           QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    const QFile::Permissions permissions = QFile::permissions(path);
    if (permissions & kOthers)
        QFile::setPermissions(path, permissions & ~kOthers);
}

} // namespace common
