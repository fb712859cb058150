// The customer's side of the order screen: search by number, quick capture, simulation of a call.
#include "common/Convert.h"
#include "common/Guard.h"
#include "desks/CustomerDesk.h"
#include "desks/MainDesks.h"
#include "masterdata/modVerwaltungKunden.h"
#include "orders/frmAuftragswesenAuftragserfassung.h"
#include "orders/modLetzteBestellungen.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "ui_frmAuftragswesenAuftragserfassung.h"

using namespace Qt::StringLiterals;

void frmAuftragswesenAuftragserfassung::txt_SucheTelefonNummer_KeyPress(int key) {
    const QString number = m_ui->txt_SucheTelefonNummer->text().trimmed();
    if (key != 13 || number.isEmpty())
        return;
    const bool known = m_order.SucheTelefonNummer(number);
    m_ui->box_SchnellerfassungKunde->hide();
    if (known)
        return showLine(0);
    fillFromPhoneBook(number);
    m_order.HideKundenAdresse();
    if (m_ui->txt_KundenTelefonnummer->text().isEmpty())
        return;
    m_ui->box_SchnellerfassungKunde->show();
    m_ui->txt_KundenName->setFocus();
}

void frmAuftragswesenAuftragserfassung::fillFromPhoneBook(const QString& number) {
    const auto entry = m_phoneBook.FindPhoneBookEntry(number);
    if (!entry)
        return;
    m_ui->txt_KundenName->setText(entry->txt_Name);
    m_ui->txt_KundenVorname->setText(entry->txt_Vorname);
    m_ui->txt_KundenStrasse->setText(entry->txt_Strasse);
    m_ui->txt_KundenPLZ->setText(entry->txt_PLZ);
    m_ui->txt_KundenOrt->setText(entry->txt_Ort);
    m_ui->txt_KundenTelefonnummer->setText(m_ui->txt_SucheTelefonNummer->text());
    m_ui->box_SchnellerfassungKunde->show();
}

void frmAuftragswesenAuftragserfassung::cmdKundeSchnellerfassung_Click() {
    const QString text = m_ui->txt_SucheTelefonNummer->text();
    const std::optional<double> number = common::parseNumber(text);
    if (!number)
        return tell(tr("Geben Sie zuerst eine Telefon Nummer ein."), tr("Eingabe Telefon Nummer"),
                    platform::kInformation);
    if (modVerwaltungKunden::KundeExistsByTelefon(*number))
        return tell(tr("Diese Telefon Nummer existiert bereits."), tr("Kunden Erfassung"), platform::kOk);
    m_order.HideKundenAdresse();
    m_ui->txt_KundenTelefonnummer->setText(text);
    m_ui->box_SchnellerfassungKunde->show();
    m_ui->txt_KundenName->setFocus();
}

void frmAuftragswesenAuftragserfassung::cmd_ClientSave_Click() {
    if (m_ui->txt_KundenName->text().trimmed().isEmpty())
        return tell(tr("Bitte geben Sie einen Namen ein."), tr("Fehlende Eingabe"), platform::kOk);
    const QString number = m_ui->txt_KundenTelefonnummer->text();
    const QString searched = m_ui->txt_SucheTelefonNummer->text();
    const bool saved = modAuftragswesenAuftragserfassung::SaveKundeSchnellerfassung(
        {number, m_ui->txt_KundenName->text(), m_ui->txt_KundenVorname->text(),
         m_ui->txt_KundenZusatz->text(), m_ui->txt_KundenStrasse->text(), m_ui->txt_KundenPLZ->text(),
         m_ui->txt_KundenOrt->text()},
        searched == number ? common::parseNumber(number) : std::nullopt);
    if (!saved)
        tell(tr("Dieser Kunde wurde inzwischen an einer anderen Station erfasst."), tr("Kunden Erfassung"),
             platform::kInformation);
    if (auto* box = platform::mainDesk<desks::StatusBox>(m_services.navigation))
        box->showKundenTotal(modVerwaltungKunden::GetTotalKunden());
    m_ui->box_SchnellerfassungKunde->hide();
    m_order.lng_KundenID = modVerwaltungKunden::FindKundeByTelefon(common::parseNumber(number).value_or(-1));
    m_order.ShowKundenAdresse(modVerwaltungKunden::GetKundeAdresse(m_order.lng_KundenID));
    ClearMaskSchnellsuche();
    txt_SucheTelefonNummer_KeyPress(13);
}

