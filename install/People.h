#pragma once
#include "install/Bulk.h"
#include <QStringList>
#include <QVector>

namespace install {

struct Place {
    QString postcode;
    QString town;
    bool delivered = false;
};

struct Person {
    QString name;
    QString firstName;
    QString street;
    Place place;
    /// Either may be empty, not both.
    QString telephone;
    QString mobile;
};

/// Invents people of the region, the same for the same seed and position. Their numbers begin with 040 and
/// 073, which are given to nobody; `series` parts the numbers of one circle of people from another's, and
/// within a circle of up to a million each has his own.
class People {
  public:
    People(quint64 seed, char16_t series);
    Person person(int position) const;

  private:
    QString number(const QString& prefix, int position, qint64 shift) const;

    const quint64 m_seed;
    const char16_t m_series;
    const QVector<QStringList> m_names, m_firstNames, m_streets;
    QVector<Place> m_delivered, m_others;
};

/// The circles of the customers and of those who only stand in the phone book.
People customers();
People strangers();

/// Customers with keys from 1 on, captured before the day serial `today`.
void writeCustomers(sqlite3* handle, int count, int today);
/// The first `known` entries are customers, the others strangers.
void writePhoneBook(sqlite3* handle, int count, int known);

} // namespace install
