#pragma once
#include <QString>
#include <QStringList>
#include <vector>

/// What the four databases consist of. The definitions stand in schema/, one script a database for tables,
/// indexes and views, in the program's own dialect and with today's version.
namespace store {

enum class Database { Main, PhoneBook, Print, OnlineShop };

enum class Definitions { Tables, Indexes, Views };

/// "" where the database has none.
QString definitions(Database database, Definitions which);

struct SchemaTable {
    QString name;
    /// Whether one of its columns is the key of its rows.
    bool hasKey = false;
};

/// In the order of the script.
std::vector<SchemaTable> tablesOf(Database database);
/// Names of the views.
QStringList viewsOf(Database database);

} // namespace store
