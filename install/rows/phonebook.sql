INSERT INTO tbl_PhoneBookVersion (lng_PhoneBookVersion) VALUES (1);
