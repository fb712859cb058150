#include "orders/OrderStorage.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "common/RunTimeError.h"
#include "masterdata/modProdukte.h"
#include "masterdata/modProdukteExtras.h"
#include "masterdata/modVerwaltungKunden.h"
#include "masterdata/modVerwaltungKuriere.h"
#include "orders/WebOrderMemory.h"
#include "orders/modBestellNummern.h"
#include "orders/rules/StoredLine.h"
#include "store/Stations.h"
#include "store/StoreGlobals.h"
#include <algorithm>
#include <cmath>
#include <vector>

using common::Serial;
using common::Value;
using store::OpenRecordset;
using store::WriteRecordset;

namespace orders {
namespace {

/// 1 January 10000.
constexpr double kEndOfCalendar = 2'958'466;
/// The customer of a cancelled order.
constexpr qint64 kNobody = -1;
const QString kGeloescht = QStringLiteral(u"gelöscht");

/// A time or date cell as the store holds it; an empty cell holds nothing.
Value serialOf(const QString& text) {
    return text.isEmpty() ? Value() : Value(Serial{Value(text).toSerial()});
}

/// Whole days of a date cell.
qint64 daysOf(const QString& text) {
    return qint64(std::floor(Value(text).toSerial()));
}

/// Rows without a name are none.
bool isStored(const WorkingOrder& order, int row) {
    return !order.BestellungGrid.text(row, Col::Bezeichnung).isEmpty();
}

QString allRows(const QString& table) {
    return QStringLiteral("SELECT * FROM ") + table + QStringLiteral(" WHERE 1 = 1;");
}

QString numberIs(const QString& table, const QString& column, qint64 trxNr) {
    return QStringLiteral(" FROM ") + table + QStringLiteral(" WHERE ") + column + QStringLiteral(" = ") +
           QString::number(trxNr);
}

void removeRows(const OrderTables& tables, qint64 trxNr) {
    ConnMain.Execute(QStringLiteral("DELETE") + numberIs(tables.master, QStringLiteral("lng_TrxNr"), trxNr));
    ConnMain.Execute(QStringLiteral("DELETE") +
                     numberIs(tables.details, QStringLiteral("lng_TrxNrMaster"), trxNr));
}

/// Head and lines agree, or nothing is stored: a mistake of ours must not become a wrong booking.
void requireSound(const WorkingOrder& order) {
    constexpr double kTrace = 1e-6;
    OrderSums stored;
    for (int row = 0; row < order.BestellungGrid.rows(); ++row)
        if (isStored(order, row))
            stored.add(order.money(row), 0, 0);
    const double total = order.total(TotalRow::Total);
    const double net = order.total(TotalRow::Summe);
    // Also what is no number fails.
    if (std::abs(stored.total - total) < kTrace && std::abs(stored.net - net) < kTrace)
        return;
    throw common::RunTimeError(
        common::kOrderDisagrees, QStringLiteral(u"Das Total stimmt nicht mit den Positionen überein."),
        QStringLiteral("lines %1, %2; head %3, %4").arg(stored.total).arg(stored.net).arg(total).arg(net));
}

/// Nothing where the table counts by itself, and where there is no next one.
std::optional<qint64> numberOf(const OrderNumber& number) {
    if (number.kind == OrderNumber::Kind::Next)
        return modBestellNummern::FindNextTrxNr();
    return number.kind == OrderNumber::Kind::Rewrite ? std::optional(number.trxNr) : std::nullopt;
}

/// Without a number the table's counter gives one. Gives the order's number.
qint64 writeHead(const WorkingOrder& order, const OrderTables& tables, std::optional<qint64> number) {
    WriteRecordset head(RsMain, allRows(tables.master), ConnMain);
    head->AddNew();
    if (number)
        head->Fields(u"lng_TrxNr") = *number;
    const qint64 trxNr = head->Fields(u"lng_TrxNr").toLong();
    const qint64 bestellDatum = daysOf(order.detail(Detail::Datum));
    const qint64 lieferDatum = daysOf(order.detail(Detail::Lieferung));
    head->Fields(u"lng_KundenID") = order.lng_KundenID;
    head->Fields(u"lng_KurierID") = order.lng_KurierID;
    head->Fields(u"lng_BestellDatum") = bestellDatum;
    head->Fields(u"date_BestellDatum") = Serial{double(bestellDatum)};
    head->Fields(u"time_BestellZeit") = serialOf(order.detail(Detail::Bestellzeit));
    head->Fields(u"dbl_BestellDatumNow") =
        head->Fields(u"lng_BestellDatum").toDouble() + head->Fields(u"time_BestellZeit").toDouble();
    head->Fields(u"time_Lieferzeit") = serialOf(order.detail(Detail::Lieferzeit));
    head->Fields(u"txt_Konditionen") = order.detail(Detail::Konditionen);
    head->Fields(u"lng_LieferDatum") = lieferDatum;
    head->Fields(u"txt_LieferDatum") = common::formatDate(double(lieferDatum), u"DD/MM/YYYY");
    head->Fields(u"dbl_SummeOhneMWSt") = order.total(TotalRow::Summe);
    head->Fields(u"dbl_MWStBetrag") = order.total(TotalRow::MWSt1) + order.total(TotalRow::MWSt3);
    head->Fields(u"dbl_TotalMitMWSt") = order.total(TotalRow::Total);
    head->Update();
    return trxNr;
}

void writeLine(const WorkingOrder& order, int row, qint64 trxNr, double moment) {
    const auto number = [&](int col) { return order.BestellungGrid.number(row, col); };
    const auto key = [&](int col) { return order.BestellungGrid.cell(row, col).toLong(); };
    StoredLine<QString> line;
    line.number = lineNumber(trxNr, row);
    line.trxNr = trxNr;
    line.produktId = key(Col::ProduktID);
    line.isProdukt = key(Col::IsProdukt);
    line.extraId = key(Col::ExtraID);
    line.menge = number(Col::Anzahl);
    line.mengeIntern = number(Col::AnzahlIntern);
    line.stueckelung = order.BestellungGrid.text(row, Col::Einheit);
    line.einheit = key(Col::EinheitAnzahl);
    line.ccy = order.BestellungGrid.text(row, Col::Ccy);
    line.money = order.money(row);
    line.moment = moment;
    RsMain.AddNew();
    forEachColumn(line, [](QStringView column, const auto& value) { RsMain.Fields(column) = Value(value); });
    RsMain.Update();
}

void writeLines(const WorkingOrder& order, const OrderTables& tables, qint64 trxNr) {
    const double moment =
        double(daysOf(order.detail(Detail::Datum))) + serialOf(order.detail(Detail::Bestellzeit)).toDouble();
    const WriteRecordset lines(RsMain, allRows(tables.details), ConnMain);
    for (int row = 0; row < order.BestellungGrid.rows(); ++row)
        if (isStored(order, row))
            writeLine(order, row, trxNr, moment);
}

void take(const Value& stored, double& number) {
    number = stored.toDouble();
}

void take(const Value& stored, qint64& number) {
    number = stored.toLong();
}

void take(const Value& stored, QString& text) {
    text = stored.toText();
}

StoredLine<QString> readLine(store::Recordset& row) {
    StoredLine<QString> line;
    forEachColumn(line, [&](QStringView column, auto& member) { take(row.Fields(column).Value(), member); });
    return line;
}

void showLine(WorkingOrder& order, int row, const StoredLine<QString>& line) {
    platform::CellTable& grid = order.BestellungGrid;
    const bool isProdukt = line.isProdukt != 0;
    grid.setCell(row, Col::Kurzzeichen,
                 isProdukt ? modProdukte::GetProduktKurzzeichen(line.produktId) : QString());
    const QString name = isProdukt ? modProdukte::GetProduktName(line.produktId)
                                   : modProdukteExtras::GetExtraName(line.extraId);
    // A line without a name would count in the total and not be stored.
    grid.setCell(row, Col::Bezeichnung, name.isEmpty() ? kGeloescht : name);
    grid.setCell(row, Col::Anzahl, line.menge);
    grid.setCell(row, Col::AnzahlIntern, line.mengeIntern);
    grid.setCell(row, Col::Einheit, line.stueckelung);
    grid.setCell(row, Col::EinheitAnzahl, line.einheit);
    grid.setCell(row, Col::Ccy, line.ccy);
    grid.setCell(row, Col::ProduktID, line.produktId);
    grid.setCell(row, Col::IsProdukt, isProdukt ? 1 : 0);
    grid.setCell(row, Col::ExtraID, line.extraId);
    order.setMoney(row, line.money);
}

void markFinished(const QString& kennung, const WebBooking& booking) {
    ConnMain.Execute(QStringLiteral("INSERT INTO tbl_Auftragswesen_Erledigt(txt_Kennung, lng_TrxNr, "
                                    "flag_Vorbestellung, dbl_ErledigtNow) VALUES(%1, %2, %3, %4)")
                         .arg(store::sqlText(kennung), QString::number(booking.trxNr),
                              QString::number(booking.isPreOrder ? 1 : 0),
                              QString::number(common::clock::now(), 'f', 8)));
}

/// What that order became; the number 0 where it was finished by an earlier program.
std::optional<WebBooking> finishedAs(const QString& kennung) {
    const OpenRecordset rows(RsMain,
                             QStringLiteral("SELECT lng_TrxNr, flag_Vorbestellung FROM "
                                            "tbl_Auftragswesen_Erledigt WHERE txt_Kennung = ") +
                                 store::sqlText(kennung),
                             ConnMain);
    if (rows->Eof())
        return std::nullopt;
    return WebBooking{rows->Fields(u"lng_TrxNr").toLong(), rows->Fields(u"flag_Vorbestellung").toLong() != 0};
}

QString dateText(std::optional<double> day) {
    return day ? common::formatDate(*day, u"DD/MM/YYYY") : QString();
}

/// "18:05", with the seconds where there are any.
QString timeText(std::optional<double> time) {
    const QString text = time ? Value(Serial{*time}).toText() : QString();
    return text.size() == 8 && text.endsWith(QLatin1String(":00")) ? text.left(5) : text;
}

} // namespace

const OrderTables& BookedOrders() {
    static const OrderTables tables = {QStringLiteral("tbl_Auftragswesen_Bestellungen_Master"),
                                       QStringLiteral("tbl_Auftragswesen_Bestellungen_Details")};
    return tables;
}

const OrderTables& PreOrders() {
    static const OrderTables tables = {QStringLiteral("tbl_Auftragswesen_Vorbestellungen_Master"),
                                       QStringLiteral("tbl_Auftragswesen_Vorbestellungen_Details"), true};
    return tables;
}

void RemoveOrder(const OrderTables& tables, qint64 trxNr) {
    removeRows(tables, trxNr);
    ForgetWebOrder({trxNr, tables.isPreOrder});
    if (tables.isPreOrder)
        store::tellNews(store::Topic::PreOrders);
}

std::optional<double> ReadableSerial(const Value& stored) {
    if (stored.isNull())
        return std::nullopt;
    const std::optional<double> serial =
        stored.isText() ? common::parseDate(stored.toText()) : stored.toSerial();
    return serial && *serial >= 0 && *serial < kEndOfCalendar ? serial : std::nullopt;
}

std::optional<qint64> WriteOrder(const WorkingOrder& order, const OrderTables& tables, OrderNumber number) {
    requireSound(order);
    return FinishOrder(order.Kennung(), tables, [&](std::optional<qint64> stored) -> std::optional<qint64> {
        std::optional<qint64> trxNr = stored ? stored : numberOf(number);
        if (!trxNr && number.kind != OrderNumber::Kind::Counter)
            return std::nullopt;
        // Inside the transaction, so that a booked order is never lost between its deletion and its new
        // writing.
        if (number.kind == OrderNumber::Kind::Rewrite) {
            if (!stored)
                RequireAsRead(order.gelesen, number.trxNr);
            removeRows(tables, number.trxNr);
        } else if (stored) {
            RemoveOrder(tables, *stored);
        }
        trxNr = writeHead(order, tables, trxNr);
        writeLines(order, tables, *trxNr);
        if (order.webBestellung)
            RememberWebOrder(*order.webBestellung, {*trxNr, tables.isPreOrder});
        if (tables.isPreOrder)
            store::tellNews(store::Topic::PreOrders);
        return trxNr;
    });
}

QStringList RowsOf(const OrderTables& tables, qint64 trxNr) {
    return {QStringLiteral("SELECT *") + numberIs(tables.master, QStringLiteral("lng_TrxNr"), trxNr),
            QStringLiteral("SELECT *") + numberIs(tables.details, QStringLiteral("lng_TrxNrMaster"), trxNr) +
                QStringLiteral(" ORDER BY dbl_TrxNr")};
}

void RequireAsRead(const store::RowMark& gelesen, qint64 trxNr) {
    try {
        gelesen.require();
    } catch (const store::Overtaken&) {
        const auto head = ReadHead(BookedOrders(), trxNr);
        if (head && head->lng_KundenID == kNobody)
            throw store::Overtaken::byDeletion();
        throw;
    }
}

std::optional<OrderHead> ReadHead(const OrderTables& tables, qint64 trxNr) {
    OpenRecordset row(
        RsMain, QStringLiteral("SELECT *") + numberIs(tables.master, QStringLiteral("lng_TrxNr"), trxNr),
        ConnMain);
    if (row->Eof())
        return std::nullopt;
    OrderHead head;
    head.lng_TrxNr = row->Fields(u"lng_TrxNr").toLong();
    head.lng_KundenID = row->Fields(u"lng_KundenID").toLong();
    head.lng_KurierID = row->Fields(u"lng_KurierID").toLong();
    head.lng_BestellDatum = ReadableSerial(row->Fields(u"lng_BestellDatum").Value());
    head.lng_LieferDatum = ReadableSerial(row->Fields(u"lng_LieferDatum").Value());
    head.time_BestellZeit = ReadableSerial(row->Fields(u"time_BestellZeit").Value());
    head.time_Lieferzeit = ReadableSerial(row->Fields(u"time_Lieferzeit").Value());
    head.txt_Konditionen = row->Fields(u"txt_Konditionen").text();
    head.txt_LieferDatum = row->Fields(u"txt_LieferDatum").text();
    head.dbl_SummeOhneMWSt = row->Fields(u"dbl_SummeOhneMWSt").toDouble();
    head.dbl_MWStBetrag = row->Fields(u"dbl_MWStBetrag").toDouble();
    head.dbl_TotalMitMWSt = row->Fields(u"dbl_TotalMitMWSt").toDouble();
    return head;
}

void ShowPeople(WorkingOrder& order, const OrderHead& head) {
    order.setDetail(Detail::KundenNr, head.lng_KundenID);
    order.lng_KundenID = head.lng_KundenID;
    order.ChooseKurier(head.lng_KurierID, modVerwaltungKuriere::GetKurierKurzzeichen(head.lng_KurierID));
    order.ShowKundenAdresse(modVerwaltungKunden::GetKundeAdresse(head.lng_KundenID));
}

void ShowHead(WorkingOrder& order, const OrderHead& head) {
    order.setDetail(Detail::Datum, dateText(head.lng_BestellDatum));
    order.setDetail(Detail::Bestellzeit, timeText(head.time_BestellZeit));
    order.setDetail(Detail::Lieferzeit, timeText(head.time_Lieferzeit));
    order.setDetail(Detail::Konditionen, head.txt_Konditionen);
    order.setDetail(Detail::Lieferung, dateText(head.lng_LieferDatum));
    // The total's place is found when the totals are derived from the lines.
    order.BestellungTotalGrid.setCell(TotalRow::Summe, kTotalAmount, head.dbl_SummeOhneMWSt);
    order.BestellungTotalGrid.setCell(TotalRow::MWSt1, kTotalAmount, head.dbl_MWStBetrag);
    order.BestellungTotalGrid.setCell(TotalRow::MWSt3, kTotalAmount, head.dbl_TotalMitMWSt);
}

void LoadLines(WorkingOrder& order, const OrderTables& tables, qint64 trxNr) {
    std::vector<StoredLine<QString>> lines;
    {
        OpenRecordset rows(RsMain,
                           QStringLiteral("SELECT *") +
                               numberIs(tables.details, QStringLiteral("lng_TrxNrMaster"), trxNr) +
                               QStringLiteral(" ORDER BY dbl_TrxNr"),
                           ConnMain);
        for (; !rows->Eof(); rows->MoveNext())
            lines.push_back(readLine(RsMain));
    }
    // After closing: the names are looked up through the same recordset.
    for (const StoredLine<QString>& line : lines) {
        const int row = rowOfLine(line.number, line.trxNr);
        if (row >= 0 && row < order.BestellungGrid.rows())
            showLine(order, row, line);
    }
}

std::optional<qint64> FinishOrder(const QString& kennung, const OrderTables& tables,
                                  const std::function<std::optional<qint64>(std::optional<qint64>)>& work) {
    std::optional<qint64> trxNr;
    try {
        store::transact(ConnMain, [&] {
            trxNr = work({});
            if (trxNr)
                markFinished(kennung, {*trxNr, tables.isPreOrder});
        });
        return trxNr;
    } catch (const common::RunTimeError& error) {
        // What this station has stored itself, it finds changed.
        const bool perhaps =
            error.number() == common::kDuplicateKey || error.number() == store::Overtaken::kNumber;
        const auto stored = perhaps ? finishedAs(kennung) : std::nullopt;
        if (!stored || stored->trxNr == 0)
            throw;
        // Booked first and a pre-order by now, or the other way round, it stays what it was.
        trxNr = stored->trxNr;
        if (stored->isPreOrder == tables.isPreOrder)
            store::transact(ConnMain, [&] { trxNr = work(stored->trxNr); });
    }
    return trxNr;
}

bool IsFinished(const QString& kennung) {
    // A draft waits from one start to the next.
    constexpr double kKeptDays = 92;
    const bool finished = finishedAs(kennung).has_value();
    ConnMain.Execute(QStringLiteral("DELETE FROM tbl_Auftragswesen_Erledigt WHERE dbl_ErledigtNow < ") +
                     common::numberToText(std::floor(common::clock::now()) - kKeptDays));
    return finished;
}

} // namespace orders
