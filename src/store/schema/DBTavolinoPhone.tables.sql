-- Phone book, replaced whole by its update; the program only reads it.

CREATE TABLE tbl_PhoneBook (
    txt_Name    TEXT COLLATE GERMAN_CI,
    txt_Vorname TEXT COLLATE GERMAN_CI,
    txt_Strasse TEXT COLLATE GERMAN_CI,
    txt_PLZ     TEXT COLLATE GERMAN_CI,
    txt_Ort     TEXT COLLATE GERMAN_CI,
    txt_Kanton  TEXT COLLATE GERMAN_CI,
    txt_Telefon TEXT COLLATE GERMAN_CI,
    txt_Natel   TEXT COLLATE GERMAN_CI,
    txt_EMail   TEXT COLLATE GERMAN_CI
);

-- The row with the highest ID tells the installed version.
CREATE TABLE tbl_PhoneBookVersion (
    ID                   INTEGER PRIMARY KEY AUTOINCREMENT,
    lng_PhoneBookVersion INTEGER
);
