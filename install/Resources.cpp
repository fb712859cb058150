#include "install/Resources.h"
#include "common/RunTimeError.h"
#include <QFile>

// Resources of a static library are linked only when they are asked for, outside of any namespace.
static void initResources() {
    Q_INIT_RESOURCE(install);
}

namespace install {

using namespace Qt::StringLiterals;

QByteArray resource(const QString& name) {
    initResources();
    QFile file(u":/install/"_s + name);
    if (!file.open(QIODevice::ReadOnly))
        throw common::RunTimeError(common::kFileNotFound, u"Die Installation ist unvollständig."_s, name);
    return file.readAll();
}

QVector<QStringList> resourceTable(const QString& name) {
    QVector<QStringList> rows;
    for (const QString& line : QString::fromUtf8(resource(name)).split(u'\n', Qt::SkipEmptyParts)) {
        if (!line.startsWith(u'#'))
            rows.append(line.split(u';'));
    }
    return rows;
}

} // namespace install
