#include "orders/modAuftragswesenVorbestellungen.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "desks/MainDesks.h"
#include "desks/PreOrderDesk.h"
#include "masterdata/modVerwaltungKunden.h"
#include "orders/OrderStorage.h"
#include "orders/WebOrderMemory.h"
#include "store/Lookups.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"

using orders::WorkingOrder;
namespace Detail = orders::Detail;

namespace modAuftragswesenVorbestellungen {
namespace {

constexpr double kMinutesOfDay = 1440;
/// Sums of day fractions miss the minute by less than this; 0.1 ms.
constexpr double kRoundingError = 1e-9;

const QString kListe = QStringLiteral("SELECT lng_TrxNr, txt_LieferDatum, time_Lieferzeit, lng_KundenID FROM "
                                      "tbl_Auftragswesen_Vorbestellungen_Master");

} // namespace

qint64 SaveVorbestellung(const WorkingOrder& order) {
    return orders::WriteOrder(order, orders::PreOrders(), orders::OrderNumber::Counter()).value();
}

void LoadVorbestellung(WorkingOrder& order, qint64 trxNr) {
    const WorkingOrder::Attempt attempt(order);
    const auto head = orders::ReadHead(orders::PreOrders(), trxNr);
    order.ClearBestellungMaske();
    if (head) {
        orders::ShowPeople(order, *head);
        orders::ShowHead(order, *head);
        // Text and number tell the same date; where one is damaged the other is not trusted.
        if (!common::isDate(head->txt_LieferDatum))
            order.setDetail(Detail::Lieferung, QString());
    }
    orders::LoadLines(order, orders::PreOrders(), trxNr);
    orders::OrderButtons buttons = order.buttons();
    buttons.cmdPrint = head.has_value();
    buttons.cmdSave = true;
    order.setButtons(buttons);
    order.CalculateTotalBestellung();
}

void OpenVorbestellung(WorkingOrder& order, qint64 trxNr) {
    const WorkingOrder::Attempt attempt(order);
    LoadVorbestellung(order, trxNr);
    order.webBestellung = orders::WebOrderOf({trxNr, true});
    order.SetBestellzeit(common::clock::now());
    order.TellReadFromStore();
}

void DeleteVorbestellung(qint64 trxNr) {
    // Together: a power cut between the two would leave lines that nobody can see or remove any more.
    store::transact(ConnMain, [&] { orders::RemoveOrder(orders::PreOrders(), trxNr); });
}

QString ListeAmTag(qint64 lieferDatum) {
    return kListe + QStringLiteral(" WHERE lng_LieferDatum = ") + QString::number(lieferDatum) +
           QStringLiteral(" ORDER BY time_Lieferzeit, lng_TrxNr");
}

QString ListeAlle() {
    return kListe + QStringLiteral(" ORDER BY lng_TrxNr;");
}

QString ListeEine(qint64 trxNr) {
    return kListe + QStringLiteral(" WHERE lng_TrxNr = ") + QString::number(trxNr);
}

void UpdateVorbestellungCount(platform::Navigation& navigation) {
    qint64 count = 0;
    {
        store::OpenRecordset rows(
            RsMain,
            QStringLiteral(
                "SELECT Count(*) As TotalVorbestellungen FROM tbl_Auftragswesen_Vorbestellungen_Master ;"),
            ConnMain);
        count = rows->Fields(u"TotalVorbestellungen").toLong();
    }
    if (auto* box = platform::mainDesk<desks::StatusBox>(navigation))
        box->showVorbestellungCount(count);
}

std::optional<qint64> FindFaelligeVorbestellung() {
    const double limit =
        common::clock::now() + SysVorbestellungAutomatischZeit / kMinutesOfDay + kRoundingError;
    const auto others = store::tasksOfOthers();
    store::OpenRecordset rows(RsMain,
                              QStringLiteral("SELECT lng_TrxNr, lng_LieferDatum, time_Lieferzeit FROM "
                                             "tbl_Auftragswesen_Vorbestellungen_Master ORDER BY "
                                             "lng_LieferDatum, time_Lieferzeit, lng_TrxNr ;"),
                              ConnMain);
    for (; !rows->Eof(); rows->MoveNext()) {
        if (others.contains(Aufgabe(rows->Fields(u"lng_TrxNr").toLong()).name))
            continue;
        const auto day = orders::ReadableSerial(rows->Fields(u"lng_LieferDatum").Value());
        const auto time = orders::ReadableSerial(rows->Fields(u"time_Lieferzeit").Value());
        if (day && time && *day + *time <= limit)
            return rows->Fields(u"lng_TrxNr").toLong();
    }
    return std::nullopt;
}

platform::Task Aufgabe(qint64 trxNr) {
    constexpr int kInHand = 300;
    return {QStringLiteral("Vorbestellung ") + QString::number(trxNr), kInHand, store::Topic::PreOrders};
}

QString BeiStation(qint64 trxNr) {
    return store::holderOf(Aufgabe(trxNr).name);
}

bool TakeOnVorbestellung(qint64 trxNr, platform::Dialogs& dialogs) {
    return platform::takeOn(dialogs, Aufgabe(trxNr),
                            QStringLiteral("%1 bearbeitet die Vorbestellung ") + QString::number(trxNr) +
                                QStringLiteral(" bereits."),
                            QStringLiteral(u"Möchten Sie sie trotzdem öffnen?"),
                            QStringLiteral("Vorbestellung"));
}

QString KundeVon(qint64 trxNr) {
    return modVerwaltungKunden::GetKundeName(
        store::findText(QStringLiteral("SELECT lng_KundenID FROM tbl_Auftragswesen_Vorbestellungen_Master "
                                       "WHERE lng_TrxNr = ") +
                        QString::number(trxNr))
            .toLongLong());
}

void CheckVorbestellungAlarm(platform::Navigation& navigation) {
    UpdateVorbestellungCount(navigation);
    if (const auto trxNr = FindFaelligeVorbestellung())
        if (auto* alarm = platform::showDesk<desks::PreOrderAlarm>(navigation))
            alarm->setFaellig(*trxNr, KundeVon(*trxNr));
}

} // namespace modAuftragswesenVorbestellungen
