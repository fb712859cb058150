-- Main database: master data, orders, settings, users, caller list, shop settings, fetched web orders.
--
-- The declared types carry meaning: INTEGER is a long or a flag that holds 0 or 1, YESNO holds -1 or 0, DATE a
-- serial (days since 30 December 1899, the time of day as the fraction). Relations are kept by the program.

CREATE TABLE tbl_Auftragswesen_Bestellungen_Master (
    lng_TrxNr           INTEGER PRIMARY KEY,
    lng_KundenID        INTEGER,
    lng_KurierID        INTEGER,
    lng_BestellDatum    INTEGER,
    date_BestellDatum   DATE,
    time_BestellZeit    DATE,
    dbl_BestellDatumNow DOUBLE,
    time_Lieferzeit     DATE,
    txt_Konditionen     TEXT COLLATE GERMAN_CI,
    lng_LieferDatum     INTEGER,
    txt_LieferDatum     TEXT COLLATE GERMAN_CI,
    dbl_SummeOhneMWSt   DOUBLE,
    dbl_MWStBetrag      DOUBLE,
    dbl_TotalMitMWSt    DOUBLE
);

CREATE TABLE tbl_Auftragswesen_Bestellungen_Details (
    dbl_TrxNr             DOUBLE,
    lng_TrxNrMaster       INTEGER,
    lng_ProduktID         INTEGER,
    flag_IsProdukt        INTEGER,
    lng_ExtraID           INTEGER,
    dbl_Menge             DOUBLE,
    dbl_MengeIntern       DOUBLE,
    txt_Stückelung        TEXT COLLATE GERMAN_CI,
    lng_Einheit           INTEGER,
    txt_Ccy               TEXT COLLATE GERMAN_CI,
    dbl_PreisMitMWSt      DOUBLE,
    dbl_Rabatt            DOUBLE,
    dbl_MWStSatz          DOUBLE,
    dbl_PreisOhneMWSt     DOUBLE,
    dbl_BestellZeitDouble DOUBLE
);

-- A pre-order's number is this table's own counter, never a transaction number.
CREATE TABLE tbl_Auftragswesen_Vorbestellungen_Master (
    lng_TrxNr           INTEGER PRIMARY KEY AUTOINCREMENT,
    lng_KundenID        INTEGER,
    lng_KurierID        INTEGER,
    lng_BestellDatum    INTEGER,
    date_BestellDatum   DATE,
    time_BestellZeit    DATE,
    dbl_BestellDatumNow DOUBLE,
    time_Lieferzeit     DATE,
    txt_Konditionen     TEXT COLLATE GERMAN_CI,
    lng_LieferDatum     INTEGER,
    txt_LieferDatum     TEXT COLLATE GERMAN_CI,
    dbl_SummeOhneMWSt   DOUBLE,
    dbl_MWStBetrag      DOUBLE,
    dbl_TotalMitMWSt    DOUBLE
);

CREATE TABLE tbl_Auftragswesen_Vorbestellungen_Details (
    dbl_TrxNr             DOUBLE,
    lng_TrxNrMaster       INTEGER,
    lng_ProduktID         INTEGER,
    flag_IsProdukt        INTEGER,
    lng_ExtraID           INTEGER,
    dbl_Menge             DOUBLE,
    dbl_MengeIntern       DOUBLE,
    txt_Stückelung        TEXT COLLATE GERMAN_CI,
    lng_Einheit           INTEGER,
    txt_Ccy               TEXT COLLATE GERMAN_CI,
    dbl_PreisMitMWSt      DOUBLE,
    dbl_Rabatt            DOUBLE,
    dbl_MWStSatz          DOUBLE,
    dbl_PreisOhneMWSt     DOUBLE,
    dbl_BestellZeitDouble DOUBLE
);

CREATE TABLE tbl_Einstellungen_Benutzer (
    lng_ID              INTEGER PRIMARY KEY AUTOINCREMENT,
    txt_Username        TEXT COLLATE GERMAN_CI,
    txt_Passwort        TEXT COLLATE GERMAN_CI,
    lng_Administrator   INTEGER,
    lng_Einstellungen   INTEGER,
    lng_KundenStatistik INTEGER,
    lng_UmsatzStatistik INTEGER,
    lng_Buchungsjournal INTEGER,
    lng_OnlineShop      INTEGER,
    lng_Datensicherung  INTEGER
);

