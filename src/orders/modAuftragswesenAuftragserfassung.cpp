#include "orders/modAuftragswesenAuftragserfassung.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "masterdata/modVerwaltungKunden.h"
#include "orders/OrderStorage.h"
#include "orders/WebOrderMemory.h"
#include "orders/modBestellNummern.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include <cmath>

using common::Serial;
using common::Value;
using orders::WorkingOrder;
namespace Detail = orders::Detail;

namespace modAuftragswesenAuftragserfassung {
namespace {

constexpr double kHoursOfDay = 24;

/// An order for a customer whose number lies at most `ahead` behind the last booked one.
bool isAtMostAhead(const WorkingOrder& order, qint64 ahead) {
    const Value number(order.detail(Detail::AuftragsNr));
    return !order.detail(Detail::KundenNr).isEmpty() && number.isNumeric() &&
           number.toLong() <= modBestellNummern::GetLastTrxNr() + ahead;
}

/// Whether the delivery is later than the settings' limit, so that the user is asked.
bool asksForVorbestellung(const WorkingOrder& order, std::optional<double> day) {
    if (SysVorbestellungBuchungStatus != 1 || !day)
        return false;
    const double delivery = *day + common::parseDate(order.detail(Detail::Lieferzeit)).value_or(0);
    return delivery > common::clock::now() + SysVorbestellungBuchungZeit / kHoursOfDay;
}

SaveDecision decideVorbestellung(std::optional<double> day) {
    if (!day)
        return SaveDecision::UngueltigesLieferdatum;
    return *day < common::clock::today() ? SaveDecision::LieferdatumVergangen : SaveDecision::Vorbestellung;
}

void addKunde(const Schnellerfassung& kunde) {
    store::WriteRecordset row(RsMain, QStringLiteral("SELECT * FROM tbl_Verwaltung_Kunden WHERE 1 = 1;"),
                              ConnMain);
    row->AddNew();
    row->Fields(u"txt_Name") = kunde.txt_KundenName;
    row->Fields(u"txt_Vorname") = kunde.txt_KundenVorname;
    row->Fields(u"txt_Strasse") = kunde.txt_KundenStrasse;
    row->Fields(u"txt_PLZ") = kunde.txt_KundenPLZ;
    row->Fields(u"txt_Ort") = kunde.txt_KundenOrt;
    row->Fields(u"txt_Telefon") = kunde.txt_KundenTelefonnummer;
    if (const std::optional<double> number = common::parseNumber(kunde.txt_KundenTelefonnummer))
        row->Fields(u"dbl_Telefon") = *number;
    row->Fields(u"date_Erfasst") = Serial{common::clock::now()};
    row->Fields(u"flag_Zusatzinfo") = 1;
    row->Fields(u"flag_ClientStatus") = 0;
    row->Fields(u"flag_Newsletter") = 0;
    row->Fields(u"txt_Zusatzinfo") = kunde.txt_KundenZusatz;
    row->Update();
}

} // namespace

std::vector<Kategorie> LoadKategorien() {
    std::vector<Kategorie> kategorien;
    store::OpenRecordset rows(
        RsMain,
        QStringLiteral("SELECT lng_ID, txt_ProduktGruppe FROM tbl_Verwaltung_ProdukteKategorien "
                       "ORDER BY lng_Reihenfolge ASC, lng_ID;"),
        ConnMain);
    for (; !rows->Eof(); rows->MoveNext())
        kategorien.push_back({rows->Fields(u"lng_ID").toLong(), rows->Fields(u"txt_ProduktGruppe").text()});
    return kategorien;
}

QString ProdukteSql(std::optional<qint64> kategorie, int preisGruppe) {
    return QStringLiteral(
               "SELECT lng_ID, txt_Kurzzeichen FROM view_Verwaltung_Produkte WHERE lng_ProduktGruppe = ") +
           QString::number(kategorie.value_or(-1)) + QStringLiteral(" AND lng_Gruppe = ") +
           QString::number(preisGruppe) + (kategorie ? QStringLiteral(" AND flag_Status = 0") : QString()) +
           QStringLiteral(" ORDER BY lng_Reihenfolge ASC, lng_ID ;");
}

QString ExtrasSql(qint64 produktId) {
    return QStringLiteral(
               "SELECT tbl_Verwaltung_ProdukteExtras.lng_ID, tbl_Verwaltung_ProdukteExtras.txt_Extra FROM "
               "tbl_Verwaltung_ProdukteExtras, tbl_Verwaltung_Produkte_Extras WHERE "
               "tbl_Verwaltung_Produkte_Extras.lng_ProduktID = ") +
           QString::number(produktId) +
           QStringLiteral(" AND tbl_Verwaltung_ProdukteExtras.lng_ID = "
                          "tbl_Verwaltung_Produkte_Extras.lng_ProduktExtraID "
                          "AND tbl_Verwaltung_ProdukteExtras.flag_Status = 0 ORDER BY "
                          "tbl_Verwaltung_ProdukteExtras.lng_Reihenfolge ASC, "
                          "tbl_Verwaltung_ProdukteExtras.lng_ID;");
}

double GetMWStSatz(const Value& code) {
    if (code.isNull())
        return 0;
    switch (code.toLong()) {
    case 0:
        return SysMWStSatz1;
    case 1:
        return SysMWStSatz3;
    case 2:
        return SysMWStSatz2;
    default:
        return 0;
    }
}

SaveDecision DecideSave(const WorkingOrder& order, std::optional<bool> vorbestellung) {
    if (order.detail(Detail::KundenNr).isEmpty())
        return SaveDecision::KeineTelefonNummer;
    const QString lieferung = order.detail(Detail::Lieferung);
    if (lieferung.isEmpty())
        return SaveDecision::KeinLieferdatum;
    const std::optional<double> parsed = common::parseDate(lieferung);
    const std::optional<double> day = parsed ? std::optional(std::floor(*parsed)) : std::nullopt;
    if (!vorbestellung && asksForVorbestellung(order, day))
        return SaveDecision::FrageVorbestellung;
    const double today = common::clock::today();
    if (vorbestellung.value_or(false) || !day || (*day != today && *day != today + 1))
        return decideVorbestellung(day);
    return order.detail(Detail::Kurier).isEmpty() ? SaveDecision::KeinKurier : SaveDecision::Bestellung;
}

bool MayChangeBooked() {
    return SysAnmeldungBenutzer == 0 || SysEditierungBestellungen == 0 || UserAdministrator != 0;
}

bool MayUpdate(const WorkingOrder& order) {
    return MayChangeBooked() && isAtMostAhead(order, 1);
}

bool MayDelete(const WorkingOrder& order) {
    return MayChangeBooked() && isAtMostAhead(order, 0);
}

std::optional<qint64> SaveBestellung(const WorkingOrder& order, platform::Dialogs& dialogs,
                                     platform::Navigation& navigation) {
    const std::optional<qint64> trxNr =
        orders::WriteOrder(order, orders::BookedOrders(), orders::OrderNumber::Next());
    modBestellNummern::ShowTrxNr(trxNr, dialogs, navigation);
    return trxNr;
}

void UpdateBestellung(const WorkingOrder& order, qint64 trxNr) {
    orders::WriteOrder(order, orders::BookedOrders(), orders::OrderNumber::Rewrite(trxNr));
}

void DeleteBestellung(qint64 trxNr, const QString& kennung, const store::RowMark& gelesen) {
    const QString number = QString::number(trxNr);
    // Together, or a head without amounts would keep lines that count in the turnover.
    orders::FinishOrder(kennung, orders::BookedOrders(), [&](std::optional<qint64> stored) {
        if (!stored)
            orders::RequireAsRead(gelesen, trxNr);
        ConnMain.Execute(
            QStringLiteral(
                u"UPDATE tbl_Auftragswesen_Bestellungen_Master SET lng_KundenID = -1, lng_KurierID = "
                u"-1, txt_Konditionen = 'gelöscht', dbl_SummeOhneMWSt = 0, dbl_MWStBetrag = 0, "
                u"dbl_TotalMitMWSt = 0 WHERE lng_TrxNr = ") +
            number);
        ConnMain.Execute(
            QStringLiteral("DELETE FROM tbl_Auftragswesen_Bestellungen_Details WHERE lng_TrxNrMaster = ") +
            number);
        orders::ForgetWebOrder({trxNr, false});
        return std::optional(trxNr);
    });
}

void LoadBestellung(WorkingOrder& order, qint64 trxNr) {
    const WorkingOrder::Attempt attempt(order);
    const store::RowMark gelesen(orders::RowsOf(orders::BookedOrders(), trxNr));
    const auto head = orders::ReadHead(orders::BookedOrders(), trxNr);
    order.ClearBestellungMaske();
    order.gelesen = gelesen;
    if (head) {
        order.setDetail(Detail::AuftragsNr, head->lng_TrxNr);
        orders::OrderButtons buttons = order.buttons();
        buttons.cmdPrint = true;
        if (head->lng_KundenID == -1) {
            order.setDetail(Detail::KundenNr, u"gelöscht");
            order.setDetail(Detail::Kurier, u"gelöscht");
        } else {
            orders::ShowPeople(order, *head);
            buttons.cmdVerwaltungSave = buttons.cmdVerwaltungDelete = true;
        }
        orders::ShowHead(order, *head);
        order.setButtons(buttons);
    }
    orders::LoadLines(order, orders::BookedOrders(), trxNr);
    order.CalculateTotalBestellung();
    order.TellReadFromStore();
}

bool SaveKundeSchnellerfassung(const Schnellerfassung& kunde, std::optional<double> unbekannt) {
    bool saved = false;
    store::transact(ConnMain, [&] {
        saved = !unbekannt || !modVerwaltungKunden::KundeExistsByTelefon(*unbekannt);
        if (saved)
            addKunde(kunde);
    });
    return saved;
}

} // namespace modAuftragswesenAuftragserfassung
