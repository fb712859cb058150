#pragma once
#include <QString>
#include <QVector>

struct sqlite3;

/// The four databases of an installation: their files and what they consist of. The definitions themselves
/// stand in install/schema/, one script a database for tables, indexes and views.
namespace install {

enum class Database { Main, PhoneBook, Print, OnlineShop };

struct DatabaseFile {
    Database database;
    /// File name in the folder Data, such as "DBTavolino.mdb".
    QString fileName;
    QString password;
    int schemaVersion;
};

const QVector<DatabaseFile>& databaseFiles();

/// The tables, without indexes: rows come in faster before them.
void createTables(sqlite3* handle, Database database);
/// Indexes and views, over whatever the tables hold.
void createIndexesAndViews(sqlite3* handle, Database database);

} // namespace install
