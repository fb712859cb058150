#pragma once
#include "platform/line/LineSettings.h"
#include <QDeadlineTimer>
#include <QHostAddress>
#include <deque>
#include <memory>
#include <optional>
#include <sofia-sip/nua.h>
#include <unordered_map>

namespace platform {

class SipRegistration;

/// The SIP stack with its socket. It answers an INVITE with 180 and never picks up, or with 403 where
/// strangers are shut out; it answers OPTIONS; it holds the registration if one is set. Nothing happens
/// except in step(), on the caller's thread.
class SipAgent {
  public:
    struct Call {
        QString called;
        QString caller;
    };

    /// Opens the socket. Throws common::RunTimeError, for instance when the port is taken.
    SipAgent(const LineSettings::Sip& settings, std::chrono::milliseconds retry);
    /// Signs off, which takes up to a second when the registrar is gone.
    ~SipAgent();
    SipAgent(const SipAgent&) = delete;
    SipAgent& operator=(const SipAgent&) = delete;

    /// Handles what has arrived and what is due, without waiting. Not from inside itself.
    void step();
    /// The oldest call that came in and was not taken yet.
    std::optional<Call> takeCall();

  private:
    static void onEvent(nua_event_t event, int status, const char* phrase, nua_t* agent, nua_magic_t* self,
                        nua_handle_t* handle, nua_hmagic_t* handleMagic, const sip_t* sip,
                        tagi_t* tags) noexcept;
    void handle(nua_event_t event, int status, const char* phrase, nua_handle_t* handle, const sip_t* sip,
                tagi_t* tags);
    void ring(nua_handle_t* handle, const sip_t& invite);
    bool mayCall(const QHostAddress& caller) const;
    void forgetIfTerminated(nua_handle_t* handle, tagi_t* tags);
    void refuseOther(int status, nua_handle_t* handle);
    void giveUpOldCalls();
    bool stepUntil(const bool& done, std::chrono::milliseconds limit);

    su_root_t* m_root = nullptr;
    nua_t* m_nua = nullptr;
    std::unique_ptr<SipRegistration> m_registration;
    bool m_onlyKnown = false;
    std::unordered_map<nua_handle_t*, QDeadlineTimer> m_ringing;
    std::deque<Call> m_arrived;
    bool m_isSignedOff = false;
    bool m_isShutDown = false;
};

} // namespace platform
