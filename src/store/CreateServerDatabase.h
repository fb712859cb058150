#pragma once
#include <QByteArray>
#include <QList>
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
/// Where the token is not there, sees to it that it never will be: what was to leave it then fails. It waits
/// for who is about to.
QByteArray barToken(const QByteArray& token);
inline constexpr qint64 kBarred = -1;
/// What was kept with it; kBarred and the key 0 where it was barred.
QByteArray tokenQuery(const QByteArray& token);

/// Statements that make these tables, and the head, which comes last, so that only a whole database is one of
/// ours.
QList<QByteArray> serverTables();
QList<QByteArray> serverHead();

/// Makes the tables of the scripts, which are those of Schema.h, in a database of a server that has
/// none. Throws kTargetExists where it has some, and what Connection::Open throws. What fails leaves a
/// database that is none of ours, which has to be emptied.
void createServerDatabase(const QString& connectionString, const QStringList& scripts);

} // namespace store
