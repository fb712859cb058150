#include "platform/line/NoLine.h"
#include "common/RunTimeError.h"

namespace platform {

NoLine::NoLine(const QString& reason, QObject* parent) : BasicCAPI32(parent), m_reason(reason) {
}

void NoLine::Start() {
    throw common::RunTimeError(common::kPlatformFailure, m_reason);
}

} // namespace platform
