#include "shop/modOnlineShopDB.h"
#include "common/AtomicFile.h"
#include "common/RunTimeError.h"
#include "masterdata/modProdukteExtras.h"
#include "platform/Dialogs.h"
#include "shop/TransferView.h"
#include "store/ConnectionString.h"
#include "store/CreateDatabase.h"
#include "store/StoreGlobals.h"
#include <QFile>

using store::OpenRecordset;
using namespace Qt::StringLiterals;

namespace modOnlineShopDB {
namespace {

void showStep(shop::TransferView& view, const char16_t* text, int value) {
    view.setStatus(QString::fromUtf16(text));
    view.setProgress(value);
}

using Values = std::vector<common::Value>;

/// Values of a row, each column under its name.
class Row {
  public:
    explicit Row(store::Recordset& rows) : m_rows(rows) {}

    /// A null is the empty text.
    common::Value text(QStringView column) const { return m_rows.Fields(column).text(); }

    common::Value number(QStringView column) const {
        common::Value value = m_rows.Fields(column).Value();
        if (value.isNull())
            throw common::RunTimeError(
                common::kSqlFailure,
                u"Der Katalog des Online Shops kann nicht erstellt werden: In der Spalte \"%1\" fehlt eine Zahl."_s
                    .arg(column));
        return value;
    }

    bool isTrue(QStringView column) const { return m_rows.Fields(column).Value().isTrue(); }

  private:
    store::Recordset& m_rows;
};

void emptyTables(store::Connection& shop) {
    for (const char16_t* table : {u"tblAbholung", u"tblArtikel", u"tblBestellzeiten", u"tblCorpprateIdentity",
                                  u"tblDokumente", u"tblGruppe", u"tblLastOrder", u"tblLieferbedingungen",
                                  u"tblShopStatus", u"tblZusatz", u"tblZusatzGruppe"})
        shop.Execute(u"DELETE FROM "_s + QString::fromUtf16(table) + u';');
}

/// A table of the shop, whose rows are given in the order of these columns, "a b c".
class Table {
  public:
    Table(store::Connection& shop, const QString& name, const QString& columns) :
        m_engine(shop.engine()), m_name(name) {
        const std::vector<store::Column>& all = m_engine.columnsOf(name);
        for (const QString& wanted : columns.split(u' ')) {
            const auto found = std::find_if(all.begin(), all.end(),
                                            [&](const auto& column) { return column.name == wanted; });
            if (found == all.end())
                throw common::RunTimeError(
                    common::kSqlFailure,
                    u"Der Katalog des Online Shops kann nicht erstellt werden: Der Tabelle \"%1\" fehlt die Spalte \"%2\"."_s
                        .arg(name, wanted));
            m_columns.push_back(*found);
        }
    }

    void insert(const Values& values) {
        Q_ASSERT(m_columns.size() == values.size());
        m_engine.insert(m_name, m_columns, values);
    }

