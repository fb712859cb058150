#pragma once
#include <QByteArray>
#include <QStringList>

namespace store {

/// Tables of a server's database alone: its head, the one lock that a transaction takes, and the tokens of
/// what was written.
inline constexpr char kServerHeadQuery[] = "SELECT lng_Schema, lng_Anwendung FROM tbl_Store_Kopf";
inline constexpr char kServerLock[] =
    "UPDATE tbl_Store_Sperre SET lng_Stand = lng_Stand + 1 WHERE lng_ID = 1";
inline constexpr char kForgetTokens[] =
    "DELETE FROM tbl_Store_Abschluss WHERE date_Zeit < utc_timestamp() - INTERVAL 1 DAY LIMIT 10000";
/// Leaves a token, with what the statement before it gave.
QByteArray keepToken(const QByteArray& token);
/// What was kept with it.
QByteArray tokenQuery(const QByteArray& token);

/// Makes the tables of the scripts, which are those of install/schema, in a database of a server that has
/// none. Throws kTargetExists where it has some, and what Connection::Open throws. What fails leaves a
/// database that is none of ours, which has to be emptied.
void createServerDatabase(const QString& connectionString, const QStringList& scripts);

} // namespace store
