#include "support/FirstSchema.h"
#include "store/CreateDatabase.h"
#include "store/SqliteEngine.h"
#include "store/StoreGlobals.h"
#include <QFile>

namespace test {

void createFirstSchema(const QString& path, const char* madeLater) {
    QFile::remove(path);
    const QString password = QString::fromLatin1(store::kMainPassword);
    store::createDatabase(path, password);
    QFile schema(QStringLiteral(TAVOLINO_SOURCE_DIR "/tests/support/first-schema.sql"));
    if (!schema.open(QIODevice::ReadOnly))
        qFatal("first-schema.sql is not there");
    store::SqliteEngine engine(path, password);
    engine.runScript(schema.readAll().constData());
    engine.runScript("INSERT INTO tbl_Verwaltung_Kunden (txt_Name, txt_Vorname) VALUES ('Muster', 'Anna');"
                     "INSERT INTO tbl_Auftragswesen_Bestellungen_Master (lng_TrxNr, lng_KundenID, "
                     "lng_KurierID, dbl_TotalMitMWSt) VALUES (1000, 1, 1, 14)");
    engine.runScript(madeLater);
}

} // namespace test
