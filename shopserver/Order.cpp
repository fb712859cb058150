#include "shopserver/Order.h"
#include "common/Convert.h"

using namespace Qt::StringLiterals;

namespace shop {

QString wantedText(const QDateTime& now, const QDateTime& wanted) {
    const QDate day = (wanted.isValid() ? wanted : now).date();
    const QString date =
        common::formatDate(common::dateSerial(day.year(), day.month(), day.day()), u"D. MMMM YYYY");
    return date + (wanted.isValid() ? wanted.toString(u", HH:mm"_s) : u", so bald wie möglich"_s);
}

} // namespace shop
