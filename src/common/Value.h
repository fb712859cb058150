#pragma once
#include <QMetaType>
#include <QString>
#include <variant>

namespace common {

/// A date and time as a number: whole days since 30 December 1899, the time of day as the fraction.
/// A time alone has whole part 0, a date alone fraction 0.
struct Serial {
    double days = 0;
    friend bool operator==(const Serial&, const Serial&) = default;
};

/// What a field of the store or a cell of an order holds: nothing (null), a whole number, a double, a text or
/// a date. Truth values are whole numbers: -1 for true, 0 for false, as the store holds them.
///
/// Conversions follow the rules of the forms' language: a text that reads as a number is one; null counts as
/// 0 and as the empty text. A text that is no number where one is needed throws RunTimeError kTypeMismatch.
class Value {
  public:
    Value() = default;

    Value(qint64 number) : m_data(number) {}

    Value(int number) : m_data(qint64(number)) {}

    Value(bool truth) : m_data(qint64(truth ? -1 : 0)) {}

    Value(double number) : m_data(number) {}

    Value(Serial date) : m_data(date) {}

    Value(const QString& text) : m_data(text) {}

    Value(const char16_t* text) : m_data(QString::fromUtf16(text)) {}

    Value(const char*) = delete;

    bool isNull() const { return std::holds_alternative<std::monostate>(m_data); }

    bool isText() const { return std::holds_alternative<QString>(m_data); }

    bool isInteger() const { return std::holds_alternative<qint64>(m_data); }

    bool isDouble() const { return std::holds_alternative<double>(m_data); }

    bool isDate() const { return std::holds_alternative<Serial>(m_data); }

    /// A number, or a text that reads as one. Null is not numeric.
    bool isNumeric() const;

    /// The value as text: whole numbers and doubles by the plain conversion (numberToText), dates as
    /// "DD/MM/YYYY", times as "HH:MM:SS", both as "DD/MM/YYYY HH:MM:SS"; null gives "".
    QString toText() const;
    /// Null and the empty text give 0.
    double toDouble() const;
    /// Rounded half to even to the nearest whole number, as the store converts a double to a long.
    qint64 toLong() const;
    /// A date's serial; a text is parsed as a date or time (parseDate), a number is taken as the serial.
    double toSerial() const;

    bool isTrue() const { return toDouble() != 0; }

    friend bool operator==(const Value&, const Value&) = default;

  private:
    std::variant<std::monostate, qint64, double, QString, Serial> m_data;
};

} // namespace common

Q_DECLARE_METATYPE(common::Value)
