#pragma once
#include "platform/line/CallMonitorReader.h"
#include "platform/line/LineSettings.h"
#include "platform/line/TelephoneLine.h"
#include <QTcpSocket>
#include <QTimer>

namespace platform {

/// The call monitor of a router: a TCP connection on which the router reports every call as a line of text.
/// A router that is not there, not yet or no more, is tried again and again.
class CallMonitorLine : public BasicCAPI32 {
    Q_OBJECT
  public:
    CallMonitorLine(const LineSettings::Monitor& settings, std::chrono::milliseconds retry,
                    QObject* parent = nullptr);
    ~CallMonitorLine() override;

    /// Whether a router is named.
    bool IsAvailable() override;
    void Start() override;
    void Stop() override;

  private:
    void connectToRouter();
    void onConnected();
    void onLost();
    void onData();

    LineSettings::Monitor m_settings;
    std::chrono::milliseconds m_retry;
    QTcpSocket m_socket;
    CallMonitorReader m_reader;
    QTimer m_retryTimer;
    bool m_isStarted = false;
    bool m_isLossLogged = false;
};

} // namespace platform
