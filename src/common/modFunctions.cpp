#include "common/modFunctions.h"
#include "common/Convert.h"
#include "common/Like.h"
#include <QStringList>
#include <cmath>
#include <utility>
#include <vector>

using common::Value;

namespace modFunctions {
namespace {

constexpr double kFirstOf1980 = 29221;
const QString kLineBreak = QStringLiteral("\r\n");
const QString kHtmlBreak = QStringLiteral("<br />");

using Replacements = std::vector<std::pair<QString, QString>>;

const Replacements& umlauts() {
    static const Replacements table = {
        {QStringLiteral(u"ö"), QStringLiteral("&ouml;")}, {QStringLiteral(u"Ö"), QStringLiteral("&Ouml;")},
        {QStringLiteral(u"ü"), QStringLiteral("&uuml;")}, {QStringLiteral(u"Ü"), QStringLiteral("&Uuml;")},
        {QStringLiteral(u"ä"), QStringLiteral("&auml;")}, {QStringLiteral(u"Ä"), QStringLiteral("&Auml;")}};
    return table;
}

/// The failing test's text; empty for an address that passes.
QString addressFault(const QString& address) {
    using common::like;
    if (address.size() < 7)
        return QStringLiteral(" : Too short!");
    if (like(address, u"*[!0-9a-z@._+-]*"))
        return QStringLiteral(" : Invalid character in email!");
    if (!like(address, u"*@*.*"))
        return QStringLiteral(" : Missing the @ or .!");
    if (like(address, u"*@*@*"))
        return QStringLiteral(" : Too many @!");
    if (!like(address, u"?*@?*.*?") || like(address, u"*[@.]") || like(address, u"[@.]*") ||
        like(address, u"*..*"))
        return QStringLiteral(" : Invalid format!");
    const qsizetype suffix = address.size() - 1 - address.lastIndexOf(QLatin1Char('.'));
    if (suffix > 3)
        return QStringLiteral(" : Suffix too long!");
    return suffix < 2 ? QStringLiteral(" : Suffix too short!") : QString();
}

} // namespace

QString FormatDateDDMMYYYY(const Value& date) {
    const double serial = date.toSerial();
    if (std::floor(serial) >= kFirstOf1980 || common::isNumeric(date.toText().right(4)))
        return common::formatDate(serial, u"DD/MM/YYYY");
    const int year = common::formatDate(serial, u"YYYY").toInt() + 100;
    return common::formatDate(serial, u"DD/MM/") + QString::number(year);
}

QString CleanTelefonNummer(QString& text) {
    QString digits;
    for (QChar& c : text) {
        if (c >= u'0' && c <= u'9')
            digits += c;
        else
            c = u' ';
    }
    return digits;
}

QString NullToEmpty(const Value& value) {
    return value.toText();
}

int DaysInFebruary(int year) {
    return common::isDate(QStringLiteral("29/2/%1").arg(year)) ? 29 : 28;
}

QString TextToHTML(const Value& text) {
    if (text.isNull())
        return QStringLiteral(" ");
    QString html = text.toText();
    html.replace(kLineBreak, kHtmlBreak);
    html.replace(QLatin1Char('&'), QStringLiteral("&amp;"));
    html.replace(QLatin1Char('"'), QStringLiteral("&quot;"));
    for (const auto& [letter, entity] : umlauts())
        html.replace(letter, entity);
    return html;
}

QString HTMLToText(const Value& text) {
    if (text.isNull())
        return QStringLiteral(" ");
    QString plain = text.toText();
    plain.replace(kHtmlBreak, kLineBreak);
    plain.replace(QStringLiteral("&quot;"), QStringLiteral("\""));
    for (const auto& [letter, entity] : umlauts())
        plain.replace(entity, letter);
    return plain.replace(QStringLiteral("&amp;"), QStringLiteral("&"), Qt::CaseInsensitive);
}

QString TextToURL(const Value& text) {
    if (text.isNull())
        return QStringLiteral(" ");
    QString url = text.toText();
    url.replace(kLineBreak, kHtmlBreak);
    // The percent sign comes fifth, so that the four before it end up encoded twice; the server expects that.
    for (const QChar c : QStringLiteral("!\"#$%&'()*+,-./:;<=>?@[\\]_ "))
        url.replace(c, QLatin1Char('%') + QString::number(c.unicode(), 16).toUpper());
    return url;
}

bool IsValidEmailAddress(const QString& addresses, QString& message) {
    const QString list = addresses.endsWith(QLatin1Char(';')) ? addresses.chopped(1) : addresses;
    bool valid = false;
    for (const QString& part : list.split(QLatin1Char(';'))) {
        const QString address = part.trimmed().toLower();
        const QString fault = addressFault(address);
        message = fault.isEmpty() ? QString() : address + fault;
        valid |= fault.isEmpty();
    }
    return valid;
}

namespace {

/// The whole part of the amount that is meant: 4.10 * 100 is 409.99999999999994 in binary, yet 410 rappen.
double wholePart(double scaled) {
    const double nearest = std::round(scaled);
    return std::abs(scaled - nearest) <= nearest * 1e-12 ? nearest : std::floor(scaled);
}

} // namespace

QString RoundRappen(double& Wert) {
    // Single precision by the firm's practice: what is stored carries the constants' trace behind the rappen.
    constexpr float kFive = 0.05F;
    constexpr float kTen = 0.10F;
    const double sign = Wert > 0 ? 1 : Wert < 0 ? -1 : 0;
    const double amount = std::abs(Wert);
    const double cut = wholePart(amount * 100) / 100;
    const int last = common::formatNumber(cut, u"0.00").back().digitValue();
    const double added = last <= 2 ? 0.0 : last <= 7 ? double(kFive) : double(kTen);
    Wert = (wholePart(amount * 10) / 10 + added) * sign;
    return common::formatNumber(Wert, u"0.00");
}

} // namespace modFunctions
