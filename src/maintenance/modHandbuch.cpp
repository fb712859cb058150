#include "maintenance/modHandbuch.h"
#include "platform/Dialogs.h"
#include "store/StoreGlobals.h"
#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace modHandbuch {
namespace {

struct Entry {
    const char16_t* screen;
    const char16_t* chapter;
    const char16_t* paragraph = u"";
};

constexpr auto kFirstSteps = u"Erste Schritte eines neuen Betriebs";
constexpr auto kCustomers = u"Kunden";
constexpr auto kPreOrders = u"Vorbestellungen";
constexpr auto kUsers = u"Benutzer";
constexpr auto kPrinting = u"Drucken";
constexpr auto kStatistics = u"Auswertungen";
constexpr auto kWebOrders = u"Bestellungen aus dem Shop";
constexpr auto kShopSettings = u"Einstellungen des Online Shops";
constexpr auto kHelp = u"Hilfe";

constexpr Entry kEntries[] = {
    {u"frmEinstellungenSystem", kFirstSteps, u"Einstellungen → System Einstellungen"},
    {u"frmProdukteKategorien", kFirstSteps, u"Verwaltung → Produkt Gruppen"},
    {u"frmProdukteExtras", kFirstSteps, u"Verwaltung → Extras"},
    {u"frmProdukte", kFirstSteps, u"Verwaltung → Produkte"},
    {u"frmVerwaltungKuriere", kFirstSteps, u"Verwaltung → Kurier"},
    {u"frmAuftragswesenAuftragserfassung", u"Ein Auftrag am Telefon"},
    {u"frmVerwaltungKunden", kCustomers},
    {u"frmVerwaltungTelefonbuch", kCustomers, u"Telefonbuch."},
    {u"frmAuftragswesenVorbestellungen", kPreOrders},
    {u"frmAuftragswesenVorbestellungenAlarm", kPreOrders, u"Die Meldung."},
    {u"frmVerwaltungAnruferListe", u"Anrufer Liste"},
    {u"frmEinstellungenBenutzer", kUsers},
    {u"frmSystemAnmelden", kUsers, u"Mit \"Anmeldung mit Benutzernamen aktivieren\""},
    {u"platform::PreviewWindow", kPrinting, u"Listen."},
    {u"QPrintDialog", kPrinting, u"Listen."},
    {u"frmAuswertungenBuchungsjournal", kStatistics, u"Buchungsjournal."},
    {u"frmAuswertungenUmsatz", kStatistics, u"Umsatz Tag / Monat / Jahr."},
    {u"frmAuswertungenUmsatzProdukte", kStatistics, u"Umsatz Produkte / Gruppen."},
    {u"frmAuswertungenBuchungsjournalPerKunde", kStatistics, u"Kunden Buchungsjournal"},
    {u"frmAuswertungenUmsatzProduktePerKunde", kStatistics, u"Kunden Buchungsjournal"},
    {u"frmAuswertungenTagesabschluss", kStatistics, u"Tagesabschluss."},
    {u"frmInternetBestellungen", kWebOrders},
    {u"frmInternetEMailConfo", kWebOrders, u"Erledigen."},
    {u"frmOnlineShopSettingsBestellzeiten", kShopSettings, u"Bestellzeiten."},
    {u"frmOnlineShopSettingsLiefergebiete", kShopSettings, u"Liefergebiete."},
    {u"frmOnlineShopSettingsFonts", kShopSettings, u"Farben / Schriften."},
    {u"frmOnlineShopSettingsDokumente", kShopSettings, u"Dokumente."},
    {u"frmOnlineShopTransfer", u"Den Katalog übertragen"},
    {u"frmDatenBackup", u"Datensicherung"},
    {u"frmDatenRestore", u"Datensicherung"},
    {u"frmSystemSoftwareUpdate", u"Aktualisierung", u"Neue Version."},
    {u"frmSystemTelefonbuchUpdate", u"Aktualisierung", u"Neue Version."},
    {u"frmSystemMessagesService", u"Aktualisierung", u"System Nachrichtendienst."},
    {u"frmHelpStepByStep", kHelp, u"Anleitung - Schritt für Schritt."},
    {u"frmSystemAbout", kHelp, u"Über Tavolino."},
    {u"frmHandbuch", kHelp},
};

} // namespace

QString file() {
    return store::appPath() + u"/docs/handbuch.md"_s;
}

bool CheckManual(platform::Dialogs& dialogs) {
    if (QFile(file()).open(QIODevice::ReadOnly))
        return true;
    dialogs.MsgBox(
        QCoreApplication::translate("frmHandbuch", "Das Handbuch \"%1\" kann nicht geöffnet werden.")
            .arg(QDir::toNativeSeparators(file())),
        platform::kInformation, QCoreApplication::translate("frmHandbuch", "Handbuch"));
    return false;
}

QString load() {
    QFile manual(file());
    return manual.open(QIODevice::ReadOnly) ? QString::fromUtf8(manual.readAll()) : QString();
}

std::optional<Place> placeOf(const QString& screen) {
    // "frmX modal" is the same screen.
    const QString name = screen.section(u' ', 0, 0);
    for (const Entry& entry : kEntries)
        if (name == entry.screen)
            return Place{QString::fromUtf16(entry.chapter), QString::fromUtf16(entry.paragraph)};
    return {};
}

QString withoutNumber(const QString& heading) {
    static const QRegularExpression number(u"^\\d+\\.\\s+"_s);
    return QString(heading).remove(number);
}

QString anchorOf(const QString& heading) {
    static const QRegularExpression others(u"[^\\p{L}\\p{N}\\s_-]"_s);
    return heading.toLower().remove(others).replace(u' ', u'-');
}

} // namespace modHandbuch
