#pragma once
#include "store/Connection.h"
#include <QString>
#include <QStringView>
#include <memory>
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

class Recordset;
struct Condition;

/// A field of the current row, addressed by its name.
class Field {
  public:
    common::Value Value() const;
    /// Puts the value into the row being added or changed; it reaches the store with Update.
    Field& operator=(const common::Value& value);

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
/// Forward-only read-only recordsets stream from the store: Eof, Fields, MoveNext and Close. All others fetch
/// their rows at the first look at one, so that a recordset opened only to add rows costs nothing on a large
/// table.
///
/// A static read-only recordset of a plain query on one table with a counter ("SELECT columns FROM table",
/// with or without WHERE and ORDER BY) fetches only the counters then, in the query's order, and each row
/// when it is looked at. Of a whole table it fetches the first counters and the number of rows, and the other
/// counters when one of them is looked at. Which rows it holds is settled by that, their values are those of
/// the first look; a row that is gone by then has its counter only, or nothing where that was not fetched
/// yet. Sort asks the store for the order of these rows; Filter fetches them all.
///
/// Filter before the first look has the store choose the rows of a plain query, so that the others are not
/// fetched.
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

    /// `source` is SQL text or a bare table name. Rows can be added and changed with lock type
    /// adLockOptimistic, or with cursor and lock left at -1.
    void Open(const QString& source, Connection& connection, int cursorType = adOpenUnspecified,
              int lockType = adLockUnspecified, int options = -1);
    /// Opens on the connection set by SetActiveConnection.
    void Open(const QString& source, int cursorType = adOpenUnspecified, int lockType = adLockUnspecified,
              int options = -1);

    void SetActiveConnection(Connection& connection) { m_active = &connection; }

    /// Closing a closed recordset throws kObjectClosed. An added row without Update is dropped.
    void Close();

    bool IsOpen() const { return m_connection != nullptr; }

    bool Eof();
    bool Bof();
    /// Rows after the filter.
    int RecordCount();
    /// 1 for the first row; -1 before it, behind the last one, or in an empty recordset.
    int AbsolutePosition();
    /// Position counted from 1.
    void SetAbsolutePosition(int position);

    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();

    Field Fields(QStringView name);
    const std::vector<Column>& Columns();
    /// Cell of any row without moving; `row` counted from 0 in the present order.
    common::Value valueAt(int row, int column);

    void AddNew();
    void Update();

    /// "column ASC" or "column DESC"; "" gives the store's order back. Sorts the fetched rows, texts without
    /// regard to case. Stays on the first row.
    void Sort(const QString& order);
    /// Conditions "column op literal" joined by AND, op one of = <> < > <= >=; "" shows all rows again.
    void Filter(const QString& conditions);
    /// From the current row on, the first that meets "column op literal"; behind the last row when none does.
    void Find(const QString& criteria);

  private:
    friend class Field;
    friend class Connection;
    struct Row;
    void requireOpen() const;
    void fetch();
    /// Recognises a plain query, and whether its rows are fetched singly (see above).
    void planSingleRows();
    void fetchKeys();
    void readKeys(int most);
    void fetchOtherKeys();
    QString keyQuery(const QString& orderBy) const;
    QString rowQuery(qint64 key) const;
    qint64 ofTable(const QString& aggregate) const;
    void fetchAll();
    void fetchAllAgain();
    /// The row at a position of the present order, with its values.
    Row& rowAt(int position);
    void sortByStore(const QString& orderBy);
    void markCounter();
    Row& currentRow();
    int columnIndex(QStringView name);

    /// Columns of the running query, or of the fetched rows.
    const std::vector<Column>& columnsNow() const { return m_streaming ? m_cursor->columns() : m_columns; }

    int count() const { return qMax(int(m_order.size()), m_total); }

    std::vector<Condition> parseConditions(const QString& text);
    void abandon();

    Connection* m_active = nullptr;
    Connection* m_connection = nullptr;
    QString m_source;
    QString m_table;
    /// The parts of a plain query, and what narrows it.
    QString m_list, m_from, m_where, m_orderBy, m_narrowed;
    /// The counter's name, empty when all rows are fetched at once; the order that m_rows stand in.
    QString m_keyName, m_keyOrder;
    /// What was there when the first counters were fetched: that many rows, none with a higher counter.
    int m_total = 0;
    qint64 m_highest = 0;
    bool m_updatable = false;
    bool m_streaming = false;
    bool m_fetched = false;
    std::unique_ptr<Cursor> m_cursor;
    std::vector<Column> m_columns;
    std::vector<Row> m_rows;
    std::vector<int> m_order;
    int m_position = 0;
    bool m_atEnd = false;
    std::unique_ptr<Row> m_newRow;
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
