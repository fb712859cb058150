#pragma once
#include "platform/line/CapiLibrary.h"
#include "platform/line/LineSettings.h"
#include "platform/line/TelephoneLine.h"
#include <QSocketNotifier>
#include <QTimer>
#include <memory>

namespace platform {

/// The ISDN line through CAPI 2.0, for firms that still have such hardware. It ignores the calls towards the
/// network, so that they ring on at the telephones. A controller that goes away is looked for again.
class CapiLine : public BasicCAPI32 {
    Q_OBJECT
  public:
    CapiLine(const LineSettings::Capi& settings, std::chrono::milliseconds retry, QObject* parent = nullptr);
    ~CapiLine() override;

    bool IsAvailable() override;
    void Start() override;
    void Stop() override;

  private:
    void open();
    void listen(quint16 controller);
    void reopen();
    void watch();
    void dropNotifier();
    void onMessages();
    void take(const QByteArray& message);

    LineSettings::Capi m_settings;
    std::chrono::milliseconds m_retry;
    std::unique_ptr<capi::Library> m_library;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_retryTimer;
    quint16 m_number = 0;
    bool m_isLossLogged = false;
};

} // namespace platform
