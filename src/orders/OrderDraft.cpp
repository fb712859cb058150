#include "orders/OrderDraft.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "orders/OrderStorage.h"
#include "store/StoreGlobals.h"
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <cmath>

using common::Value;
using namespace Qt::StringLiterals;

namespace orders {
namespace {

constexpr int kVersion = 1;
/// A burst of changes, as a pick makes them, is one write.
constexpr int kPauseMilliseconds = 50;

constexpr bool OrderButtons::*kButtons[] = {&OrderButtons::cmdKundeSchnellerfassung,
                                            &OrderButtons::cmdKundeEditierung,
                                            &OrderButtons::cmdSave,
                                            &OrderButtons::cmdPrint,
                                            &OrderButtons::cmdVerwaltungSave,
                                            &OrderButtons::cmdVerwaltungDelete};

QJsonArray rowToJson(const platform::CellTable& table, int row) {
    QJsonArray cells;
    for (int column = 0; column < table.columnCount(); ++column) {
        const Value& value = table.cell(row, column);
        cells.append(value.isText() ? QJsonValue(value.toText()) : QJsonValue(value.toDouble()));
    }
    return cells;
}

void rowFromJson(platform::CellTable& table, int row, const QJsonArray& cells) {
    for (int column = 0; column < table.columnCount(); ++column)
        table.setCell(row, column,
                      cells[column].isString() ? Value(cells[column].toString())
                                               : Value(cells[column].toDouble()));
}

/// Somebody has begun to key something.
bool isBegun(const WorkingOrder& order) {
    if (!order.detail(Detail::KundenNr).isEmpty() || order.LastFilledRow() >= 0)
        return true;
    for (int row = 0; row < order.BestellungGrid.rows(); ++row)
        if (!order.BestellungGrid.text(row, Col::Kurzzeichen).isEmpty())
            return true;
    return false;
}

QJsonObject toJson(const WorkingOrder& order) {
    QJsonArray head;
    for (int row = 0; row < order.BestellungDetailsGrid.rows(); ++row)
        head.append(rowToJson(order.BestellungDetailsGrid, row));
    QJsonArray lines;
    for (int row = 0; row < order.BestellungGrid.rows(); ++row)
        lines.append(rowToJson(order.BestellungGrid, row));
    QJsonArray buttons;
    for (bool OrderButtons::*button : kButtons)
        buttons.append(order.buttons().*button);
    return {{u"version"_s, kVersion},
            {u"kunde"_s, order.lng_KundenID},
            {u"kurier"_s, order.lng_KurierID},
            {u"preisgruppe"_s, order.PreisGruppe},
            {u"adresse"_s, order.KundenAdresse()},
            {u"adresseSichtbar"_s, order.KundenAdresseShown()},
            {u"tasten"_s, buttons},
            {u"kopf"_s, head},
            {u"positionen"_s, lines}};
}

bool isOrder(const QJsonObject& draft) {
    const auto isTable = [&](const QString& key, int rows, int columns) {
        const QJsonArray table = draft[key].toArray();
        return table.size() == rows &&
               std::all_of(table.begin(), table.end(),
                           [columns](const QJsonValue& row) { return row.toArray().size() == columns; });
    };
    return draft[u"version"_s] == kVersion && draft[u"kunde"_s].isDouble() &&
           draft[u"tasten"_s].toArray().size() == qsizetype(std::size(kButtons)) &&
           isTable(u"kopf"_s, 3, 6) && isTable(u"positionen"_s, kOrderRows, Col::Count);
}

/// The draft of a file; empty when there is none that can be read.
QJsonObject read(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject draft = QJsonDocument::fromJson(file.readAll()).object();
    if (isOrder(draft))
        return draft;
    file.close();
    const QString aside = path + u".defekt"_s;
    QFile::remove(aside);
    QFile::rename(path, aside);
    qWarning("The draft of an order cannot be read and was put aside: %s", qPrintable(aside));
    return {};
}

QString headText(const QJsonObject& draft, DetailCell cell) {
    return draft[u"kopf"_s].toArray()[cell.row].toArray()[cell.column].toString();
}

constexpr const OrderTables& (*kStores[])() = {BookedOrders, PreOrders};

/// Whether the tables hold an order of the customer at that minute with so many lines and that total.
bool stands(const OrderTables& tables, qint64 customer, double day, double time, int lines, double total) {
    const store::OpenRecordset heads(
        RsMain,
        u"SELECT lng_BestellDatum, time_BestellZeit, dbl_TotalMitMWSt, (SELECT Count(*) FROM %1 AS d WHERE "
        u"d.lng_TrxNrMaster = m.lng_TrxNr) AS Zeilen FROM %2 AS m WHERE lng_KundenID = %3"_s.arg(
            tables.details, tables.master, QString::number(customer)),
        ConnMain);
    for (; !heads->Eof(); heads->MoveNext())
        if (heads->Fields(u"lng_BestellDatum").toDouble() == day &&
            std::abs(heads->Fields(u"time_BestellZeit").toDouble() - time) < 1e-6 &&
            heads->Fields(u"Zeilen").toLong() == lines &&
            std::abs(heads->Fields(u"dbl_TotalMitMWSt").toDouble() - total) < 0.001)
            return true;
    return false;
}

/// Whether the same order stands booked or as a pre-order: its customer, its minute, its lines and its total.
bool isBooked(const QJsonObject& draft) {
    const std::optional<double> day = common::parseDate(headText(draft, Detail::Datum));
    const std::optional<double> time = common::parseDate(headText(draft, Detail::Bestellzeit));
    if (!day || !time)
        return false;
    double total = 0;
    int lines = 0;
    for (const QJsonValue& value : draft[u"positionen"_s].toArray()) {
        const QJsonArray line = value.toArray();
        total += line[Col::Preis].toDouble() - line[Col::Rabatt].toDouble();
        lines += line[Col::Bezeichnung].toString().isEmpty() ? 0 : 1;
    }
    return std::any_of(std::begin(kStores), std::end(kStores), [&](const OrderTables& (*tables)()) {
        return stands(tables(), draft[u"kunde"_s].toInteger(), *day, *time, lines, total);
    });
}

} // namespace

QString OrderDraft::defaultFile() {
    return store::appPath() + u"/Data/Auftrag.entwurf"_s;
}

OrderDraft::OrderDraft(WorkingOrder& order, QString file, QObject* parent) :
    QObject(parent), m_order(order), m_file(std::move(file)) {
    m_timer.setSingleShot(true);
    m_timer.setInterval(kPauseMilliseconds);
    common::connectGuarded(
        &m_timer, &QTimer::timeout, this, [this] { flush(); }, common::Origin::Background);
    for (const platform::CellTable* table : {&order.BestellungDetailsGrid, &order.BestellungGrid}) {
        connect(table, &QAbstractItemModel::dataChanged, this, [this] { schedule(); });
        connect(table, &QAbstractItemModel::rowsRemoved, this, [this] { schedule(); });
    }
    connect(&order, &WorkingOrder::KundenAdresseChanged, this, [this] { schedule(); });
    connect(&order, &WorkingOrder::ButtonsChanged, this, [this] { schedule(); });
}

void OrderDraft::schedule() {
    if (!m_timer.isActive())
        m_timer.start();
}

void OrderDraft::flush() {
    m_timer.stop();
    if (!isBegun(m_order))
        return decline(m_file);
    QSaveFile file(m_file);
    if (!file.open(QIODevice::WriteOnly) || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) ||
        file.write(QJsonDocument(toJson(m_order)).toJson(QJsonDocument::Compact)) < 0 || !file.commit())
        qWarning("The draft of the order cannot be written: %s", qPrintable(file.errorString()));
}

