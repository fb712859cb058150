#pragma once
#include "store/Recordset.h"
#include <functional>

/// The store objects that the whole program shares. They are opened once at start by OpenDatabases and live
/// until the process ends, or until a backup or restore closes them.
///
/// RsMain is the work recordset of nearly all code on the main database; RsSecond serves where RsMain is open
/// already. No procedure calls another one that opens the same recordset while it holds it open.
extern store::Connection ConnMain;
extern store::Recordset RsMain;
extern store::Recordset RsSecond;
extern store::Recordset RsThird;
extern store::Recordset RsFourth;
extern store::Connection ConnPhone;
extern store::Recordset RsPhone;
extern store::Connection ConnPrint;
extern store::Recordset RsPrint;
/// Path of the print database, handed to the report control as its data file.
extern QString PfadPrintDB;
/// The operating system's folder, read at start.
extern QString PfadWindows;

namespace store {

/// The folder of the program, without a trailing separator. The data, the report files and tavolino.ini stand
/// in it. Set once at start.
void setAppPath(const QString& path);
const QString& appPath();

struct ConnectionString;

/// Where the main database stands, unless in its file; set once at start. The phone book may stand there too.
/// The other databases are files of this station.
void setServer(const ConnectionString& server, bool withPhoneBook);
/// Whether a server was set.
bool hasServer();

/// Passwords and connection strings of the four databases, in the form that Connection::Open reads.
QString mainConnectionString();
QString phoneConnectionString();
QString printConnectionString();
QString onlineShopConnectionString();
extern const char* const kMainPassword;
extern const char* const kPhonePassword;

/// Opens the three lasting connections and prepares the work recordsets; `saveRegistry` is its first act. The
/// main database of an earlier program is brought up to date before anything else looks at it, by `steps`,
/// else by BringUpToDate. Throws what Connection::Open throws, and kNotWritable where the main or the print
/// database may be read only; the directory is never written.
void OpenDatabases(const std::function<void()>& saveRegistry = {},
                   const std::function<void(Connection& main)>& steps = {});
/// Closes them in the same order. What follows is always the program's end.
void CloseDatabases();

} // namespace store
