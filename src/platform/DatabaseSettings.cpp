#include "platform/DatabaseSettings.h"
#include "platform/IniSection.h"
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr int kUsualPort = 3306;

/// "host:port" of "host" or "host:port"; "" for what is neither.
QString serverOf(const QString& text) {
    const qsizetype colon = text.lastIndexOf(u':');
    const QString host = text.left(colon).trimmed();
    const int port = colon < 0 ? kUsualPort : IniSection::portOf(text.mid(colon + 1));
    return host.isEmpty() || port == 0 ? QString() : host + u':' + QString::number(port);
}

QStringList readServers(IniSection& section) {
    QStringList servers;
    for (const QString& text : section.text(u"Server"_s).split(u',', Qt::SkipEmptyParts)) {
        servers << serverOf(text.trimmed());
        if (servers.last().isEmpty())
            section.misunderstood(u"Server"_s);
    }
    servers.removeAll(QString());
    return servers;
}

/// "datei" or "mariadb".
bool onServer(IniSection& section, const QString& key) {
    const QString text = section.text(key, u"datei"_s).toLower();
    if (text != u"datei" && text != u"mariadb")
        section.misunderstood(key);
    return text == u"mariadb";
}

} // namespace

DatabaseSettings DatabaseSettings::read(const QString& iniFile) {
    IniSection section(iniFile, u"Datenbank"_s, IniSection::Missing::Fine);
    DatabaseSettings settings;
    const bool wanted = onServer(section, u"Motor"_s);
    settings.server.servers = readServers(section);
    settings.server.database = section.text(u"Datenbank"_s, u"tavolino"_s);
    settings.server.user = section.text(u"Benutzer"_s, u"tavolino"_s);
    settings.server.password = section.text(u"Passwort"_s);
    settings.server.tls = section.yes(u"Tls"_s, true);
    settings.server.authority = section.text(u"Zertifikat"_s);
    settings.toldServer = settings.server;
    settings.phoneBookWanted = onServer(section, u"Telefonbuch"_s);
    settings.phoneBookOnServer = settings.phoneBookWanted && wanted;
    settings.station = section.text(u"Station"_s, QSysInfo::machineHostName());
    section.findUnknownKeys();
    if (wanted && settings.server.servers.isEmpty())
        section.misunderstood(u"Server"_s);
    if (!wanted)
        settings.server.servers.clear();
    settings.problem = section.problem();
    return settings;
}

} // namespace platform
