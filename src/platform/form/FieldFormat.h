#pragma once
#include "common/Value.h"
#include <QString>

namespace platform {

/// A field as a list shows it. `format` is a number form ("0.00 "), a date form ("DD/MM/YYYY"), or two
/// sections divided by ";", the first for zero and positive values, the second for negative ones without
/// their sign; a section in quotes is that text: `"Nein";"Ja"` shows a stored truth value. Null shows
/// nothing; a text stays itself under a number form.
QString formatField(const common::Value& value, const QString& format);

} // namespace platform
