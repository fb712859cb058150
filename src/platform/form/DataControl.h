#pragma once
#include "platform/Progress.h"
#include "store/Recordset.h"
#include <QObject>
#include <QString>
#include <memory>

namespace platform {

/// The source of a list: a query on one of the lasting connections, and the recordset that it delivered.
class DataControl : public QObject {
    Q_OBJECT
  public:
    explicit DataControl(QObject* parent = nullptr);

    /// The connection must outlive the control.
    void setConnection(store::Connection& connection) { m_connection = &connection; }

    void setRecordSource(const QString& sql) { m_source = sql; }

    const QString& RecordSource() const { return m_source; }

    /// See store::Recordset::SetKey.
    void setKey(const QString& column) { m_key = column; }

    /// Shows the rows of another query. Thrown out of by `progress`, or by an error, all is as before.
    void show(const QString& sql, const Progress& progress = unwatched);
    /// Shows rows that were reckoned or read elsewhere.
    void show(store::Rows rows);

    /// Runs the query afresh, narrowed by a filter (see store::Recordset::Filter). Throws what
    /// Recordset::Open throws; the list is empty then.
    void Refresh(const QString& filter = {});

    /// The rows of the last Refresh or show.
    store::Recordset& Recordset() { return *m_rows; }

    /// Thrown out of by `progress`, the rows stand as before.
    void Sort(const QString& order, const Progress& progress = unwatched);

    /// Which rows a view shows: they are in memory from now on, after each Refresh and Sort as well, so that
    /// painting asks the store nothing.
    void showRows(int first, int last);

    /// Also after the connection was closed, which closes the recordset.
    bool isOpen() const { return m_rows->IsOpen(); }

    /// As of the last Refresh or show; 0 when closed.
    int rowCount() const { return isOpen() ? m_count : 0; }

  Q_SIGNALS:
    void aboutToChange();
    void changed();

  private:
    void take(std::unique_ptr<store::Recordset> rows, const QString& source);

    store::Connection* m_connection = nullptr;
    std::unique_ptr<store::Recordset> m_rows = std::make_unique<store::Recordset>();
    QString m_source;
    QString m_key;
    int m_count = 0;
    /// The first page, until a view tells.
    int m_firstShown = 0, m_lastShown = 31;
};

} // namespace platform
