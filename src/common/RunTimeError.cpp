#include "common/RunTimeError.h"

namespace common {

RunTimeError::RunTimeError(int number, const QString& sentence, const QString& detail) :
    std::runtime_error(
        (sentence + (detail.isEmpty() ? QString() : QStringLiteral(" | ") + detail)).toStdString()),
    m_number(number), m_sentence(sentence), m_detail(detail) {
}

} // namespace common
