INSERT INTO PrintSettings VALUES ('', '', '', '', 'CHF');