void frmAuftragswesenAuftragserfassung::cmd_ClientAbort_Click() {
    m_ui->box_SchnellerfassungKunde->hide();
    ClearMaskSchnellsuche();
    m_ui->txt_SucheTelefonNummer->setFocus();
}

void frmAuftragswesenAuftragserfassung::ClearMaskSchnellsuche() {
    for (QLineEdit* field : m_ui->box_SchnellerfassungKunde->findChildren<QLineEdit*>())
        field->clear();
}

void frmAuftragswesenAuftragserfassung::cmdKundeEditierung_Click() {
    if (auto* customers = platform::showDesk<desks::CustomerDesk>(m_services.navigation))
        customers->openCustomer(m_order.lng_KundenID);
}

void frmAuftragswesenAuftragserfassung::cmdSimulationISDNCall_Click() {
    const QString number = m_services.dialogs.InputBox(tr("Geben Sie eine Tel-Nummer ein"));
    if (auto* line = platform::mainDesk<desks::CallDesk>(m_services.navigation))
        line->BasicCAPI32_IncomingCall(u"GerufeneNr"_s, number, u"AnrufFormat"_s);
}

void frmAuftragswesenAuftragserfassung::setUpLetzteBestellungen() {
    const auto* box = m_ui->box_LetzteBestellungen;
    onClick(m_ui->cmdWieLetztesMal, &frmAuftragswesenAuftragserfassung::cmdWieLetztesMal_Click);
    connect(box, &frmLetzteBestellungen::filled, m_ui->cmdWieLetztesMal, &QWidget::setEnabled);
    common::connectGuarded(common::Origin::User, box, &frmLetzteBestellungen::bestellungChosen, this,
                           [this](qint64 trxNr) { actOnOrder([&] { wieLetztesMal(trxNr); }); });
}

void frmAuftragswesenAuftragserfassung::cmdWieLetztesMal_Click() {
    if (const auto newest = m_ui->box_LetzteBestellungen->newest())
        actOnOrder([&] { wieLetztesMal(*newest); });
}

void frmAuftragswesenAuftragserfassung::wieLetztesMal(qint64 trxNr) {
    const orders::Ausgelassen leftOut = modLetzteBestellungen::UebernehmeBestellung(m_order, trxNr);
    goOn();
    tellLeftOut(leftOut, tr("Wie letztes Mal"));
}

void frmAuftragswesenAuftragserfassung::tellLeftOut(const orders::Ausgelassen& leftOut,
                                                    const QString& title) {
    const std::pair<QString, const QStringList&> kinds[] = {
        {tr("Nicht mehr im Angebot:"), leftOut.nichtImAngebot},
        {tr("Kein Platz mehr im Auftrag:"), leftOut.keinPlatz},
        {tr("Extras, die zu keiner Position gehören:"), leftOut.ohnePosition},
        {tr("Menge ungültig, bitte im Auftrag prüfen:"), leftOut.mengeAbgelehnt}};
    QStringList told;
    for (const auto& [kind, lines] : kinds) {
        if (lines.isEmpty())
            continue;
        told << kind + u'\n' + lines.mid(0, orders::kNamedAusgelassen).join(u'\n');
        if (const qsizetype others = lines.size() - orders::kNamedAusgelassen; others > 0)
            told.last() += u'\n' + tr("und %1 weitere").arg(others);
    }
    if (!told.isEmpty())
        tell(told.join(u"\n\n"_s), title, platform::kInformation);
}
