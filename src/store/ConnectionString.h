#pragma once
#include <QString>
#include <QStringList>

namespace store {

/// A connection string, taken apart: "Provider=…;Data Source=path ;Mode=Read|Write;…;Jet OLEDB:Database
/// Password=…;". Names count without regard to case, blanks around names and values do not count, a
/// semicolon inside a value counts where no known name follows, back slashes in the path are separators on
/// every platform.
///
/// That of a server is
/// "Provider=MariaDB;Server=host:port,host:port;Database=…;User=…;Tls=1;Ca=…;Password=…;", the password last
/// and up to the end, whatever stands in it.
struct ConnectionString {
    QString path;
    QString password;
    /// "Mode=Read": the file is looked at and stays as it is.
    bool readOnly = false;
    /// "host:port" in order of preference; of a server only, as what follows.
    QStringList servers;
    QString database, user;
    bool tls = true;
    /// File of the authority that the server's certificate has to come from; "" for the system's own.
    QString authority;

    bool isServer() const { return !servers.isEmpty(); }

    static ConnectionString parse(const QString& text);
    /// The string of a server, which parse reads.
    QString serverText() const;
};

/// The path with the platform's separators.
QString nativePath(const QString& path);

} // namespace store
