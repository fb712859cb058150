#include "shell/MenuTree.h"
#include "common/Guard.h"
#include "desks/CallerListDesk.h"
#include "desks/CustomerDesk.h"
#include "desks/OrderDesk.h"
#include "desks/PreOrderDesk.h"
#include <QCoreApplication>
#include <QMenu>

namespace shell {
namespace {

constexpr auto Menu = MenuKind::Menu;
constexpr auto Line = MenuKind::Separator;
constexpr auto Screen = MenuKind::Screen;

QString text(const char* source) {
    return QCoreApplication::translate("frmMDI", source);
}

} // namespace

const std::vector<MenuEntry>& menuEntries() {
    // "Daten enlesen..." is spelled so on purpose.
    static const std::vector<MenuEntry> entries = {
        {"mnEinstellungen", "&Einstellungen", "", "", Menu, ""},
        {"mnEinstellungenAnmeldung", "Anmeldung", "", "mnEinstellungen", MenuKind::Anmeldung,
         "frmSystemAnmelden"},
        {"mnEinstellungenLine1", "-", "", "mnEinstellungen", Line, ""},
        {"mnEinstellungenBenutzer", "Benutzer Verwaltung", "", "mnEinstellungen", Screen,
         "frmEinstellungenBenutzer"},
        {"mnEinstellungenSystem", "System Einstellungen", "", "mnEinstellungen", Screen,
         "frmEinstellungenSystem"},
        {"mnEinstellungenLine2", "-", "", "mnEinstellungen", Line, ""},
        {"mnEinstellungenBeenden", "&Beenden", "Ctrl+X", "mnEinstellungen", MenuKind::Beenden, ""},
        {"mnVerwaltung", "Ver&waltung", "", "", Menu, ""},
        {"mnVerwaltungKunden", "&Kunden", "Ctrl+K", "mnVerwaltung", Screen, desks::CustomerDesk::kScreen},
        {"mnVerwaltungKurier", "Ku&rier", "Ctrl+R", "mnVerwaltung", Screen, "frmVerwaltungKuriere"},
        {"mnVerwaltungLine1", "-", "", "mnVerwaltung", Line, ""},
        {"mnVerwaltungProduktGruppe", "Produkt Gruppen", "", "mnVerwaltung", Screen, "frmProdukteKategorien"},
        {"mnVerwaltungProdukte", "Produkte", "", "mnVerwaltung", Screen, "frmProdukte"},
        {"mnVerwaltungProdukteExtras", "Extras", "", "mnVerwaltung", Screen, "frmProdukteExtras"},
        {"mnAuftragswesen", "Au&ftragswesen", "", "", Menu, ""},
        {"mnAuftragswesenBestellungen", "&Auftragserfassung", "Ctrl+B", "mnAuftragswesen", Screen,
         desks::OrderDesk::kScreen},
        {"mnAuftragswesenVorbestellungen", "V&orbestellungen", "Ctrl+O", "mnAuftragswesen", Screen,
         desks::PreOrderList::kScreen},
        {"mnAuftragswesenLine1", "-", "", "mnAuftragswesen", Line, ""},
        {"mnAuftragswesenISDNListe", "Anrufer &Liste", "Ctrl+N", "mnAuftragswesen", MenuKind::AnruferListe,
         desks::CallerList::kScreen},
        {"mnAuswertungen", "&Auswertungen", "", "", Menu, ""},
        {"mnAuswertungenKundenumsatz", "Kunden Umsatz", "", "mnAuswertungen", Screen,
         "frmAuswertungenUmsatzProduktePerKunde"},
        {"mnAuswertungenKundenBuchungsjournal", "Kunden Buchungsjournal", "", "mnAuswertungen", Screen,
         "frmAuswertungenBuchungsjournalPerKunde"},
        {"mnAuswertungenLine1", "-", "", "mnAuswertungen", Line, ""},
        {"mnAuswertungenUmsatz", "Umsatz Tag / Monat / Jahr", "", "mnAuswertungen", Screen,
         "frmAuswertungenUmsatz"},
        {"mnAuswertungenUmsatzProdukt", "Umsatz Produkte / Gruppen", "", "mnAuswertungen", Screen,
         "frmAuswertungenUmsatzProdukte"},
        {"mnAuswertungenLine2", "-", "", "mnAuswertungen", Line, ""},
        {"mnAuswertungenBuchungsjournal", "Buchungs &Journal", "", "mnAuswertungen", Screen,
         "frmAuswertungenBuchungsjournal"},
        {"mnAuswertungenTagesabschluss", "Tagesabschluss", "", "mnAuswertungen", Screen,
         "frmAuswertungenTagesabschluss"},
        {"mnOnlineShop", "Online Shop", "", "", Menu, ""},
        {"mnOnlineShopEinstellungen", "Einstellungen", "", "mnOnlineShop", Menu, ""},
        {"mnOnlineShopEinstellungenDokumente", "Dokumente", "", "mnOnlineShopEinstellungen", Screen,
         "frmOnlineShopSettingsDokumente"},
        {"mnOnlineShopEinstellungenFonts", "Farben / Schriften", "", "mnOnlineShopEinstellungen", Screen,
         "frmOnlineShopSettingsFonts"},
        {"mnOnlineShopEinstellungenBestellzeiten", "Bestellzeiten", "", "mnOnlineShopEinstellungen", Screen,
         "frmOnlineShopSettingsBestellzeiten"},
        {"mnOnlineShopEinstellungenLiefergebiete", "&Liefergebiete", "", "mnOnlineShopEinstellungen", Screen,
         "frmOnlineShopSettingsLiefergebiete"},
        {"mnOnlineShopTransfer", "Daten Transfer", "", "mnOnlineShop", Screen, "frmOnlineShopTransfer"},
        {"mnDaten", "Daten", "", "", Menu, ""},
        {"mnDatenBackup", "Daten sichern...", "", "mnDaten", Screen, "frmDatenBackup"},
        {"mnDatenRestore", "Daten enlesen...", "", "mnDaten", Screen, "frmDatenRestore"},
        {"mnSystem", "System", "", "", Menu, ""},
        {"mnSystemMessages", "System Nachrichtendienst", "", "mnSystem", Screen, "frmSystemMessagesService"},
        {"mnSystemLine2", "-", "", "mnSystem", Line, ""},
        {"mnSystemUpdates", "Auf Aktualisierungen prüfen...", "", "mnSystem", MenuKind::SoftwareUpdate, ""},
        {"mnHilfe", "&Hilfe", "", "", Menu, ""},
        {"mnHilfeAbout", "Über Tavolino", "", "mnHilfe", Screen, "frmSystemAbout"},
        {"mnHilfeStepByStep", "Anleitung - Schritt für Schritt", "", "mnHilfe", Screen, "frmHelpStepByStep"},
    };
    return entries;
}

MenuTree::MenuTree(QMenuBar& bar, const std::function<bool(const MenuEntry&)>& leadsSomewhere,
                   const std::function<void(const MenuEntry&)>& choose, QObject* parent) :
    QObject(parent) {
    QHash<QString, QMenu*> menus;
    for (const MenuEntry& entry : menuEntries()) {
        QMenu* above = menus.value(QLatin1String(entry.parent));
        QAction* action = nullptr;
        if (entry.kind == MenuKind::Menu) {
            QMenu* menu = above ? above->addMenu(text(entry.caption)) : bar.addMenu(text(entry.caption));
            menu->setObjectName(QLatin1String(entry.name) + QStringLiteral("Menu"));
            menus.insert(QLatin1String(entry.name), menu);
            action = menu->menuAction();
        } else {
            action = addEntry(*above, entry, choose);
        }
        action->setObjectName(QLatin1String(entry.name));
        const bool leads = entry.kind == MenuKind::Menu || leadsSomewhere(entry);
        action->setEnabled(leads);
        m_items.insert(QLatin1String(entry.name), {action, leads, QLatin1String(entry.parent)});
    }
}

QAction* MenuTree::addEntry(QMenu& menu, const MenuEntry& entry,
                            const std::function<void(const MenuEntry&)>& choose) {
    if (entry.kind == MenuKind::Separator)
        return menu.addSeparator();
    QAction* action = menu.addAction(text(entry.caption));
    action->setShortcut(QKeySequence(QLatin1String(entry.shortcut), QKeySequence::PortableText));
    common::connectGuarded(common::Origin::User, action, &QAction::triggered, this,
                           [choose, &entry] { choose(entry); });
    return action;
}

void MenuTree::allow(const QString& name, bool allowed) {
    Item& item = m_items[name];
    Q_ASSERT(item.action);
    item.allowed = allowed;
    item.action->setEnabled(allowed && item.leadsSomewhere);
}

bool MenuTree::allows(const MenuEntry& entry) const {
    for (QString name = QLatin1String(entry.name); !name.isEmpty(); name = m_items.value(name).parent)
        if (!m_items.value(name).allowed)
            return false;
    return true;
}

} // namespace shell