-- One row.
CREATE TABLE tbl_Einstellungen_System (
    lng_EditierungBestellungen         INTEGER,
    lng_AnmeldungBenutzer              INTEGER,
    txt_Printer1_Name                  TEXT COLLATE GERMAN_CI,
    txt_Printer2_Name                  TEXT COLLATE GERMAN_CI,
    lng_Printer1_Copies                INTEGER,
    lng_Printer2_Copies                INTEGER,
    lng_Printer1_Status                INTEGER,
    lng_Printer2_Status                INTEGER,
    lng_VorlageBestellung              INTEGER,
    txt_Werbetext                      TEXT COLLATE GERMAN_CI,
    dbl_MWStSatz1                      DOUBLE,
    dbl_MWStSatz3                      DOUBLE,
    txt_VATNummer                      TEXT COLLATE GERMAN_CI,
    lng_NoVATStatus                    INTEGER,
    lng_FiktiverTag                    DOUBLE,
    lng_StandardLieferzeit             INTEGER,
    lng_InitTrxNr                      INTEGER,
    lng_VorbestellungAutomatischStatus INTEGER,
    lng_VorbestellungAutomatischZeit   INTEGER,
    lng_VorbestellungBuchungStatus     INTEGER,
    lng_VorbestellungBuchungZeit       INTEGER,
    txt_Currency                       TEXT COLLATE GERMAN_CI,
    txt_Sprache                        TEXT COLLATE GERMAN_CI,
    lng_SoftwareVersion_Major          INTEGER,
    lng_SoftwareVersion_Minor          INTEGER,
    lng_SoftwareVersion_Revision       INTEGER
);

CREATE TABLE tbl_Verwaltung_AnruferListe (
    lng_ID      INTEGER PRIMARY KEY AUTOINCREMENT,
    txt_Telefon TEXT COLLATE GERMAN_CI,
    txt_Zeit    TEXT COLLATE GERMAN_CI,
    txt_Datum   TEXT COLLATE GERMAN_CI,
    lng_Datum   DOUBLE,
    flag_Kunde  YESNO NOT NULL DEFAULT 0
);

CREATE TABLE tbl_Verwaltung_Kunden (
    lng_ID            INTEGER PRIMARY KEY AUTOINCREMENT,
    txt_Firma         TEXT COLLATE GERMAN_CI,
    txt_Name          TEXT COLLATE GERMAN_CI,
    txt_Vorname       TEXT COLLATE GERMAN_CI,
    txt_Strasse       TEXT COLLATE GERMAN_CI,
    txt_Etage         TEXT COLLATE GERMAN_CI,
    txt_PLZ           TEXT COLLATE GERMAN_CI,
    txt_Ort           TEXT COLLATE GERMAN_CI,
    txt_Telefon       TEXT COLLATE GERMAN_CI,
    dbl_Telefon       DOUBLE,
    txt_Natel         TEXT COLLATE GERMAN_CI,
    dbl_Natel         DOUBLE,
    txt_EMail         TEXT COLLATE GERMAN_CI,
    txt_Zusatzinfo    TEXT COLLATE GERMAN_CI,
    date_Erfasst      DATE,
    flag_Zusatzinfo   INTEGER,
    flag_ClientStatus INTEGER,
    flag_Newsletter   INTEGER
);

CREATE TABLE tbl_Verwaltung_Kuriere (
    lng_ID          INTEGER PRIMARY KEY AUTOINCREMENT,
    txt_Kurzzeichen TEXT COLLATE GERMAN_CI,
    txt_Bezeichnung TEXT COLLATE GERMAN_CI,
    lng_Reihenfolge INTEGER
);

CREATE TABLE tbl_Verwaltung_ProdukteKategorien (
    lng_ID            INTEGER PRIMARY KEY AUTOINCREMENT,
    txt_ProduktGruppe TEXT COLLATE GERMAN_CI,
    lng_Reihenfolge   INTEGER,
    flag_Internet     YESNO NOT NULL DEFAULT 0,
    lng_Updated       INTEGER
);

CREATE TABLE tbl_Verwaltung_Produkte (
    lng_ID               INTEGER PRIMARY KEY AUTOINCREMENT,
    lng_ProduktGruppe    INTEGER,
    txt_Kurzzeichen      TEXT COLLATE GERMAN_CI,
    txt_Produkt          TEXT COLLATE GERMAN_CI,
    txt_Beschreibung     TEXT COLLATE GERMAN_CI,
    txt_Stückelung       TEXT COLLATE GERMAN_CI,
    lng_Einheit          INTEGER,
    flag_InternetPreis   YESNO NOT NULL DEFAULT 0,
    flag_InternetBilder  YESNO NOT NULL DEFAULT 0,
    flag_Status          YESNO NOT NULL DEFAULT 0,
    lng_Reihenfolge      INTEGER,
    flag_Updated         YESNO NOT NULL DEFAULT 0,
    flag_UpdatedPicSmall YESNO NOT NULL DEFAULT 0,
    flag_UpdatedPicLarge YESNO NOT NULL DEFAULT 0,
    txt_BildKlein        TEXT COLLATE GERMAN_CI,
    txt_BildGross        TEXT COLLATE GERMAN_CI
);

