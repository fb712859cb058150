#include "platform/line/SipLine.h"
#include "common/Guard.h"
#include "common/RunTimeError.h"
#include "platform/line/SipAgent.h"
#include <QHostAddress>

namespace platform {

SipLine::SipLine(const LineSettings::Sip& settings, std::chrono::milliseconds retry, QObject* parent) :
    BasicCAPI32(parent), m_settings(settings), m_retry(retry) {
    m_timer.setInterval(std::chrono::milliseconds(20));
    common::connectGuarded(common::Origin::Timer, &m_timer, &QTimer::timeout, this, [this] { tick(); });
}

SipLine::~SipLine() = default;

bool SipLine::IsAvailable() {
    const bool isExtension = m_settings.registrar.isEmpty() || !m_settings.user.isEmpty();
    return m_settings.port > 0 && m_settings.registrarPort > 0 && isExtension &&
           !QHostAddress(m_settings.address).isNull();
}

void SipLine::Start() {
    if (m_agent)
        return;
    if (!IsAvailable())
        throw common::RunTimeError(
            common::kPlatformFailure,
            QStringLiteral("Die SIP-Leitung ist in tavolino.ini unvollständig oder falsch "
                           "eingerichtet."));
    m_agent = std::make_unique<SipAgent>(m_settings, m_retry);
    m_timer.start();
}

void SipLine::Stop() {
    m_timer.stop();
    m_agent.reset();
    dropArrived();
}

void SipLine::tick() {
    m_agent->step();
    while (const auto call = m_agent->takeCall())
        arrived(call->called, call->caller, QStringLiteral("SIP"));
}

} // namespace platform
