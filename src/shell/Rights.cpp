#include "shell/Rights.h"
#include "maintenance/mod_SoftwareUpdate.h"
#include "store/SystemSettings.h"
#include <QCoreApplication>

namespace shell {

const std::array<Right, kRights>& rights() {
    static const std::array<Right, kRights> table = {
        {{QT_TRANSLATE_NOOP("frmEinstellungenBenutzer", "Administrator"),
          u"lng_Administrator",
          UserAdministrator,
          {"mnEinstellungenBenutzer", "mnDatenRestore", "mnSystemUpdates", "mnSystemMessages"},
          {mod_SoftwareUpdate::kSoftwareScreen, mod_SoftwareUpdate::kForcedScreen,
           mod_SoftwareUpdate::kPhoneBookScreen}},
         {QT_TRANSLATE_NOOP("frmEinstellungenBenutzer", "System Einstellungen"),
          u"lng_Einstellungen",
          UserEinstellungen,
          {"mnEinstellungenSystem"}},
         {QT_TRANSLATE_NOOP("frmEinstellungenBenutzer", "Kunden Statistik"),
          u"lng_KundenStatistik",
          UserKundenStatistik,
          {"mnAuswertungenKundenumsatz", "mnAuswertungenKundenBuchungsjournal"}},
         {QT_TRANSLATE_NOOP("frmEinstellungenBenutzer", "Umsatz Statistik"),
          u"lng_UmsatzStatistik",
          UserUmsatzStatistik,
          {"mnAuswertungenUmsatz", "mnAuswertungenUmsatzProdukt"}},
         {QT_TRANSLATE_NOOP("frmEinstellungenBenutzer", "Buchungsjournal"),
          u"lng_Buchungsjournal",
          UserBuchungsjournal,
          {"mnAuswertungenBuchungsjournal", "mnAuswertungenTagesabschluss"}},
         {QT_TRANSLATE_NOOP("frmEinstellungenBenutzer", "Online Shop"),
          u"lng_OnlineShop",
          UserOnlineShop,
          {"mnOnlineShop"}},
         {QT_TRANSLATE_NOOP("frmEinstellungenBenutzer", "Datensicherung"),
          u"lng_Datensicherung",
          UserDatensicherung,
          {"mnDatenBackup"}}}};
    return table;
}

} // namespace shell
