#include "platform/net/Endpoints.h"
#include "platform/IniSection.h"
#include <QStringList>
#include <QUrl>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

QString withoutSlashes(QString text) {
    while (text.endsWith(u'/'))
        text.chop(1);
    return text;
}

QString readAddress(IniSection& section, const QString& key) {
    const QString address = withoutSlashes(section.text(key));
    const QUrl url(address, QUrl::StrictMode);
    const bool isAddress = url.isValid() && !url.host().isEmpty() && url.userInfo().isEmpty() &&
                           !url.hasQuery() && !url.hasFragment() &&
                           (url.scheme() == u"http" || url.scheme() == u"https");
    if (!address.isEmpty() && !isAddress)
        section.misunderstood(key);
    return isAddress ? address : QString();
}

QString readFolder(IniSection& section, const QString& key) {
    QString folder = withoutSlashes(section.text(key));
    while (folder.startsWith(u'/'))
        folder = folder.mid(1);
    return folder.isEmpty() ? folder : folder + u'/';
}

QString missing(std::initializer_list<std::pair<const char16_t*, bool>> keys) {
    QStringList names;
    for (const auto& [name, isThere] : keys)
        if (!isThere)
            names << QString::fromUtf16(name);
    if (names.isEmpty())
        return {};
    return u"In der Datei \"tavolino.ini\" fehlt im Abschnitt [Internet]: %1.\n"
           "Tragen Sie die Angaben ein und starten Sie Tavolino neu."_s.arg(names.join(u", "_s));
}

} // namespace

QString Endpoints::missingForShop() const {
    return missing({{u"ShopAdresse", hasShop()}});
}

QString Endpoints::missingForUpload() const {
    return missing({{u"FtpServer", !strFTPServer.isEmpty()},
                    {u"FtpPort", lngFTPPort != 0},
                    {u"FtpBenutzer", !strFTPUser.isEmpty()},
                    {u"ShopAdresse", hasShop()}});
}

QString Endpoints::missingForSystem() const {
    return missing({{u"SystemAdresse", hasSystem()}});
}

QString Endpoints::missingForMessages() const {
    return missing({{u"SystemAdresse", hasSystem()}, {u"Installation", !installation.isEmpty()}});
}

Endpoints Endpoints::read(const QString& iniFile) {
    IniSection section(iniFile, u"Internet"_s, IniSection::Missing::Fine);
    Endpoints ends;
    ends.strFTPServer = section.text(u"FtpServer"_s);
    ends.lngFTPPort = section.port(u"FtpPort"_s, ends.lngFTPPort);
    ends.strFTPUser = section.text(u"FtpBenutzer"_s);
    ends.strFTPPassword = section.text(u"FtpPasswort"_s);
    ends.ftpTls = section.yes(u"FtpTls"_s, true);
    ends.strDomainMapping = readAddress(section, u"ShopAdresse"_s);
    ends.strWebShopPfad = readFolder(section, u"ShopOrdner"_s);
    ends.systemHost = readAddress(section, u"SystemAdresse"_s);
    ends.installation = section.text(u"Installation"_s);
    ends.certificate = section.text(u"Zertifikat"_s);
    section.findUnknownKeys();
    ends.problem = section.problem();
    return ends;
}

} // namespace platform
