#include "platform/line/CallMonitorReader.h"
#include <optional>

namespace platform {
namespace {

constexpr qsizetype longestLine = 1000;
constexpr qsizetype longestNumber = 50;

QString number(const QByteArray& field) {
    return QString::fromUtf8(field.trimmed()).left(longestNumber);
}

std::optional<CallMonitorReader::Call> callIn(const QByteArray& line) {
    const auto fields = line.split(';');
    if (fields.size() < 5 || fields[1].trimmed() != "RING")
        return {};
    return CallMonitorReader::Call{number(fields[4]), number(fields[3])};
}

} // namespace

std::vector<CallMonitorReader::Call> CallMonitorReader::feed(const QByteArray& piece) {
    std::vector<Call> calls;
    for (const char c : piece) {
        if (c != '\n' && m_line.size() < longestLine) {
            m_line += c;
        } else if (c != '\n') {
            m_isTooLong = true;
        } else {
            if (const auto call = callIn(m_line); call && !m_isTooLong)
                calls.push_back(*call);
            reset();
        }
    }
    return calls;
}

void CallMonitorReader::reset() {
    m_line.clear();
    m_isTooLong = false;
}

} // namespace platform