  private:
    store::Engine& m_engine;
    QString m_name;
    std::vector<store::Column> m_columns;
};

/// Adds a row for each of the query; nothing for one without values.
void fill(store::Connection& shop, const QString& into, const QString& columns, const QString& query,
          const std::function<Values(const Row& row)>& values) {
    Table table(shop, into, columns);
    OpenRecordset rows(RsMain, query, ConnMain);
    for (const Row row(*rows); !rows->Eof(); rows->MoveNext())
        if (const Values found = values(row); !found.empty())
            table.insert(found);
}

void fillLieferzeiten(store::Connection& shop) {
    OpenRecordset rows(RsMain, u"SELECT * FROM tbl_OnlineShop_Lieferzeiten"_s, ConnMain);
    if (rows->Eof())
        return;
    const Row row(*rows);
    Table(shop, u"tblAbholung"_s, u"lngLieferzeit"_s).insert({row.number(u"lng_Abholzeit")});
    Table(shop, u"tblLastOrder"_s, u"lngLieferzeit"_s).insert({row.number(u"lng_LastOrder")});
    Table(shop, u"tblShopStatus"_s, u"lngShopStatus txtEMailAdresse"_s)
        .insert({row.number(u"lng_ShopStatus"), row.text(u"txt_EMailAdresse")});
}

void fillArtikel(store::Connection& shop) {
    fill(
        shop, u"tblArtikel"_s,
        u"ID strArtikelName lngArtikelGruppe dblPreis lngOrder strKurzBeschreibung strBeschreibung strPics strPicsLarge"_s,
        u"SELECT * FROM view_Verwaltung_Produkte WHERE lng_Gruppe = 1 AND flag_InternetPreis = True ORDER BY lng_ID"_s,
        [](const Row& row) {
            const bool withPictures = row.isTrue(u"flag_InternetBilder");
            const auto picture = [&](QStringView column) {
                return withPictures ? row.text(column) : common::Value(QString());
            };
            const common::Value description = row.text(u"txt_Beschreibung");
            return Values{row.number(u"lng_ID"),
                          row.text(u"txt_Produkt"),
                          row.number(u"lng_ProduktGruppe"),
                          row.number(u"dbl_Preis"),
                          row.number(u"lng_Reihenfolge"),
                          description,
                          description,
                          picture(u"txt_BildKlein"),
                          picture(u"txt_BildGross")};
        });
}

void fillBestellzeiten(store::Connection& shop) {
    const QString columns = u"lngWochentag lngMittagGeschlossen lngMittagVonStunden lngMittagVonMinuten "
                            "lngMittagBisStunden lngMittagBisMinuten lngAbendGeschlossen lngAbendVonStunden "
                            "lngAbendVonMinuten lngAbendBisStunden lngAbendBisMinuten"_s;
    // Both tables name them alike.
    fill(shop, u"tblBestellzeiten"_s, columns,
         u"SELECT * FROM tbl_OnlineShop_Bestellzeiten ORDER BY lngWochentag ASC"_s, [&](const Row& row) {
             Values values;
             for (const QString& column : columns.split(u' '))
                 values.push_back(row.number(column));
             return values;
         });
}

void fillCorporateIdentity(store::Connection& shop) {
    fill(shop, u"tblCorpprateIdentity"_s,
         u"lng_ID strBalkenfarbe strSchriftfarbe strHintergrundbild strShopTitel"_s,
         u"SELECT * FROM tbl_OnlineShop_CorporateIdentity ORDER BY lng_ID ASC"_s, [](const Row& row) {
             return Values{row.number(u"lng_ID"), row.text(u"txt_BalkenfarbeHEX"),
                           row.text(u"txt_SchriftfarbeHEX"), row.text(u"txt_Hintergrundbild"),
                           row.text(u"txt_ShopTitel")};
         });
}

void fillDokumente(store::Connection& shop) {
    fill(shop, u"tblDokumente"_s,
         u"ID strAGB strKontakt strFAQ strWiderspruchsrecht strDatenschutz strNews strBestellungDanke"_s,
         u"SELECT * FROM tbl_OnlineShop_Dokumente WHERE lng_ID = 1;"_s, [](const Row& row) {
             return Values{row.number(u"lng_ID"),
                           row.text(u"txt_DokumenteAGB"),
                           row.text(u"txt_DokumenteKontakt"),
                           row.text(u"txt_DokumenteFAQ"),
                           row.text(u"txt_DokumenteWiderspruch"),
                           row.text(u"txt_DokumenteDatenschutz"),
                           row.text(u"txt_News"),
                           row.text(u"txt_BestellungDanke")};
         });
}

void fillGruppe(store::Connection& shop) {
    fill(shop, u"tblGruppe"_s, u"ID strArtikelGruppe lngOrder"_s,
         u"SELECT * FROM tbl_Verwaltung_ProdukteKategorien WHERE flag_Internet = True ORDER BY lng_ID"_s,
         [](const Row& row) {
             return Values{row.number(u"lng_ID"), row.text(u"txt_ProduktGruppe"),
                           row.number(u"lng_Reihenfolge")};
         });
}

void fillLieferbedingungen(store::Connection& shop) {
    fill(shop, u"tblLieferbedingungen"_s, u"lngPLZ strOrt dblMindestbestellmenge dblLieferzeit"_s,
         u"SELECT * FROM tbl_PLZ_Verzeichnis WHERE bool_Liefergebiet = True ORDER BY lng_ID"_s,
         [](const Row& row) {
             return Values{row.number(u"lng_PLZ"), row.text(u"txt_Ort"),
                           row.number(u"dbl_Mindestbestellmenge"), row.number(u"lng_Lieferzeiten")};
         });
}

void fillZusatz(store::Connection& shop) {
    fill(
        shop, u"tblZusatz"_s, u"ID strZusatzName dblPreis lngOrder"_s,
        u"SELECT * FROM view_Verwaltung_ProdukteExtras WHERE lng_Gruppe = 1 AND flag_Status <> True ORDER BY lng_ID"_s,
        [](const Row& row) {
            return Values{row.number(u"lng_ID"), row.text(u"txt_Extra"), row.number(u"dbl_Preis"),
                          row.number(u"lng_Reihenfolge")};
        });
}

void fillZusatzGruppe(store::Connection& shop) {
    // Many products share few extras.
    QHash<qint64, bool> known;
    const auto isForInternet = [&](qint64 extra) {
        auto found = known.constFind(extra);
        if (found == known.constEnd())
            found = known.insert(extra, modProdukteExtras::IsExtraInternet(extra));
        return *found;
    };
    fill(shop, u"tblZusatzGruppe"_s, u"ID lngArtikel lngZusatz"_s,
         u"SELECT * FROM tbl_Verwaltung_Produkte_Extras ORDER BY lng_ID"_s, [&](const Row& row) {
             const common::Value extra = row.number(u"lng_ProduktExtraID");
             return isForInternet(extra.toLong())
                        ? Values{row.number(u"lng_ID"), row.number(u"lng_ProduktID"), extra}
                        : Values();
         });
}

struct Step {
    const char16_t* status;
    int progress;
    void (*fill)(store::Connection& shop);
};

constexpr Step kSteps[] = {
    {u"Datenbank: Lieferzeiten....", 5, fillLieferzeiten},
    {u"Datenbank: Produkte....", 10, fillArtikel},
    {u"Datenbank: Bestellzeiten....", 40, fillBestellzeiten},
    {u"Datenbank: Corporate Identity....", 45, fillCorporateIdentity},
    {u"Datenbank: Dokumente....", 50, fillDokumente},
    {u"Datenbank: Gruppen....", 55, fillGruppe},
    {u"Datenbank: Lieferbedingungen....", 70, fillLieferbedingungen},
    {u"Datenbank: Extras....", 75, fillZusatz},
    {u"Datenbank: Produkte Extras....", 85, fillZusatzGruppe},
};

/// In one transaction: thousands of statements wait for the disk once, and whatever fails or cuts them off
/// leaves the former catalogue.
void fillDatabase(shop::TransferView& view) {
    showStep(view, u"Datenbank initialisieren....", 0);
    store::Connection shop;
    shop.Open(store::onlineShopConnectionString());
    store::transact(shop, [&] {
        emptyTables(shop);
        for (const Step& step : kSteps) {
            showStep(view, step.status, step.progress);
            step.fill(shop);
        }
    });
    shop.Close();
}

[[noreturn]] void fail(const QString& file, const QString& why) {
    throw common::RunTimeError(common::kPlatformFailure,
                               u"Die Datei \"%1\" lässt sich nicht ersetzen."_s.arg(file), why);
}

void compactDatabase() {
    const QString source = u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s + store::appPath();
    const QString target = source + u"\\Data\\DBOnlineShop_CLEAN.mdb;Jet OLEDB:Engine Type=5;"_s;
    const QString file = DatabaseFile();
    const QString clean = store::ConnectionString::parse(target).path;
    if (QFile::exists(clean) && !QFile::remove(clean))
        fail(clean, u"left over"_s);
    store::CompactDatabase(source + u"\\Data\\DBOnlineShop.mdb;"_s, target);
    // Whoever else has it open keeps a log of it, which fits no other file.
    if (QFile::exists(file + u"-wal"_s))
        fail(file, u"open elsewhere"_s);
    if (const std::error_code error = common::replaceFile(file, clean))
        fail(file, QString::fromStdString(error.message()));
}

} // namespace

QString DatabaseFile() {
    return store::ConnectionString::parse(store::onlineShopConnectionString()).path;
}

void CreateOnlineShopDB(shop::TransferView& view, platform::Dialogs& dialogs) {
    fillDatabase(view);
    showStep(view, u"Datenbank komprimieren....", 90);
    try {
        compactDatabase();
    } catch (const std::exception& failure) {
        qWarning("The shop's database is not compacted: %s", failure.what());
        dialogs.MsgBox(
            u"Sie müssen die Anwendung als Administrator ausführen, damit Sie diese Funktion ausnützen "
            u"können. "
            "Drücken Sie mit der rechten Maustaste auf das Icon der Anwendung und starten Sie die Programm "
            "'Als Administrator ausführen'"_s,
            platform::kInformation, u"Keine Administratorenrechte"_s);
        return;
    }
    showStep(view, u"Datenbank komprimiert....", 95);
}

} // namespace modOnlineShopDB