CREATE TABLE tbl_Verwaltung_Produkte_Preise (
    lng_ProduktID INTEGER,
    lng_Gruppe    INTEGER,
    dbl_Preis     DOUBLE,
    lng_MWSt      INTEGER
);

-- The key of a relation is what the web shop's catalogue knows it by.
CREATE TABLE tbl_Verwaltung_Produkte_Extras (
    lng_ID             INTEGER PRIMARY KEY AUTOINCREMENT,
    lng_ProduktID      INTEGER,
    lng_ProduktExtraID INTEGER
);

CREATE TABLE tbl_Verwaltung_ProdukteExtras (
    lng_ID          INTEGER PRIMARY KEY AUTOINCREMENT,
    txt_Extra       TEXT COLLATE GERMAN_CI,
    txt_Stückelung  TEXT COLLATE GERMAN_CI,
    lng_Einheit     INTEGER,
    lng_Reihenfolge INTEGER,
    flag_Internet   YESNO NOT NULL DEFAULT 0,
    flag_Status     YESNO NOT NULL DEFAULT 0,
    flag_Updated    YESNO NOT NULL DEFAULT 0
);

CREATE TABLE tbl_Verwaltung_ProdukteExtras_Preise (
    lng_ExtraID INTEGER,
    lng_Gruppe  INTEGER,
    dbl_Preis   DOUBLE,
    lng_MWSt    INTEGER
);

CREATE TABLE tbl_PLZ_Verzeichnis (
    lng_ID                  INTEGER PRIMARY KEY AUTOINCREMENT,
    txt_Land                TEXT COLLATE GERMAN_CI,
    lng_PLZ                 INTEGER,
    txt_Ort                 TEXT COLLATE GERMAN_CI,
    dbl_Mindestbestellmenge DOUBLE,
    lng_Lieferzeiten        INTEGER,
    txt_Kurier              TEXT COLLATE GERMAN_CI,
    bool_Liefergebiet       YESNO NOT NULL DEFAULT 0
);

CREATE TABLE tbl_OnlineShop_Bestellzeiten (
    lngWochentag         INTEGER PRIMARY KEY,
    lngMittagGeschlossen INTEGER,
    lngMittagVonStunden  INTEGER,
    lngMittagVonMinuten  INTEGER,
    lngMittagBisStunden  INTEGER,
    lngMittagBisMinuten  INTEGER,
    lngAbendGeschlossen  INTEGER,
    lngAbendVonStunden   INTEGER,
    lngAbendVonMinuten   INTEGER,
    lngAbendBisStunden   INTEGER,
    lngAbendBisMinuten   INTEGER
);

-- One row.
CREATE TABLE tbl_OnlineShop_Lieferzeiten (
    lng_Abholzeit    INTEGER,
    lng_LastOrder    INTEGER,
    lng_ShopStatus   INTEGER,
    txt_EMailAdresse TEXT COLLATE GERMAN_CI
);

-- Row 1 is in force, row 0 is what came with the installation.
CREATE TABLE tbl_OnlineShop_CorporateIdentity (
    lng_ID              INTEGER PRIMARY KEY,
    txt_BalkenfarbeDEZ  TEXT COLLATE GERMAN_CI,
    txt_BalkenfarbeHEX  TEXT COLLATE GERMAN_CI,
    txt_SchriftfarbeDEZ TEXT COLLATE GERMAN_CI,
    txt_SchriftfarbeHEX TEXT COLLATE GERMAN_CI,
    txt_Hintergrundbild TEXT COLLATE GERMAN_CI,
    txt_ShopTitel       TEXT COLLATE GERMAN_CI
);

CREATE TABLE tbl_OnlineShop_Dokumente (
    lng_ID                   INTEGER PRIMARY KEY,
    txt_BestellungDanke      TEXT COLLATE GERMAN_CI,
    txt_DokumenteKontakt     TEXT COLLATE GERMAN_CI,
    txt_DokumenteAGB         TEXT COLLATE GERMAN_CI,
    txt_DokumenteFAQ         TEXT COLLATE GERMAN_CI,
    txt_DokumenteWiderspruch TEXT COLLATE GERMAN_CI,
    txt_DokumenteDatenschutz TEXT COLLATE GERMAN_CI,
    txt_News                 TEXT COLLATE GERMAN_CI,
    txt_EMailConfoBetreff    TEXT COLLATE GERMAN_CI,
    txt_EMailConfoBody       TEXT COLLATE GERMAN_CI
);

