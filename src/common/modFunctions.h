#pragma once
#include "common/Value.h"

/// The small conversions that the whole system shares.
namespace modFunctions {

/// A date (serial) or date text as "DD/MM/YYYY". A date before 1 January 1980 whose text does not end in four
/// digits was typed with a short year and lands a century later (1945 becomes 2045).
/// A text that is no date throws RunTimeError kTypeMismatch.
QString FormatDateDDMMYYYY(const common::Value& date);

/// Digits only. The text passed in keeps a blank in the place of everything that was no digit.
QString CleanTelefonNummer(QString& text);

/// "" for a null, any other value as text.
QString NullToEmpty(const common::Value& value);

int DaysInFebruary(int year);

/// The three encoders give one blank for a null.
QString TextToHTML(const common::Value& text);
QString HTMLToText(const common::Value& text);
/// "!", the double quote, "#" and "$" come out encoded twice; the server decodes accordingly.
QString TextToURL(const common::Value& text);

/// Judges a list of addresses divided by ";": true if at least one passed. `message` is that of the last
/// address, empty if it passed. Suffixes of more than three letters are refused, the firm's rule.
bool IsValidEmailAddress(const QString& addresses, QString& message);

/// Rounds to 5 rappen, the smallest Swiss coin: the amount is cut to whole rappen first, then the last digit
/// decides (0-2 down, 3-7 to 5, 8-9 up). Changes `Wert` and returns it as "0.00".
QString RoundRappen(double& Wert);

} // namespace modFunctions
