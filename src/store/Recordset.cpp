#include "store/Recordset.h"
#include "common/RunTimeError.h"
#include "store/RecordsetRow.h"
#include <QRegularExpression>

namespace store {

using namespace Qt::StringLiterals;
using common::RunTimeError;
using common::Value;

namespace {

bool isQuery(const QString& source) {
    return source.trimmed().startsWith(u"SELECT"_s, Qt::CaseInsensitive);
}

/// The one table of a query, or "" when the source is no plain query on one table.
QString tableOf(const QString& source) {
    static const QRegularExpression bare(u"^\\s*\\[?([\\w ]+?)\\]?\\s*;?\\s*$"_s,
                                         QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression query(u"\\bFROM\\s+\\[?(\\w+)\\]?\\s*(;|WHERE\\b|ORDER\\b|$)"_s,
                                          QRegularExpression::CaseInsensitiveOption |
                                              QRegularExpression::UseUnicodePropertiesOption);
    return (isQuery(source) ? query : bare).match(source).captured(1);
}

} // namespace

Value Field::Value() const {
    if (m_rows->m_streaming) {
        if (m_rows->m_atEnd)
            m_rows->currentRow();
        return m_rows->m_cursor->value(m_column);
    }
    const Recordset::Row& row = m_rows->currentRow();
    // The counter of a row being added is known before the row is written.
    if (m_rows->m_newRow && m_rows->m_columns[size_t(m_column)].counter && !row.changed[size_t(m_column)])
        *const_cast<Field*>(this) = common::Value(m_rows->m_connection->engine().newKey(m_rows->m_table));
    return row.values[size_t(m_column)];
}

Field& Field::operator=(const common::Value& value) {
    if (!m_rows->m_updatable)
        throw RunTimeError(common::kStoreFailure, u"Die Zeile kann nicht geändert werden."_s,
                           m_rows->m_source);
    Recordset::Row& row = m_rows->currentRow();
    row.values[size_t(m_column)] = value;
    row.changed[size_t(m_column)] = true;
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
    m_cursor.reset();
    m_columns.clear();
    m_rows.clear();
    m_order.clear();
    m_newRow.reset();
    m_position = 0;
    m_atEnd = m_fetched = m_streaming = m_updatable = false;
    m_source.clear();
    m_table.clear();
    for (QString* part : {&m_from, &m_narrowed, &m_keyName})
        part->clear();
    m_total = 0;
}

void Recordset::Open(const QString& source, Connection& connection, int cursorType, int lockType, int) {
    if (IsOpen())
        throw RunTimeError(common::kObjectOpen, u"Die Datensatzgruppe ist bereits geöffnet."_s, m_source);
    Engine& engine = connection.engine();
    m_connection = &connection;
    connection.m_recordsets.insert(this);
    m_source = isQuery(source) ? source : u"SELECT * FROM ["_s + tableOf(source) + u']';
    try {
        m_streaming = cursorType == adOpenForwardOnly && lockType == adLockReadOnly;
        if (m_streaming) {
            m_cursor = engine.query(m_source, false);
            m_atEnd = !m_cursor->next();
        } else if (lockType == adLockOptimistic || lockType == adLockUnspecified) {
            m_table = tableOf(m_source);
            m_updatable = !m_table.isEmpty();
        } else if (cursorType == adOpenStatic) {
            planSingleRows();
        }
    } catch (...) {
        abandon();
        throw;
    }
}

void Recordset::Open(const QString& source, int cursorType, int lockType, int options) {
    if (!m_active)
        throw RunTimeError(common::kObjectClosed, u"Die Datenbankverbindung fehlt."_s, source);
    Open(source, *m_active, cursorType, lockType, options);
}

void Recordset::Close() {
    requireOpen();
    abandon();
}

void Recordset::requireOpen() const {
    if (!IsOpen())
        throw RunTimeError(common::kObjectClosed, u"Die Datensatzgruppe ist geschlossen."_s);
}

void Recordset::fetch() {
    requireOpen();
    if (m_fetched || m_streaming)
        return;
    m_fetched = true;
    if (m_keyName.isEmpty())
        fetchAll();
    else
        fetchKeys();
}

void Recordset::fetchAll() {
    const std::unique_ptr<Cursor> cursor =
        m_connection->engine().query(m_narrowed.isEmpty() ? m_source : m_narrowed, m_updatable);
    m_columns = cursor->columns();
    const int keyColumn = int(m_columns.size()) - 1;
    if (m_updatable) {
        m_columns.pop_back();
        markCounter();
    }
    const size_t count = m_columns.size();
    while (cursor->next()) {
        Row row{std::vector<Value>(count), m_updatable ? cursor->value(keyColumn).toLong() : 0, {}};
        for (size_t i = 0; i < count; ++i)
            row.values[i] = cursor->value(int(i));
        m_order.push_back(int(m_rows.size()));
        m_rows.push_back(std::move(row));
    }
}

/// The engine tells of a query's columns their types only.
void Recordset::markCounter() {
    for (const Column& ofTable : m_connection->engine().columnsOf(m_table))
        for (Column& column : m_columns)
            if (ofTable.counter && column.name.compare(ofTable.name, Qt::CaseInsensitive) == 0)
                column.counter = true;
}

Recordset::Row& Recordset::currentRow() {
    requireOpen();
    if (m_newRow)
        return *m_newRow;
    fetch();
    if (m_streaming || m_position < 0 || m_position >= count())
        throw RunTimeError(common::kNoCurrentRow, u"Es ist kein aktueller Datensatz vorhanden."_s, m_source);
    Row& row = rowAt(m_position);
    if (row.changed.empty())
        row.changed.resize(row.values.size());
    return row;
}

bool Recordset::Eof() {
    requireOpen();
    if (m_streaming)
        return m_atEnd;
    fetch();
    return m_position >= count();
}

bool Recordset::Bof() {
    fetch();
    return count() == 0 || m_position < 0;
}

int Recordset::RecordCount() {
    fetch();
    return m_streaming ? -1 : count();
}

int Recordset::AbsolutePosition() {
    fetch();
    return m_position < 0 || m_position >= count() ? -1 : m_position + 1;
}

void Recordset::SetAbsolutePosition(int position) {
    fetch();
    m_position = position - 1;
}

void Recordset::MoveFirst() {
    SetAbsolutePosition(1);
}

void Recordset::MoveLast() {
    SetAbsolutePosition(RecordCount());
}

void Recordset::MoveNext() {
    if (Eof())
        throw RunTimeError(common::kNoCurrentRow, u"Es ist kein aktueller Datensatz vorhanden."_s, m_source);
    if (m_streaming)
        m_atEnd = !m_cursor->next();
    else
        ++m_position;
}

void Recordset::MovePrevious() {
    if (Bof())
        throw RunTimeError(common::kNoCurrentRow, u"Es ist kein aktueller Datensatz vorhanden."_s, m_source);
    --m_position;
}

const std::vector<Column>& Recordset::Columns() {
    fetch();
    return columnsNow();
}

int Recordset::columnIndex(QStringView name) {
    if (!m_newRow)
        fetch();
    const std::vector<Column>& columns = columnsNow();
    // Nearly always the name is written as in the schema, and comparing that is cheap.
    for (size_t i = 0; i < columns.size(); ++i)
        if (name == columns[i].name)
            return int(i);
    for (size_t i = 0; i < columns.size(); ++i)
        if (name.compare(columns[i].name, Qt::CaseInsensitive) == 0)
            return int(i);
    throw RunTimeError(common::kFieldNotFound, u"Das Feld \"%1\" wurde nicht gefunden."_s.arg(name),
                       m_source);
}

Field Recordset::Fields(QStringView name) {
    requireOpen();
    return Field(*this, columnIndex(name));
}

Value Recordset::valueAt(int row, int column) {
    fetch();
    return rowAt(row).values[size_t(column)];
}

void Recordset::AddNew() {
    requireOpen();
    if (!m_updatable)
        throw RunTimeError(common::kStoreFailure, u"Es kann keine Zeile angefügt werden."_s, m_source);
    if (m_columns.empty())
        m_columns = m_connection->engine().columnsOf(m_table);
    m_newRow = std::make_unique<Row>();
    m_newRow->values.resize(m_columns.size());
    m_newRow->changed.resize(m_columns.size());
}

void Recordset::Update() {
    Row& row = currentRow();
    std::vector<Column> columns;
    std::vector<Value> values;
    for (size_t i = 0; i < row.changed.size(); ++i) {
        if (!row.changed[i])
            continue;
        columns.push_back(m_columns[i]);
        values.push_back(row.values[i]);
    }
    if (!m_newRow) {
        m_connection->engine().update(m_table, row.key, columns, values);
        row.changed.clear();
        return;
    }
    m_newRow->key = m_connection->engine().insert(m_table, columns, values);
    if (m_fetched) {
        m_newRow->changed.clear();
        m_position = int(m_order.size());
        m_order.push_back(int(m_rows.size()));
        m_rows.push_back(std::move(*m_newRow));
    }
    m_newRow.reset();
}

OpenRecordset::OpenRecordset(Recordset& rows, const QString& source, Connection& connection, int cursorType,
                             int lockType) :
    m_rows(rows) {
    rows.Open(source, connection, cursorType, lockType);
}

OpenRecordset::~OpenRecordset() {
    if (m_rows.IsOpen())
        m_rows.Close();
}

} // namespace store
