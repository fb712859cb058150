#include "platform/line/CapiLine.h"
#include "common/Guard.h"
#include "common/RunTimeError.h"
#include "platform/line/CapiMessage.h"
#include "platform/line/LineLog.h"
#include <algorithm>

namespace platform {
namespace {

constexpr std::chrono::milliseconds answerLimit{1000};

} // namespace

CapiLine::CapiLine(const LineSettings::Capi& settings, std::chrono::milliseconds retry, QObject* parent) :
    BasicCAPI32(parent), m_settings(settings), m_retry(retry) {
    m_retryTimer.setSingleShot(true);
    common::connectGuarded(common::Origin::Timer, &m_retryTimer, &QTimer::timeout, this,
                           [this] { reopen(); });
}

CapiLine::~CapiLine() {
    Stop();
}

bool CapiLine::IsAvailable() {
    if (!m_library)
        m_library = std::make_unique<capi::Library>();
    return m_library->isInstalled();
}

void CapiLine::Start() {
    if (m_notifier)
        return;
    if (!IsAvailable())
        throw common::RunTimeError(common::kPlatformFailure,
                                   QStringLiteral("Es ist kein ISDN-Anschluss vorhanden."));
    open();
    watch();
}

void CapiLine::Stop() {
    m_retryTimer.stop();
    dropNotifier();
    m_library.reset();
    dropArrived();
}

void CapiLine::open() {
    m_library->open();
    const int first = std::max(m_settings.controller, 1);
    const int last = std::max(m_settings.controller ? first : m_library->controllers(), 1);
    for (int controller = first; controller <= last; ++controller)
        listen(quint16(controller));
}

/// Calls that come in before the answer count.
void CapiLine::listen(quint16 controller) {
    m_library->put(capi::listenRequest(m_library->application(), ++m_number, controller));
    while (const auto answer = m_library->get(answerLimit)) {
        const auto header = capi::header(*answer);
        if (!header || header->command != capi::kListenConf) {
            take(*answer);
            continue;
        }
        const auto result = capi::listenResult(*answer);
        if (result == 0)
            return;
        m_library->close();
        throw common::RunTimeError(
            common::kPlatformFailure,
            QStringLiteral("Der ISDN-Anschluss %1 kann nicht abgehört werden.").arg(controller),
            QStringLiteral("LISTEN_CONF 0x%1").arg(result, 4, 16, QChar(u'0')));
    }
    m_library->close();
    throw common::RunTimeError(common::kPlatformFailure,
                               QStringLiteral("Der ISDN-Anschluss %1 antwortet nicht.").arg(controller));
}

void CapiLine::watch() {
    m_notifier = std::make_unique<QSocketNotifier>(m_library->descriptor(), QSocketNotifier::Read);
    common::connectGuarded(common::Origin::Answer, m_notifier.get(), &QSocketNotifier::activated, this,
                           [this] { onMessages(); });
}

/// Perhaps from within its own signal.
void CapiLine::dropNotifier() {
    if (!m_notifier)
        return;
    m_notifier->setEnabled(false);
    m_notifier.release()->deleteLater();
}

void CapiLine::reopen() {
    try {
        open();
        qCInfo(lineLog) << "CAPI: listening again";
        m_isLossLogged = false;
    } catch (const common::RunTimeError& error) {
        if (!m_isLossLogged)
            qCWarning(lineLog) << "CAPI:" << error.sentence() << error.detail();
        m_isLossLogged = true;
        m_retryTimer.start(m_retry);
        return;
    }
    watch();
}

void CapiLine::onMessages() {
    while (const auto message = m_library->get())
        take(*message);
    if (m_library->isLost()) {
        qCWarning(lineLog) << "CAPI: the controller is gone";
        dropNotifier();
        m_library->close();
        m_retryTimer.start(m_retry);
    }
}

void CapiLine::take(const QByteArray& message) {
    const auto header = capi::header(message);
    if (!header)
        return;
    if (header->command == capi::kConnectInd) {
        m_library->put(capi::ignoreCall(*header));
        if (const auto call = capi::callIn(message))
            arrived(call->called, call->caller, QStringLiteral("ISDN"), call->isInternational);
    } else if (header->command == capi::kDisconnectInd || header->command == capi::kInfoInd) {
        m_library->put(capi::acknowledge(*header));
    }
}

} // namespace platform
