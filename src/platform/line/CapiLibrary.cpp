#include "platform/line/CapiLibrary.h"
#include "common/RunTimeError.h"
#include <QtEndian>
#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <sys/time.h>
#endif

namespace platform::capi {
namespace {

constexpr unsigned success = 0;
constexpr unsigned queueIsEmpty = 0x1104;
constexpr int mostFalseAlarms = 3;
constexpr qsizetype profileLength = 64;

[[noreturn]] void refuse(const QString& sentence, const QString& detail) {
    throw common::RunTimeError(common::kPlatformFailure, sentence, detail);
}

} // namespace

Library::Library() : m_library(QStringLiteral("capi20"), 3) {
    if (!m_library.load())
        refuse(QStringLiteral("Die ISDN-Leitung kann nicht benützt werden, die CAPI-Bibliothek fehlt."),
               m_library.errorString());
    resolve(m_isInstalled, "capi20_isinstalled");
    resolve(m_register, "capi20_register");
    resolve(m_release, "capi20_release");
    resolve(m_put, "capi20_put_message");
    resolve(m_get, "capi20_get_message");
    resolve(m_wait, "capi20_waitformessage");
    resolve(m_profile, "capi20_get_profile");
    resolve(m_fileno, "capi20_fileno");
}

Library::~Library() {
    close();
}

template <typename Function> void Library::resolve(Function& function, const char* name) {
    function = reinterpret_cast<Function>(m_library.resolve(name));
    if (!function)
        refuse(QStringLiteral(
                   "Die ISDN-Leitung kann nicht benützt werden, die CAPI-Bibliothek ist unbrauchbar."),
               QString::fromLatin1(name));
}

bool Library::isInstalled() const {
    return m_isInstalled() == success;
}

void Library::open() {
    close();
    const unsigned result = m_register(2, 7, 2048, &m_application);
    if (result == success)
        return;
    m_application = 0;
    refuse(QStringLiteral("Die ISDN-Leitung kann nicht geöffnet werden."),
           QStringLiteral("CAPI_REGISTER 0x%1").arg(result, 4, 16, QChar(u'0')));
}

void Library::close() {
    if (m_application)
        m_release(m_application);
    m_application = 0;
    m_isLost = false;
    m_falseAlarms = 0;
}

quint16 Library::controllers() const {
    QByteArray profile(profileLength, '\0');
    if (m_profile(0, reinterpret_cast<unsigned char*>(profile.data())) != success)
        return 0;
    return qFromLittleEndian<quint16>(profile.constData());
}

int Library::descriptor() const {
    return m_application ? m_fileno(m_application) : -1;
}

bool Library::put(QByteArray message) {
    return m_put(m_application, reinterpret_cast<unsigned char*>(message.data())) == success;
}

/// The library's own get may block, so it is asked only when something is there. A connection that was closed
/// stays readable and yet gives nothing.
std::optional<QByteArray> Library::get(std::chrono::milliseconds limit) {
    timeval time{};
    time.tv_sec = long(limit.count() / 1000);
    time.tv_usec = long(limit.count() % 1000 * 1000);
    unsigned char* bytes = nullptr;
    const unsigned waited = m_wait(m_application, &time);
    const unsigned result = waited == success ? m_get(m_application, &bytes) : waited;
    if (result == success && bytes) {
        m_falseAlarms = 0;
        return QByteArray(reinterpret_cast<const char*>(bytes), qFromLittleEndian<quint16>(bytes));
    }
    m_falseAlarms = waited == success ? m_falseAlarms + 1 : 0;
    m_isLost = result != queueIsEmpty || m_falseAlarms >= mostFalseAlarms;
    return {};
}

} // namespace platform::capi
