#include "platform/line/CallMonitorLine.h"
#include "common/Guard.h"
#include "common/RunTimeError.h"
#include "platform/line/KeepAlive.h"
#include "platform/line/LineLog.h"

namespace platform {
namespace {

/// How long a connection attempt may take; the system's own limit is minutes.
constexpr std::chrono::seconds connectLimit{10};

} // namespace

CallMonitorLine::CallMonitorLine(const LineSettings::Monitor& settings, std::chrono::milliseconds retry,
                                 QObject* parent) :
    BasicCAPI32(parent),
    m_settings(settings), m_retry(retry) {
    using common::connectGuarded;
    using common::Origin;
    m_retryTimer.setSingleShot(true);
    connectGuarded(Origin::Timer, &m_retryTimer, &QTimer::timeout, this, [this] { connectToRouter(); });
    connectGuarded(Origin::Answer, &m_socket, &QTcpSocket::connected, this, [this] { onConnected(); });
    connectGuarded(Origin::Answer, &m_socket, &QTcpSocket::readyRead, this, [this] { onData(); });
    connectGuarded(Origin::Answer, &m_socket, &QTcpSocket::disconnected, this, [this] { onLost(); });
    connectGuarded(Origin::Answer, &m_socket, &QTcpSocket::errorOccurred, this, [this] { onLost(); });
}

CallMonitorLine::~CallMonitorLine() {
    Stop();
}

bool CallMonitorLine::IsAvailable() {
    return !m_settings.host.isEmpty() && m_settings.port > 0;
}

void CallMonitorLine::Start() {
    if (m_isStarted)
        return;
    if (!IsAvailable())
        throw common::RunTimeError(
            common::kPlatformFailure,
            QStringLiteral("Für den Anrufmonitor ist in tavolino.ini kein Router oder ein "
                           "ungültiger Port angegeben."));
    m_isStarted = true;
    connectToRouter();
}

void CallMonitorLine::Stop() {
    m_isStarted = false;
    m_retryTimer.stop();
    m_socket.abort();
    dropArrived();
}

void CallMonitorLine::connectToRouter() {
    m_socket.abort();
    m_reader.reset();
    m_retryTimer.start(connectLimit);
    m_socket.connectToHost(m_settings.host, quint16(m_settings.port));
}

void CallMonitorLine::onConnected() {
    m_retryTimer.stop();
    m_isLossLogged = false;
    keepAlive(m_socket);
    qCInfo(lineLog) << "Monitor: connected to" << m_settings.host;
}

void CallMonitorLine::onLost() {
    if (!m_isStarted)
        return;
    if (!m_isLossLogged)
        qCWarning(lineLog) << "Monitor: no connection to" << m_settings.host << "-" << m_socket.errorString();
    m_isLossLogged = true;
    m_retryTimer.start(m_retry);
}

void CallMonitorLine::onData() {
    for (const auto& call : m_reader.feed(m_socket.readAll()))
        arrived(call.called, call.caller, QStringLiteral("Monitor"));
}

} // namespace platform
