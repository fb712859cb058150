#include "common/Value.h"
#include "common/Convert.h"
#include "common/RunTimeError.h"
#include <cmath>

namespace common {
namespace {

/// The text itself may be anybody's number or password and is not for the log.
[[noreturn]] void mismatch(const QString& text) {
    throw RunTimeError(kTypeMismatch, QStringLiteral(u"Typen unverträglich."),
                       QStringLiteral("a text of %1 characters").arg(text.size()));
}

QString serialText(double days) {
    const double seconds = wholeSeconds(days);
    const bool hasDay = std::floor(seconds / 86'400) != 0;
    const bool hasTime = std::fmod(seconds, 86'400) != 0;
    if (hasDay && hasTime)
        return formatDate(days, u"DD/MM/YYYY HH:MM:SS");
    return hasDay ? formatDate(days, u"DD/MM/YYYY") : formatDate(days, u"HH:MM:SS");
}

} // namespace

bool Value::isNumeric() const {
    if (const auto* text = std::get_if<QString>(&m_data))
        return common::isNumeric(*text);
    return isInteger() || isDouble();
}

QString Value::toText() const {
    if (const auto* text = std::get_if<QString>(&m_data))
        return *text;
    if (const auto* whole = std::get_if<qint64>(&m_data))
        return QString::number(*whole);
    if (const auto* number = std::get_if<double>(&m_data))
        return numberToText(*number);
    if (const auto* date = std::get_if<Serial>(&m_data))
        return serialText(date->days);
    return {};
}

double Value::toDouble() const {
    if (const auto* number = std::get_if<double>(&m_data))
        return *number;
    if (const auto* whole = std::get_if<qint64>(&m_data))
        return double(*whole);
    if (const auto* date = std::get_if<Serial>(&m_data))
        return date->days;
    const auto* text = std::get_if<QString>(&m_data);
    if (!text || text->isEmpty())
        return 0;
    const std::optional<double> number = parseNumber(*text);
    if (!number)
        mismatch(*text);
    return *number;
}

qint64 Value::toLong() const {
    if (const auto* whole = std::get_if<qint64>(&m_data))
        return *whole;
    const double rounded = std::nearbyint(toDouble());
    if (!(std::abs(rounded) < 9.2e18))
        mismatch(toText());
    return qint64(rounded);
}

double Value::toSerial() const {
    const auto* text = std::get_if<QString>(&m_data);
    if (!text)
        return toDouble();
    const std::optional<double> serial = parseDate(*text);
    if (!serial)
        mismatch(*text);
    return *serial;
}

} // namespace common
