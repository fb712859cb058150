#pragma once
#include "store/ConnectionString.h"
#include <QString>

namespace platform {

/// Section [Datenbank] of tavolino.ini: where the main database stands, and the name of this station.
struct DatabaseSettings {
    /// Without servers the databases are files of this installation.
    store::ConnectionString server;
    bool phoneBookOnServer = false;
    /// The server that the section tells of, also while the databases are files, and whether the phone book
    /// goes there as well.
    store::ConnectionString toldServer;
    bool phoneBookWanted = false;
    QString station;
    /// What is not to be understood, a sentence a line; a server that is half told is none.
    QString problem;

    static DatabaseSettings read(const QString& iniFile);
};

} // namespace platform