-- The key comes from the shop's server.
CREATE TABLE tbl_WebShop_Bestellungen_Master (
    lng_ID          INTEGER PRIMARY KEY,
    txt_Firma       TEXT COLLATE GERMAN_CI,
    txt_Name        TEXT COLLATE GERMAN_CI,
    txt_Vorname     TEXT COLLATE GERMAN_CI,
    txt_Strasse     TEXT COLLATE GERMAN_CI,
    txt_Etage       TEXT COLLATE GERMAN_CI,
    txt_PLZOrt      TEXT COLLATE GERMAN_CI,
    txt_Telefon     TEXT COLLATE GERMAN_CI,
    txt_EMail       TEXT COLLATE GERMAN_CI,
    txt_Versandart  TEXT COLLATE GERMAN_CI,
    txt_Versandzeit TEXT COLLATE GERMAN_CI,
    txt_Anmerkungen TEXT COLLATE GERMAN_CI,
    dbl_Total       DOUBLE
);

-- Every lookup on the way of a keystroke has its index, so that none grows with the tables. The sums of the
-- statistics are read from the index alone.

-- Orders: by customer with his journal's sums, by courier and by day with the turnover, by moment for a working
-- day that ends after midnight.
CREATE INDEX idx_Bestellungen_Kunde ON tbl_Auftragswesen_Bestellungen_Master
    (lng_KundenID, lng_LieferDatum, dbl_TotalMitMWSt);
CREATE INDEX idx_Bestellungen_Kurier ON tbl_Auftragswesen_Bestellungen_Master
    (lng_KurierID, lng_BestellDatum, dbl_TotalMitMWSt, dbl_MWStBetrag);
CREATE INDEX idx_Bestellungen_Datum ON tbl_Auftragswesen_Bestellungen_Master
    (lng_BestellDatum, dbl_TotalMitMWSt, dbl_MWStBetrag);
CREATE INDEX idx_Bestellungen_Zeitpunkt ON tbl_Auftragswesen_Bestellungen_Master
    (dbl_BestellDatumNow, lng_KurierID);
CREATE INDEX idx_Positionen_Bestellung ON tbl_Auftragswesen_Bestellungen_Details (lng_TrxNrMaster);
CREATE INDEX idx_Positionen_Produkt ON tbl_Auftragswesen_Bestellungen_Details (lng_ProduktID);
CREATE INDEX idx_Positionen_Extra ON tbl_Auftragswesen_Bestellungen_Details (lng_ExtraID);

CREATE INDEX idx_Vorbestellungen_Kunde ON tbl_Auftragswesen_Vorbestellungen_Master (lng_KundenID);
CREATE INDEX idx_Vorbestellungen_Kurier ON tbl_Auftragswesen_Vorbestellungen_Master (lng_KurierID);
CREATE INDEX idx_Vorbestellungen_Lieferung ON tbl_Auftragswesen_Vorbestellungen_Master
    (lng_LieferDatum, time_Lieferzeit);
CREATE INDEX idx_Vorpositionen_Bestellung ON tbl_Auftragswesen_Vorbestellungen_Details (lng_TrxNrMaster);
CREATE INDEX idx_Vorpositionen_Produkt ON tbl_Auftragswesen_Vorbestellungen_Details (lng_ProduktID);
CREATE INDEX idx_Vorpositionen_Extra ON tbl_Auftragswesen_Vorbestellungen_Details (lng_ExtraID);

CREATE INDEX idx_Benutzer_Name ON tbl_Einstellungen_Benutzer (txt_Username);

CREATE INDEX idx_Anrufer_Datum ON tbl_Verwaltung_AnruferListe (lng_Datum);
CREATE INDEX idx_Anrufer_Telefon ON tbl_Verwaltung_AnruferListe (txt_Telefon);

