#pragma once
#include <QString>

/// The directory of subscribers, which the program only reads (ConnPhone).
namespace modVerwaltungTelefonbuch {

/// A row that the user picked from the list.
struct PhoneBookEntry {
    QString txt_Name, txt_Vorname, txt_Strasse, txt_PLZ, txt_Ort, txt_Kanton, txt_Telefon, txt_Natel;
};

/// What a search asks for; empty fields do not count.
struct PhoneBookQuery {
    QString number{}, name{}, street{}, postcode{}, town{};
};

/// Query of the list for a number, telephone or mobile; compared as texts, so a leading zero counts. At most
/// 100 rows; columns txt_Name, txt_Vorname, txt_Strasse, txt_PLZ, txt_Ort, txt_Kanton, txt_Telefon,
/// txt_Natel, txt_EMail.
QString FindPhoneBookEntrySql(const QString& number);
/// Name and first name of the first entry with that number, telephone or mobile; "" without one. Uses
/// RsPhone.
QString FindName(const QString& number);
/// The same list by any of the fields; texts may hold the store's wildcards "%" and "_". "" when all are
/// empty.
QString SearchPhoneBookSql(const PhoneBookQuery& fields);

} // namespace modVerwaltungTelefonbuch
