-- The small firm of the tests: catalogue of the first price group, couriers and customers.
INSERT INTO tbl_Verwaltung_ProdukteKategorien(lng_ID, txt_ProduktGruppe, lng_Reihenfolge) VALUES
    (1, 'Getränke', 2), (2, 'Pizza', 1);
INSERT INTO tbl_Verwaltung_Produkte(lng_ID, lng_ProduktGruppe, txt_Kurzzeichen, txt_Produkt, txt_Stückelung, lng_Einheit,
    lng_Reihenfolge) VALUES
    (1, 2, '10', 'Pizza Hawaii', 'Stk.', 1, 1),
    (2, 2, '1', 'Pizza', 'Stk.', 1, 2),
    (3, 1, 'W', 'Wein', 'Stk.', 1, 3),
    (4, 1, 'G', 'Gutschein', 'Stk.', 1, 4),
    (5, 1, 'O''N5%', 'O''Neill''s', 'Stk.', 6, 5);
INSERT INTO tbl_Verwaltung_Produkte_Preise(lng_ProduktID, lng_Gruppe, dbl_Preis, lng_MWSt) VALUES
    (1, 1, 16.5, 1), (2, 1, 14, 1), (3, 1, 12, 0), (4, 1, 20, 2), (5, 1, 18, 0);
INSERT INTO tbl_Verwaltung_ProdukteExtras(lng_ID, txt_Extra, txt_Stückelung, lng_Einheit, lng_Reihenfolge, flag_Status)
    VALUES
    (1, 'Käsesauce', 'Stk.', 1, 9, False),
    (2, 'Käse', 'Stk.', 1, 8, False),
    (3, 'Knoblauch', 'Stk.', 1, 7, False),
    (4, 'Trüffel', 'Stk.', 1, 6, True);
INSERT INTO tbl_Verwaltung_ProdukteExtras_Preise(lng_ExtraID, lng_Gruppe, dbl_Preis, lng_MWSt) VALUES
    (1, 1, 1.5, 1), (2, 1, 2, 1), (3, 1, 0, 1), (4, 1, 9, 1);
INSERT INTO tbl_Verwaltung_Produkte_Extras(lng_ProduktID, lng_ProduktExtraID) VALUES (1, 1), (2, 2), (2, 3), (2, 4);
INSERT INTO tbl_Verwaltung_Kuriere(lng_ID, txt_Kurzzeichen, txt_Bezeichnung, lng_Reihenfolge) VALUES
    (1, 'AB', 'Anton', 2), (2, 'CD', 'Carla', 1);
INSERT INTO tbl_Verwaltung_Kunden(lng_ID, txt_Firma, txt_Name, txt_Vorname, txt_Strasse, txt_Etage, txt_PLZ, txt_Ort,
    txt_Telefon, dbl_Telefon, txt_Natel, dbl_Natel, flag_Zusatzinfo, txt_Zusatzinfo) VALUES
    (1, 'Muster AG', 'Meier', 'Anna', 'Seestrasse 1', '2. Stock', '8000', 'Zürich', '0791234567', 791234567, NULL, NULL,
     1, 'Klingel defekt'),
    (2, NULL, 'Bruno', NULL, NULL, NULL, '8001', 'Zürich', NULL, NULL, '0799999999', 799999999, 0, 'Hund'),
    (3, NULL, 'Clara', NULL, NULL, NULL, NULL, NULL, '044 111 22 33', NULL, NULL, NULL, 0, NULL);
UPDATE tbl_Einstellungen_System SET dbl_MWStSatz1 = 8.1, dbl_MWStSatz3 = 2.6, lng_InitTrxNr = 1000,
    lng_StandardLieferzeit = 30, txt_VATNummer = 'CHE-1', txt_Werbetext = 'Danke', txt_Currency = 'CHF',
    lng_VorbestellungBuchungStatus = 0, lng_VorbestellungBuchungZeit = 2, txt_Printer1_Name = 'Kasse',
    txt_Printer2_Name = 'Küche', lng_Printer1_Copies = 1, lng_Printer2_Copies = 1, lng_Printer1_Status = 1,
    lng_Printer2_Status = 0;
