#pragma once
#include <QLoggingCategory>

namespace platform {

/// The log of the telephone lines, category "tavolino.line". Callers' numbers and passwords are not logged.
Q_DECLARE_LOGGING_CATEGORY(lineLog)

} // namespace platform
