#include "platform/form/FieldFormat.h"
#include "common/Convert.h"

namespace platform {
namespace {

bool isDateForm(const QString& format) {
    return !format.contains(u'"') && (format.contains(u'Y') || format.contains(u'H'));
}

/// Cuts at the first ";" outside quotes.
QStringList sections(const QString& format) {
    bool quoted = false;
    for (qsizetype i = 0; i < format.size(); ++i) {
        if (format[i] == u'"')
            quoted = !quoted;
        else if (format[i] == u';' && !quoted)
            return {format.left(i), format.mid(i + 1)};
    }
    return {format};
}

QString inSection(double number, const QString& section) {
    if (section.size() >= 2 && section.startsWith(u'"') && section.endsWith(u'"'))
        return section.mid(1, section.size() - 2);
    return common::formatNumber(number, QString(section).remove(u'"'));
}

} // namespace

QString formatField(const common::Value& value, const QString& format) {
    if (value.isNull())
        return {};
    if (format.isEmpty())
        return value.toText();
    if (isDateForm(format))
        return value.isText() && !common::isDate(value.toText())
                   ? value.toText()
                   : common::formatDate(value.toSerial(), format);
    if (!value.isNumeric() && !value.isDate())
        return value.toText();
    const double number = value.toDouble();
    const QStringList parts = sections(format);
    return number < 0 && parts.size() > 1 ? inSection(-number, parts[1]) : inSection(number, parts[0]);
}

} // namespace platform
