-- Catalogue export for the web shop, emptied and refilled whole. The server's scripts read these names, the
-- spelling of tblCorpprateIdentity among them.

CREATE TABLE tblAbholung (
    lngLieferzeit INTEGER
);

CREATE TABLE tblLastOrder (
    lngLieferzeit INTEGER
);

CREATE TABLE tblShopStatus (
    lngShopStatus   INTEGER,
    txtEMailAdresse TEXT COLLATE GERMAN_CI
);

CREATE TABLE tblArtikel (
    ID                  INTEGER,
    strArtikelName      TEXT COLLATE GERMAN_CI,
    lngArtikelGruppe    INTEGER,
    dblPreis            DOUBLE,
    lngOrder            INTEGER,
    strKurzBeschreibung TEXT COLLATE GERMAN_CI,
    strBeschreibung     TEXT COLLATE GERMAN_CI,
    strPics             TEXT COLLATE GERMAN_CI,
    strPicsLarge        TEXT COLLATE GERMAN_CI
);

CREATE TABLE tblBestellzeiten (
    lngWochentag         INTEGER,
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

CREATE TABLE tblCorpprateIdentity (
    lng_ID             INTEGER,
    strBalkenfarbe     TEXT COLLATE GERMAN_CI,
    strSchriftfarbe    TEXT COLLATE GERMAN_CI,
    strHintergrundbild TEXT COLLATE GERMAN_CI,
    strShopTitel       TEXT COLLATE GERMAN_CI
);

CREATE TABLE tblDokumente (
    ID                   INTEGER,
    strAGB               TEXT COLLATE GERMAN_CI,
    strKontakt           TEXT COLLATE GERMAN_CI,
    strFAQ               TEXT COLLATE GERMAN_CI,
    strWiderspruchsrecht TEXT COLLATE GERMAN_CI,
    strDatenschutz       TEXT COLLATE GERMAN_CI,
    strNews              TEXT COLLATE GERMAN_CI,
    strBestellungDanke   TEXT COLLATE GERMAN_CI
);

CREATE TABLE tblGruppe (
    ID               INTEGER,
    strArtikelGruppe TEXT COLLATE GERMAN_CI,
    lngOrder         INTEGER
);

CREATE TABLE tblLieferbedingungen (
    lngPLZ                 INTEGER,
    strOrt                 TEXT COLLATE GERMAN_CI,
    dblMindestbestellmenge DOUBLE,
    dblLieferzeit          DOUBLE
);

CREATE TABLE tblZusatz (
    ID            INTEGER,
    strZusatzName TEXT COLLATE GERMAN_CI,
    dblPreis      DOUBLE,
    lngOrder      INTEGER
);

CREATE TABLE tblZusatzGruppe (
    ID         INTEGER,
    lngArtikel INTEGER,
    lngZusatz  INTEGER
);
