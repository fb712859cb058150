#include "orders/OrderDraft.h"
#include "common/AtomicFile.h"
#include "common/Guard.h"
#include "common/RunTimeError.h"
#include "masterdata/Artikel.h"
#include "orders/OrderStorage.h"
#include "store/StoreGlobals.h"
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <filesystem>
#include <utility>

using common::Value;
using namespace Qt::StringLiterals;

namespace orders {
namespace {

constexpr int kVersion = 1;
/// A burst of changes, as a pick makes them, is one write.
constexpr int kPauseMilliseconds = 50;
/// Many times the size of a full order.
constexpr qint64 kLargest = 1'000'000;
const QString kAside = u".defekt"_s;
/// Of an order that was given up.
const QString kGivenUp = u".verworfen"_s;
const QString kTakenBack = u".zurueck"_s;
constexpr qint64 kGivenUpSeconds = 43'200; // half a day

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

/// Somebody has begun to key something. A deleted order that is looked at has no customer any more.
bool isBegun(const WorkingOrder& order) {
    if (Value(order.detail(Detail::KundenNr)).isNumeric() || order.LastFilledRow() >= 0)
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
    return {
        {u"version"_s, kVersion},
        {u"kennung"_s, order.Kennung()},
        {u"kunde"_s, order.lng_KundenID},
        {u"kurier"_s, order.lng_KurierID},
        {u"webBestellung"_s, order.webBestellung ? QJsonValue(order.webBestellung->number) : QJsonValue()},
        {u"webMerkmal"_s, order.webBestellung ? order.webBestellung->merkmal : QString()},
        {u"gelesen"_s, QString::fromLatin1(order.gelesen.digest().toHex())},
        {u"preisgruppe"_s, order.PreisGruppe},
        {u"adresse"_s, order.KundenAdresse()},
        {u"adresseSichtbar"_s, order.KundenAdresseShown()},
        {u"tasten"_s, buttons},
        {u"kopf"_s, head},
        {u"positionen"_s, lines}};
}

/// Whether the rows fill the table, each cell with what its column holds.
bool fits(const QJsonArray& rows, const platform::CellTable& table) {
    using Type = platform::CellColumn::Type;
    return rows.size() == table.rows() && std::all_of(rows.begin(), rows.end(), [&](const QJsonValue& row) {
               const QJsonArray cells = row.toArray();
               bool fit = cells.size() == table.columnCount();
               for (int column = 0; fit && column < table.columnCount(); ++column)
                   fit = table.columnInfo(column).type == Type::Number ? cells[column].isDouble()
                                                                       : cells[column].isString();
               return fit;
           });
}

bool isOrder(const QJsonObject& draft, const WorkingOrder& order) {
    return draft[u"version"_s] == kVersion && draft[u"kunde"_s].isDouble() && draft[u"kurier"_s].isDouble() &&
           draft[u"tasten"_s].toArray().size() == qsizetype(std::size(kButtons)) &&
           fits(draft[u"kopf"_s].toArray(), order.BestellungDetailsGrid) &&
           fits(draft[u"positionen"_s].toArray(), order.BestellungGrid);
}

/// The first name beside the file that is free: one that was put aside before stays.
QString freePlaceBeside(const QString& path) {
    QString place = path + kAside;
    for (int number = 2; QFile::exists(place); ++number)
        place = u"%1%2-%3"_s.arg(path, kAside).arg(number);
    return place;
}

/// The draft of a file for an order of that shape; empty when there is none that can be read, and then the
/// file is put aside.
QJsonObject read(const QString& path, const WorkingOrder& order, QString* putAside = nullptr) {
    QFile file(path);
    if (!file.exists())
        return {};
    const bool sound = file.open(QIODevice::ReadOnly) && file.size() <= kLargest;
    QJsonObject draft = sound ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
    if (isOrder(draft, order))
        return draft;
    file.close();
    const QString aside = freePlaceBeside(path);
    QFile::rename(path, aside);
    qWarning("The draft of an order cannot be read and was put aside: %s", qPrintable(aside));
    if (putAside)
        *putAside = aside;
    return {};
}

void show(const QJsonObject& draft, WorkingOrder& order) {
    // A draft of an earlier program has none.
    if (const QString kennung = draft[u"kennung"_s].toString(); !kennung.isEmpty())
        order.setKennung(kennung);
    order.lng_KundenID = draft[u"kunde"_s].toInteger();
    order.lng_KurierID = draft[u"kurier"_s].toInteger();
    order.webBestellung.reset();
    if (const QJsonValue web = draft[u"webBestellung"_s]; web.isDouble())
        order.webBestellung = {web.toInteger(), draft[u"webMerkmal"_s].toString()};
    order.PreisGruppe = std::clamp(draft[u"preisgruppe"_s].toInt(1), 1, masterdata::kPriceGroups);
    for (int row = 0; row < order.BestellungDetailsGrid.rows(); ++row)
        rowFromJson(order.BestellungDetailsGrid, row, draft[u"kopf"_s].toArray()[row].toArray());
    order.gelesen = {};
    if (const QString digest = draft[u"gelesen"_s].toString(); !digest.isEmpty())
        order.gelesen =
            store::RowMark(RowsOf(BookedOrders(), Value(order.detail(Detail::AuftragsNr)).toLong()),
                           QByteArray::fromHex(digest.toLatin1()));
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
}

OrderDraft::Keeping* theKeeping = nullptr;

/// To what was given up last.
void putAside(const QString& file) {
    std::error_code failure;
    std::filesystem::rename(QFileInfo(file).filesystemFilePath(),
                            QFileInfo(file + kGivenUp).filesystemFilePath(), failure);
    // A screen is told of its closing more than once; what could not be written has been told.
    if (failure && failure != std::errc::no_such_file_or_directory)
        qWarning("The order that was given up cannot be kept: %s", failure.message().c_str());
}

/// The end came while an order was taken back: it goes on where it stood, as far as there is room.
void finishTakingBack(const QString& file) {
    const QString aside = file + kTakenBack;
    if (QFile::exists(aside) && !QFile::rename(aside, file) && !QFile::rename(aside, file + kGivenUp))
        QFile::remove(aside);
}

/// A process that was killed while it wrote leaves its unfinished copy behind.
void removeUnfinished(const QString& path) {
    const QFileInfo draft(path);
    for (const QFileInfo& copy : draft.dir().entryInfoList({draft.fileName() + u".??????"_s}, QDir::Files))
        if (copy.filePath() != draft.filePath() + kAside)
            QFile::remove(copy.filePath());
}

} // namespace

QString OrderDraft::defaultFile() {
    return store::appPath() + u"/Data/Auftrag.entwurf"_s;
}

OrderDraft::OrderDraft(WorkingOrder& order, QString file, QObject* parent) :
    QObject(parent), m_order(order), m_file(std::move(file)) {
    m_timer.setSingleShot(true);
    m_timer.setInterval(kPauseMilliseconds);
    common::connectGuarded(common::Origin::Timer, &m_timer, &QTimer::timeout, this, [this] { write(); });
    for (const platform::CellTable* table : {&order.BestellungDetailsGrid, &order.BestellungGrid}) {
        connect(table, &QAbstractItemModel::dataChanged, this, [this] { schedule(); });
        connect(table, &QAbstractItemModel::rowsRemoved, this, [this] { schedule(); });
    }
    connect(&order, &WorkingOrder::KundenAdresseChanged, this, [this] { schedule(); });
    connect(&order, &WorkingOrder::ButtonsChanged, this, [this] { schedule(); });
    connect(&order, &WorkingOrder::AboutToClear, this, [this] { giveUp(); });
}

void OrderDraft::schedule() {
    if (!m_timer.isActive())
        m_timer.start();
}

void OrderDraft::flush() {
    if (!m_timer.isActive())
        return;
    write();
}

void OrderDraft::write() {
    m_timer.stop();
    if (m_order.IsAsRead() || !isBegun(m_order) || m_order.Kennung() == m_finished)
        return decline(m_file);
    try {
        common::writeFileAtomically(m_file, QJsonDocument(toJson(m_order)).toJson(QJsonDocument::Compact),
                                    QFile::ReadOwner | QFile::WriteOwner);
        tellMended();
    } catch (const common::RunTimeError& error) {
        tellFailure(error);
    }
}

/// In both ways once: it is tried at every change.
void OrderDraft::tellFailure(const common::RunTimeError& error) {
    if (std::exchange(m_failing, true))
        return;
    qWarning("The draft of the order cannot be written: %s", qPrintable(error.detail()));
    // The line that tells it is short.
    Q_EMIT failed(error.number() == common::kDiskFull ? tr("Der Datenträger ist voll.") : error.sentence());
}

void OrderDraft::tellMended() {
    if (std::exchange(m_failing, false))
        Q_EMIT mended();
}

void OrderDraft::finish() {
    m_finished = m_order.Kennung();
    forget();
}

void OrderDraft::forget() {
    m_timer.stop();
    decline(m_file);
}

/// A change of a booked order is not: that one may be changed otherwise, or deleted, before it is taken back.
bool OrderDraft::isWorthKeeping() const {
    return m_order.LastFilledRow() >= 0 && !m_order.IsAsRead() && !m_order.buttons().cmdVerwaltungSave &&
           m_order.Kennung() != m_finished;
}

void OrderDraft::giveUp() {
    if (theKeeping) {
        flush();
        theKeeping->m_giveUp = [file = m_file, worth = isWorthKeeping()] {
            worth ? putAside(file) : decline(file);
        };
        return;
    }
    if (!isWorthKeeping())
        return forget();
    flush();
    m_timer.stop();
    putAside(m_file);
    Q_EMIT canTakeBackChanged(canTakeBack());
}

OrderDraft::Keeping::Keeping() {
    theKeeping = this;
}

OrderDraft::Keeping::~Keeping() {
    theKeeping = nullptr;
}

void OrderDraft::Keeping::giveUp() {
    if (m_giveUp)
        m_giveUp();
}

bool OrderDraft::canTakeBack() const {
    return QFile::exists(m_file + kGivenUp);
}

bool OrderDraft::takeBack() {
    const QString file = m_file + kGivenUp;
    const QJsonObject draft = read(file, m_order);
    const bool found = !draft.isEmpty() && !IsFinished(draft[u"kennung"_s].toString());
    // The one on the screen takes its place in the file.
    const bool exchanged = found && isWorthKeeping();
    const QString aside = m_file + kTakenBack;
    if (found) {
        // Until it has a draft again: the other one takes its place.
        QFile::rename(file, aside);
        m_order.ClearBestellungMaske();
        show(draft, m_order);
        m_order.ShowComingTrxNr();
        write();
        if (!m_failing)
            decline(aside);
        else if (!exchanged)
            QFile::rename(aside, file);
    } else {
        decline(file);
    }
    Q_EMIT canTakeBackChanged(canTakeBack());
    return found;
}

void OrderDraft::forgetAll(const QString& file) {
    removeUnfinished(file);
    for (const QString& kept : {file, file + kGivenUp, file + kTakenBack, file + kAside})
        QFile::remove(kept);
}

OrderDraft::Found OrderDraft::look(const QString& file) {
    removeUnfinished(file);
    finishTakingBack(file);
    if (const QFileInfo old(file + kGivenUp);
        old.lastModified().secsTo(QDateTime::currentDateTime()) > kGivenUpSeconds)
        decline(old.filePath());
    WorkingOrder order;
    Found found;
    const QJsonObject draft = read(file, order, &found.putAside);
    found.order = !draft.isEmpty() && !IsFinished(draft[u"kennung"_s].toString());
    if (!draft.isEmpty() && !found.order)
        decline(file);
    return found;
}

bool OrderDraft::restore(const QString& file, WorkingOrder& order) {
    const QJsonObject draft = read(file, order);
    if (!draft.isEmpty())
        show(draft, order);
    return !draft.isEmpty();
}

void OrderDraft::decline(const QString& file) {
    if (!QFile::remove(file) && QFile::exists(file))
        qWarning("The draft of an order cannot be removed: %s", qPrintable(file));
}

} // namespace orders
