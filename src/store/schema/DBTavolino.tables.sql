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

-- Working orders that were stored, changed or deleted, by their identity: their drafts are done with, and none is
-- stored twice.
CREATE TABLE tbl_Auftragswesen_Erledigt (
    txt_Kennung        TEXT,
    lng_TrxNr          INTEGER,
    flag_Vorbestellung INTEGER,
    dbl_ErledigtNow    DOUBLE
);

-- Which conditions of an order count as cash at the close of the day; the owner changes it there.
CREATE TABLE tbl_Auswertungen_Barkonditionen (
    lng_ID          INTEGER PRIMARY KEY AUTOINCREMENT,
    txt_Konditionen TEXT COLLATE GERMAN_CI,
    lng_Bar         INTEGER
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

-- Which web order became which booking or pre-order, and when. The shop's number and the mark tell the web order.
CREATE TABLE tbl_WebShop_Bestellungen_Verbucht (
    lng_WebShopID      INTEGER,
    lng_TrxNr          INTEGER,
    flag_Vorbestellung INTEGER,
    dbl_VerbuchtNow    DOUBLE,
    txt_Merkmal        TEXT
);

-- Which station does what only one may do, until when. The identity is that of one run of a program. The time is that of
-- the store's clock.
CREATE TABLE tbl_Stationen_Pacht (
    lng_ID      INTEGER PRIMARY KEY AUTOINCREMENT,
    txt_Aufgabe TEXT COLLATE GERMAN_CI,
    txt_Kennung TEXT,
    txt_Station TEXT COLLATE GERMAN_CI,
    dbl_Bis     DOUBLE
);

-- Grows with each change of what stations keep in memory, by what it is.
CREATE TABLE tbl_Stationen_Neues (
    lng_ID    INTEGER PRIMARY KEY AUTOINCREMENT,
    txt_Thema TEXT COLLATE GERMAN_CI,
    lng_Stand INTEGER
);
