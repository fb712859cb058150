#include "install/FirstRows.h"
#include "install/Bulk.h"
#include "install/Resources.h"

namespace install {
namespace {

using namespace Qt::StringLiterals;

void addSettings(sqlite3* handle) {
    runScript(handle, resource(u"rows/settings.sql"_s));
    runScript(handle,
              "UPDATE tbl_Einstellungen_System SET lng_SoftwareVersion_Major = " +
                  QByteArray::number(TAVOLINO_VERSION_MAJOR) +
                  ", lng_SoftwareVersion_Minor = " + QByteArray::number(TAVOLINO_VERSION_MINOR) +
                  ", lng_SoftwareVersion_Revision = " + QByteArray::number(TAVOLINO_VERSION_REVISION));
}

void addPostcodes(sqlite3* handle) {
    Inserter places(handle, "tbl_PLZ_Verzeichnis",
                    "txt_Land, lng_PLZ, txt_Ort, dbl_Mindestbestellmenge, lng_Lieferzeiten, txt_Kurier, "
                    "bool_Liefergebiet");
    for (const QStringList& row : resourceTable(u"rows/postcodes.csv"_s))
        places.add("CH", row[0].toInt(), row[1], row[2].toDouble(), row[3].toInt(), "", -row[4].toInt());
}

} // namespace

void addFirstRows(sqlite3* handle, Database database) {
    switch (database) {
    case Database::Main:
        addSettings(handle);
        runScript(handle, resource(u"rows/shop.sql"_s));
        addPostcodes(handle);
        break;
    case Database::PhoneBook:
        runScript(handle, resource(u"rows/phonebook.sql"_s));
        break;
    case Database::Print:
        runScript(handle, resource(u"rows/print.sql"_s));
        break;
    case Database::OnlineShop:
        break;
    }
}

} // namespace install
