#include "shell/PhoneBookSearch.h"
#include "platform/Dialogs.h"
#include "platform/ui/QtDialogs.h"
#include "telephony/frmVerwaltungTelefonbuch.h"
#include <QApplication>

namespace shell {

std::optional<modVerwaltungTelefonbuch::PhoneBookEntry>
PhoneBookSearch::FindPhoneBookEntry(const QString& number) {
    frmVerwaltungTelefonbuch list(QApplication::activeWindow());
    if (list.search(modVerwaltungTelefonbuch::FindPhoneBookEntrySql(number)) == 0) {
        m_services.dialogs.MsgBox(
            frmVerwaltungTelefonbuch::tr("Diese Telefon Nummer steht in keinem Verzeichnis."), platform::kOk,
            frmVerwaltungTelefonbuch::tr("Unbekannte Telefon Nummer"));
        return std::nullopt;
    }
    platform::ui::execModal(list);
    return list.PhoneBookSelected() ? std::optional(list.PhoneBookRow()) : std::nullopt;
}

} // namespace shell
