#include "maintenance/SystemNews.h"

using namespace Qt::StringLiterals;
using common::Version;

namespace maintenance {
namespace {

/// Serials end with the year 9999.
constexpr qint64 kDays = 2'958'466;
/// Longer ones would hold the screen that shows them.
constexpr qsizetype kMostOfAMessage = 10'000;

enum class End { First, Last };

std::optional<QString> valueOf(QStringView answer, int tag, End end = End::First) {
    const QString number = QString::number(tag).rightJustified(2, u'0');
    const QString opening = u"=/"_s + number + u'=';
    const QString closing = u'=' + number + u"/="_s;
    const qsizetype start = answer.indexOf(opening);
    if (start < 0)
        return {};
    const QStringView rest = answer.sliced(start + opening.size());
    const qsizetype length = end == End::First ? rest.indexOf(closing) : rest.lastIndexOf(closing);
    return length < 0 ? std::nullopt : std::optional(rest.first(length).toString());
}

std::optional<qint64> numberOf(QStringView answer, int tag, qint64 bound) {
    return common::parseDigits(valueOf(answer, tag).value_or(QString()), bound);
}

std::optional<Version> versionOf(QStringView answer, int firstTag) {
    const auto part = [&](int offset) { return valueOf(answer, firstTag + offset).value_or(QString()); };
    return Version::parse(part(0), part(1), part(2));
}

constexpr int kNewest = 1;
constexpr int kFrist = 4;
constexpr int kFristDatum = 7;
constexpr int kStatus = 8;
constexpr int kText = 9;

} // namespace

SystemNews& systemNews() {
    static SystemNews news;
    return news;
}

SystemNews readSystemNews(const QString& answer) {
    // The text comes last and may hold what looks like tags.
    const QStringView head = QStringView(answer).left(answer.indexOf(u"=/09="_s));
    SystemNews news;
    const auto newest = versionOf(head, kNewest);
    const auto frist = versionOf(head, kFrist);
    const auto day = numberOf(head, kFristDatum, kDays);
    if (newest && frist && day) {
        news.newest = newest;
        news.UpdateFrist = *frist;
        news.UpdateFristDatum = *day;
    }
    const auto text = valueOf(answer, kText, End::Last);
    if (text && numberOf(head, kStatus, 2) == 1) {
        news.SystemMessageStatus = 1;
        news.SystemMessageText = text->left(kMostOfAMessage);
    }
    return news;
}

std::optional<Version> readVersion(const QString& answer) {
    return versionOf(answer, kNewest);
}

std::optional<qint64> readPhoneBookVersion(const QString& answer) {
    return numberOf(answer, kNewest, common::kPhoneBookVersions);
}

} // namespace maintenance
