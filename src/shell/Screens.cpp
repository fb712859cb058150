#include "shell/Screens.h"
#include "desks/CallerListDesk.h"
#include "desks/CustomerDesk.h"
#include "desks/OrderDesk.h"
#include "desks/PreOrderDesk.h"
#include "maintenance/frmDatenBackup.h"
#include "maintenance/frmDatenRestore.h"
#include "maintenance/frmHandbuch.h"
#include "maintenance/frmHelpStepByStep.h"
#include "maintenance/frmSystemAbout.h"
#include "maintenance/frmSystemMessagesService.h"
#include "maintenance/frmSystemUpdate.h"
#include "maintenance/modHandbuch.h"
#include "maintenance/mod_SoftwareUpdate.h"
#include "masterdata/frmProdukte.h"
#include "masterdata/frmProdukteExtras.h"
#include "masterdata/frmProdukteKategorien.h"
#include "masterdata/frmVerwaltungKunden.h"
#include "masterdata/frmVerwaltungKuriere.h"
#include "masterdata/modProdukteKategorien.h"
#include "orders/frmAuftragswesenAuftragserfassung.h"
#include "orders/frmAuftragswesenVorbestellungen.h"
#include "orders/frmAuftragswesenVorbestellungenAlarm.h"
#include "reporting/frmAuswertungenBuchungsjournal.h"
#include "reporting/frmAuswertungenBuchungsjournalPerKunde.h"
#include "reporting/frmAuswertungenTagesabschluss.h"
#include "reporting/frmAuswertungenUmsatz.h"
#include "reporting/frmAuswertungenUmsatzProdukte.h"
#include "reporting/frmAuswertungenUmsatzProduktePerKunde.h"
#include "shell/ModalFrame.h"
#include "shell/frmEinstellungenBenutzer.h"
#include "shell/frmEinstellungenSystem.h"
#include "shell/frmMDI.h"
#include "shell/frmSystemAnmelden.h"
#include "shop/frmInternetBestellungen.h"
#include "shop/frmInternetEMailConfo.h"
#include "shop/frmOnlineShopSettingsBestellzeiten.h"
#include "shop/frmOnlineShopSettingsDokumente.h"
#include "shop/frmOnlineShopSettingsFonts.h"
#include "shop/frmOnlineShopSettingsLiefergebiete.h"
#include "shop/frmOnlineShopTransfer.h"
#include "telephony/frmVerwaltungAnruferListe.h"

