#include "store/ConnectionString.h"
#include <QDir>
#include <QStringList>

namespace store {

QString nativePath(const QString& path) {
    QString result = path;
    return QDir::cleanPath(result.replace(u'\\', u'/'));
}

namespace {

bool beginsPart(const QString& text) {
    const QString name = text.section(u'=', 0, 0).trimmed().toLower();
    return text.contains(u'=') && (name == u"provider" || name == u"data source" || name == u"mode" ||
                                   name == u"persist security info" || name.startsWith(u"jet oledb:"));
}

/// A semicolon ends a part where a known name follows, or nothing; else it belongs to the value.
QStringList partsOf(QString text) {
    if (text.endsWith(u';'))
        text.chop(1);
    QStringList parts;
    for (const QString& piece : text.split(u';')) {
        if (parts.isEmpty() || beginsPart(piece))
            parts.append(piece);
        else
            parts.last() += u';' + piece;
    }
    return parts;
}

} // namespace

namespace {

const QString kServerProvider = QStringLiteral("Provider=MariaDB;");

ConnectionString parseServer(const QString& text) {
    ConnectionString result;
    const QString mark = QStringLiteral("Password=");
    const qsizetype password = text.indexOf(mark);
    result.password = password < 0 ? QString() : text.mid(password + mark.size()).chopped(1);
    for (const QString& part : text.left(password).split(u';')) {
        const QString name = part.section(u'=', 0, 0);
        const QString value = part.section(u'=', 1);
        if (name == u"Server")
            result.servers = value.split(u',', Qt::SkipEmptyParts);
        else if (name == u"Database")
            result.database = value;
        else if (name == u"User")
            result.user = value;
        else if (name == u"Tls")
            result.tls = value != u"0";
        else if (name == u"Ca")
            result.authority = value;
    }
    return result;
}

} // namespace

QString ConnectionString::serverText() const {
    return kServerProvider +
           QStringLiteral("Server=%1;Database=%2;User=%3;Tls=%4;Ca=%5;Password=")
               .arg(servers.join(u','), database, user, QString::number(int(tls)), authority) +
           password + u';';
}

ConnectionString ConnectionString::parse(const QString& text) {
    if (text.startsWith(kServerProvider))
        return parseServer(text);
    ConnectionString result;
    for (const QString& part : partsOf(text.trimmed())) {
        const qsizetype equals = part.indexOf(u'=');
        const QString name = part.left(equals).trimmed().toLower();
        if (name == u"data source")
            result.path = nativePath(part.mid(equals + 1).trimmed());
        else if (name == u"mode")
            result.readOnly = part.mid(equals + 1).trimmed().toLower() == u"read";
        else if (name == u"jet oledb:database password")
            result.password = part.mid(equals + 1).trimmed();
    }
    return result;
}

} // namespace store
