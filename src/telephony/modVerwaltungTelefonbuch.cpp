#include "telephony/modVerwaltungTelefonbuch.h"
#include "store/StoreGlobals.h"

using namespace Qt::StringLiterals;

namespace modVerwaltungTelefonbuch {
namespace {

/// Few have the same number.
const QString kByName = u" ORDER BY txt_Name, txt_Vorname"_s;

QString listQuery(const QString& condition) {
    return u"SELECT TOP 100 txt_Name, txt_Vorname, txt_Strasse, txt_PLZ, txt_Ort, txt_Kanton, txt_Telefon, "
           u"txt_Natel, txt_EMail FROM tbl_PhoneBook WHERE "_s +
           condition + u" ;"_s;
}

QString numberCondition(const QString& number) {
    const QString text = store::sqlText(number);
    return u"(txt_Telefon = "_s + text + u" OR txt_Natel = "_s + text + u')';
}

} // namespace

QString FindPhoneBookEntrySql(const QString& number) {
    return listQuery(numberCondition(number));
}

QString FindName(const QString& number) {
    store::OpenRecordset rows(RsPhone,
                              u"SELECT TOP 1 txt_Name, txt_Vorname FROM tbl_PhoneBook WHERE "_s +
                                  numberCondition(number) + kByName + u';',
                              ConnPhone);
    return rows->Eof()
               ? QString()
               : (rows->Fields(u"txt_Name").text() + u' ' + rows->Fields(u"txt_Vorname").text()).trimmed();
}

QString SearchPhoneBookSql(const PhoneBookQuery& fields) {
    QStringList conditions;
    const auto like = [&](const QString& column, const QString& value) {
        if (!value.trimmed().isEmpty())
            conditions << column + u" LIKE "_s + store::sqlText(value);
    };
    if (!fields.number.trimmed().isEmpty())
        conditions << numberCondition(fields.number);
    like(u"txt_Name"_s, fields.name);
    like(u"txt_Strasse"_s, fields.street);
    like(u"txt_PLZ"_s, fields.postcode);
    like(u"txt_Ort"_s, fields.town);
    return conditions.isEmpty() ? QString() : listQuery(conditions.join(u" AND "_s));
}

} // namespace modVerwaltungTelefonbuch
