#pragma once
#include <QString>
#include <SQLiteCpp/SQLiteCpp.h>
#include <memory>

namespace shop {

/// A database that only its owner reads, made when it is not there. What is committed is on disk, and what is
/// deleted is overwritten: who ordered what is gone once the desk deletes it.
std::unique_ptr<SQLite::Database> openOwnDatabase(const QString& path);

QString textOf(SQLite::Statement& row, int column);

} // namespace shop
