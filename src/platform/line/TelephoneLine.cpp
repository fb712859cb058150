#include "platform/line/TelephoneLine.h"
#include "common/Guard.h"

namespace platform {

BasicCAPI32::BasicCAPI32(QObject* parent) : QObject(parent) {
    m_next.setSingleShot(true);
    common::connectGuarded(common::Origin::Call, &m_next, &QTimer::timeout, this, [this] { tellOne(); });
}

void BasicCAPI32::arrived(const QString& called, const QString& caller, const QString& format,
                          bool isInternational) {
    m_arrived.push_back({called, national(caller, isInternational), format});
    if (!m_next.isActive())
        m_next.start(0);
}

void BasicCAPI32::dropArrived() {
    m_arrived.clear();
}

/// The handler may show a box and so run the event loop, and may stop the line.
void BasicCAPI32::tellOne() {
    if (m_arrived.empty())
        return;
    const Call call = m_arrived.front();
    m_arrived.pop_front();
    if (!m_arrived.empty())
        m_next.start(0);
    Q_EMIT IncomingCall(call.called, call.caller, call.format);
}

QString BasicCAPI32::national(const QString& caller, bool isInternational) const {
    const QString full = isInternational ? u'+' + caller : caller;
    for (const QString& prefix : {u'+' + m_countryCode, QStringLiteral("00") + m_countryCode})
        if (!m_countryCode.isEmpty() && full.startsWith(prefix) && full.size() > prefix.size()) {
            const QString rest = full.mid(prefix.size());
            return rest.startsWith(u'0') ? rest : u'0' + rest;
        }
    return caller;
}

} // namespace platform