CREATE INDEX idx_Kunden_Telefon ON tbl_Verwaltung_Kunden (dbl_Telefon);
CREATE INDEX idx_Kunden_Natel ON tbl_Verwaltung_Kunden (dbl_Natel);
CREATE INDEX idx_Kunden_Firma ON tbl_Verwaltung_Kunden (txt_Firma);
CREATE INDEX idx_Kunden_Name ON tbl_Verwaltung_Kunden (txt_Name, txt_Vorname);
CREATE INDEX idx_Kunden_Vorname ON tbl_Verwaltung_Kunden (txt_Vorname);
CREATE INDEX idx_Kunden_Strasse ON tbl_Verwaltung_Kunden (txt_Strasse);
CREATE INDEX idx_Kunden_PLZ ON tbl_Verwaltung_Kunden (txt_PLZ);
CREATE INDEX idx_Kunden_Ort ON tbl_Verwaltung_Kunden (txt_Ort);
CREATE INDEX idx_Kunden_EMail ON tbl_Verwaltung_Kunden (txt_EMail);

CREATE INDEX idx_Kuriere_Kurzzeichen ON tbl_Verwaltung_Kuriere (txt_Kurzzeichen);
CREATE INDEX idx_Kategorien_Gruppe ON tbl_Verwaltung_ProdukteKategorien (txt_ProduktGruppe);

CREATE INDEX idx_Produkte_Kurzzeichen ON tbl_Verwaltung_Produkte (txt_Kurzzeichen, lng_ProduktGruppe);
CREATE INDEX idx_Produkte_Produkt ON tbl_Verwaltung_Produkte (txt_Produkt);
CREATE INDEX idx_Produkte_Gruppe ON tbl_Verwaltung_Produkte (lng_ProduktGruppe, lng_Reihenfolge);
CREATE INDEX idx_Produktpreise ON tbl_Verwaltung_Produkte_Preise (lng_ProduktID, lng_Gruppe, dbl_Preis, lng_MWSt);
CREATE INDEX idx_Produktextras_Produkt ON tbl_Verwaltung_Produkte_Extras (lng_ProduktID, lng_ProduktExtraID);
CREATE INDEX idx_Produktextras_Extra ON tbl_Verwaltung_Produkte_Extras (lng_ProduktExtraID);
CREATE INDEX idx_Extras_Extra ON tbl_Verwaltung_ProdukteExtras (txt_Extra);
CREATE INDEX idx_Extrapreise ON tbl_Verwaltung_ProdukteExtras_Preise (lng_ExtraID, lng_Gruppe, dbl_Preis, lng_MWSt);

CREATE INDEX idx_PLZ ON tbl_PLZ_Verzeichnis (lng_PLZ, txt_Ort, txt_Land);

CREATE VIEW view_Verwaltung_Produkte AS
SELECT p.lng_ID, p.lng_ProduktGruppe, p.txt_Kurzzeichen, p.txt_Produkt, p.txt_Beschreibung, p.txt_Stückelung,
       p.lng_Einheit, g.lng_Gruppe, g.dbl_Preis, g.lng_MWSt, p.lng_Reihenfolge, p.flag_InternetPreis,
       p.flag_InternetBilder, p.flag_Status, p.txt_BildKlein, p.txt_BildGross
FROM tbl_Verwaltung_Produkte AS p
JOIN tbl_Verwaltung_Produkte_Preise AS g ON g.lng_ProduktID = p.lng_ID;

CREATE VIEW view_Verwaltung_ProdukteExtras AS
SELECT e.lng_ID, e.txt_Extra, e.txt_Stückelung, e.lng_Einheit, g.lng_Gruppe, g.dbl_Preis, g.lng_MWSt,
       e.lng_Reihenfolge, e.flag_Internet, e.flag_Status
FROM tbl_Verwaltung_ProdukteExtras AS e
JOIN tbl_Verwaltung_ProdukteExtras_Preise AS g ON g.lng_ExtraID = e.lng_ID;

-- A cancelled booking has lost its customer and says so; any other bears the customer's name, or his firm's
-- where he has none.
CREATE VIEW view_Auswertungen_Buchungsjournal AS
SELECT b.date_BestellDatum, b.lng_BestellDatum, b.lng_TrxNr,
       CASE WHEN b.lng_KundenID = -1 THEN 'STORNIERT'
            ELSE coalesce(nullif(trim(coalesce(k.txt_Name, '') || ' ' || coalesce(k.txt_Vorname, '')), ''),
                          k.txt_Firma, '')
       END AS txt_Buchungstext,
       c.txt_Kurzzeichen AS txt_Kurier, b.dbl_TotalMitMWSt, b.lng_KurierID
FROM tbl_Auftragswesen_Bestellungen_Master AS b
LEFT JOIN tbl_Verwaltung_Kunden AS k ON k.lng_ID = b.lng_KundenID
LEFT JOIN tbl_Verwaltung_Kuriere AS c ON c.lng_ID = b.lng_KurierID;
