#include "common/RunTimeError.h"
#include "install/Installer.h"
#include "install/OwnerPassword.h"
#include "install/Schema.h"
#include "store/PasswordGate.h"
#include "store/Recordset.h"
#include "store/SqliteEngine.h"
#include "store/StoreGlobals.h"
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using install::Database;
using store::ColumnType;

namespace {

std::unique_ptr<store::SqliteEngine> open(const QTemporaryDir& folder, Database database) {
    const install::DatabaseFile& file = install::databaseFiles()[int(database)];
    return std::make_unique<store::SqliteEngine>(folder.filePath(u"Data/"_s + file.fileName), file.password);
}

/// A column's type by its name's prefix, which the firm's naming fixes; exceptions name theirs behind a
/// colon.
ColumnType typeOf(const QString& name, const QString& exception) {
    const QHash<QString, ColumnType> named = {{u"L"_s, ColumnType::Long},
                                              {u"D"_s, ColumnType::Double},
                                              {u"T"_s, ColumnType::Text},
                                              {u"Y"_s, ColumnType::YesNo},
                                              {u"d"_s, ColumnType::Date}};
    if (!exception.isEmpty())
        return named.value(exception);
    for (const auto& [prefix, type] :
         {std::pair(u"lng"_s, ColumnType::Long), std::pair(u"dbl"_s, ColumnType::Double),
          std::pair(u"date_"_s, ColumnType::Date), std::pair(u"time_"_s, ColumnType::Date),
          std::pair(u"ID"_s, ColumnType::Long), std::pair(u"bool_"_s, ColumnType::YesNo)}) {
        if (name.startsWith(prefix))
            return type;
    }
    return ColumnType::Text;
}

struct TableSpec {
    Database database;
    const char* name;
    const char* columns;
};

constexpr const char* kHead =
    "lng_TrxNr lng_KundenID lng_KurierID lng_BestellDatum date_BestellDatum time_BestellZeit "
    "dbl_BestellDatumNow "
    "time_Lieferzeit txt_Konditionen lng_LieferDatum txt_LieferDatum dbl_SummeOhneMWSt dbl_MWStBetrag "
    "dbl_TotalMitMWSt";
constexpr const char* kLine =
    "dbl_TrxNr lng_TrxNrMaster lng_ProduktID flag_IsProdukt:L lng_ExtraID dbl_Menge dbl_MengeIntern "
    "txt_Stückelung "
    "lng_Einheit txt_Ccy dbl_PreisMitMWSt dbl_Rabatt dbl_MWStSatz dbl_PreisOhneMWSt dbl_BestellZeitDouble";
constexpr const char* kPeriods =
    "lngMittagGeschlossen lngMittagVonStunden lngMittagVonMinuten lngMittagBisStunden "
    "lngMittagBisMinuten lngAbendGeschlossen lngAbendVonStunden lngAbendVonMinuten "
    "lngAbendBisStunden lngAbendBisMinuten lngWochentag";

const TableSpec kTables[] = {
    {Database::Main, "tbl_Auftragswesen_Bestellungen_Master", kHead},
    {Database::Main, "tbl_Auftragswesen_Bestellungen_Details", kLine},
    {Database::Main, "tbl_Auftragswesen_Vorbestellungen_Master", kHead},
    {Database::Main, "tbl_Auftragswesen_Vorbestellungen_Details", kLine},
    {Database::Main, "tbl_Einstellungen_Benutzer",
     "lng_ID txt_Username txt_Passwort lng_Administrator lng_Einstellungen lng_KundenStatistik "
     "lng_UmsatzStatistik "
     "lng_Buchungsjournal lng_OnlineShop lng_Datensicherung"},
    {Database::Main, "tbl_Einstellungen_System",
     "lng_EditierungBestellungen lng_AnmeldungBenutzer txt_Printer1_Name txt_Printer2_Name "
     "lng_Printer1_Copies "
     "lng_Printer2_Copies lng_Printer1_Status lng_Printer2_Status lng_VorlageBestellung txt_Werbetext "
     "dbl_MWStSatz1 "
     "dbl_MWStSatz3 txt_VATNummer lng_NoVATStatus lng_FiktiverTag:D lng_StandardLieferzeit lng_InitTrxNr "
     "lng_VorbestellungAutomatischStatus lng_VorbestellungAutomatischZeit lng_VorbestellungBuchungStatus "
     "lng_VorbestellungBuchungZeit txt_Currency txt_Sprache lng_SoftwareVersion_Major "
     "lng_SoftwareVersion_Minor "
     "lng_SoftwareVersion_Revision"},
    {Database::Main, "tbl_Verwaltung_AnruferListe",
     "lng_ID txt_Telefon txt_Zeit txt_Datum lng_Datum:D flag_Kunde:Y"},
    {Database::Main, "tbl_Verwaltung_Kunden",
     "lng_ID txt_Firma txt_Name txt_Vorname txt_Strasse txt_Etage txt_PLZ txt_Ort txt_Telefon dbl_Telefon "
     "txt_Natel "
     "dbl_Natel txt_EMail txt_Zusatzinfo date_Erfasst flag_Zusatzinfo:L flag_ClientStatus:L "
     "flag_Newsletter:L"},
    {Database::Main, "tbl_Verwaltung_Kuriere", "lng_ID txt_Kurzzeichen txt_Bezeichnung lng_Reihenfolge"},
    {Database::Main, "tbl_Verwaltung_ProdukteKategorien",
     "lng_ID txt_ProduktGruppe lng_Reihenfolge flag_Internet:Y lng_Updated"},
    {Database::Main, "tbl_Verwaltung_Produkte",
     "lng_ID lng_ProduktGruppe txt_Kurzzeichen txt_Produkt txt_Beschreibung txt_Stückelung lng_Einheit "
     "flag_InternetPreis:Y flag_InternetBilder:Y flag_Status:Y lng_Reihenfolge flag_Updated:Y "
     "flag_UpdatedPicSmall:Y "
     "flag_UpdatedPicLarge:Y txt_BildKlein txt_BildGross"},
    {Database::Main, "tbl_Verwaltung_Produkte_Preise", "lng_ProduktID lng_Gruppe dbl_Preis lng_MWSt"},
    {Database::Main, "tbl_Verwaltung_Produkte_Extras", "lng_ID lng_ProduktID lng_ProduktExtraID"},
    {Database::Main, "tbl_Verwaltung_ProdukteExtras",
     "lng_ID txt_Extra txt_Stückelung lng_Einheit lng_Reihenfolge flag_Internet:Y flag_Status:Y "
     "flag_Updated:Y"},
    {Database::Main, "tbl_Verwaltung_ProdukteExtras_Preise", "lng_ExtraID lng_Gruppe dbl_Preis lng_MWSt"},
    {Database::Main, "tbl_PLZ_Verzeichnis",
     "lng_ID txt_Land lng_PLZ txt_Ort dbl_Mindestbestellmenge lng_Lieferzeiten txt_Kurier bool_Liefergebiet"},
    {Database::Main, "tbl_OnlineShop_Bestellzeiten", kPeriods},
    {Database::Main, "tbl_OnlineShop_Lieferzeiten",
     "lng_Abholzeit lng_LastOrder lng_ShopStatus txt_EMailAdresse"},
    {Database::Main, "tbl_OnlineShop_CorporateIdentity",
     "lng_ID txt_BalkenfarbeDEZ txt_BalkenfarbeHEX txt_SchriftfarbeDEZ txt_SchriftfarbeHEX "
     "txt_Hintergrundbild "
     "txt_ShopTitel"},
    {Database::Main, "tbl_OnlineShop_Dokumente",
     "lng_ID txt_BestellungDanke txt_DokumenteKontakt txt_DokumenteAGB txt_DokumenteFAQ "
     "txt_DokumenteWiderspruch "
     "txt_DokumenteDatenschutz txt_News txt_EMailConfoBetreff txt_EMailConfoBody"},
    {Database::Main, "tbl_WebShop_Bestellungen_Master",
     "lng_ID txt_Firma txt_Name txt_Vorname txt_Strasse txt_Etage txt_PLZOrt txt_Telefon txt_EMail "
     "txt_Versandart "
     "txt_Versandzeit txt_Anmerkungen dbl_Total"},
    {Database::Main, "view_Verwaltung_Produkte",
     "lng_ID lng_ProduktGruppe txt_Kurzzeichen txt_Produkt txt_Beschreibung txt_Stückelung lng_Einheit "
     "lng_Gruppe "
     "dbl_Preis lng_MWSt lng_Reihenfolge flag_InternetPreis:Y flag_InternetBilder:Y flag_Status:Y "
     "txt_BildKlein "
     "txt_BildGross"},
    {Database::Main, "view_Verwaltung_ProdukteExtras",
     "lng_ID txt_Extra txt_Stückelung lng_Einheit lng_Gruppe dbl_Preis lng_MWSt lng_Reihenfolge "
     "flag_Internet:Y "
     "flag_Status:Y"},
    {Database::PhoneBook, "tbl_PhoneBook",
     "txt_Name txt_Vorname txt_Strasse txt_PLZ txt_Ort txt_Kanton txt_Telefon txt_Natel txt_EMail"},
    {Database::PhoneBook, "tbl_PhoneBookVersion", "ID lng_PhoneBookVersion"},
    {Database::Print, "BestellReport",
     "Kurzzeichen Einheit Bezeichnung CCy Anzahl Preis/Stk Preis/Total Rabatt PreisOhneMWSt/Total MWSt"},
    {Database::Print, "ZusatzInfo",
     "Adresse Auftragsnummer Kundennummer Kurier Datum Bestellzeit Lieferzeit MWSt-Nr Konditionen Lieferung "
     "TotalRabatt TotalPreis MWST-Satz Werbung MWStSatz1 MWStSatz2 MWStBetrag1 MWStBetrag2"},
    {Database::Print, "PrintBuchungsJournal", "Datum:d AuftragsNr:L Buchung Kurier Betrag:D"},
    {Database::Print, "KundenStamm",
     "KundenNummer:L KundenNr:L Anrede Namen Vorname Strasse Plz Ort Telefon Natel"},
    {Database::Print, "ArtikelStamm",
     "Kurzzeichen Produkt ProduktGruppe Stückelung Einheit:L Ccy Preis:D MWStCode:L Status PreisGruppe:L "
     "Internet"},
    {Database::Print, "ArtikelZusatzStamm",
     "Bezeichnung Stückelung Einheit:L Ccy Preis:D MWStCode:L Status PreisGruppe:L Internet"},
    {Database::Print, "PrintUmsatz",
     "TagPeriode TagCcy TagUmsatz:D MonatPeriode MonatCcy MonatUmsatz:D JahrPeriode JahrCcy JahrUmsatz:D"},
    {Database::Print, "PrintArtikelUmsatz", "Gruppe Ccy TotalMenge:D TotalUmsatz:D TotalMWSt:D"},
    {Database::Print, "PrintKundenUmsatz", "Datum KundenNr:L AuftragsNr Ccy Betrag:D"},
    {Database::Print, "PrintKundenArtikelUmsatz", "Artikel Ccy Menge:D Umsatz:D"},
    {Database::Print, "PrintSettings",
     "BuchungsJournalVonBis ArtikelUmsatzVonBis KundenUmsatzVonBis KundenUmsatzKunde Ccy"},
    {Database::OnlineShop, "tblAbholung", "lngLieferzeit"},
    {Database::OnlineShop, "tblLastOrder", "lngLieferzeit"},
    {Database::OnlineShop, "tblShopStatus", "lngShopStatus txtEMailAdresse"},
    {Database::OnlineShop, "tblArtikel",
     "ID strArtikelName lngArtikelGruppe dblPreis lngOrder strKurzBeschreibung strBeschreibung strPics "
     "strPicsLarge"},
    {Database::OnlineShop, "tblBestellzeiten", kPeriods},
    {Database::OnlineShop, "tblCorpprateIdentity",
     "lng_ID strBalkenfarbe strSchriftfarbe strHintergrundbild strShopTitel"},
    {Database::OnlineShop, "tblDokumente",
     "ID strAGB strKontakt strFAQ strWiderspruchsrecht strDatenschutz strNews strBestellungDanke"},
    {Database::OnlineShop, "tblGruppe", "ID strArtikelGruppe lngOrder"},
    {Database::OnlineShop, "tblLieferbedingungen", "lngPLZ strOrt dblMindestbestellmenge dblLieferzeit"},
    {Database::OnlineShop, "tblZusatz", "ID strZusatzName dblPreis lngOrder"},
    {Database::OnlineShop, "tblZusatzGruppe", "ID lngArtikel lngZusatz"},
};

TEST(Install, everyTableAndViewHasItsColumns) {
    const QTemporaryDir folder;
    install::installDatabases(folder.path());
    std::vector<std::unique_ptr<store::SqliteEngine>> engines;
    for (const install::DatabaseFile& file : install::databaseFiles())
        engines.push_back(open(folder, file.database));
    for (const TableSpec& table : kTables) {
        const auto& engine = engines[size_t(table.database)];
        QHash<QString, ColumnType> found;
        for (const store::Column& column : engine->columnsOf(QString::fromUtf8(table.name)))
            found.insert(column.name, column.type);
        const QStringList wanted = QString::fromUtf8(table.columns).split(u' ');
        EXPECT_EQ(found.size(), wanted.size()) << table.name;
        for (const QString& text : wanted) {
            const QString name = text.section(u':', 0, 0);
            ASSERT_TRUE(found.contains(name)) << table.name << " " << qPrintable(name);
            EXPECT_EQ(found[name], typeOf(name, text.section(u':', 1)))
                << table.name << " " << qPrintable(name);
        }
    }
}

/// An installation that is open under the names of the program.
class InstallRows : public testing::Test {
  protected:
    void SetUp() override {
        install::installDatabases(folder.path());
        store::setAppPath(folder.path());
        store::OpenDatabases();
    }

