#pragma once
#include "platform/line/LineSettings.h"
#include "platform/line/TelephoneLine.h"
#include <QTimer>
#include <memory>

namespace platform {

class SipAgent;

/// Today's line: an extension of a router or PBX, or a bare SIP port that somebody else sends calls to. It
/// rings along with the telephones and never picks up. What a network loss or a restarting router ends, it
/// takes up again by itself.
class SipLine : public BasicCAPI32 {
    Q_OBJECT
  public:
    SipLine(const LineSettings::Sip& settings, std::chrono::milliseconds retry, QObject* parent = nullptr);
    ~SipLine() override;

    /// Whether the settings make sense; does not look at the network.
    bool IsAvailable() override;
    /// Opens the port. A registrar that does not answer is no error, the line keeps trying.
    void Start() override;
    void Stop() override;

  private:
    void tick();

    LineSettings::Sip m_settings;
    std::chrono::milliseconds m_retry;
    std::unique_ptr<SipAgent> m_agent;
    QTimer m_timer;
};

} // namespace platform
