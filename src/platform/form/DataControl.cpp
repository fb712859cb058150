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
    m_rows.prefetch(m_firstShown, m_lastShown);
}

void DataControl::Sort(const QString& order) {
    const Change change(*this);
    m_rows.Sort(order);
    m_rows.prefetch(m_firstShown, m_lastShown);
}

void DataControl::showRows(int first, int last) {
    m_firstShown = first;
    m_lastShown = last;
    if (isOpen())
        m_rows.prefetch(first, last);
}

} // namespace platform