    void TearDown() override { store::CloseDatabases(); }

    /// The first row's first column.
    static common::Value pick(const QString& sql, store::Connection& connection = ConnMain) {
        store::Recordset rows;
        rows.Open(sql, connection);
        return rows.Eof() ? common::Value() : rows.valueAt(0, 0);
    }

    QTemporaryDir folder;
};

TEST_F(InstallRows, theSettingsRowFitsASwissDeliveryService) {
    const struct {
        const char16_t* column;
        common::Value value;
    } settings[] = {{u"txt_Currency", u"CHF"_s},
                    {u"txt_Sprache", u"Deutsch"_s},
                    {u"dbl_MWStSatz1", 8.1},
                    {u"dbl_MWStSatz3", 2.6},
                    {u"lng_InitTrxNr", 1000},
                    {u"lng_StandardLieferzeit", 45},
                    {u"lng_Printer1_Status", 1},
                    {u"lng_Printer1_Copies", 1},
                    {u"lng_Printer2_Status", 0},
                    {u"lng_AnmeldungBenutzer", 0},
                    {u"lng_EditierungBestellungen", 0},
                    {u"lng_SoftwareVersion_Major", TAVOLINO_VERSION_MAJOR}};

    for (const auto& [column, value] : settings) {
        EXPECT_EQ(pick(u"SELECT "_s + QString::fromUtf16(column) + u" FROM tbl_Einstellungen_System"_s),
                  value)
            << qPrintable(QString::fromUtf16(column));
    }
    EXPECT_EQ(pick(u"SELECT Count(*) AS n FROM tbl_Einstellungen_System"_s), common::Value(1));
}

TEST_F(InstallRows, whatTheScreensNeverAddIsThere) {
    EXPECT_EQ(
        pick(u"SELECT Count(*) AS n FROM tbl_OnlineShop_Bestellzeiten WHERE lngWochentag BETWEEN 1 AND 7"_s),
        common::Value(7));
    for (const char16_t* table : {u"tbl_OnlineShop_CorporateIdentity", u"tbl_OnlineShop_Dokumente"}) {
        EXPECT_EQ(
            pick(u"SELECT Count(*) AS n FROM "_s + QString::fromUtf16(table) + u" WHERE lng_ID IN (0, 1)"_s),
            common::Value(2));
    }
    EXPECT_EQ(pick(u"SELECT Count(*) AS n FROM PrintSettings"_s, ConnPrint), common::Value(1));
    EXPECT_EQ(pick(u"SELECT lng_PhoneBookVersion FROM tbl_PhoneBookVersion ORDER BY ID DESC"_s, ConnPhone),
              common::Value(1));
    EXPECT_EQ(
        pick(u"SELECT txt_Ort FROM tbl_PLZ_Verzeichnis WHERE lng_PLZ = 8600 AND bool_Liefergebiet = True"_s),
        common::Value(u"Dübendorf"_s));
    EXPECT_GE(pick(u"SELECT Count(*) AS n FROM tbl_PLZ_Verzeichnis"_s).toLong(), 150);
}

TEST_F(InstallRows, theJournalNamesTheCustomerOrSaysThatABookingWasCancelled) {
    ConnMain.Execute(u"INSERT INTO tbl_Verwaltung_Kunden (lng_ID, txt_Firma, txt_Name, txt_Vorname) VALUES "
                     u"(1, '', 'Müller', 'Ada'), (2, 'Blumen AG', NULL, NULL), (3, NULL, 'Solo', NULL)"_s);
    ConnMain.Execute(u"INSERT INTO tbl_Verwaltung_Kuriere (lng_ID, txt_Kurzzeichen) VALUES (7, 'RE')"_s);
    ConnMain.Execute(
        u"INSERT INTO tbl_Auftragswesen_Bestellungen_Master (lng_TrxNr, lng_KundenID, lng_KurierID) "
        u"VALUES (1000, 1, 7), (1001, -1, -1), (1002, 2, 7), (1003, 3, 7), (1004, 99, 7)"_s);
    const QStringList texts = {u"Müller Ada"_s, u"STORNIERT"_s, u"Blumen AG"_s, u"Solo"_s, QString()};
    store::Recordset rows;
    rows.Open(u"SELECT * FROM view_Auswertungen_Buchungsjournal"_s, ConnMain);
    for (const QString& text : texts) {
        EXPECT_EQ(rows.Fields(u"txt_Buchungstext").text(), text);
        EXPECT_EQ(rows.Fields(u"txt_Kurier").text(), text == u"STORNIERT"_s ? QString() : u"RE"_s);
        rows.MoveNext();
    }
}

TEST_F(InstallRows, aNewRowsFlagsAreFalseAndNotNothing) {
    {
        const store::WriteRecordset rows(RsMain, u"SELECT * FROM tbl_Verwaltung_Produkte WHERE 1 = 1;"_s,
                                         ConnMain);
        rows->AddNew();
        rows->Fields(u"txt_Kurzzeichen") = u"X"_s;
        rows->Update();
    }
    EXPECT_EQ(pick(u"SELECT txt_Kurzzeichen FROM tbl_Verwaltung_Produkte WHERE flag_Status = 0"_s),
              common::Value(u"X"_s));
}

QHash<QString, QByteArray> contents(const QString& folder) {
    QHash<QString, QByteArray> files;
    for (QDirIterator file(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
         file.hasNext();) {
        QFile content(file.next());
        EXPECT_TRUE(content.open(QIODevice::ReadOnly));
        files.insert(file.filePath(), content.readAll());
    }
    return files;
}

TEST(Install, aSecondRunAddsWhatIsMissingAndTouchesNothing) {
    const QTemporaryDir folder;
    const QTemporaryDir reports;
    const QStringList names = {u"rep_report1.html"_s, u"rep_report2.html"_s, u"rep_report3.html"_s};
    for (const QString& name : names) {
        QFile report(reports.filePath(name));
        ASSERT_TRUE(report.open(QIODevice::WriteOnly) && report.write("neu") == 3);
    }
    install::InstallOptions options;
    options.reportsFrom = QDir::current().relativeFilePath(reports.path());
    install::installDatabases(folder.path(), options);
    EXPECT_EQ(QDir(folder.filePath(u"Reports"_s)).entryList(QDir::Files, QDir::Name), names);

    const QString changed = folder.filePath(u"Reports/rep_report1.html"_s);
    QFile file(changed);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("vom Wirt") == 8);
    file.close();
    const QHash<QString, QByteArray> before = contents(folder.path());
    install::installDatabases(folder.path(), options);
    EXPECT_EQ(contents(folder.path()), before);

    // A run that was cut off leaves its unfinished file; the next one starts that file anew.
    const QString phone = folder.filePath(u"Data/DBTavolinoPhone.mdb"_s);
    ASSERT_TRUE(QFile::rename(phone, phone + u".neu"_s));
    ASSERT_TRUE(QFile::resize(phone + u".neu"_s, 5000));
    install::installDatabases(folder.path(), options);
    EXPECT_EQ(contents(folder.path()).keys().size(), before.size());
    EXPECT_FALSE(open(folder, Database::PhoneBook)->columnsOf(u"tbl_PhoneBook"_s).empty());
}

TEST(Install, theIniFileIsForItsOwnerAlone) {
    const QTemporaryDir folder;
    install::installDatabases(folder.path());
    QFile file(folder.filePath(u"tavolino.ini"_s));
    EXPECT_EQ(file.permissions() &
                  (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
              QFile::Permissions());
    const QSettings settings(file.fileName(), QSettings::IniFormat);
    EXPECT_EQ(settings.value(u"Telefon/Leitung"_s).toString(), u"keine"_s);
    EXPECT_EQ(settings.value(u"Inhaber/Name"_s).toString(), u"Inhaber"_s);
    EXPECT_FALSE(install::hasOwnerPassword(folder.path()));
}

TEST(Install, theOwnersPasswordIsKeptAsAVerifierAlone) {
    const QTemporaryDir folder;
    install::installDatabases(folder.path());
    QFile file(folder.filePath(u"tavolino.ini"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    file.close();
    const auto verifier = [&] {
        return QSettings(file.fileName(), QSettings::IniFormat)
            .value(u"Inhaber/Passwort"_s)
            .toString()
            .toLatin1();
    };
    EXPECT_THROW(install::setOwnerPassword(folder.path(), QString()), common::RunTimeError);
    install::setOwnerPassword(folder.path(), u"Käse = \"gut\"; 100%"_s);
    EXPECT_TRUE(install::hasOwnerPassword(folder.path()));
    EXPECT_TRUE(store::fitsVerifier(verifier(), u"Käse = \"gut\"; 100%"_s));
    const QByteArray first = verifier();
    install::setOwnerPassword(folder.path(), u"zweites"_s);
    EXPECT_TRUE(store::fitsVerifier(verifier(), u"zweites"_s));
    EXPECT_FALSE(store::fitsVerifier(verifier(), u"Käse = \"gut\"; 100%"_s));
    // Nothing else changes, and nobody else may read.
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray after = file.readAll();
    EXPECT_FALSE(after.contains("zweites"));
    EXPECT_EQ(after.replace(verifier(), ""), before);
    EXPECT_EQ(file.permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    // The same password never gives the same verifier, and each installation makes up its own.
    EXPECT_NE(store::makeVerifier(u"zweites"_s, 10), store::makeVerifier(u"zweites"_s, 10));
    EXPECT_NE(install::randomPassword(), install::randomPassword());
    EXPECT_GE(install::randomPassword().size(), 12);
}

TEST(Install, aFolderThatCannotBeMadeIsToldByName) {
    const QTemporaryDir folder;
    QFile blocker(folder.filePath(u"Data"_s));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    try {
        install::installDatabases(folder.path());
        FAIL() << "no error";
    } catch (const common::RunTimeError& error) {
        EXPECT_EQ(error.number(), common::kPlatformFailure);
        EXPECT_TRUE(error.sentence().contains(u"Data"_s));
    }
}

} // namespace
