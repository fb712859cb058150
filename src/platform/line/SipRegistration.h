#pragma once
#include "platform/line/LineSettings.h"
#include <QHostAddress>
#include <QObject>
#include <QTimer>
#include <sofia-sip/nua.h>

namespace platform {

/// Keeps one extension registered at a router or PBX for as long as it lives: log-in, refresh before the
/// expiry, again with growing pauses after a failure, and at once when the machine's own address has changed.
class SipRegistration : public QObject {
  public:
    /// `agent` must outlive this object. Nothing is sent before the event loop runs.
    SipRegistration(nua_t* agent, const LineSettings::Sip& settings, std::chrono::milliseconds retry);
    ~SipRegistration() override;

    bool owns(const nua_handle_t* handle) const { return handle && handle == m_handle; }

    /// Whether the registrar's name leads to the address.
    bool isRegistrar(const QHostAddress& address) const { return m_registrars.contains(address); }

    /// The registrar's answer to REGISTER; `answer` is null when none came.
    void takeAnswer(int status, const char* phrase, const sip_t* answer);
    /// Asks the registrar to forget us. False when there is nothing to ask for.
    bool signOff();

  private:
    void lookUpRegistrar();
    void registerAt(const QHostAddress& registrar);
    void sendRegister();
    QHostAddress localAddress() const;
    bool authenticate(const sip_t& answer);
    void succeed();
    void fail(const QString& reason, bool isRefused);
    void followAddress();
    void dropHandle();

    nua_t* m_agent;
    LineSettings::Sip m_settings;
    std::chrono::milliseconds m_retry;
    std::chrono::milliseconds m_pause;
    nua_handle_t* m_handle = nullptr;
    QHostAddress m_registrar;         ///< null until looked up
    QList<QHostAddress> m_registrars; ///< all that its name leads to
    QHostAddress m_local;             ///< what Contact tells
    int m_challenges = 0;             ///< since the last success
    bool m_isRegistered = false;
    QTimer m_retryTimer;
    QTimer m_addressTimer;
};

} // namespace platform
