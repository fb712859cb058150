#include "platform/form/DateFields.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "common/modFunctions.h"
#include "platform/form/FieldHelpers.h"
#include <QAbstractButton>
#include <QLineEdit>
#include <QShortcut>
#include <cmath>
#include <functional>
#include <optional>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr double kHour = 1 / 24.0;

/// A date beyond what the forms can write is none.
std::optional<double> readableDay(const QString& text) {
    constexpr double kFirst = -657'434; // 1 January 100
    constexpr double kLast = 2'958'465; // 31 December 9999
    const auto serial = common::parseDate(text);
    return serial && *serial >= kFirst && std::floor(*serial) <= kLast ? serial : std::nullopt;
}

QString leftDate(const QString& text) {
    // A short year may lead to a day that its century does not have.
    const QString left = readableDay(text) ? modFunctions::FormatDateDDMMYYYY(text) : QString();
    return readableDay(left) ? left
                             : modFunctions::FormatDateDDMMYYYY(common::Serial{common::clock::today()});
}

QString steppedDate(const QString& text, int step) {
    const auto serial = readableDay(text);
    const QString stepped =
        serial ? common::formatDate(std::floor(*serial) + step, u"DD/MM/YYYY") : QString();
    return readableDay(stepped) ? stepped : text;
}

std::optional<double> readableTime(const QString& text) {
    const auto serial = common::parseDate(text);
    return serial ? std::optional(*serial - std::floor(*serial)) : std::nullopt;
}

QString writtenTime(double time) {
    return common::formatDate(time - std::floor(time), u"HH:MM");
}

QString leftTime(const QString& text) {
    const auto time = readableTime(text);
    return time ? writtenTime(*time) : u"00:00"_s;
}

QString steppedTime(const QString& text, int step) {
    const auto time = readableTime(text);
    return time ? writtenTime(*time + step * kHour) : text;
}

void setUp(QLineEdit& field, QAbstractButton& back, QAbstractButton& forward, QString (*left)(const QString&),
           QString (*stepped)(const QString&, int)) {
    selectAllOnFocus(field);
    reformatOnLeave(field, left);
    const auto step = [&field, stepped](int by) { field.setText(stepped(field.text(), by)); };
    for (const auto& [button, by, key] :
         {std::tuple{&back, -1, Qt::Key_Down}, std::tuple{&forward, 1, Qt::Key_Up}}) {
        const auto act = [step, by = by] { step(by); };
        common::connectGuarded(common::Origin::User, button, &QAbstractButton::clicked, &field, act);
        auto* shortcut = new QShortcut(key, &field);
        shortcut->setContext(Qt::WidgetShortcut);
        common::connectGuarded(common::Origin::User, shortcut, &QShortcut::activated, &field, act);
    }
}

} // namespace

void setUpDateField(QLineEdit& field, QAbstractButton& back, QAbstractButton& forward) {
    field.setText(leftDate({}));
    setUp(field, back, forward, leftDate, steppedDate);
}

void setUpTimeField(QLineEdit& field, QAbstractButton& back, QAbstractButton& forward) {
    setUp(field, back, forward, leftTime, steppedTime);
}

qint64 dayOf(QLineEdit& field) {
    field.setText(leftDate(field.text()));
    return qint64(std::floor(*readableDay(field.text())));
}

double timeOf(QLineEdit& field) {
    field.setText(leftTime(field.text()));
    return *readableTime(field.text());
}

} // namespace platform
