// Booking, changing, loading and printing on the order screen.
#include "common/Convert.h"
#include "desks/MainDesks.h"
#include "masterdata/modVerwaltungKuriere.h"
#include "orders/OrderStorage.h"
#include "orders/frmAuftragswesenAuftragserfassung.h"
#include "orders/modAuftragswesenBestellschein.h"
#include "orders/modAuftragswesenVorbestellungen.h"
#include "orders/modBestellNummern.h"
#include "orders/modWebBestellung.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/Saving.h"
#include "platform/ServerPatience.h"
#include "store/ServerState.h"
#include "ui_frmAuftragswesenAuftragserfassung.h"

using namespace Qt::StringLiterals;
using modAuftragswesenAuftragserfassung::SaveDecision;

namespace {

constexpr int kToScreen = 1;
constexpr int kToPrinter = 0;

} // namespace

bool frmAuftragswesenAuftragserfassung::ask(const QString& question, const QString& title) {
    return m_services.dialogs.MsgBox(question, platform::kYesNo, title) == platform::kAnswerYes;
}

void frmAuftragswesenAuftragserfassung::tell(const QString& text, const QString& title, int style) {
    m_services.dialogs.MsgBox(text, style, title);
}

void frmAuftragswesenAuftragserfassung::note(const QString& message) {
    desks::showMessage(m_services.navigation, message);
}

void frmAuftragswesenAuftragserfassung::finished(const QString& what, qint64 number) {
    m_draft.finish();
    note(what.arg(number));
}

void frmAuftragswesenAuftragserfassung::printSlip(int target, const QString& note) {
    modAuftragswesenBestellschein::PrintBestellung(target, m_order, m_services.reports, m_services.printers,
                                                   note);
}

void frmAuftragswesenAuftragserfassung::cmdSave_Click() {
    SaveDecision decision = modAuftragswesenAuftragserfassung::DecideSave(m_order);
    if (decision == SaveDecision::FrageVorbestellung)
        decision = modAuftragswesenAuftragserfassung::DecideSave(
            m_order, ask(tr("Soll dieser Auftrag als Vorbestellung verbucht werden ?"), tr("Vorbestellung")));
    switch (decision) {
    case SaveDecision::KeineTelefonNummer:
        return tell(tr("Geben Sie zuerst eine Telefon Nummer ein."), tr("Eingabe Telefon Nummer"),
                    platform::kInformation);
    case SaveDecision::KeinLieferdatum:
        return tell(tr("Bitte geben Sie ein Lieferdatum ein."), tr("Bestellung"), platform::kInformation);
    case SaveDecision::UngueltigesLieferdatum:
        return tell(tr("Bitte geben Sie ein Lieferdatum ein."), tr("Vorbestellung"), platform::kStop);
    case SaveDecision::LieferdatumVergangen:
        return tell(tr("Dieses Lieferdatum befindet sich in der Vergangenheit."), tr("Vorbestellung"),
                    platform::kStop);
    case SaveDecision::Vorbestellung:
        return storePreOrder();
    case SaveDecision::KeinKurier:
        tell(tr("Bitte wählen Sie einen Kurier."), tr("Bestellung"), platform::kInformation);
        // Nothing to choose from yet: the message leads to where a courier comes from.
        if (modVerwaltungKuriere::GetFirstKurier().isEmpty())
            m_services.navigation.showScreen(u"frmVerwaltungKuriere"_s);
        return;
    case SaveDecision::FrageVorbestellung:
        return;
    case SaveDecision::Bestellung:
        return book();
    }
}

bool frmAuftragswesenAuftragserfassung::stores(const QString& meanwhile, const std::function<void()>& work) {
    bool stored = false;
    return platform::saving(
               m_services.dialogs,
               [&] { stored = platform::untilServerAnswers(m_services.dialogs, meanwhile, work); }) &&
           stored;
}

void frmAuftragswesenAuftragserfassung::book() {
    std::optional<qint64> trxNr;
    const bool stored = stores(tr("Der Auftrag ist noch nicht verbucht."), [&] {
        trxNr = modAuftragswesenAuftragserfassung::SaveBestellung(m_order, m_services.dialogs,
                                                                  m_services.navigation);
    });
    if (!stored || !trxNr)
        return;
    finished(tr("Auftrag %1 verbucht"), *trxNr);
    // Another station has booked since the number came to stand there. Of the first order it is the firm's
    // practice that the slip is one ahead.
    if (*trxNr > shownTrxNr())
        m_order.setDetail(orders::Detail::AuftragsNr, *trxNr);
    if (ask(tr("Wollen Sie die Bestellung drucken ?"), tr("Bestellung drucken")))
        printSlip(kToPrinter, tr("Der Auftrag ist bereits gespeichert."));
    ClearBestellungMaske();
    m_order.ShowComingTrxNr();
}

