#pragma once
#include "store/Connection.h"
#include "store/PlainQuery.h"
#include "store/Rows.h"
#include <QString>
#include <QStringView>
#include <memory>
#include <optional>
#include <vector>

namespace store {

enum CursorType : int {
    adOpenUnspecified = -1,
    adOpenForwardOnly = 0,
    adOpenKeyset = 1,
    adOpenDynamic = 2,
    adOpenStatic = 3
};

enum LockType : int {
    adLockUnspecified = -1,
    adLockReadOnly = 1,
    adLockPessimistic = 2,
    adLockOptimistic = 3
};

class FetchedRows;
class Recordset;
class RowSource;

/// A field of the current row, addressed by its name.
class Field {
  public:
    common::Value Value() const;
    /// Puts the value into the row being added or changed; it reaches the store with Update.
    Field& operator=(const common::Value& value);

    /// Copies the value, not which field this is.
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): a value put in its own place stays it
    Field& operator=(const Field& other) { return *this = other.Value(); }

    Field(const Field&) = default;

    QString text() const { return Value().toText(); }

    qint64 toLong() const { return Value().toLong(); }

    double toDouble() const { return Value().toDouble(); }

    bool isNull() const { return Value().isNull(); }

  private:
    friend class Recordset;

    Field(Recordset& rows, int column) : m_rows(&rows), m_column(column) {}

    Recordset* m_rows;
    int m_column;
};

/// A walk over the rows of a query or table, under the names of the interface that the firm's procedures were
/// written for (`Eof` stands for EOF, which is a macro of C).
///
/// How it is opened decides where the rows come from:
/// - forward-only and read-only: straight from the running query (StreamedRows); Eof, Fields, MoveNext and
///   Close are all there is;
/// - static and read-only, of a plain query (see PlainQuery) on one table with a counter, or with a key that
///   SetKey told: by the keys of the rows, the values as they are looked at (KeyedRows);
/// - else all rows are fetched (FetchedRows).
/// The last two run their query at the first look at a row, so that a recordset opened only to add rows costs
/// nothing on a large table.
///
/// Yes/No columns read as -1 or 0, date and time columns as Serial. The work recordsets are shared by the
/// whole program, so opening one that is open throws kObjectOpen: open them through OpenRecordset (below),
/// which closes on every way out of the procedure.
class Recordset {
  public:
    Recordset();
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    /// `source` is SQL text or a bare table name. Rows of a plain query can be added and changed with lock
    /// type adLockOptimistic, or with cursor and lock left at -1.
    void Open(const QString& source, Connection& connection, int cursorType = adOpenUnspecified,
              int lockType = adLockUnspecified, int options = -1);
    /// Opens on the connection set by SetActiveConnection.
    void Open(const QString& source, int cursorType = adOpenUnspecified, int lockType = adLockUnspecified,
              int options = -1);

    /// Rows that are there already, as of no query; read only. They go with the connection.
    void Open(Rows rows, Connection& connection);

    void SetActiveConnection(Connection& connection) { m_active = &connection; }

    /// A column of whole numbers from 0 on that no two rows share, for what is opened from now on: a view, or
    /// a table without a counter.
    void SetKey(const QString& column) { m_key = column; }

    /// Runs the query now. See Connection::Read for `waiting`.
    void Fetch(const Waiting& waiting = {});

    /// Closing a closed recordset throws kObjectClosed. What was put without Update is dropped.
    void Close();

    bool IsOpen() const { return m_connection != nullptr; }

    bool Eof();
    /// Rows after the filter; -1 of streamed ones.
    int RecordCount();
    /// 1 for the first row; -1 behind the last one.
    int AbsolutePosition();

    /// What was put without Update is dropped by a move.
    void MoveFirst();
    void MoveNext();
    void MovePrevious();

    Field Fields(QStringView name);
    const std::vector<Column>& Columns();

    /// Cell of any row without moving; `row` counted from 0 in the present order. Outside the rows it throws
    /// kNoCurrentRow.
    common::Value valueAt(int row, int column);
    /// The cell's value where it is in memory; null else, and outside the rows and columns.
    const common::Value* held(int row, int column);
    /// Brings these rows, the last one included, into memory.
    void prefetch(int first, int last);

    void AddNew();
    void Update();

    /// "column ASC" or "column DESC"; "" gives the query's own order back. Texts without regard to case.
    /// Goes to the first row.
    void Sort(const QString& order);
    /// Sort in two steps: what takes long, and putting the rows in order, which the result does; it does
    /// nothing where there are other rows by then.
    std::function<void()> Sorted(const QString& order, const Waiting& waiting);
    /// Shows those rows of a plain query that meet a condition of the store's dialect, in the query's order;
    /// "" shows all again. The store chooses them, as they are then. Of any other query it throws
    /// kSqlFailure.
    void Filter(const QString& condition);

  private:
    friend class Field;
    friend class Connection;
    friend class OpenRecordset;
    /// Values of a row that is added or changed, and which of them were put.
    struct Edit;

    [[noreturn]] void fail(int number, const QString& sentence) const;
    [[noreturn]] void failWithoutRow() const;
    void requireOpen() const;
    /// Runs the query where that has not happened yet.
    RowSource& rows();
    std::shared_ptr<RowSource> openRows(const Waiting& waiting);
    /// Throws where there is no current row.
    RowSource& currentRow();
    void moveTo(int position);
    int columnIndex(QStringView name);
    /// The columns of a row being added or changed.
    const std::vector<Column>& editable();
    common::Value fieldValue(int column);
    void putField(int column, const common::Value& value);
    void insertEdited(const std::vector<Column>& columns, const std::vector<common::Value>& values);
    void updateEdited(const std::vector<Column>& columns, const std::vector<common::Value>& values);
    void abandon();

    Connection* m_active = nullptr;
    Connection* m_connection = nullptr;
    QString m_source;
    std::optional<PlainQuery> m_plan;
    QString m_filter;
    bool m_updatable = false;
    QString m_key;
    /// Whether rows may be read by their keys.
    bool m_byKeys = false;
    std::shared_ptr<RowSource> m_rows;
    /// m_rows, where they can be changed.
    FetchedRows* m_fetched = nullptr;
    /// Counted from 0.
    int m_position = 0;
    std::unique_ptr<Edit> m_edit;
    std::vector<Column> m_editable;
};

/// Opens `rows` and closes it when the scope is left, also by an exception. Closing earlier by hand is fine.
/// No event loop runs in the scope: other work would find the recordset open.
class OpenRecordset {
  public:
    OpenRecordset(Recordset& rows, const QString& source, Connection& connection,
                  int cursorType = adOpenForwardOnly, int lockType = adLockReadOnly);
    ~OpenRecordset();
    OpenRecordset(const OpenRecordset&) = delete;
    OpenRecordset& operator=(const OpenRecordset&) = delete;

    Recordset* operator->() const { return &m_rows; }

    Recordset& operator*() const { return m_rows; }

  private:
    const common::NoEventLoop m_alone;
    Recordset& m_rows;
};

/// Opens `rows` for adding and changing rows: OpenRecordset with a dynamic cursor and an optimistic lock.
class WriteRecordset : public OpenRecordset {
  public:
    WriteRecordset(Recordset& rows, const QString& source, Connection& connection) :
        OpenRecordset(rows, source, connection, adOpenDynamic, adLockOptimistic) {}
};

} // namespace store
