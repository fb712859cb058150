#include "platform/form/DataControl.h"
#include "platform/WatchedQuery.h"

namespace platform {
namespace {

/// Pairs the two signals on every way out, since a model must not stay between them.
class Change {
  public:
    explicit Change(DataControl& control) : m_control(control) { Q_EMIT m_control.aboutToChange(); }

    ~Change() { Q_EMIT m_control.changed(); }

    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;

  private:
    DataControl& m_control;
};

} // namespace

DataControl::DataControl(QObject* parent) : QObject(parent) {
}

void DataControl::show(const QString& sql, const Progress& progress) {
    Q_ASSERT(m_connection);
    auto rows = std::make_unique<store::Recordset>();
    rows->SetKey(m_key);
    rows->Open(sql, *m_connection, store::adOpenStatic, store::adLockReadOnly);
    rows->Fetch(waitingWith(progress));
    rows->prefetch(m_firstShown, m_lastShown);
    take(std::move(rows), sql);
}

void DataControl::show(store::Rows rows) {
    Q_ASSERT(m_connection);
    auto recordset = std::make_unique<store::Recordset>();
    recordset->Open(std::move(rows), *m_connection);
    take(std::move(recordset), {});
}

void DataControl::take(std::unique_ptr<store::Recordset> rows, const QString& source) {
    const Change change(*this);
    m_source = source;
    m_rows = std::move(rows);
    m_count = m_rows->RecordCount();
}

void DataControl::Refresh(const QString& filter) {
    Q_ASSERT(m_connection);
    const Change change(*this);
    m_count = 0;
    if (m_rows->IsOpen())
        m_rows->Close();
    m_rows->SetKey(m_key);
    m_rows->Open(m_source, *m_connection, store::adOpenStatic, store::adLockReadOnly);
    if (!filter.isEmpty())
        m_rows->Filter(filter);
    m_count = m_rows->RecordCount();
    m_rows->prefetch(m_firstShown, m_lastShown);
}

void DataControl::Sort(const QString& order, const Progress& progress) {
    const store::Recordset* const rows = m_rows.get();
    const auto arrange = m_rows->Sorted(order, waitingWith(progress));
    // Other rows are on show since.
    if (m_rows.get() != rows)
        return;
    const Change change(*this);
    arrange();
    m_rows->prefetch(m_firstShown, m_lastShown);
}

void DataControl::showRows(int first, int last) {
    m_firstShown = first;
    m_lastShown = last;
    if (isOpen())
        m_rows->prefetch(first, last);
}

} // namespace platform
