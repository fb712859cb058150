#include "store/StoreGlobals.h"
#include "common/RunTimeError.h"
#include "store/ConnectionString.h"
#include "store/SchemaSteps.h"

store::Connection ConnMain;
store::Recordset RsMain;
store::Recordset RsSecond;
store::Recordset RsThird;
store::Recordset RsFourth;
store::Connection ConnPhone;
store::Recordset RsPhone;
store::Connection ConnPrint;
store::Recordset RsPrint;
QString PfadPrintDB;
QString PfadWindows;

namespace store {

using namespace Qt::StringLiterals;

const char* const kMainPassword = "tmwe592hqolp316cxa";
const char* const kPhonePassword = "rkvnpf415jomwet269";

namespace {

QString theAppPath;
/// Connection strings of a server; "" for the files.
QString theServer, thePhoneServer;

QString source(const char16_t* file) {
    return u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s + theAppPath + u"\\Data\\"_s +
           QString::fromUtf16(file);
}

QString gated(const char16_t* file, const char* password) {
    return source(file) + u" ;Persist Security Info=False;Jet OLEDB:Database Password="_s +
           QString::fromLatin1(password) + u';';
}

QString open(const char16_t* file) {
    return source(file) + u" ;Mode=Read|Write;Persist Security Info=False"_s;
}

} // namespace

void setAppPath(const QString& path) {
    theAppPath = path;
}

const QString& appPath() {
    return theAppPath;
}

void setServer(const ConnectionString& server, bool withPhoneBook) {
    theServer = server.isServer() ? server.serverText() : QString();
    thePhoneServer = withPhoneBook ? theServer : QString();
}

bool hasServer() {
    return !theServer.isEmpty();
}

QString mainConnectionString() {
    if (hasServer())
        return theServer;
    return gated(u"DBTavolino.mdb", kMainPassword);
}

QString phoneConnectionString() {
    if (!thePhoneServer.isEmpty())
        return thePhoneServer;
    return gated(u"DBTavolinoPhone.mdb", kPhonePassword);
}

QString printConnectionString() {
    return open(u"DB_PRINT_Tavolino.mdb");
}

QString onlineShopConnectionString() {
    return open(u"DBOnlineShop.mdb");
}

namespace {

/// Told at the start, and not by the first order that cannot be stored.
void requireWritable(const store::Connection& connection, const char16_t* file) {
    if (!connection.engine().isWritable())
        throw common::RunTimeError(
            common::kNotWritable,
            u"Die Datenbank \"%1\" kann nicht beschrieben werden. Bitte prüfen Sie die Rechte der Datei im Ordner \"Data\"."_s
                .arg(QString::fromUtf16(file)));
}

} // namespace

void OpenDatabases(const std::function<void()>& saveRegistry, const std::function<void(Connection&)>& steps) {
    if (saveRegistry)
        saveRegistry();
    ConnMain.Open(mainConnectionString());
    requireWritable(ConnMain, u"DBTavolino.mdb");
    steps ? steps(ConnMain) : BringUpToDate(ConnMain);
    ConnPhone.Open(phoneConnectionString());
    PfadPrintDB = theAppPath + u"\\Data\\DB_PRINT_Tavolino.mdb"_s;
    ConnPrint.Open(printConnectionString());
    requireWritable(ConnPrint, u"DB_PRINT_Tavolino.mdb");
    RsPrint.SetActiveConnection(ConnPrint);
}

void CloseDatabases() {
    ConnMain.Close();
    ConnPhone.Close();
    ConnPrint.Close();
}

} // namespace store
