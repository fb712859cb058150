#include "common/Convert.h"
#include <array>
#include <charconv>
#include <cmath>

namespace common {
namespace {

constexpr int kSignificantDigits = 15;

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

/// Reads a run of digits, with thousands marks between them where `marks` allows it.
bool readDigits(QStringView text, qsizetype& at, QByteArray& out, bool marks) {
    const qsizetype start = at;
    while (at < text.size()) {
        if (isDigit(text[at]))
            out += char(text[at].unicode());
        else if (!(marks && text[at] == u'\'' && at > start && at + 1 < text.size() && isDigit(text[at + 1])))
            break;
        ++at;
    }
    return at > start;
}

bool readExponent(QStringView text, qsizetype& at, QByteArray& out) {
    if (at >= text.size() || text[at].toLower() != u'e')
        return true;
    out += 'e';
    ++at;
    if (at < text.size() && (text[at] == u'+' || text[at] == u'-'))
        out += char(text[at++].unicode());
    return readDigits(text, at, out, false);
}

/// The text in the form that the C++ number parser reads; empty when it is no number.
QByteArray plainNumber(QStringView text) {
    QByteArray out;
    qsizetype at = 0;
    if (at < text.size() && (text[at] == u'-' || text[at] == u'+')) {
        if (text[at] == u'-')
            out += '-';
        ++at;
    }
    bool digits = readDigits(text, at, out, true);
    if (at < text.size() && text[at] == u'.') {
        out += '.';
        ++at;
        digits = readDigits(text, at, out, false) || digits;
    }
    if (!digits || !readExponent(text, at, out) || at != text.size())
        return {};
    return out;
}

/// A number as its 15 significant decimal digits: 0.d1d2d3… × 10^exponent.
struct Decimal {
    bool negative = false;
    QByteArray digits;
    int exponent = 0;
};

Decimal decimalOf(double number) {
    std::array<char, 40> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(number),
                                   std::chars_format::scientific, kSignificantDigits - 1);
    const QByteArray text(buffer.data(), end.ptr - buffer.data());
    const qsizetype e = text.indexOf('e');
    return {number < 0, text.left(1) + text.mid(2, e - 2), text.mid(e + 1).toInt() + 1};
}

/// Cuts the digits behind `count` of them, rounding half away from zero.
void roundDigits(Decimal& decimal, int count) {
    if (count < 0) {
        decimal = {decimal.negative, "0", 1};
        return;
    }
    if (count >= decimal.digits.size())
        return;
    const bool up = decimal.digits[count] >= '5';
    decimal.digits.truncate(count);
    if (!up)
        return;
    qsizetype i = count - 1;
    while (i >= 0 && decimal.digits[i] == '9')
        decimal.digits[i--] = '0';
    if (i >= 0) {
        ++decimal.digits[i];
    } else {
        decimal.digits.prepend('1');
        ++decimal.exponent;
    }
}

/// The places of a number form: "#,##0.00%" has one whole place at least, two decimals, thousands marks,
/// percent.
struct Form {
    QStringView head, tail;
    int wholePlaces = 0;
    int decimals = 0;
    bool thousands = false;
    bool percent = false;
};

Form readForm(QStringView form) {
    const auto isPlace = [](QChar c) { return c == u'0' || c == u'#' || c == u',' || c == u'.'; };
    qsizetype first = 0;
    while (first < form.size() && !isPlace(form[first]))
        ++first;
    qsizetype last = first;
    Form result;
    bool behindPoint = false;
    for (; last < form.size() && isPlace(form[last]); ++last) {
        result.thousands |= form[last] == u',';
        behindPoint |= form[last] == u'.';
        if (form[last] == u'0')
            ++(behindPoint ? result.decimals : result.wholePlaces);
    }
    result.head = form.left(first);
    result.tail = form.mid(last);
    result.percent = result.tail.startsWith(u'%');
    return result;
}

QByteArray withThousandsMarks(QByteArray digits) {
    for (qsizetype at = digits.size() - 3; at > 0; at -= 3)
        digits.insert(at, '\'');
    return digits;
}

} // namespace

bool isNumeric(QStringView text) {
    return parseNumber(text).has_value();
}

std::optional<double> parseNumber(QStringView text) {
    const QByteArray plain = plainNumber(text.trimmed());
    double number = 0;
    const auto read = std::from_chars(plain.data(), plain.data() + plain.size(), number);
    if (plain.isEmpty() || read.ec != std::errc())
        return std::nullopt;
    return number;
}

QString numberToText(double number) {
    if (number == 0)
        return QStringLiteral("0");
    std::array<char, 40> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                   std::chars_format::general, kSignificantDigits);
    return QString::fromLatin1(buffer.data(), end.ptr - buffer.data()).toUpper();
}

QString formatNumber(double number, QStringView form) {
    if (!std::isfinite(number))
        return numberToText(number);
    const Form places = readForm(form);
    Decimal decimal = decimalOf(number);
    if (places.percent && number != 0)
        decimal.exponent += 2;
    roundDigits(decimal, decimal.exponent + places.decimals);

    QByteArray all = decimal.digits;
    if (decimal.exponent <= 0)
        all.prepend(QByteArray(1 - decimal.exponent, '0'));
    const qsizetype whole = std::max(decimal.exponent, 1);
    all = all.leftJustified(whole + places.decimals, '0');
    QByteArray wholeDigits = all.left(whole);
    if (wholeDigits == "0" && places.wholePlaces == 0)
        wholeDigits.clear();
    wholeDigits = wholeDigits.rightJustified(places.wholePlaces, '0');
    if (places.thousands)
        wholeDigits = withThousandsMarks(wholeDigits);
    const QByteArray decimals = all.mid(whole, places.decimals);

    const bool isZero = all.count('0') == all.size();
    QString text = decimal.negative && !isZero ? QStringLiteral("-") : QString();
    text += places.head;
    text += QLatin1String(wholeDigits);
    if (places.decimals > 0)
        text += QLatin1Char('.') + QLatin1String(decimals);
    text += places.tail;
    return text;
}

} // namespace common
