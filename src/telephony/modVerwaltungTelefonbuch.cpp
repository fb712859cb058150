#include "telephony/modVerwaltungTelefonbuch.h"
#include "store/Connection.h"

namespace modVerwaltungTelefonbuch {

QString FindPhoneBookEntrySql(const QString& number) {
    const QString text = store::sqlText(number);
    return QStringLiteral("SELECT TOP 100 txt_Name, txt_Vorname, txt_Strasse, txt_PLZ, txt_Ort, txt_Kanton, "
                          "txt_Telefon, "
                          "txt_Natel, txt_EMail FROM tbl_PhoneBook WHERE (txt_Telefon = ") +
           text + QStringLiteral(" OR txt_Natel = ") + text + QStringLiteral(") ;");
}

} // namespace modVerwaltungTelefonbuch
