#pragma once
#include <QByteArray>
#include <QString>
#include <optional>

/// The few CAPI 2.0 messages that a listener needs, as the bytes that the library takes and gives.
namespace platform::capi {

enum Command : quint16 {
    kConnectInd = 0x0282,
    kConnectResp = 0x0283,
    kDisconnectInd = 0x0482,
    kListenReq = 0x0580,
    kListenConf = 0x0581,
    kInfoInd = 0x0882,
};

/// What stands at the front of every message.
struct Header {
    quint16 application = 0;
    quint16 command = 0; ///< command and subcommand, as in Command
    quint16 number = 0;
    quint32 subject = 0; ///< controller or connection (PLCI)
};

/// Nothing for a message that is too short.
std::optional<Header> header(const QByteArray& message);

struct Call {
    QString called;
    QString caller;               ///< digits as delivered; "" when the network or the caller suppressed it
    bool isInternational = false; ///< the caller's digits begin with a country's code
};

/// The numbers out of a CONNECT_IND; nothing for a broken one.
std::optional<Call> callIn(const QByteArray& connectInd);
/// The result of a LISTEN_CONF, 0 for success.
quint16 listenResult(const QByteArray& listenConf);

/// Asks a controller for the calls of telephones (speech, 3.1 and 7 kHz audio, telephony), not of data or
/// fax.
QByteArray listenRequest(quint16 application, quint16 number, quint32 controller);
/// Leaves the call to the others on the line: it goes on ringing.
QByteArray ignoreCall(const Header& connectInd);
/// The answer that other indications have to have.
QByteArray acknowledge(const Header& indication);

} // namespace platform::capi
