#include "common/Version.h"
#include <QList>
#include <algorithm>

namespace common {

std::optional<qint64> parseDigits(QStringView text, qint64 bound) {
    constexpr qsizetype kMostDigits = 15;
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    if (text.isEmpty() || text.size() > kMostDigits || !std::all_of(text.begin(), text.end(), isDigit))
        return {};
    const qint64 number = text.toLongLong();
    return number < bound ? std::optional(number) : std::nullopt;
}

QString Version::text() const {
    return QStringLiteral("%1.%2.%3").arg(major).arg(minor).arg(revision);
}

std::optional<Version> Version::parse(QStringView text) {
    const QList<QStringView> parts = text.split(u'.');
    return parts.size() == 3 ? parse(parts[0], parts[1], parts[2]) : std::nullopt;
}

std::optional<Version> Version::parse(QStringView major, QStringView minor, QStringView revision) {
    const auto first = parseDigits(major, kMajors);
    const auto second = parseDigits(minor, kMinors);
    const auto third = parseDigits(revision, kRevisions);
    if (!first || !second || !third)
        return {};
    return Version{*first, *second, *third};
}

} // namespace common