void OrderDraft::forget() {
    m_timer.stop();
    decline(m_file);
}

bool OrderDraft::waits(const QString& file) {
    const QJsonObject draft = read(file);
    if (draft.isEmpty())
        return false;
    if (!isBooked(draft))
        return true;
    qInfo("The draft of an order that stands booked was dropped.");
    decline(file);
    return false;
}

bool OrderDraft::restore(const QString& file, WorkingOrder& order) {
    const QJsonObject draft = read(file);
    if (draft.isEmpty())
        return false;
    order.lng_KundenID = draft[u"kunde"_s].toInteger();
    order.lng_KurierID = draft[u"kurier"_s].toInteger();
    order.PreisGruppe = draft[u"preisgruppe"_s].toInt(1);
    for (int row = 0; row < order.BestellungDetailsGrid.rows(); ++row)
        rowFromJson(order.BestellungDetailsGrid, row, draft[u"kopf"_s].toArray()[row].toArray());
    for (int row = 0; row < kOrderRows; ++row)
        rowFromJson(order.BestellungGrid, row, draft[u"positionen"_s].toArray()[row].toArray());
    OrderButtons buttons;
    for (size_t i = 0; i < std::size(kButtons); ++i)
        buttons.*kButtons[i] = draft[u"tasten"_s].toArray()[qsizetype(i)].toBool();
    order.setButtons(buttons);
    order.ShowKundenAdresse(draft[u"adresse"_s].toString());
    if (!draft[u"adresseSichtbar"_s].toBool())
        order.HideKundenAdresse();
    order.CalculateTotalBestellung();
    return true;
}

void OrderDraft::decline(const QString& file) {
    QFile::remove(file);
}

} // namespace orders
