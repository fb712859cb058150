#pragma once
#include "store/Schema.h"
#include <QString>
#include <QVector>

struct sqlite3;

/// The files of the four databases of an installation.
namespace install {

using store::Database;

struct DatabaseFile {
    Database database;
    /// File name in the folder Data, such as "DBTavolino.mdb".
    QString fileName;
    QString password;
};

const QVector<DatabaseFile>& databaseFiles();

/// The tables alone.
void createTables(sqlite3* handle, Database database);

} // namespace install
