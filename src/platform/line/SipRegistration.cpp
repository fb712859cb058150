#include "platform/line/SipRegistration.h"
#include "common/Guard.h"
#include "platform/line/LineLog.h"
#include <QCryptographicHash>
#include <QHostInfo>
#include <QUdpSocket>
#include <algorithm>
#include <sofia-sip/auth_common.h>
#include <sofia-sip/msg_header.h>
#include <sofia-sip/nua_tag.h>
#include <sofia-sip/sip_tag.h>

namespace platform {
namespace {

using namespace std::chrono_literals;
constexpr std::chrono::milliseconds longestPause = 60s;
constexpr std::chrono::milliseconds addressCheck = 5s;

QByteArray hostText(const QHostAddress& address) {
    const auto text = address.toString();
    return (address.protocol() == QAbstractSocket::IPv6Protocol ? u'[' + text + u']' : text).toUtf8();
}

QByteArray sipUri(const QString& user, const QByteArray& host, int port = 0) {
    auto uri = QByteArray("sip:");
    if (!user.isEmpty())
        uri += user.toUtf8().toPercentEncoding("+*#") + '@';
    uri += host;
    return port ? uri + ':' + QByteArray::number(port) : uri;
}

QByteArray nameOf(const QString& domain) {
    const QHostAddress address(domain);
    return address.isNull() ? domain.toUtf8() : hostText(address);
}

/// What the stack takes instead of the password under the scheme "HA1+Digest". A plain password it would cut
/// at a colon.
QByteArray hashedPassword(const LineSettings::Sip& settings, const QByteArray& quotedRealm) {
    const auto realm = quotedRealm.startsWith('"') ? quotedRealm.mid(1, quotedRealm.size() - 2) : quotedRealm;
    const auto text = settings.loginName.toUtf8() + ':' + realm + ':' + settings.password.toUtf8();
    return "HA1+" + QCryptographicHash::hash(text, QCryptographicHash::Md5).toHex();
}

} // namespace

SipRegistration::SipRegistration(nua_t* agent, const LineSettings::Sip& settings,
                                 std::chrono::milliseconds retry) :
    m_agent(agent),
    m_settings(settings), m_retry(retry), m_pause(retry) {
    m_retryTimer.setSingleShot(true);
    common::connectGuarded(common::Origin::Timer, &m_retryTimer, &QTimer::timeout, this,
                           [this] { lookUpRegistrar(); });
    common::connectGuarded(common::Origin::Timer, &m_addressTimer, &QTimer::timeout, this,
                           [this] { followAddress(); });
    m_retryTimer.start(0ms);
    m_addressTimer.start(addressCheck);
}

SipRegistration::~SipRegistration() {
    dropHandle();
}

void SipRegistration::lookUpRegistrar() {
    QHostInfo::lookupHost(m_settings.registrar, this, [this](const QHostInfo& info) {
        common::guarded(common::Origin::Answer, [&] {
            const auto wanted = QHostAddress(m_settings.address).protocol();
            const auto found = info.addresses();
            if (!found.isEmpty())
                m_registrars = found;
            const auto usable =
                std::find_if(found.begin(), found.end(),
                             [wanted](const QHostAddress& address) { return address.protocol() == wanted; });
            if (usable == found.end())
                fail(QStringLiteral("the registrar's name cannot be resolved"), false);
            else
                registerAt(*usable);
        });
    });
}

void SipRegistration::registerAt(const QHostAddress& registrar) {
    m_registrar = registrar;
    m_local = localAddress();
    if (m_local.isNull())
        fail(QStringLiteral("no network leads to the registrar"), false);
    else
        sendRegister();
}

void SipRegistration::sendRegister() {
    const auto identity = sipUri(m_settings.user, nameOf(m_settings.domain));
    const auto registrar = sipUri({}, nameOf(m_settings.domain));
    const auto route = sipUri({}, hostText(m_registrar), m_settings.registrarPort);
    const auto contact = '<' + sipUri(m_settings.user, hostText(m_local), m_settings.port) + '>';
    const auto expiry = QByteArray::number(qint64(m_settings.expiry.count()));

    dropHandle();
    m_challenges = 0;
    m_handle = nua_handle(m_agent, nullptr, SIPTAG_TO_STR(identity.constData()),
                          SIPTAG_FROM_STR(identity.constData()), TAG_END());
    nua_register(m_handle, NUTAG_REGISTRAR(registrar.constData()), NUTAG_PROXY(route.constData()),
                 NUTAG_OUTBOUND("no-outbound no-validate no-natify no-options-keepalive"),
                 SIPTAG_CONTACT_STR(contact.constData()), SIPTAG_EXPIRES_STR(expiry.constData()), TAG_END());
}

/// Our address as the registrar sees it: that of the network card which leads there. It is told explicitly,
/// because a machine with several cards would otherwise announce the first one.
QHostAddress SipRegistration::localAddress() const {
    const QHostAddress bound(m_settings.address);
    if (bound != QHostAddress(QHostAddress::AnyIPv4) && bound != QHostAddress(QHostAddress::AnyIPv6))
        return bound;
    QUdpSocket probe;
    probe.connectToHost(m_registrar, quint16(m_settings.registrarPort));
    return probe.state() == QAbstractSocket::ConnectedState ? probe.localAddress() : QHostAddress();
}

void SipRegistration::takeAnswer(int status, const char* phrase, const sip_t* answer) {
    if (status < 200)
        return;
    if (status < 300)
        return succeed();
    const bool isChallenge = status == 401 || status == 407;
    if (isChallenge && answer && authenticate(*answer))
        return;
    fail(QStringLiteral("%1 %2").arg(status).arg(QString::fromUtf8(phrase)), isChallenge || status == 403);
}

/// A second challenge in a row means that the password was refused; a nonce that merely went stale is
/// answered by the stack itself.
bool SipRegistration::authenticate(const sip_t& answer) {
    const auto* challenge =
        answer.sip_www_authenticate ? answer.sip_www_authenticate : answer.sip_proxy_authenticate;
    if (!challenge || qstricmp(challenge->au_scheme, "Digest") != 0 || ++m_challenges > 1)
        return false;
    const QByteArray realm = msg_header_find_param(challenge->au_common, "realm=");
    const auto login =
        "HA1+Digest:" + realm + ':' + m_settings.loginName.toUtf8() + ':' + hashedPassword(m_settings, realm);
    nua_authenticate(m_handle, NUTAG_AUTH(login.constData()), TAG_END());
    return true;
}

void SipRegistration::succeed() {
    if (!m_isRegistered)
        qCInfo(lineLog) << "SIP: registered at" << m_settings.registrar;
    m_isRegistered = true;
    m_challenges = 0;
    m_pause = m_retry;
}

void SipRegistration::fail(const QString& reason, bool isRefused) {
    // Routers lock an extension out for a while after wrong passwords in a row.
    if (isRefused)
        m_pause = std::max(m_retry, longestPause);
    qCWarning(lineLog) << "SIP: not registered at" << m_settings.registrar << "-" << reason << "- again in"
                       << m_pause.count() << "ms";
    m_isRegistered = false;
    dropHandle();
    m_retryTimer.start(m_pause);
    m_pause = std::max(m_retry, std::min(m_pause * 2, longestPause));
}

void SipRegistration::followAddress() {
    if (m_registrar.isNull())
        return;
    const auto local = localAddress();
    if (local.isNull() || local == m_local)
        return;
    qCInfo(lineLog) << "SIP: the network has changed";
    m_pause = m_retry;
    m_retryTimer.start(0ms);
}

bool SipRegistration::signOff() {
    m_retryTimer.stop();
    m_addressTimer.stop();
    if (!m_handle || !m_isRegistered)
        return false;
    nua_unregister(m_handle, TAG_END());
    return true;
}

void SipRegistration::dropHandle() {
    if (m_handle)
        nua_handle_destroy(m_handle);
    m_handle = nullptr;
}

} // namespace platform
