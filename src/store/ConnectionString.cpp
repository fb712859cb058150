#include "store/ConnectionString.h"
#include <QDir>
#include <QStringList>

namespace store {

QString nativePath(const QString& path) {
    QString result = path;
    return QDir::cleanPath(result.replace(u'\\', u'/'));
}

ConnectionString ConnectionString::parse(const QString& text) {
    ConnectionString result;
    const QStringList parts = text.split(u';', Qt::SkipEmptyParts);
    for (const QString& part : parts) {
        const qsizetype equals = part.indexOf(u'=');
        const QString name = part.left(equals).trimmed().toLower();
        if (name == u"data source")
            result.path = nativePath(part.mid(equals + 1).trimmed());
        else if (name == u"jet oledb:database password")
            result.password = part.mid(equals + 1).trimmed();
    }
    return result;
}

} // namespace store
