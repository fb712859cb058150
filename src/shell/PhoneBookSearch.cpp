#include "shell/PhoneBookSearch.h"
#include "platform/Dialogs.h"
#include "platform/QtDialogs.h"
#include "telephony/frmVerwaltungTelefonbuch.h"
#include <QApplication>

namespace shell {

using namespace modVerwaltungTelefonbuch;

std::optional<PhoneBookEntry> PhoneBookSearch::FindPhoneBookEntry(const QString& number) {
    return pick(FindPhoneBookEntrySql(number));
}

std::optional<PhoneBookEntry> PhoneBookSearch::SearchPhoneBook(const PhoneBookQuery& fields) {
    const QString sql = SearchPhoneBookSql(fields);
    return sql.isEmpty() ? std::nullopt : pick(sql);
}

std::optional<PhoneBookEntry> PhoneBookSearch::pick(const QString& sql) {
    frmVerwaltungTelefonbuch list(QApplication::activeWindow());
    if (list.search(sql) == 0) {
        m_services.dialogs.MsgBox(
            frmVerwaltungTelefonbuch::tr("Diese Telefon Nummer steht in keinem Verzeichnis."), platform::kOk,
            frmVerwaltungTelefonbuch::tr("Unbekannte Telefon Nummer"));
        return std::nullopt;
    }
    platform::centreOnScreen(list);
    platform::execModal(list);
    return list.PhoneBookSelected() ? std::optional(list.PhoneBookRow()) : std::nullopt;
}

} // namespace shell
