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

-- A cancelled booking has lost its customer and says so; any other bears the
-- customer's name, or his firm's where he has none. Names are looked up for the rows on show only, so that a sum
-- over the view costs no more than one over the table.
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
