#include "common/Clock.h"
#include "common/Convert.h"
#include "common/RunTimeError.h"
#include <QDate>
#include <QStringList>
#include <array>
#include <cmath>

namespace common {
namespace {

const QDate kDayZero(1899, 12, 30);
constexpr int kSecondsOfDay = 86'400;

const std::array<QString, 12>& monthNames() {
    static const std::array<QString, 12> names = {
        QStringLiteral(u"Januar"),  QStringLiteral(u"Februar"),  QStringLiteral(u"März"),
        QStringLiteral(u"April"),   QStringLiteral(u"Mai"),      QStringLiteral(u"Juni"),
        QStringLiteral(u"Juli"),    QStringLiteral(u"August"),   QStringLiteral(u"September"),
        QStringLiteral(u"Oktober"), QStringLiteral(u"November"), QStringLiteral(u"Dezember")};
    return names;
}

/// A whole number of at most `places` digits; -1 for anything else.
int readNumber(QStringView text, int places) {
    if (text.isEmpty() || text.size() > places)
        return -1;
    int number = 0;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9')
            return -1;
        number = number * 10 + (c.unicode() - u'0');
    }
    return number;
}

int readMonth(QStringView text) {
    const int number = readNumber(text, 2);
    if (number >= 0)
        return number;
    for (int i = 0; i < 12; ++i) {
        const QString& name = monthNames()[i];
        if (text.compare(name, Qt::CaseInsensitive) == 0 ||
            text.compare(QStringView(name).left(3), Qt::CaseInsensitive) == 0)
            return i + 1;
    }
    return -1;
}

int readYear(QStringView text) {
    if (text.size() == 4)
        return readNumber(text, 4);
    const int year = text.size() == 2 ? readNumber(text, 2) : -1;
    if (year < 0)
        return -1;
    return year < 30 ? 2000 + year : 1900 + year;
}

int thisYear() {
    return kDayZero.addDays(qint64(clock::today())).year();
}

std::optional<double> daySerial(int year, int month, int day) {
    const QDate date(year, month, day);
    if (year < 1 || !date.isValid())
        return std::nullopt;
    return double(kDayZero.daysTo(date));
}

std::optional<double> readDay(QStringView text) {
    for (const QChar separator : {QChar(u'/'), QChar(u'.'), QChar(u'-')}) {
        const QList<QStringView> parts = text.split(separator);
        if (parts.size() < 2)
            continue;
        if (parts.size() == 3 && separator == u'-' && parts[0].size() == 4)
            return daySerial(readNumber(parts[0], 4), readNumber(parts[1], 2), readNumber(parts[2], 2));
        if (parts.size() > 3)
            return std::nullopt;
        const int year = parts.size() == 3 ? readYear(parts[2]) : thisYear();
        return daySerial(year, readMonth(parts[1]), readNumber(parts[0], 2));
    }
    return std::nullopt;
}

std::optional<double> readTime(QStringView text) {
    const QList<QStringView> parts = text.split(u':');
    if (parts.size() < 2 || parts.size() > 3)
        return std::nullopt;
    const int hour = readNumber(parts[0], 2);
    const int minute = readNumber(parts[1], 2);
    const int second = parts.size() == 3 ? readNumber(parts[2], 2) : 0;
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59)
        return std::nullopt;
    return timeSerial(hour, minute, second);
}

/// A serial taken apart.
struct Moment {
    QDate date;
    int hour, minute, second;
};

Moment momentOf(double serial) {
    const auto seconds = qint64(wholeSeconds(serial));
    const qint64 days = qint64(std::floor(double(seconds) / kSecondsOfDay));
    const int rest = int(seconds - days * kSecondsOfDay);
    return {kDayZero.addDays(days), rest / 3600, rest / 60 % 60, rest % 60};
}

QString padded(int number, qsizetype places) {
    return QString::number(number).rightJustified(places, QLatin1Char('0'));
}

QString placeText(const Moment& moment, QChar place, qsizetype count, bool minutes) {
    switch (place.unicode()) {
    case u'D':
        return padded(moment.date.day(), count);
    case u'Y':
        return padded(count == 2 ? moment.date.year() % 100 : moment.date.year(), count);
    case u'H':
        return padded(moment.hour, count);
    case u'S':
        return padded(moment.second, count);
    default:
        break;
    }
    if (minutes)
        return padded(moment.minute, count);
    if (count <= 2)
        return padded(moment.date.month(), count);
    const QString& name = monthNames()[moment.date.month() - 1];
    return count == 3 ? name.left(3) : name;
}

} // namespace

std::optional<double> parseDate(QStringView text) {
    const QStringView trimmed = text.trimmed();
    const qsizetype blank = trimmed.indexOf(u' ');
    if (blank < 0)
        return trimmed.contains(u':') ? readTime(trimmed) : readDay(trimmed);
    const std::optional<double> day = readDay(trimmed.left(blank));
    const std::optional<double> time = readTime(trimmed.mid(blank).trimmed());
    if (!day || !time)
        return std::nullopt;
    return *day + *time;
}

bool isDate(QStringView text) {
    return parseDate(text).has_value();
}

QString formatDate(double serial, QStringView form) {
    const Moment moment = momentOf(serial);
    QString text;
    bool behindHour = false;
    for (qsizetype at = 0; at < form.size();) {
        const QChar place = form[at].toUpper();
        qsizetype count = 1;
        while (at + count < form.size() && form[at + count].toUpper() == place)
            ++count;
        if (QStringView(u"DMYHS").contains(place)) {
            text += placeText(moment, place, count, behindHour);
            // "MM" are minutes only behind an hour, with no other place between.
            behindHour = place == u'H';
        } else {
            text += form.mid(at, count);
        }
        at += count;
    }
    return text;
}

double wholeSeconds(double serial) {
    // What sums of day fractions and the eight stored decimals miss a second by.
    constexpr double kTrace = 0.0005;
    return std::floor(serial * kSecondsOfDay + kTrace);
}

double dateSerial(int year, int month, int day) {
    const std::optional<double> serial = daySerial(year, month, day);
    if (!serial)
        throw RunTimeError(kTypeMismatch, QStringLiteral(u"Typen unverträglich."),
                           QStringLiteral("no date: %1-%2-%3").arg(year).arg(month).arg(day));
    return *serial;
}

double timeSerial(int hour, int minute, int second) {
    return (hour * 3600 + minute * 60 + second) / double(kSecondsOfDay);
}

} // namespace common
