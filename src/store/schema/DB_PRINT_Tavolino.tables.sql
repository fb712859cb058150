-- Print work tables: emptied and refilled before each report, so they hold the last run only. Slip and head bear
-- texts that are formatted already; the lists bear numbers that the report formats.

CREATE TABLE BestellReport (
    Kurzzeichen           TEXT COLLATE GERMAN_CI,
    Einheit               TEXT COLLATE GERMAN_CI,
    Bezeichnung           TEXT COLLATE GERMAN_CI,
    CCy                   TEXT COLLATE GERMAN_CI,
    Anzahl                TEXT COLLATE GERMAN_CI,
    "Preis/Stk"           TEXT COLLATE GERMAN_CI,
    "Preis/Total"         TEXT COLLATE GERMAN_CI,
    Rabatt                TEXT COLLATE GERMAN_CI,
    "PreisOhneMWSt/Total" TEXT COLLATE GERMAN_CI,
    MWSt                  TEXT COLLATE GERMAN_CI
);

-- One row.
CREATE TABLE ZusatzInfo (
    Adresse        TEXT COLLATE GERMAN_CI,
    Auftragsnummer TEXT COLLATE GERMAN_CI,
    Kundennummer   TEXT COLLATE GERMAN_CI,
    Kurier         TEXT COLLATE GERMAN_CI,
    Datum          TEXT COLLATE GERMAN_CI,
    Bestellzeit    TEXT COLLATE GERMAN_CI,
    Lieferzeit     TEXT COLLATE GERMAN_CI,
    "MWSt-Nr"      TEXT COLLATE GERMAN_CI,
    Konditionen    TEXT COLLATE GERMAN_CI,
    Lieferung      TEXT COLLATE GERMAN_CI,
    TotalRabatt    TEXT COLLATE GERMAN_CI,
    TotalPreis     TEXT COLLATE GERMAN_CI,
    "MWST-Satz"    TEXT COLLATE GERMAN_CI,
    Werbung        TEXT COLLATE GERMAN_CI,
    MWStSatz1      TEXT COLLATE GERMAN_CI,
    MWStSatz2      TEXT COLLATE GERMAN_CI,
    MWStBetrag1    TEXT COLLATE GERMAN_CI,
    MWStBetrag2    TEXT COLLATE GERMAN_CI
);

CREATE TABLE PrintBuchungsJournal (
    Datum      DATE,
    AuftragsNr INTEGER,
    Buchung    TEXT COLLATE GERMAN_CI,
    Kurier     TEXT COLLATE GERMAN_CI,
    Betrag     DOUBLE
);

CREATE TABLE KundenStamm (
    KundenNummer INTEGER,
    KundenNr     INTEGER,
    Anrede       TEXT COLLATE GERMAN_CI,
    Namen        TEXT COLLATE GERMAN_CI,
    Vorname      TEXT COLLATE GERMAN_CI,
    Strasse      TEXT COLLATE GERMAN_CI,
    Plz          TEXT COLLATE GERMAN_CI,
    Ort          TEXT COLLATE GERMAN_CI,
    Telefon      TEXT COLLATE GERMAN_CI,
    Natel        TEXT COLLATE GERMAN_CI
);

CREATE TABLE ArtikelStamm (
    Kurzzeichen   TEXT COLLATE GERMAN_CI,
    Produkt       TEXT COLLATE GERMAN_CI,
    ProduktGruppe TEXT COLLATE GERMAN_CI,
    Stückelung    TEXT COLLATE GERMAN_CI,
    Einheit       INTEGER,
    Ccy           TEXT COLLATE GERMAN_CI,
    Preis         DOUBLE,
    MWStCode      INTEGER,
    Status        TEXT COLLATE GERMAN_CI,
    PreisGruppe   INTEGER,
    Internet      TEXT COLLATE GERMAN_CI
);

CREATE TABLE ArtikelZusatzStamm (
    Bezeichnung TEXT COLLATE GERMAN_CI,
    Stückelung  TEXT COLLATE GERMAN_CI,
    Einheit     INTEGER,
    Ccy         TEXT COLLATE GERMAN_CI,
    Preis       DOUBLE,
    MWStCode    INTEGER,
    Status      TEXT COLLATE GERMAN_CI,
    PreisGruppe INTEGER,
    Internet    TEXT COLLATE GERMAN_CI
);

CREATE TABLE PrintUmsatz (
    TagPeriode   TEXT COLLATE GERMAN_CI,
    TagCcy       TEXT COLLATE GERMAN_CI,
    TagUmsatz    DOUBLE,
    MonatPeriode TEXT COLLATE GERMAN_CI,
    MonatCcy     TEXT COLLATE GERMAN_CI,
    MonatUmsatz  DOUBLE,
    JahrPeriode  TEXT COLLATE GERMAN_CI,
    JahrCcy      TEXT COLLATE GERMAN_CI,
    JahrUmsatz   DOUBLE
);

CREATE TABLE PrintArtikelUmsatz (
    Gruppe      TEXT COLLATE GERMAN_CI,
    Ccy         TEXT COLLATE GERMAN_CI,
    TotalMenge  DOUBLE,
    TotalUmsatz DOUBLE,
    TotalMWSt   DOUBLE
);

-- The list of the best customers has no order number.
CREATE TABLE PrintKundenUmsatz (
    Datum      TEXT COLLATE GERMAN_CI,
    KundenNr   INTEGER,
    AuftragsNr TEXT COLLATE GERMAN_CI,
    Ccy        TEXT COLLATE GERMAN_CI,
    Betrag     DOUBLE
);

CREATE TABLE PrintKundenArtikelUmsatz (
    Artikel TEXT COLLATE GERMAN_CI,
    Ccy     TEXT COLLATE GERMAN_CI,
    Menge   DOUBLE,
    Umsatz  DOUBLE
);

-- One row of headings.
CREATE TABLE PrintSettings (
    BuchungsJournalVonBis TEXT COLLATE GERMAN_CI,
    ArtikelUmsatzVonBis   TEXT COLLATE GERMAN_CI,
    KundenUmsatzVonBis    TEXT COLLATE GERMAN_CI,
    KundenUmsatzKunde     TEXT COLLATE GERMAN_CI,
    Ccy                   TEXT COLLATE GERMAN_CI
);
