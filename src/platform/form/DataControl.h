#pragma once
#include "store/Recordset.h"
#include <QObject>
#include <QString>

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

    /// Runs the query afresh, narrowed by a filter (see store::Recordset::Filter). Throws what
    /// Recordset::Open throws; the list is empty then.
    void Refresh(const QString& filter = {});

    /// The rows of the last Refresh.
    store::Recordset& Recordset() { return m_rows; }

    void Sort(const QString& order);

    /// Which rows a view shows: they are in memory from now on, after each Refresh and Sort as well, so that
    /// painting asks the store nothing.
    void showRows(int first, int last);

    /// Also after the connection was closed, which closes the recordset.
    bool isOpen() const { return m_rows.IsOpen(); }

    /// As of the last Refresh; 0 when closed.
    int rowCount() const { return isOpen() ? m_count : 0; }

  Q_SIGNALS:
    void aboutToChange();
    void changed();

  private:
    store::Connection* m_connection = nullptr;
    store::Recordset m_rows;
    QString m_source;
    int m_count = 0;
    /// The first page, until a view tells.
    int m_firstShown = 0, m_lastShown = 31;
};

} // namespace platform
