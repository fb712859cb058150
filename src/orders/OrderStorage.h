#pragma once
#include "common/Value.h"
#include "orders/WorkingOrder.h"
#include <QString>
#include <functional>
#include <optional>

/// How an order stands in the store: a head and its lines, in one of two pairs of tables with the same
/// columns.
namespace orders {

struct OrderTables {
    QString master;
    QString details;
    bool isPreOrder = false;
};

/// Booked orders; the number is the transaction number.
const OrderTables& BookedOrders();
/// Pre-orders; the number is the head table's own counter.
const OrderTables& PreOrders();

/// How the number of a written order comes about.
struct OrderNumber {
    enum class Kind { Next, Rewrite, Counter };
    Kind kind;
    qint64 trxNr = 0;

    /// The next number to book, read in the transaction that writes the order: nobody else can take it.
    static OrderNumber Next() { return {Kind::Next, 0}; }

    /// What stands under the number goes, in the same transaction.
    static OrderNumber Rewrite(qint64 trxNr) { return {Kind::Rewrite, trxNr}; }

    /// The head table counts by itself.
    static OrderNumber Counter() { return {Kind::Counter, 0}; }
};

/// Writes head and lines in one transaction, all or nothing, marks the order as finished and gives the
/// number; what came from the shop is remembered with it (WebOrderMemory.h). Nothing is written and given
/// where the next number cannot be found. Throws kTypeMismatch for cells that hold no date where one is
/// stored, kOrderDisagrees for an order whose total is not that of its lines, store::Overtaken for one to be
/// rewritten that is not as it was read any more.
std::optional<qint64> WriteOrder(const WorkingOrder& order, const OrderTables& tables, OrderNumber number);

/// Stores, changes or deletes a working order: `work`, which gives the number, and the mark of its identity
/// in one transaction. Whatever cuts the program off, a draft is known to be done with or it is not done at
/// all. Where the answer of an earlier try was lost, and it stands stored all the same, `work` is told its
/// number and puts what it is by now in its place. Nothing is marked where `work` gives none.
std::optional<qint64> FinishOrder(const QString& kennung, const OrderTables& tables,
                                  const std::function<std::optional<qint64>(std::optional<qint64>)>& work);
/// Whether that working order was finished. Forgets those of long ago, after the answer.
bool IsFinished(const QString& kennung);

/// Removes head and lines, and that it came from the shop; the transaction is the caller's.
void RemoveOrder(const OrderTables& tables, qint64 trxNr);

/// A stored date or time as serial; nothing where none is stored, where a text is no date, and outside the
/// years 1900 to 9999.
std::optional<double> ReadableSerial(const common::Value& stored);

/// The head as stored. A date or time that cannot be read is missing.
struct OrderHead {
    qint64 lng_TrxNr = 0, lng_KundenID = 0, lng_KurierID = 0;
    std::optional<double> lng_BestellDatum, lng_LieferDatum, time_BestellZeit, time_Lieferzeit;
    QString txt_Konditionen, txt_LieferDatum;
    double dbl_SummeOhneMWSt = 0, dbl_MWStBetrag = 0, dbl_TotalMitMWSt = 0;
};

/// Queries of what is read of an order, head first.
QStringList RowsOf(const OrderTables& tables, qint64 trxNr);
/// In the transaction that changes or cancels a booked order: throws store::Overtaken where another station
/// has done so since it was read.
void RequireAsRead(const store::RowMark& gelesen, qint64 trxNr);

std::optional<OrderHead> ReadHead(const OrderTables& tables, qint64 trxNr);
/// Customer with address, and courier: keys and cells. Who has gone since shows empty.
void ShowPeople(WorkingOrder& order, const OrderHead& head);
/// Dates, times, conditions and totals into the cells, a missing date or time as the empty cell; the number
/// is the caller's.
void ShowHead(WorkingOrder& order, const OrderHead& head);
/// Each line into the row that its number tells, with the names of today. A line whose product or extra has
/// gone is called "gelöscht" and keeps its amounts.
void LoadLines(WorkingOrder& order, const OrderTables& tables, qint64 trxNr);

} // namespace orders
