#pragma once
#include <QString>

namespace store {

/// A connection string, taken apart: "Provider=…;Data Source=path ;Mode=Read|Write;…;Jet OLEDB:Database
/// Password=…;". Names count without regard to case, blanks around names and values do not count, a
/// semicolon inside a value counts where no known name follows, back slashes in the path are separators on
/// every platform.
struct ConnectionString {
    QString path;
    QString password;
    /// "Mode=Read": the file is looked at and stays as it is.
    bool readOnly = false;

    static ConnectionString parse(const QString& text);
};

/// The path with the platform's separators.
QString nativePath(const QString& path);

} // namespace store