void frmAuftragswesenAuftragserfassung::storePreOrder() {
    qint64 number = 0;
    if (!stores(tr("Die Vorbestellung ist noch nicht gespeichert."),
                [&] { number = modAuftragswesenVorbestellungen::SaveVorbestellung(m_order); }))
        return;
    finished(tr("Als Vorbestellung %1 gespeichert"), number);
    ClearBestellungMaske();
    m_order.ShowComingTrxNr();
    store::ifServerAnswers(
        [this] { modAuftragswesenVorbestellungen::CheckVorbestellungAlarm(m_services.navigation); });
}

void frmAuftragswesenAuftragserfassung::keyWebOrder(const desks::WebOrder& order) {
    finishEdits();
    // An edit that was refused must not come back over a line.
    m_order.BestellungGrid.dropEdits();
    const orders::Ausgelassen leftOut = modWebBestellung::UebernehmeWebBestellung(m_order, order);
    goOn();
    tellLeftOut(leftOut, tr("Internet Bestellung"));
}

void frmAuftragswesenAuftragserfassung::loadPreOrder(qint64 trxNr) {
    if (!orders::ReadHead(orders::PreOrders(), trxNr))
        return tell(store::Overtaken::byDeletion().sentence(), tr("Vorbestellung"), platform::kInformation);
    const Settling settling(*this);
    modAuftragswesenVorbestellungen::OpenVorbestellung(m_order, trxNr);
    goOn();
}

qint64 frmAuftragswesenAuftragserfassung::shownTrxNr() const {
    return m_order.BestellungDetailsGrid
        .cell(orders::Detail::AuftragsNr.row, orders::Detail::AuftragsNr.column)
        .toLong();
}

bool frmAuftragswesenAuftragserfassung::isAsRead() {
    return platform::saving(m_services.dialogs,
                            [this] { orders::RequireAsRead(m_order.gelesen, shownTrxNr()); });
}

void frmAuftragswesenAuftragserfassung::cmdVerwaltungSave_Click() {
    // No slip of a change that will be refused, and none while no server answers.
    bool may = false;
    const QString waits = tr("Die Änderung ist noch nicht gespeichert.");
    if (!stores(waits, [&] { may = modAuftragswesenAuftragserfassung::MayUpdate(m_order); }) || !may ||
        !isAsRead() || !ask(tr("Wollen Sie diese Bestellung editieren ?"), tr("Bestellung Editieren")))
        return;
    // The slip comes before the write, the firm's practice.
    if (ask(tr("Wollen Sie die Bestellung drucken ?"), tr("Bestellung drucken")))
        printSlip(kToPrinter, tr("Die Änderung wird nach dem Drucken gespeichert."));
    const qint64 trxNr = shownTrxNr();
    if (!stores(waits, [&] { modAuftragswesenAuftragserfassung::UpdateBestellung(m_order, trxNr); }))
        return;
    finished(tr("Auftrag %1 geändert"), trxNr);
    ClearBestellungMaske();
    m_order.ShowComingTrxNr();
}

void frmAuftragswesenAuftragserfassung::cmdVerwaltungDelete_Click() {
    if (!modAuftragswesenAuftragserfassung::MayDelete(m_order) ||
        !ask(tr("Wollen Sie diese Bestellung löschen ?"), tr("Bestellung Löschen")))
        return;
    const qint64 trxNr = shownTrxNr();
    if (!stores(tr("Der Auftrag ist noch nicht gelöscht."), [&] {
            modAuftragswesenAuftragserfassung::DeleteBestellung(trxNr, m_order.Kennung(), m_order.gelesen);
        }))
        return;
    finished(tr("Auftrag %1 gelöscht"), trxNr);
    ClearBestellungMaske();
    m_order.ShowComingTrxNr();
}

void frmAuftragswesenAuftragserfassung::loadIntoScreen(qint64 trxNr) {
    const Settling settling(*this);
    modAuftragswesenAuftragserfassung::LoadBestellung(m_order, trxNr);
    m_ui->BestellungGrid->goTo({0, orders::Col::Kurzzeichen});
}

void frmAuftragswesenAuftragserfassung::cmdVerwaltungLoad_Click() {
    const std::optional<double> number = common::parseNumber(m_ui->txt_AuftragsNr->text());
    if (number)
        loadIntoScreen(qint64(*number));
}

void frmAuftragswesenAuftragserfassung::cmdNextTrx_Click() {
    const std::optional<double> number = common::parseNumber(m_ui->txt_AuftragsNr->text());
    stepTo(number ? modBestellNummern::GetFollowingTrxNr(qint64(*number))
                  : modBestellNummern::GetLastTrxNr());
}

void frmAuftragswesenAuftragserfassung::cmdPreviousTrx_Click() {
    const std::optional<double> number = common::parseNumber(m_ui->txt_AuftragsNr->text());
    stepTo(number ? modBestellNummern::GetPrecedingTrxNr(qint64(*number))
                  : modBestellNummern::GetFirstTrxNr().toLongLong());
}

void frmAuftragswesenAuftragserfassung::stepTo(qint64 trxNr) {
    if (trxNr == -1)
        return;
    m_ui->txt_AuftragsNr->setText(QString::number(trxNr));
    loadIntoScreen(trxNr);
}

void frmAuftragswesenAuftragserfassung::cmdPrint_Click() {
    printSlip(kToScreen);
}
