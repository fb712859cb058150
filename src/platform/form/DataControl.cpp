#include "platform/form/DataControl.h"

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

void DataControl::Refresh(const QString& filter) {
    Q_ASSERT(m_connection);
    const Change change(*this);
    m_count = 0;
    if (m_rows.IsOpen())
        m_rows.Close();
    m_rows.Open(m_source, *m_connection, store::adOpenStatic, store::adLockReadOnly);
    if (!filter.isEmpty())
        m_rows.Filter(filter);
    m_count = m_rows.RecordCount();
}

void DataControl::Rebind() {
    const Change change(*this);
    m_count = m_rows.IsOpen() ? m_rows.RecordCount() : 0;
}

void DataControl::Sort(const QString& order) {
    const Change change(*this);
    m_rows.Sort(order);
}

void DataControl::Filter(const QString& conditions) {
    const Change change(*this);
    m_rows.Filter(conditions);
    m_count = m_rows.RecordCount();
}

} // namespace platform
