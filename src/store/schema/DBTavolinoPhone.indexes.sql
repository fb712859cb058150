CREATE INDEX idx_Telefonbuch_Telefon ON tbl_PhoneBook (txt_Telefon);
CREATE INDEX idx_Telefonbuch_Natel ON tbl_PhoneBook (txt_Natel);
CREATE INDEX idx_Telefonbuch_Name ON tbl_PhoneBook (txt_Name, txt_Ort);
CREATE INDEX idx_Telefonbuch_Strasse ON tbl_PhoneBook (txt_Strasse, txt_Ort);
CREATE INDEX idx_Telefonbuch_PLZ ON tbl_PhoneBook (txt_PLZ, txt_Name);
CREATE INDEX idx_Telefonbuch_Ort ON tbl_PhoneBook (txt_Ort, txt_Name);
