#include "install/Schema.h"
#include "install/Bulk.h"
#include "install/Resources.h"
#include "store/CreateDatabase.h"
#include "store/StoreGlobals.h"

namespace install {
namespace {

using namespace Qt::StringLiterals;

QString script(Database database, const QString& part) {
    const QString name = databaseFiles()[int(database)].fileName.chopped(4);
    return u"schema/"_s + name + u'.' + part + u".sql"_s;
}

} // namespace

const QVector<DatabaseFile>& databaseFiles() {
    static const QVector<DatabaseFile> files = {
        {Database::Main, u"DBTavolino.mdb"_s, QString::fromLatin1(store::kMainPassword),
         store::kSchemaVersion},
        {Database::PhoneBook, u"DBTavolinoPhone.mdb"_s, QString::fromLatin1(store::kPhonePassword),
         store::kFirstSchemaVersion},
        {Database::Print, u"DB_PRINT_Tavolino.mdb"_s, {}, store::kFirstSchemaVersion},
        {Database::OnlineShop, u"DBOnlineShop.mdb"_s, {}, store::kFirstSchemaVersion},
    };
    return files;
}

void createTables(sqlite3* handle, Database database) {
    runScript(handle, resource(script(database, u"tables"_s)));
}

void createIndexesAndViews(sqlite3* handle, Database database) {
    const bool lookedUp = database == Database::Main || database == Database::PhoneBook;
    if (lookedUp)
        runScript(handle, resource(script(database, u"indexes"_s)));
    if (database == Database::Main)
        runScript(handle, resource(script(database, u"views"_s)));
}

} // namespace install
