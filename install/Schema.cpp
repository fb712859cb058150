#include "install/Schema.h"
#include "install/Bulk.h"
#include "store/StoreGlobals.h"

namespace install {

using namespace Qt::StringLiterals;

const QVector<DatabaseFile>& databaseFiles() {
    static const QVector<DatabaseFile> files = {
        {Database::Main, u"DBTavolino.mdb"_s, QString::fromLatin1(store::kMainPassword)},
        {Database::PhoneBook, u"DBTavolinoPhone.mdb"_s, QString::fromLatin1(store::kPhonePassword)},
        {Database::Print, u"DB_PRINT_Tavolino.mdb"_s, {}},
        {Database::OnlineShop, u"DBOnlineShop.mdb"_s, {}},
    };
    return files;
}

void createTables(sqlite3* handle, Database database) {
    runScript(handle, store::definitions(database, store::Definitions::Tables).toUtf8());
}

} // namespace install
