#pragma once
#include <QString>

namespace platform {

/// The servers that the program talks to, as the section [Internet] of `tavolino.ini` tells them:
///
///     [Internet]
///     FtpServer=ftp.example.ch      host of the shop's FTP server
///     FtpPort=21
///     FtpBenutzer=pizzeria
///     FtpPasswort="..."             in double quotes if it holds one of , ; = \ "
///     FtpTls=ja                     nein: user, password and data go over the line as they stand
///     ShopAdresse=https://shop.example.ch   from "http" up to the host
///     ShopOrdner=kunden/pizzeria/   folder of the shop on both servers
///     SystemAdresse=https://www.example.ch  server of confirmation mails, updates and messages
///     Installation=pizzeria         the name under which that server knows the firm
///     Zertifikat=/pfad/server.pem   a certificate to trust beside those of the system
///
/// What is left out is "". The password goes to the FTP server alone, never into a log, a message or an
/// address.
struct Endpoints {
    QString strFTPServer;
    /// 0 when the file does not hold a port.
    int lngFTPPort = 21;
    QString strFTPUser;
    QString strFTPPassword;
    /// Relative, ends in "/" unless it is "".
    QString strWebShopPfad;
    /// From "http://" or "https://" up to the host, without a closing "/".
    QString strDomainMapping;
    bool ftpTls = true;
    /// In the form of strDomainMapping.
    QString systemHost;
    QString installation;
    QString certificate;
    /// What is not to be understood in the file, a sentence a line; "" for nothing.
    QString problem;

    /// Address of one of the shop's scripts.
    QString script(const QString& name) const { return strDomainMapping + u'/' + strWebShopPfad + name; }

    /// Address of what the system's server has under that name, a script or a file.
    QString systemAddress(const QString& name) const {
        return systemHost + QStringLiteral("/rootTavolinoNet/System/") + name;
    }

    bool hasSystem() const { return !systemHost.isEmpty(); }

    /// Whether there is a shop to ask.
    bool hasShop() const { return !strDomainMapping.isEmpty(); }

    /// Sentences that tell what `tavolino.ini` lacks for that; "" for nothing.
    QString missingForShop() const;
    QString missingForUpload() const;
    QString missingForSystem() const;
    QString missingForMessages() const;

    /// A file that is not there gives no server at all. Never throws.
    static Endpoints read(const QString& iniFile);
};

} // namespace platform
