#include "store/MainCopies.h"
#include "store/StoreGlobals.h"

namespace store {

using namespace Qt::StringLiterals;

namespace {

QString provider(const QString& source) {
    return u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s + source;
}

QString password() {
    return u" Jet OLEDB:Database Password="_s + QString::fromLatin1(kMainPassword) + u';';
}

} // namespace

QString backupConnectionString(const QString& path) {
    return provider(path) + u" ;Mode=Read|Write;Persist Security Info=False;"_s + password();
}

QString backupProbeString(const QString& path) {
    return backupConnectionString(path) + u"Mode=Read"_s;
}

QString mainCompactionSource() {
    return provider(appPath()) + u"\\Data\\DBTavolino.mdb;"_s + password();
}

QString mainCompactionTarget() {
    return provider(appPath()) + u"\\Data\\DBTavolino_CLEAN.mdb;Jet OLEDB:Engine Type=5;"_s + password();
}

const QStringList& mainTables() {
    static const QStringList tables = {u"tbl_Auftragswesen_Bestellungen_Details"_s,
                                       u"tbl_Auftragswesen_Bestellungen_Master"_s,
                                       u"tbl_Auftragswesen_Vorbestellungen_Details"_s,
                                       u"tbl_Auftragswesen_Vorbestellungen_Master"_s,
                                       u"tbl_Einstellungen_Benutzer"_s,
                                       u"tbl_Einstellungen_System"_s,
                                       u"tbl_OnlineShop_Bestellzeiten"_s,
                                       u"tbl_OnlineShop_CorporateIdentity"_s,
                                       u"tbl_OnlineShop_Dokumente"_s,
                                       u"tbl_OnlineShop_Lieferzeiten"_s,
                                       u"tbl_PLZ_Verzeichnis"_s,
                                       u"tbl_Verwaltung_AnruferListe"_s,
                                       u"tbl_Verwaltung_Kunden"_s,
                                       u"tbl_Verwaltung_Kuriere"_s,
                                       u"tbl_Verwaltung_Produkte"_s,
                                       u"tbl_Verwaltung_Produkte_Extras"_s,
                                       u"tbl_Verwaltung_Produkte_Preise"_s,
                                       u"tbl_Verwaltung_ProdukteExtras"_s,
                                       u"tbl_Verwaltung_ProdukteExtras_Preise"_s,
                                       u"tbl_Verwaltung_ProdukteKategorien"_s,
                                       u"tbl_WebShop_Bestellungen_Master"_s};
    return tables;
}

} // namespace store
