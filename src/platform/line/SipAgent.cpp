#include "platform/line/SipAgent.h"
#include "common/RunTimeError.h"
#include "platform/line/LineLog.h"
#include "platform/line/SipIdentity.h"
#include "platform/line/SipRegistration.h"
#include <QHostAddress>
#include <QTcpServer>
#include <QUdpSocket>
#include <cstdarg>
#include <sofia-sip/msg_addr.h>
#include <sofia-sip/nta_tag.h>
#include <sofia-sip/nua_tag.h>
#include <sofia-sip/sip_status.h>
#include <sofia-sip/sip_tag.h>
#include <sofia-sip/su_log.h>

namespace platform {
namespace {

using namespace std::chrono_literals;

/// A caller who vanished without CANCEL must not stay for ever; no proxy lets ring longer than three minutes.
constexpr auto longestRinging = 5min;
/// So many calls at once are an attack. What comes beyond is reported as well, so that a real call among them
/// is not lost, but does not ring.
constexpr size_t mostRinging = 64;
constexpr int stepsAtOnce = 8;

void logStack(void*, const char* format, va_list arguments) {
    qCDebug(lineLog).noquote() << "SIP:" << QString::vasprintf(format, arguments).trimmed();
}

su_root_t* createRoot() {
    su_init();
    su_log_redirect(nullptr, logStack, nullptr);
    su_root_t* root = su_root_create(nullptr);
    if (root)
        su_root_threading(root, 0);
    return root;
}

QByteArray listenUrl(const LineSettings::Sip& settings) {
    const bool isV6 = QHostAddress(settings.address).protocol() == QAbstractSocket::IPv6Protocol;
    const auto host = isV6 ? u'[' + settings.address + u']' : settings.address;
    return QStringLiteral("sip:%1:%2").arg(host).arg(settings.port).toUtf8();
}

[[noreturn]] void refusePort(const LineSettings::Sip& settings, const QString& detail) {
    throw common::RunTimeError(
        common::kPlatformFailure,
        QStringLiteral("Die Telefonleitung kann nicht geöffnet werden, der SIP-Port %1 ist belegt oder die "
                       "Adresse \"%2\" gehört nicht zu diesem Computer.")
            .arg(settings.port)
            .arg(settings.address),
        detail);
}

/// The stack would only tell that it failed, and leak.
void checkPort(const LineSettings::Sip& settings) {
    const QHostAddress address(settings.address);
    QUdpSocket udp;
    if (!udp.bind(address, quint16(settings.port), QUdpSocket::DontShareAddress))
        refusePort(settings, udp.errorString());
    QTcpServer tcp;
    if (!tcp.listen(address, quint16(settings.port)))
        refusePort(settings, tcp.errorString());
}

/// The values of a header that the stack does not parse itself.
QByteArrayList unparsed(const sip_t& sip, const char* name) {
    QByteArrayList values;
    for (const auto* header = sip.sip_unknown; header; header = header->un_next) {
        if (qstricmp(header->un_name, name) == 0 && header->un_value)
            values << header->un_value;
    }
    return values;
}

QByteArray privacyOf(const sip_t& sip) {
    QByteArrayList values;
    for (const auto* value = sip.sip_privacy ? sip.sip_privacy->priv_values : nullptr; value && *value;
         ++value)
        values << *value;
    return values.join(';');
}

/// The address that a packet came from.
QHostAddress senderOf(msg_t* message) {
    const su_sockaddr_t* sender = message ? msg_addr(message) : nullptr;
    if (!sender)
        return {};
    const QHostAddress address(&sender->su_sa);
    // An IPv4 caller at an IPv6 socket.
    bool isV4 = false;
    const quint32 v4 = address.toIPv4Address(&isV4);
    return isV4 ? QHostAddress(v4) : address;
}

QByteArray uriText(const url_t* url) {
    QByteArray text(2048, '\0');
    const auto length = url_e(text.data(), int(text.size()), url);
    return length > 0 && length < text.size() ? text.left(length) : QByteArray();
}

} // namespace

SipAgent::SipAgent(const LineSettings::Sip& settings, std::chrono::milliseconds retry) :
    m_onlyKnown(settings.onlyKnown) {
    checkPort(settings);
    const auto url = listenUrl(settings);
    m_root = createRoot();
    if (m_root)
        m_nua = nua_create(m_root, &SipAgent::onEvent, reinterpret_cast<nua_magic_t*>(this),
                           NUTAG_URL(url.constData()), NUTAG_MEDIA_ENABLE(0), NUTAG_AUTOALERT(0),
                           NUTAG_AUTOANSWER(0), NUTAG_SESSION_TIMER(0), NUTAG_MIN_SE(1), NTATAG_MERGE_482(1),
                           NUTAG_USER_AGENT("Tavolino"),
                           SIPTAG_ALLOW_STR("INVITE, ACK, CANCEL, BYE, OPTIONS, UPDATE, PRACK"), TAG_END());
    if (!m_nua) {
        if (m_root)
            su_root_destroy(m_root);
        su_deinit();
        refusePort(settings, QString::fromUtf8(url));
    }
    if (!settings.registrar.isEmpty())
        m_registration = std::make_unique<SipRegistration>(m_nua, settings, retry);
}

SipAgent::~SipAgent() {
    if (m_registration && m_registration->signOff())
        stepUntil(m_isSignedOff, 500ms);
    m_registration.reset();
    for (const auto& [handle, limit] : m_ringing)
        nua_handle_destroy(handle);
    m_ringing.clear();
    nua_shutdown(m_nua);
    if (stepUntil(m_isShutDown, 500ms)) {
        nua_destroy(m_nua);
        su_root_destroy(m_root);
        su_deinit();
    } else {
        // The stack refuses to be destroyed half-way; what is left goes with the process.
        qCWarning(lineLog) << "SIP: the stack did not shut down in time";
    }
}

void SipAgent::step() {
    giveUpOldCalls();
    for (int i = 0; i < stepsAtOnce; ++i)
        su_root_step(m_root, 0);
}

std::optional<SipAgent::Call> SipAgent::takeCall() {
    if (m_arrived.empty())
        return {};
    auto call = m_arrived.front();
    m_arrived.pop_front();
    return call;
}

bool SipAgent::stepUntil(const bool& done, std::chrono::milliseconds limit) {
    const QDeadlineTimer deadline(limit);
    while (!done && !deadline.hasExpired())
        su_root_step(m_root, 5);
    return done;
}

void SipAgent::onEvent(nua_event_t event, int status, const char* phrase, nua_t*, nua_magic_t* self,
                       nua_handle_t* handle, nua_hmagic_t*, const sip_t* sip, tagi_t* tags) noexcept {
    reinterpret_cast<SipAgent*>(self)->handle(event, status, phrase, handle, sip, tags);
}

void SipAgent::handle(nua_event_t event, int status, const char* phrase, nua_handle_t* handle,
                      const sip_t* sip, tagi_t* tags) {
    switch (event) {
    case nua_i_invite:
        if (status >= 200 || !sip || m_ringing.contains(handle))
            break;
        if (mayCall(senderOf(nua_current_request(m_nua))))
            ring(handle, *sip);
        else
            nua_respond(handle, SIP_403_FORBIDDEN, TAG_END());
        break;
    case nua_i_state:
        forgetIfTerminated(handle, tags);
        break;
    case nua_r_register:
        if (m_registration && m_registration->owns(handle))
            m_registration->takeAnswer(status, phrase, sip);
        break;
    case nua_r_unregister:
        m_isSignedOff = m_isSignedOff || status >= 200;
        break;
    case nua_r_shutdown:
        m_isShutDown = m_isShutDown || status >= 200;
        break;
    case nua_i_options:
    case nua_i_message:
    case nua_i_subscribe:
    case nua_i_notify:
    case nua_i_refer:
    case nua_i_publish:
    case nua_i_register:
    case nua_i_info:
    case nua_i_method:
        refuseOther(status, handle);
        break;
    default:
        break;
    }
}

bool SipAgent::mayCall(const QHostAddress& caller) const {
    return !m_onlyKnown || sipIdentity::isLocal(caller) ||
           (m_registration && m_registration->isRegistrar(caller));
}

void SipAgent::ring(nua_handle_t* handle, const sip_t& invite) {
    if (m_ringing.size() < mostRinging)
        nua_respond(handle, SIP_180_RINGING, TAG_END());
    else
        nua_respond(handle, SIP_486_BUSY_HERE, TAG_END());
    m_ringing.emplace(handle, QDeadlineTimer(longestRinging));
    const auto from = invite.sip_from ? uriText(invite.sip_from->a_url) : QByteArray();
    const auto to = invite.sip_to ? uriText(invite.sip_to->a_url) : QByteArray();
    const auto asserted = unparsed(invite, "P-Asserted-Identity");
    m_arrived.push_back({sipIdentity::userPart(to), sipIdentity::caller(asserted, from, privacyOf(invite))});
}

void SipAgent::forgetIfTerminated(nua_handle_t* handle, tagi_t* tags) {
    int state = nua_callstate_init;
    tl_gets(tags, NUTAG_CALLSTATE_REF(state), TAG_END());
    if (state != nua_callstate_terminated)
        return;
    m_ringing.erase(handle);
    nua_handle_destroy(handle);
}

/// What is no call and is answered by the stack leaves a handle behind that belongs to us.
void SipAgent::refuseOther(int status, nua_handle_t* handle) {
    if (!handle || handle == nua_default(m_nua) || m_ringing.contains(handle) ||
        (m_registration && m_registration->owns(handle)))
        return;
    if (status < 200)
        nua_respond(handle, SIP_405_METHOD_NOT_ALLOWED, NUTAG_WITH_THIS(m_nua), TAG_END());
    nua_handle_destroy(handle);
}

void SipAgent::giveUpOldCalls() {
    for (auto& [handle, limit] : m_ringing) {
        if (!limit.hasExpired())
            continue;
        nua_respond(handle, SIP_480_TEMPORARILY_UNAVAILABLE, TAG_END());
        limit = QDeadlineTimer(longestRinging);
    }
}

} // namespace platform