namespace shell {
namespace {

/// For a screen that needs nothing but the services.
template <typename Screen> auto creator(const platform::Services& services) {
    return [services](QWidget* parent) -> QWidget* { return new Screen(services, parent); };
}

void registerUpdates(ScreenRegistry& registry, const platform::Services& services,
                     const maintenance::Publisher& publisher) {
    registry.add(mod_SoftwareUpdate::kSoftwareScreen, {[services, &publisher](QWidget* parent) -> QWidget* {
                     return new frmSystemSoftwareUpdate(services, publisher, parent);
                 }});
    registry.add(mod_SoftwareUpdate::kForcedScreen,
                 {.create = [services, &publisher](QWidget* window) -> QWidget* {
                      // Two of them would write the same file.
                      qobject_cast<frmMDI*>(window)->screens().close(mod_SoftwareUpdate::kSoftwareScreen);
                      return new ModalFrame(new frmSystemSoftwareUpdate(services, publisher), window);
                  },
                  .modal = true});
    registry.add(mod_SoftwareUpdate::kPhoneBookScreen, {[services, &publisher](QWidget* parent) -> QWidget* {
                     return new frmSystemTelefonbuchUpdate(services, publisher, parent);
                 }});
    registry.add(QStringLiteral("frmSystemMessagesService"), {creator<frmSystemMessagesService>(services)});
}

} // namespace

void registerScreens(ScreenRegistry& registry, const platform::Services& services,
                     telephony::PhoneBook& phoneBook, const maintenance::Publisher& publisher) {
    registry.add(desks::OrderDesk::kScreen,
                 {.create = [services, &phoneBook](QWidget* parent) -> QWidget* {
                      return new frmAuftragswesenAuftragserfassung(services, phoneBook, parent);
                  },
                  .maximised = true});
    registry.add(QStringLiteral("frmEinstellungenBenutzer"), {creator<frmEinstellungenBenutzer>(services)});
    registry.add(QStringLiteral("frmSystemAnmelden"),
                 {.create = [services](QWidget* window) -> QWidget* {
                      return new frmSystemAnmelden(services, *qobject_cast<frmMDI*>(window));
                  },
                  .modal = true});
    registry.add(QStringLiteral("frmEinstellungenSystem"), {creator<frmEinstellungenSystem>(services)});
    registry.add(desks::PreOrderList::kScreen, {creator<frmAuftragswesenVorbestellungen>(services)});
    registry.add(desks::PreOrderAlarm::kScreen,
                 {.create = creator<frmAuftragswesenVorbestellungenAlarm>(services), .floating = true});
    registry.add(QStringLiteral("frmProdukteKategorien"), {creator<frmProdukteKategorien>(services)});
    registry.add(QStringLiteral("frmProdukteExtras"), {creator<frmProdukteExtras>(services)});
    registry.add(QStringLiteral("frmProdukte"),
                 {.create = creator<frmProdukte>(services), .mayOpen = [services] {
                      return modProdukteKategorien::CheckProduktGruppenDefined(services.dialogs,
                                                                               services.navigation);
                  }});
    registry.add(desks::CallerList::kScreen,
                 {.create = creator<frmVerwaltungAnruferListe>(services), .modal = true, .inRoom = true});
    registry.add(desks::CustomerDesk::kScreen, {[services, &phoneBook](QWidget* parent) -> QWidget* {
                     return new frmVerwaltungKunden(services, phoneBook, parent);
                 }});
    registry.add(QStringLiteral("frmVerwaltungKuriere"), {creator<frmVerwaltungKuriere>(services)});
    registry.add(desks::WebOrderList::kScreen,
                 {.create = creator<frmInternetBestellungen>(services), .maximised = true});
    registry.add(QStringLiteral("frmInternetEMailConfo"),
                 {.create = creator<frmInternetEMailConfo>(services), .modal = true});
    registry.add(QStringLiteral("frmAuswertungenBuchungsjournal"),
                 {creator<frmAuswertungenBuchungsjournal>(services)});
    registry.add(QStringLiteral("frmAuswertungenUmsatz"), {creator<frmAuswertungenUmsatz>(services)});
    registry.add(QStringLiteral("frmAuswertungenTagesabschluss"),
                 {creator<frmAuswertungenTagesabschluss>(services)});
    registry.add(QStringLiteral("frmAuswertungenUmsatzProdukte"),
                 {creator<frmAuswertungenUmsatzProdukte>(services)});
    registry.add(QStringLiteral("frmAuswertungenBuchungsjournalPerKunde"),
                 {creator<frmAuswertungenBuchungsjournalPerKunde>(services)});
    registry.add(QStringLiteral("frmAuswertungenUmsatzProduktePerKunde"),
                 {creator<frmAuswertungenUmsatzProduktePerKunde>(services)});
    registry.add(QStringLiteral("frmOnlineShopTransfer"), {creator<frmOnlineShopTransfer>(services)});
    registry.add(QStringLiteral("frmOnlineShopSettingsBestellzeiten"),
                 {creator<frmOnlineShopSettingsBestellzeiten>(services)});
    registry.add(QStringLiteral("frmOnlineShopSettingsLiefergebiete"),
                 {creator<frmOnlineShopSettingsLiefergebiete>(services)});
    registry.add(QStringLiteral("frmOnlineShopSettingsFonts"),
                 {creator<frmOnlineShopSettingsFonts>(services)});
    registry.add(QStringLiteral("frmOnlineShopSettingsDokumente"),
                 {creator<frmOnlineShopSettingsDokumente>(services)});
    registry.add(QStringLiteral("frmHelpStepByStep"), {creator<frmHelpStepByStep>(services)});
    registry.add(QStringLiteral("frmSystemAbout"), {creator<frmSystemAbout>(services)});
    registry.add(QStringLiteral("frmHandbuch"),
                 {.create = [](QWidget* parent) { return new frmHandbuch(parent); },
                  .mayOpen = [services] { return modHandbuch::CheckManual(services.dialogs); }});
    registerUpdates(registry, services, publisher);
    registry.add(QStringLiteral("frmDatenBackup"), {creator<frmDatenBackup>(services)});
    registry.add(QStringLiteral("frmDatenRestore"), {creator<frmDatenRestore>(services)});
}

} // namespace shell
