#include "shopserver/OrderTimes.h"
#include <QStringList>

using namespace Qt::StringLiterals;

namespace shop {
namespace {

constexpr int kMinutesOfDay = 24 * 60;

bool isShut(const OrderTimes::Period& period) {
    return period.closed || period.from == period.to;
}

QString clock(int minutes) {
    return u"%1:%2"_s.arg(minutes / 60, 2, 10, '0'_L1).arg(minutes % 60, 2, 10, '0'_L1);
}

} // namespace

void OrderTimes::set(int weekday, Part part, Period period) {
    if (weekday >= 1 && weekday <= 7)
        m_days[size_t(weekday)][part] = period;
}

bool OrderTimes::accepts(const QDateTime& moment) const {
    const int minutes = moment.time().hour() * 60 + moment.time().minute();
    for (const int daysBack : {0, 1}) {
        const int at = minutes + daysBack * kMinutesOfDay;
        for (const Period& period : m_days[size_t(moment.date().addDays(-daysBack).dayOfWeek())]) {
            const int end = period.to < period.from ? period.to + kMinutesOfDay : period.to;
            if (!isShut(period) && at >= period.from && at <= end - m_lastOrder)
                return true;
        }
    }
    return false;
}

QString OrderTimes::text(int weekday) const {
    QStringList parts;
    for (const Period& period : m_days[size_t(weekday)])
        if (!isShut(period))
            parts << clock(period.from) + u" bis "_s + clock(period.to);
    return parts.isEmpty() ? u"geschlossen"_s : parts.join(u", "_s);
}

} // namespace shop
