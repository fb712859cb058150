-- The settings row of a new installation; the program's version is put in by the installer. VAT as in force since
-- 2024: 8.1 for goods and drinks with alcohol, 2.6 for food that is delivered or taken away. The working day ends at 4.
INSERT INTO tbl_Einstellungen_System
    (lng_EditierungBestellungen, lng_AnmeldungBenutzer, txt_Printer1_Name, txt_Printer2_Name, lng_Printer1_Copies,
     lng_Printer2_Copies, lng_Printer1_Status, lng_Printer2_Status, lng_VorlageBestellung, txt_Werbetext,
     dbl_MWStSatz1, dbl_MWStSatz3, txt_VATNummer, lng_NoVATStatus, lng_FiktiverTag, lng_StandardLieferzeit,
     lng_InitTrxNr, lng_VorbestellungAutomatischStatus, lng_VorbestellungAutomatischZeit,
     lng_VorbestellungBuchungStatus, lng_VorbestellungBuchungZeit, txt_Currency, txt_Sprache,
     lng_SoftwareVersion_Major, lng_SoftwareVersion_Minor, lng_SoftwareVersion_Revision)
VALUES (0, 0, '', '', 1, 1, 1, 0, 0, 'Vielen Dank für Ihre Bestellung. Guten Appetit!',
        8.1, 2.6, '', 0, 4 / 24.0, 45, 1000, 1, 60, 0, 2, 'CHF', 'Deutsch', 0, 0, 0);
INSERT INTO tbl_Auswertungen_Barkonditionen (txt_Konditionen, lng_Bar) VALUES ('Bar', 1), ('Cash', 1);
