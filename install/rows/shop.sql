-- What the shop's screens change but never add: the weekdays (1 is Monday), the look and the documents in force
-- (row 1) and as delivered (row 0). A new shop is closed until the firm opens it.
INSERT INTO tbl_OnlineShop_Bestellzeiten VALUES
    (1, 0, 11, 0, 14, 0, 0, 17, 0, 22, 0),
    (2, 0, 11, 0, 14, 0, 0, 17, 0, 22, 0),
    (3, 0, 11, 0, 14, 0, 0, 17, 0, 22, 0),
    (4, 0, 11, 0, 14, 0, 0, 17, 0, 22, 0),
    (5, 0, 11, 0, 14, 0, 0, 17, 0, 23, 30),
    (6, 1, 11, 0, 14, 0, 0, 17, 0, 23, 30),
    (7, 1, 11, 0, 14, 0, 0, 17, 0, 22, 0);

INSERT INTO tbl_OnlineShop_Lieferzeiten VALUES (20, 30, -1, '');

-- Colours: the number counts red from the lowest byte on, the hexadecimal text names red first.
INSERT INTO tbl_OnlineShop_CorporateIdentity VALUES
    (0, '3679907', 'A32638', '16777215', 'FFFFFF', 'logo_demokurier.jpg', 'Online Shop'),
    (1, '3679907', 'A32638', '16777215', 'FFFFFF', 'logo_kurier.jpg', 'Online Shop');

-- Documents stand encoded for the web, the mail's subject and text as they are typed.
INSERT INTO tbl_OnlineShop_Dokumente VALUES (
    0,
    'Vielen Dank f&uuml;r Ihre Bestellung.<br />Wir machen uns sofort an die Arbeit.',
    'Bei Fragen zu Ihrer Bestellung rufen Sie uns bitte w&auml;hrend der Bestellzeiten an.',
    'Alle Preise verstehen sich in Schweizer Franken und enthalten die Mehrwertsteuer.<br />Die Lieferzeit ist eine Angabe ohne Gew&auml;hr.<br />Bezahlt wird bei der &Uuml;bergabe.',
    'Wie lange dauert die Lieferung?<br />In der Regel 45 Minuten, an Wochenenden etwas l&auml;nger.<br /><br />Kann ich meine Bestellung selbst abholen?<br />Ja, w&auml;hlen Sie bei der Bestellung die Abholung.',
    'Frisch zubereitete Speisen sind vom Widerruf ausgenommen.<br />Stimmt etwas nicht, rufen Sie uns bitte sofort an.',
    'Ihre Angaben verwenden wir nur f&uuml;r die Ausf&uuml;hrung Ihrer Bestellung.',
    'Willkommen in unserem Online Shop.',
    'Online Shop Bestellung',
    'Dankend haben wir Ihre Bestellung erhalten. Wir werden Ihren Auftrag ' || char(13, 10) ||
    'gemäss Ihren Bestellinformation ausführen. Für Ihre Bestellung möchten wir ' || char(13, 10) ||
    'uns noch einmal bedanken.');

INSERT INTO tbl_OnlineShop_Dokumente
SELECT 1, txt_BestellungDanke, txt_DokumenteKontakt, txt_DokumenteAGB, txt_DokumenteFAQ, txt_DokumenteWiderspruch,
       txt_DokumenteDatenschutz, txt_News, txt_EMailConfoBetreff, txt_EMailConfoBody
FROM tbl_OnlineShop_Dokumente WHERE lng_ID = 0;
