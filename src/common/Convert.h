#pragma once
#include <QString>
#include <optional>

/// Numbers and dates as text and back: the one place that knows the forms. Nothing else calls a locale.
/// Decimal mark ".", thousands mark "'", dates day first, German month names.
namespace common {

/// True for what the number parser reads: surrounding blanks, one sign in front, digits with "'" between them
/// as thousands mark, one decimal point, an exponent. "1,5", "1.2.3", "", "12a", "Inf" and "NaN" are no
/// numbers.
bool isNumeric(QStringView text);
std::optional<double> parseNumber(QStringView text);

/// The plain number-to-text conversion: up to 15 significant digits, no trailing zeros, no thousands marks,
/// a decimal point; whole numbers below 1e15 without exponent ("0791234567" read as a double gives
/// "791234567").
QString numberToText(double number);

/// The forms "0", "00", "0.0", "0.00", "0.00000000", "#,##0.00" (also written "#,0.00"), "0.00%" and a
/// literal tail such as "0.00 ". Rounds half away from zero on the decimal digits (15 significant) of the
/// number, so 2.675 gives "2.68"; never gives "-0.00".
QString formatNumber(double number, QStringView form);

/// A date or time text as serial. Reads D/M/Y with "/", "." or "-" between, the month as number, as German
/// abbreviation or full name ("Mär", "März"; case does not count), the year with 4 or 2 digits (00 to 29 are
/// 2000 to 2029, 30 to 99 are 1930 to 1999) or left out (this year), "YYYY-MM-DD", a time "H:MM" or "H:MM:SS"
/// behind a blank or alone. Nothing for what is no date ("31/02/2026", "25:00", "abc", "").
std::optional<double> parseDate(QStringView text);
bool isDate(QStringView text);

/// Forms of D, DD, M, MM, MMM ("Mär"), MMMM ("März"), YY, YYYY, H, HH, MM behind H as minutes, SS, and
/// literals. A second lasts to its end: no time is rounded up into the next minute or day.
QString formatDate(double serial, QStringView form);

/// Day serial of a date; throws RunTimeError kTypeMismatch for an impossible one.
double dateSerial(int year, int month, int day);
/// The seconds of a serial that have passed, without the trace that its fraction carries.
double wholeSeconds(double serial);
/// Fraction of the day.
double timeSerial(int hour, int minute, int second = 0);

} // namespace common
