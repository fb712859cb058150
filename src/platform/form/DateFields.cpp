#include "platform/form/DateFields.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "common/Guard.h"
#include "common/modFunctions.h"
#include "platform/form/FieldHelpers.h"
#include <QAbstractButton>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QToolButton>
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

qint64 dayOf(QLineEdit& field) {
    field.setText(leftDate(field.text()));
    return qint64(std::floor(*readableDay(field.text())));
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

/// What differs between the two fields.
struct DateSpan::Names {
    const char* field;
    QString caption, name, day; ///< "&Von", "Von", "Startdatum"
};

DateSpan::DateSpan(QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    m_von = addField({"DatumVon", tr("&Von"), tr("Von"), tr("Startdatum")});
    m_bis = addField({"DatumBis", tr("B&is"), tr("Bis"), tr("Enddatum")});
    enterChain({m_von, m_bis, m_von});
    setFocusProxy(m_von);
}

QLineEdit* DateSpan::addField(const Names& names) {
    constexpr int kWidth = 100;
    const QString name = QString::fromLatin1(names.field);
    auto* label = new QLabel(names.caption, this);
    label->setObjectName(u"lbl_"_s + name);
    auto* field = new QLineEdit(this);
    field->setObjectName(u"txt_"_s + name);
    field->setAccessibleName(names.name);
    field->setFixedWidth(kWidth);
    field->setAlignment(Qt::AlignCenter);
    field->setText(leftDate({}));
    label->setBuddy(field);
    const auto stepper = [&](const QString& suffix, Qt::ArrowType arrow, const QString& tip) {
        auto* button = new QToolButton(this);
        button->setObjectName(u"cmd"_s + name + suffix);
        button->setArrowType(arrow);
        button->setAutoRepeat(true);
        button->setFocusPolicy(Qt::NoFocus);
        button->setToolTip(tip.arg(names.day));
        button->setAccessibleName(tip.arg(names.day));
        return button;
    };
    auto* back = stepper(u"Back"_s, Qt::LeftArrow, tr("Das %1 um einen Tag verringern."));
    auto* forward = stepper(u"Fwd"_s, Qt::RightArrow, tr("Das %1 um einen Tag verlängern."));
    setUp(*field, *back, *forward, leftDate, steppedDate);
    for (QWidget* part : std::initializer_list<QWidget*>{label, back, field, forward})
        layout()->addWidget(part);
    return field;
}

qint64 DateSpan::von() {
    return dayOf(*m_von);
}

qint64 DateSpan::bis() {
    return dayOf(*m_bis);
}

void DateSpan::setDay(double serial) {
    for (QLineEdit* field : {m_von, m_bis})
        field->setText(common::formatDate(serial, u"DD/MM/YYYY"));
}

QString DateSpan::text() const {
    return m_von->text() + u" - "_s + m_bis->text();
}

QString DateSpan::bisCaption() const {
    return findChild<QLabel*>(u"lbl_DatumBis"_s)->text();
}

void DateSpan::setBisCaption(const QString& text) {
    findChild<QLabel*>(u"lbl_DatumBis"_s)->setText(text);
}

void setUpTimeField(QLineEdit& field, QAbstractButton& back, QAbstractButton& forward) {
    setUp(field, back, forward, leftTime, steppedTime);
}

double timeOf(QLineEdit& field) {
    field.setText(leftTime(field.text()));
    return *readableTime(field.text());
}

} // namespace platform
