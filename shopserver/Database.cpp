#include "shopserver/Database.h"
#include "common/OwnerFile.h"
#include <QFile>

namespace shop {
namespace {

constexpr int kMillisecondsToWait = 5000;

} // namespace

std::unique_ptr<SQLite::Database> openOwnDatabase(const QString& path) {
    if (!QFile::exists(path))
        common::createForOwner(path);
    auto database =
        std::make_unique<SQLite::Database>(QFile::encodeName(path).toStdString(),
                                           SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, kMillisecondsToWait);
    database->exec("PRAGMA journal_mode = WAL");
    database->exec("PRAGMA synchronous = FULL");
    database->exec("PRAGMA secure_delete = ON");
    return database;
}

QString textOf(SQLite::Statement& row, int column) {
    return QString::fromUtf8(row.getColumn(column).getText());
}

} // namespace shop
