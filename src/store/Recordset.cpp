#include "store/Recordset.h"
#include "common/RunTimeError.h"
#include "store/FetchedRows.h"
#include "store/KeyedRows.h"
#include "store/StreamedRows.h"
#include "store/Tokens.h"
#include <algorithm>

namespace store {

using namespace Qt::StringLiterals;
using common::RunTimeError;
using common::Value;

namespace {

bool isQuery(const QString& source) {
    return QStringView(source).trimmed().startsWith(u"SELECT", Qt::CaseInsensitive);
}

/// The key that was told, else the counter; "" where the table or view has no such column.
QString keyOf(Engine& engine, const QString& table, const QString& told) {
    for (const Column& column : engine.columnsOf(table))
        if (told.isEmpty() ? column.counter : column.name.compare(told, Qt::CaseInsensitive) == 0)
            return column.name;
    return {};
}

} // namespace

struct Recordset::Edit {
    bool adding;
    std::vector<Value> values;
    std::vector<bool> put;

    Edit(bool isNew, size_t columns) : adding(isNew), values(columns), put(columns) {}
};

Value Field::Value() const {
    return m_rows->fieldValue(m_column);
}

Field& Field::operator=(const common::Value& value) {
    m_rows->putField(m_column, value);
    return *this;
}

Recordset::Recordset() = default;

Recordset::~Recordset() {
    abandon();
}

void Recordset::abandon() {
    if (m_connection)
        m_connection->m_recordsets.remove(this);
    m_connection = nullptr;
    m_edit.reset();
    m_rows.reset();
    m_fetched = nullptr;
    m_editable.clear();
    m_filter.clear();
    m_position = 0;
}

void Recordset::Open(const QString& source, Connection& connection, int cursorType, int lockType, int) {
    if (IsOpen())
        fail(common::kObjectOpen, u"Die Datensatzgruppe ist bereits geöffnet."_s);
    Engine& engine = connection.engine();
    const bool streamed = cursorType == adOpenForwardOnly && lockType == adLockReadOnly;
    const bool query = isQuery(source);
    m_plan = streamed && query ? std::nullopt : plainQuery(source);
    m_source = m_plan && !query ? m_plan->sql() : source;
    m_updatable = m_plan && (lockType == adLockOptimistic || lockType == adLockUnspecified);
    m_byKeys = m_plan && cursorType == adOpenStatic && lockType == adLockReadOnly;
    if (streamed)
        m_rows = std::make_unique<StreamedRows>(engine.query(m_source, false));
    m_connection = &connection;
    connection.m_recordsets.insert(this);
}

void Recordset::Open(const QString& source, int cursorType, int lockType, int options) {
    if (!m_active)
        throw RunTimeError(common::kObjectClosed, u"Die Datenbankverbindung fehlt."_s);
    Open(source, *m_active, cursorType, lockType, options);
}

void Recordset::Open(Rows rows, Connection& connection) {
    if (IsOpen())
        fail(common::kObjectOpen, u"Die Datensatzgruppe ist bereits geöffnet."_s);
    m_source.clear();
    m_plan.reset();
    m_updatable = m_byKeys = false;
    m_rows = std::make_shared<FetchedRows>(std::move(rows));
    m_connection = &connection;
    connection.m_recordsets.insert(this);
}

void Recordset::Close() {
    requireOpen();
    abandon();
}

void Recordset::fail(int number, const QString& sentence) const {
    throw RunTimeError(number, sentence, withoutValues(m_source));
}

void Recordset::failWithoutRow() const {
    fail(common::kNoCurrentRow, u"Es ist kein aktueller Datensatz vorhanden."_s);
}

void Recordset::requireOpen() const {
    if (!IsOpen())
        throw RunTimeError(common::kObjectClosed, u"Die Datensatzgruppe ist geschlossen."_s);
}

RowSource& Recordset::rows() {
    requireOpen();
    if (!m_rows)
        m_rows = openRows({});
    return *m_rows;
}

void Recordset::Fetch(const Waiting& waiting) {
    requireOpen();
    if (!m_rows)
        m_rows = openRows(waiting);
}

std::shared_ptr<RowSource> Recordset::openRows(const Waiting& waiting) {
    const PlainQuery query = m_plan ? m_plan->narrowed(m_filter) : PlainQuery();
    const QString sql = m_filter.isEmpty() ? m_source : query.sql();
    std::shared_ptr<KeyedRows> keyed;
    std::shared_ptr<FetchedRows> fetched;
    m_connection->Read(
        [&, byKeys = m_byKeys, told = m_key, updatable = m_updatable](Engine& engine) {
            const QString key = byKeys ? keyOf(engine, query.table, told) : QString();
            if (key.isEmpty())
                fetched = std::make_shared<FetchedRows>(engine, sql, updatable);
            else
                keyed = std::make_shared<KeyedRows>(engine, query, key);
        },
        waiting);
    m_editable.clear();
    m_fetched = m_updatable ? fetched.get() : nullptr;
    if (!keyed)
        return fetched;
    keyed->useEngine(m_connection->engine());
    return keyed;
}

RowSource& Recordset::currentRow() {
    RowSource& source = rows();
    if (!source.hasRow(m_position))
        failWithoutRow();
    return source;
}

bool Recordset::Eof() {
    return !rows().hasRow(m_position);
}

int Recordset::RecordCount() {
    return rows().count();
}

int Recordset::AbsolutePosition() {
    return rows().hasRow(m_position) ? m_position + 1 : -1;
}

void Recordset::moveTo(int position) {
    m_edit.reset();
    m_position = position;
}

void Recordset::MoveFirst() {
    requireOpen();
    moveTo(0);
}

void Recordset::MoveNext() {
    currentRow();
    moveTo(m_position + 1);
}

void Recordset::MovePrevious() {
    requireOpen();
    if (m_position == 0)
        failWithoutRow();
    moveTo(m_position - 1);
}

const std::vector<Column>& Recordset::Columns() {
    requireOpen();
    return m_edit ? editable() : rows().columns();
}

/// A query's own columns do not tell which is the counter.
const std::vector<Column>& Recordset::editable() {
    if (!m_editable.empty())
        return m_editable;
    const std::vector<Column>& ofTable = m_connection->engine().columnsOf(m_plan->table);
    m_editable = m_fetched ? m_fetched->columns() : ofTable;
    for (Column& column : m_editable)
        for (const Column& other : ofTable)
            if (other.counter && column.name.compare(other.name, Qt::CaseInsensitive) == 0)
                column.counter = true;
    return m_editable;
}

int Recordset::columnIndex(QStringView name) {
    const std::vector<Column>& columns = Columns();
    // Nearly always the name is written as in the schema, and comparing that is cheap.
    for (size_t i = 0; i < columns.size(); ++i)
        if (name == columns[i].name)
            return int(i);
    for (size_t i = 0; i < columns.size(); ++i)
        if (name.compare(columns[i].name, Qt::CaseInsensitive) == 0)
            return int(i);
    fail(common::kFieldNotFound, u"Das Feld \"%1\" wurde nicht gefunden."_s.arg(name));
}

Field Recordset::Fields(QStringView name) {
    return Field(*this, columnIndex(name));
}

Value Recordset::fieldValue(int column) {
    const size_t index = size_t(column);
    if (!m_edit || !(m_edit->adding || m_edit->put[index]))
        return currentRow().value(m_position, column);
    // The counter of a row being added is known before the row is written.
    if (!m_edit->put[index] && editable()[index].counter)
        putField(column, m_connection->engine().newKey(m_plan->table));
    return m_edit->values[index];
}

void Recordset::putField(int column, const Value& value) {
    if (!m_updatable)
        fail(common::kStoreFailure, u"Die Zeile kann nicht geändert werden."_s);
    if (!m_edit)
        m_edit = std::make_unique<Edit>(false, currentRow().columns().size());
    m_edit->values[size_t(column)] = value;
    m_edit->put[size_t(column)] = true;
}

Value Recordset::valueAt(int row, int column) {
    RowSource& source = rows();
    if (!source.hasRow(row))
        failWithoutRow();
    return source.value(row, column);
}

const Value* Recordset::held(int row, int column) {
    return rows().held(row, column);
}

void Recordset::prefetch(int first, int last) {
    rows().prefetch(first, last);
}

void Recordset::AddNew() {
    requireOpen();
    if (!m_updatable)
        fail(common::kStoreFailure, u"Es kann keine Zeile angefügt werden."_s);
    m_edit = std::make_unique<Edit>(true, editable().size());
}

void Recordset::Update() {
    if (!m_edit)
        return void(currentRow());
    std::vector<Column> columns;
    std::vector<Value> values;
    for (size_t i = 0; i < m_edit->put.size(); ++i) {
        if (!m_edit->put[i])
            continue;
        columns.push_back(editable()[i]);
        values.push_back(m_edit->values[i]);
    }
    m_edit->adding ? insertEdited(columns, values) : updateEdited(columns, values);
    m_edit.reset();
}

/// The new row is the current one then, if others were looked at.
void Recordset::insertEdited(const std::vector<Column>& columns, const std::vector<Value>& values) {
    const qint64 key = m_connection->engine().insert(m_plan->table, columns, values);
    if (!m_fetched)
        return;
    m_position = m_fetched->count();
    m_fetched->append(key, std::move(m_edit->values));
}

void Recordset::updateEdited(const std::vector<Column>& columns, const std::vector<Value>& values) {
    m_connection->engine().update(m_plan->table, m_fetched->key(m_position), columns, values);
    for (size_t i = 0; i < m_edit->put.size(); ++i)
        if (m_edit->put[i])
            m_fetched->put(m_position, int(i), m_edit->values[i]);
}

void Recordset::Sort(const QString& order) {
    Sorted(order, {})();
}

std::function<void()> Recordset::Sorted(const QString& order, const Waiting& waiting) {
    const QStringList words = order.split(u' ', Qt::SkipEmptyParts);
    const bool down = words.size() > 1 && words[1].compare(u"DESC"_s, Qt::CaseInsensitive) == 0;
    const QString column = words.isEmpty() ? QString() : rows().columns()[size_t(columnIndex(words[0]))].name;
    rows();
    const std::shared_ptr<RowSource> source = m_rows;
    const auto keyed = std::dynamic_pointer_cast<KeyedRows>(source);
    if (!keyed)
        return [this, source, column, down] {
            moveTo(0);
            if (m_rows == source)
                source->sort(column, down);
        };
    const QString by = keyed->orderBy(column, down);
    std::vector<qint64> keys;
    m_connection->Read([&](Engine& engine) { keys = keyed->keysInOrder(engine, by); }, waiting);
    return [this, keyed, by, keys = std::move(keys)] {
        moveTo(0);
        if (m_rows == keyed)
            keyed->arrange(by, keys);
    };
}

void Recordset::Filter(const QString& condition) {
    requireOpen();
    if (!m_plan)
        fail(common::kSqlFailure, u"Diese Zeilen können nicht gefiltert werden."_s);
    m_filter = condition;
    m_rows.reset();
    m_fetched = nullptr;
    moveTo(0);
}

OpenRecordset::OpenRecordset(Recordset& rows, const QString& source, Connection& connection, int cursorType,
                             int lockType) :
    m_rows(rows) {
    rows.Open(source, connection, cursorType, lockType);
}

OpenRecordset::~OpenRecordset() {
    m_rows.abandon();
}

} // namespace store
