-- Every lookup on the way of a keystroke has its index, so that none grows with the tables. The sums of the
-- statistics are read from the index alone.

-- Orders: by customer the newest first, with his journal's sums; by courier and by day with the turnover, within a
-- day by number, as the journal lists them; by moment for a working day that ends after midnight.
CREATE INDEX idx_Bestellungen_Kunde_Nummer ON tbl_Auftragswesen_Bestellungen_Master
    (lng_KundenID, lng_TrxNr, lng_LieferDatum, dbl_TotalMitMWSt);
CREATE INDEX idx_Bestellungen_Datum ON tbl_Auftragswesen_Bestellungen_Master
    (lng_BestellDatum, lng_TrxNr, dbl_TotalMitMWSt, dbl_MWStBetrag);
CREATE INDEX idx_Bestellungen_Kurier ON tbl_Auftragswesen_Bestellungen_Master
    (lng_KurierID, lng_BestellDatum, lng_TrxNr, dbl_TotalMitMWSt, dbl_MWStBetrag);
CREATE INDEX idx_Bestellungen_Zeitpunkt ON tbl_Auftragswesen_Bestellungen_Master (dbl_BestellDatumNow);
CREATE INDEX idx_Bestellungen_Kurier_Zeitpunkt ON tbl_Auftragswesen_Bestellungen_Master
    (lng_KurierID, dbl_BestellDatumNow);
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

CREATE UNIQUE INDEX idx_Erledigt_Kennung ON tbl_Auftragswesen_Erledigt (txt_Kennung);
CREATE INDEX idx_Erledigt_Zeit ON tbl_Auftragswesen_Erledigt (dbl_ErledigtNow);

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
-- The orders of the customers' list that no search has an index for.
CREATE INDEX idx_Kunden_Telefontext ON tbl_Verwaltung_Kunden (txt_Telefon);
CREATE INDEX idx_Kunden_Nateltext ON tbl_Verwaltung_Kunden (txt_Natel);
CREATE INDEX idx_Kunden_Erfasst ON tbl_Verwaltung_Kunden (date_Erfasst);

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

-- By web order and by booking; a booking is of one web order at most.
CREATE INDEX idx_WebShop_Verbucht ON tbl_WebShop_Bestellungen_Verbucht
    (lng_WebShopID, flag_Vorbestellung, lng_TrxNr);
CREATE UNIQUE INDEX idx_WebShop_Verbucht_Bestellung ON tbl_WebShop_Bestellungen_Verbucht
    (lng_TrxNr, flag_Vorbestellung);

CREATE INDEX idx_PLZ ON tbl_PLZ_Verzeichnis (lng_PLZ, txt_Ort, txt_Land);

CREATE UNIQUE INDEX idx_Stationen_Pacht ON tbl_Stationen_Pacht (txt_Aufgabe);
CREATE UNIQUE INDEX idx_Stationen_Neues ON tbl_Stationen_Neues (txt_Thema);
