#include "platform/line/LineLog.h"

namespace platform {

Q_LOGGING_CATEGORY(lineLog, "tavolino.line", QtInfoMsg)

} // namespace platform
