#include "maintenance/modHelpStepByStep.h"
#include "platform/RegistryStore.h"

using namespace Qt::StringLiterals;

namespace modHelpStepByStep {
namespace {

QString paragraphs(std::initializer_list<const char16_t*> texts) {
    QString html;
    for (const char16_t* text : texts)
        html += u"<p style='margin-top:0; margin-bottom:9px'>"_s + QString::fromUtf16(text) + u"</p>"_s;
    return html;
}

Step welcome() {
    return {u"Willkommen"_s,
            paragraphs(
                {u"<b>Willkommen bei Tavolino.</b>",
                 u"Diese Anleitung führt Sie in neun Schritten von der leeren Installation zum ersten "
                 u"Auftrag. Jeder Schritt zeigt seine Maske und öffnet sie mit einem Knopf; die Anleitung "
                 u"bleibt daneben stehen.",
                 u"Alles geht mit der Tastatur: Die Eingabetaste führt von Feld zu Feld, unterstrichene "
                 u"Buchstaben erreichen Sie mit Alt.",
                 u"<b>F1</b> zeigt überall das Handbuch, gleich beim Kapitel der Maske, die vor Ihnen "
                 u"steht. Klingelt unterdessen das Telefon, nehmen Sie den Anruf wie immer mit <b>F9</b> an.",
                 u"Sie finden die Anleitung jederzeit im Menü \"Hilfe\"."}),
            u"auftragserfassung.png"_s,
            {},
            {},
            {}};
}

Step users() {
    return {
        u"Benutzer"_s,
        paragraphs({u"<b>Wer mit Tavolino arbeitet</b>",
                    u"Arbeiten Sie allein, überspringen Sie diesen Schritt: Ohne Anmeldung darf jeder alles.",
                    u"Sonst: \"Neuer Benutzer\", ein Name von 3 bis 20 Zeichen, ein Passwort und seine "
                    u"Bestätigung, rechts die Rechte anhaken, \"Speichern\".",
                    u"Wer \"Administrator\" ist, darf alles. Kunden, Produkte, Kuriere und Aufträge stehen "
                    u"jedem Benutzer offen.",
                    u"Haken Sie zuletzt \"Anmeldung mit Benutzernamen aktivieren\" an. Ab dem nächsten Start "
                    u"fragt Tavolino nach Namen und Passwort."}),
        u"benutzer.png"_s,
        u"cmdBenutzerVerwaltung"_s,
        u"&Benutzer Verwaltung öffnen"_s,
        u"frmEinstellungenBenutzer"_s};
}

Step categories() {
    return {u"Gruppen"_s,
            paragraphs(
                {u"<b>Produkt Gruppen</b>",
                 u"Gruppen ordnen Ihr Angebot: Pizza, Pasta, Salate, Getränke. In der Auftragserfassung sind "
                 u"sie die Reiter des Katalogs, in der Reihenfolge ihrer Nummer.",
                 u"Name eintippen, Reihenfolge wählen, \"Speichern\". Für die nächste Gruppe \"Maske "
                 u"Reinigen\".",
                 u"Beginnen Sie damit: Ohne Gruppe lässt sich kein Produkt erfassen.",
                 u"\"Internet\" heisst, dass die Gruppe auch in Ihren Online Shop kommt, falls Sie einen "
                 u"haben."}),
            u"schritt-gruppen.png"_s,
            u"cmdKategorien"_s,
            u"&Gruppen öffnen"_s,
            u"frmProdukteKategorien"_s};
}

Step products() {
    return {u"Produkte"_s,
            paragraphs(
                {u"<b>Ihre Speisekarte</b>",
                 u"Wählen Sie die Gruppe und geben Sie ein <b>Kurzzeichen</b>: Das tippen Sie später am "
                 u"Telefon, zum Beispiel 10 oder HAWA. Dazu der Name.",
                 u"Der Preis der Gruppe 1 genügt; die anderen Preisgruppen sind für Sie da, wenn Sie zum "
                 u"Beispiel Abholern andere Preise machen.",
                 u"Daneben steht der MWSt-Code: 0 ist der erste Satz der Einstellungen, 1 der zweite für "
                 u"geliefertes Essen, 2 ist steuerfrei. Alle Preise enthalten die Steuer.",
                 u"Extras, die es zum Produkt gibt, haken Sie mit einem Klick an; die nächste Seite erklärt "
                 u"sie."}),
            u"schritt-produkte.png"_s,
            u"cmdProdukte"_s,
            u"&Produkte öffnen"_s,
            u"frmProdukte"_s};
}

Step extras() {
    return {u"Extras"_s,
            paragraphs(
                {u"<b>Was zu einem Produkt dazukommt</b>",
                 u"\"Oliven\", \"scharf\", \"ohne Zwiebeln\": Bezeichnung, Preis der Gruppe 1 und MWSt-Code. "
                 u"Ein Extra darf auch nichts kosten.",
                 u"Ein Extra erscheint bei einem Produkt erst, wenn Sie es dort angehakt haben: zurück zu "
                 u"den Produkten, Produkt in der Liste wählen, Extra anklicken, \"Speichern\".",
                 u"Was Sie vorübergehend nicht führen, setzen Sie auf \"inaktiv\". Löschen lässt sich nur, "
                 u"was in keinem Auftrag vorkommt."}),
            u"schritt-extras.png"_s,
            u"cmdExtras"_s,
            u"E&xtras öffnen"_s,
            u"frmProdukteExtras"_s};
}

Step customers() {
    return {u"Kunden"_s,
            paragraphs(
                {u"<b>Ihre Kunden</b>",
                 u"Nötig sind der Name und eine Telefon- oder Natelnummer, nur Ziffern. Die Eingabetaste "
                 u"führt durch die Felder bis \"Speichern\".",
                 u"Sie müssen Ihre Kunden nicht im Voraus erfassen: Wer anruft und noch nicht bekannt ist, "
                 u"wird beim Auftrag erfasst. Ab dann erkennt ihn Tavolino an seiner Nummer.",
                 u"Zum Suchen füllen Sie ein Feld und wählen \"Suche in Datenbank\". \"Mei%\" findet Meier "
                 u"und Meister."}),
            u"frmVerwaltungKunden.png"_s,
            u"cmdKunden"_s,
            u"&Kunden öffnen"_s,
            u"frmVerwaltungKunden"_s};
}

Step couriers() {
    return {
        u"Kuriere"_s,
        paragraphs({u"<b>Wer ausliefert</b>",
                    u"Kurzzeichen und Bezeichnung genügen, zum Beispiel AB und \"Bruno, Roller 2\".",
                    u"Mindestens einen brauchen Sie: Ohne Kurier lässt sich kein Auftrag speichern. Liefern "
                    u"Sie selbst, erfassen Sie sich selbst.",
                    u"Der zuerst erfasste Kurier steht bei jedem neuen Auftrag; in der Auftragserfassung "
                    u"wählen Sie mit der rechten Maustaste einen anderen.",
                    u"Der Tagesabschluss zeigt für jeden Kurier, was er der Kasse schuldet."}),
        u"schritt-kurier.png"_s,
        u"cmdKuriere"_s,
        u"K&uriere öffnen"_s,
        u"frmVerwaltungKuriere"_s};
}

Step settings() {
    return {
        u"Einstellungen"_s,
        paragraphs({u"<b>System Einstellungen</b>",
                    u"<b>Drucker:</b> der Drucker des Bestellscheins, die Vorlage und Ihr Werbetext. "
                    u"\"Vorschau\" zeigt den Schein.",
                    u"<b>Mehrwertsteuer:</b> die Sätze und Ihre Nummer.",
                    u"<b>Zeiten:</b> wie lange eine Lieferung dauert, und wann Ihr Arbeitstag endet.",
                    u"<b>System:</b> die Nummer des ersten Auftrags und die Währung.",
                    u"Es gibt kein \"Abbrechen\": Beim Schliessen der Maske wird alles übernommen und gilt "
                    u"sofort."}),
        u"schritt-einstellungen.png"_s,
        u"cmdSystemEinstellungen"_s,
        u"&System Einstellungen öffnen"_s,
        u"frmEinstellungenSystem"_s};
}

Step orders() {
    return {u"Auftrag"_s,
            paragraphs(
                {u"<b>Der erste Auftrag</b>",
                 u"Telefonnummer eintippen, Eingabetaste. Ein bekannter Kunde steht da; einen neuen nehmen "
                 u"Sie mit \"Kunde Erfassung\" auf.",
                 u"Dann je Position: Kurzzeichen, Eingabetaste, Menge, Eingabetaste. Oder Sie klicken im "
                 u"Katalog rechts. F8 hängt ein Extra an.",
                 u"<b>F12</b> speichert den Auftrag und druckt auf Wunsch den Bestellschein.",
                 u"Ein Anruf erscheint oben im Fenster: Mit <b>F9</b> nehmen Sie ihn an, und der Kunde steht "
                 u"bereit.",
                 u"Zum Üben gibt es \"Simulation\": Sie tut so, als ob diese Nummer anriefe."}),
            u"schritt-auftrag.png"_s,
            u"cmdAuftragserfassung"_s,
            u"Auft&ragserfassung öffnen"_s,
            u"frmAuftragswesenAuftragserfassung"_s};
}

const QString kApplication = u"TavolinoHelp"_s;
const QString kSection = u"StepByStep"_s;
const QString kKey = u"ID"_s;

} // namespace

const std::vector<Step>& steps() {
    static const std::vector<Step> all{welcome(),   users(),    categories(), products(), extras(),
                                       customers(), couriers(), settings(),   orders()};
    return all;
}

bool ShowsAtStart(platform::RegistryStore& registry) {
    return registry.GetSetting(kApplication, kSection, kKey) != u"0";
}

void SetShowsAtStart(platform::RegistryStore& registry, bool shows) {
    registry.SaveSetting(kApplication, kSection, kKey, shows ? u"1"_s : u"0"_s);
}

} // namespace modHelpStepByStep
