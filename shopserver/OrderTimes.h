#pragma once
#include <QDateTime>
#include <QString>
#include <array>

namespace shop {

/// When orders are taken: two periods a weekday. One that ends before it begins lasts into the next day.
class OrderTimes {
  public:
    /// In minutes of the day.
    struct Period {
        bool closed = true;
        int from = 0;
        int to = 0;
    };

    enum Part { Midday, Evening };

    /// `weekday`: 1 is Monday.
    void set(int weekday, Part part, Period period);

    /// So long before the end of a period the last order is taken.
    void setLastOrderMinutes(int minutes) { m_lastOrder = minutes; }

    bool accepts(const QDateTime& moment) const;
    /// "11:00 bis 14:00, 17:00 bis 22:00" or "geschlossen".
    QString text(int weekday) const;

  private:
    std::array<std::array<Period, 2>, 8> m_days{};
    int m_lastOrder = 0;
};

} // namespace shop
