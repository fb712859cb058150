#include "store/SchemaSteps.h"
#include "store/CreateDatabase.h"
#include "store/SqliteEngine.h"

namespace store {
namespace {

/// By the version that the step starts from.
constexpr const char* kSteps[] = {
    // The memory of finished and of web orders, the conditions that mean cash, the indexes of the statistics
    // and of
    // the customers' list, and a journal that looks names up for the rows on show only. Programs of the first
    // version have made some of it by themselves.
    R"(
CREATE TABLE IF NOT EXISTS tbl_Auftragswesen_Erledigt (lng_ID INTEGER PRIMARY KEY, txt_Kennung TEXT);

CREATE TABLE IF NOT EXISTS tbl_Auswertungen_Barkonditionen (
    lng_ID INTEGER PRIMARY KEY AUTOINCREMENT, txt_Konditionen TEXT COLLATE GERMAN_CI, lng_Bar INTEGER);
INSERT INTO tbl_Auswertungen_Barkonditionen (txt_Konditionen, lng_Bar)
    SELECT column1, 1 FROM (VALUES ('Bar'), ('Cash'))
    WHERE NOT EXISTS (SELECT 1 FROM tbl_Auswertungen_Barkonditionen);

CREATE TABLE IF NOT EXISTS tbl_WebShop_Bestellungen_Verbucht (
    lng_WebShopID INTEGER, lng_TrxNr INTEGER, flag_Vorbestellung INTEGER, dbl_VerbuchtNow DOUBLE);
ALTER TABLE tbl_WebShop_Bestellungen_Verbucht ADD COLUMN txt_Merkmal TEXT;
CREATE INDEX IF NOT EXISTS idx_WebShop_Verbucht ON tbl_WebShop_Bestellungen_Verbucht
    (lng_WebShopID, flag_Vorbestellung, lng_TrxNr);
CREATE UNIQUE INDEX IF NOT EXISTS idx_WebShop_Verbucht_Bestellung ON tbl_WebShop_Bestellungen_Verbucht
    (lng_TrxNr, flag_Vorbestellung);

DROP INDEX IF EXISTS idx_Bestellungen_Kunde;
CREATE INDEX IF NOT EXISTS idx_Bestellungen_Kunde_Nummer ON tbl_Auftragswesen_Bestellungen_Master
    (lng_KundenID, lng_TrxNr, lng_LieferDatum, dbl_TotalMitMWSt);
DROP INDEX IF EXISTS idx_Bestellungen_Datum;
CREATE INDEX idx_Bestellungen_Datum ON tbl_Auftragswesen_Bestellungen_Master
    (lng_BestellDatum, lng_TrxNr, dbl_TotalMitMWSt, dbl_MWStBetrag);
DROP INDEX IF EXISTS idx_Bestellungen_Kurier;
CREATE INDEX idx_Bestellungen_Kurier ON tbl_Auftragswesen_Bestellungen_Master
    (lng_KurierID, lng_BestellDatum, lng_TrxNr, dbl_TotalMitMWSt, dbl_MWStBetrag);
DROP INDEX IF EXISTS idx_Bestellungen_Zeitpunkt;
CREATE INDEX idx_Bestellungen_Zeitpunkt ON tbl_Auftragswesen_Bestellungen_Master (dbl_BestellDatumNow);
CREATE INDEX IF NOT EXISTS idx_Bestellungen_Kurier_Zeitpunkt ON tbl_Auftragswesen_Bestellungen_Master
    (lng_KurierID, dbl_BestellDatumNow);
CREATE INDEX IF NOT EXISTS idx_Kunden_Telefontext ON tbl_Verwaltung_Kunden (txt_Telefon);
CREATE INDEX IF NOT EXISTS idx_Kunden_Nateltext ON tbl_Verwaltung_Kunden (txt_Natel);
CREATE INDEX IF NOT EXISTS idx_Kunden_Erfasst ON tbl_Verwaltung_Kunden (date_Erfasst);

DROP VIEW IF EXISTS view_Auswertungen_Buchungsjournal;
CREATE VIEW view_Auswertungen_Buchungsjournal AS
SELECT b.date_BestellDatum, b.lng_BestellDatum, b.lng_TrxNr,
       CASE WHEN b.lng_KundenID = -1 THEN 'STORNIERT'
            ELSE (SELECT coalesce(nullif(trim(coalesce(k.txt_Name, '') || ' ' || coalesce(k.txt_Vorname, '')), ''),
                                  k.txt_Firma)
                  FROM tbl_Verwaltung_Kunden AS k WHERE k.lng_ID = b.lng_KundenID)
       END AS txt_Buchungstext,
       (SELECT c.txt_Kurzzeichen FROM tbl_Verwaltung_Kuriere AS c WHERE c.lng_ID = b.lng_KurierID) AS txt_Kurier,
       b.dbl_TotalMitMWSt, b.lng_KurierID
FROM tbl_Auftragswesen_Bestellungen_Master AS b;
)",
    // Several stations on one database, and orders that are stored once however often it is tried.
    R"(
CREATE TEMP TABLE erledigt AS SELECT DISTINCT txt_Kennung FROM tbl_Auftragswesen_Erledigt;
DROP TABLE tbl_Auftragswesen_Erledigt;
CREATE TABLE tbl_Auftragswesen_Erledigt (
    txt_Kennung TEXT, lng_TrxNr INTEGER, flag_Vorbestellung INTEGER, dbl_ErledigtNow DOUBLE);
INSERT INTO tbl_Auftragswesen_Erledigt SELECT txt_Kennung, NULL, NULL, julianday('now') - 2415018.5 FROM erledigt;
DROP TABLE erledigt;
CREATE UNIQUE INDEX idx_Erledigt_Kennung ON tbl_Auftragswesen_Erledigt (txt_Kennung);
CREATE INDEX idx_Erledigt_Zeit ON tbl_Auftragswesen_Erledigt (dbl_ErledigtNow);

CREATE TABLE tbl_Stationen_Pacht (
    lng_ID      INTEGER PRIMARY KEY AUTOINCREMENT,
    txt_Aufgabe TEXT COLLATE GERMAN_CI,
    txt_Kennung TEXT,
    txt_Station TEXT COLLATE GERMAN_CI,
    dbl_Bis     DOUBLE
);

CREATE TABLE tbl_Stationen_Neues (
    lng_ID    INTEGER PRIMARY KEY AUTOINCREMENT,
    txt_Thema TEXT COLLATE GERMAN_CI,
    lng_Stand INTEGER
);

CREATE UNIQUE INDEX idx_Stationen_Pacht ON tbl_Stationen_Pacht (txt_Aufgabe);
CREATE UNIQUE INDEX idx_Stationen_Neues ON tbl_Stationen_Neues (txt_Thema);
)"};
static_assert(std::size(kSteps) == kSchemaVersion - 1);

} // namespace

void SqliteEngine::takeSchemaSteps(const std::function<void()>& waiting) {
    const auto steps = [this] {
        begin();
        try {
            // Another process may have been faster.
            for (int version = schemaVersion(); version < kSchemaVersion; ++version) {
                runScript(kSteps[version - 1]);
                runScript(("PRAGMA user_version = " + std::to_string(version + 1)).c_str());
            }
            commit();
        } catch (...) {
            if (inTransaction())
                rollback();
            throw;
        }
    };
    waiting ? watched(waiting, steps) : steps();
}

void BringUpToDate(Connection& connection, const std::function<void()>& keepCopy, const Waiting& waiting) {
    const int from = connection.engine().schemaVersion();
    if (from >= kSchemaVersion)
        return;
    if (keepCopy)
        keepCopy();
    connection.engine().takeSchemaSteps(waiting);
    qWarning("Database brought from schema %d to %d", from, kSchemaVersion);
}

} // namespace store
