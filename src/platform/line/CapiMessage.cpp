#include "platform/line/CapiMessage.h"
#include <QtEndian>

namespace platform::capi {
namespace {

constexpr qsizetype headerLength = 8;
constexpr qsizetype longestNumber = 50;
constexpr quint32 telephoneCalls = 1U << 1 | 1U << 4 | 1U << 5 | 1U << 16 | 1U << 26;
constexpr quint16 ignore = 1;

quint8 byteAt(const QByteArray& text, qsizetype position) {
    return position < text.size() ? quint8(text[position]) : 0;
}

template <typename Number> Number readAt(const QByteArray& message, qsizetype position) {
    if (position + qsizetype(sizeof(Number)) > message.size())
        return 0;
    return qFromLittleEndian<Number>(message.constData() + position);
}

template <typename Number> void append(QByteArray& message, Number number) {
    char bytes[sizeof(Number)];
    qToLittleEndian(number, bytes);
    message.append(bytes, sizeof bytes);
}

QByteArray message(const Header& header, const QByteArray& parameters) {
    QByteArray bytes;
    append(bytes, quint16(headerLength + sizeof header.subject + size_t(parameters.size())));
    append(bytes, header.application);
    bytes += char(header.command >> 8);
    bytes += char(header.command & 0xff);
    append(bytes, header.number);
    append(bytes, header.subject);
    return bytes + parameters;
}

Header answerTo(const Header& indication) {
    auto answer = indication;
    answer.command = quint16((indication.command & 0xff00) | 0x83);
    return answer;
}

/// Takes the next structure: a length of one byte, or 255 and two bytes, and the content.
std::optional<QByteArray> takeStructure(const QByteArray& message, qsizetype& position) {
    if (position >= message.size())
        return {};
    qsizetype length = byteAt(message, position++);
    if (length == 0xff) {
        length = readAt<quint16>(message, position);
        position += 2;
    }
    if (position + length > message.size())
        return {};
    position += length;
    return message.mid(position - length, length);
}

QString digits(const QByteArray& text) {
    return QString::fromLatin1(text).trimmed().left(longestNumber);
}

/// Type of number, then presentation (which the first octet's top bit tells to be left out), then the digits.
QString callerNumber(const QByteArray& number) {
    const bool hasPresentation = !(byteAt(number, 0) & 0x80) || (byteAt(number, 1) & 0x80);
    const bool isShown = !hasPresentation || (byteAt(number, 1) & 0x60) == 0;
    return isShown ? digits(number.mid(hasPresentation ? 2 : 1)) : QString();
}

} // namespace

std::optional<Header> header(const QByteArray& message) {
    if (message.size() < headerLength + qsizetype(sizeof(quint32)))
        return {};
    const auto command = quint16(byteAt(message, 4) << 8 | byteAt(message, 5));
    return Header{readAt<quint16>(message, 2), command, readAt<quint16>(message, 6),
                  readAt<quint32>(message, 8)};
}

std::optional<Call> callIn(const QByteArray& connectInd) {
    qsizetype position = headerLength + qsizetype(sizeof(quint32) + sizeof(quint16));
    const auto called = takeStructure(connectInd, position);
    const auto caller = takeStructure(connectInd, position);
    if (!called || !caller)
        return {};
    constexpr int typeOfNumber = 0x70, international = 0x10;
    return Call{digits(called->mid(1)), callerNumber(*caller),
                (byteAt(*caller, 0) & typeOfNumber) == international};
}

quint16 listenResult(const QByteArray& listenConf) {
    return readAt<quint16>(listenConf, 12);
}

QByteArray listenRequest(quint16 application, quint16 number, quint32 controller) {
    QByteArray parameters;
    append(parameters, quint32(0)); // no further information
    append(parameters, telephoneCalls);
    append(parameters, quint32(0)); // second mask, unused
    parameters += QByteArray(2, '\0');
    return message({application, kListenReq, number, controller}, parameters);
}

QByteArray ignoreCall(const Header& connectInd) {
    QByteArray parameters;
    append(parameters, ignore);
    return message(answerTo(connectInd), parameters + QByteArray(5, '\0'));
}

QByteArray acknowledge(const Header& indication) {
    return message(answerTo(indication), {});
}

} // namespace platform::capi
