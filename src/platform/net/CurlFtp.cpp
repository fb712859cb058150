#include "platform/net/CurlFtp.h"
#include "common/Guard.h"
#include "platform/net/Endpoints.h"
#include <QEventLoop>
#include <QFile>
#include <QHostInfo>
#include <QUrl>
#include <atomic>
#include <curl/curl.h>
#include <thread>

namespace platform {
namespace {

constexpr long kSecondsToConnect = 30;
/// A line that carries nothing for so long is dead.
constexpr long kSecondsOfSilence = 30;
constexpr long kUploadBuffer = 512 * 1024;

/// In the words of the operating system's error numbers. `lastCommand` tells a refused user from a refused
/// password.
int numberOf(CURLcode code, const QByteArray& lastCommand) {
    switch (code) {
    case CURLE_OK:
        return 0;
    case CURLE_URL_MALFORMAT:
    case CURLE_UNSUPPORTED_PROTOCOL:
        return Ftp::kInvalidUrl;
    case CURLE_COULDNT_RESOLVE_HOST:
        return Ftp::kNameNotResolved;
    case CURLE_COULDNT_CONNECT:
        return Ftp::kCannotConnect;
    case CURLE_OPERATION_TIMEDOUT:
    case CURLE_FTP_ACCEPT_TIMEOUT:
        return Ftp::kTimeout;
    case CURLE_ABORTED_BY_CALLBACK:
        return Ftp::kCancelled;
    case CURLE_LOGIN_DENIED:
        if (lastCommand == "USER")
            return Ftp::kIncorrectUser;
        return lastCommand == "PASS" ? Ftp::kIncorrectPassword : Ftp::kLoginFailure;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
        return Ftp::kCertificateInvalid;
    case CURLE_USE_SSL_FAILED:
    case CURLE_SSL_CONNECT_ERROR:
        return Ftp::kTlsRefused;
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
        return Ftp::kConnectionReset;
    case CURLE_PARTIAL_FILE:
        return Ftp::kConnectionAborted;
    case CURLE_OUT_OF_MEMORY:
    case CURLE_FAILED_INIT:
    case CURLE_READ_ERROR:
        return Ftp::kInternalError;
    default:
        // What is left is the server's own refusal: rights, quota, a folder that is not there.
        return Ftp::kExtendedError;
    }
}

QByteArray address(const Endpoints& server, const QString& remotePath) {
    QUrl url;
    url.setScheme(QStringLiteral("ftp"));
    url.setHost(server.strFTPServer);
    url.setPort(server.lngFTPPort);
    // A "%" or "?" in a file's name is one.
    url.setPath(u'/' + remotePath, QUrl::DecodedMode);
    return url.toEncoded(QUrl::FullyEncoded);
}

} // namespace

/// All that libcurl's thread touches. While it runs, the owner's thread touches only what is atomic.
struct CurlFtp::Session : QObject {
    CURL* curl = nullptr;
    Endpoints server;
    QFile file;
    char error[CURL_ERROR_SIZE] = "";
    QByteArray lastResponse, lastCommand;
    curl_off_t sent = 0;
    bool connected = false;
    std::atomic<bool> givenUp = false;
    std::function<void(const FtpStatus&)> onStatus;

    /// Told in the owner's thread, which this object belongs to.
    void tell(const FtpStatus& status) {
        QMetaObject::invokeMethod(
            this,
            [this, status] {
                common::guarded(common::Origin::Answer, [&] {
                    if (onStatus)
                        onStatus(status);
                });
            },
            Qt::QueuedConnection);
    }

    static Session& of(void* data) { return *static_cast<Session*>(data); }

    static size_t read(char* to, size_t size, size_t count, void* data) {
        const qint64 bytes = of(data).file.read(to, qint64(size * count));
        return bytes < 0 ? CURL_READFUNC_ABORT : size_t(bytes);
    }

    static size_t header(char* line, size_t size, size_t count, void* data) {
        of(data).lastResponse = QByteArray(line, qsizetype(size * count)).trimmed();
        return size * count;
    }

    /// Keeps only which command it was: what follows may be the password.
    static int debug(CURL*, curl_infotype type, char* text, size_t size, void* data) {
        if (type == CURLINFO_HEADER_OUT)
            of(data).lastCommand = QByteArray(text, qsizetype(qMin(size, size_t(4))));
        return 0;
    }

    static int progress(void* data, curl_off_t, curl_off_t, curl_off_t, curl_off_t sent) {
        Session& session = of(data);
        if (sent > session.sent)
            session.tell({FtpStatus::RequestSent, {}, sent - session.sent});
        session.sent = sent;
        return session.givenUp ? 1 : 0;
    }

    void open();
    int logIn();
    int transfer();
};

void CurlFtp::Session::open() {
    curl = curl_easy_init();
    const auto set = [this](CURLoption option, auto value) { curl_easy_setopt(curl, option, value); };
    set(CURLOPT_ERRORBUFFER, error);
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_NOPROXY, "*");
    set(CURLOPT_USERNAME, server.strFTPUser.toUtf8().constData());
    set(CURLOPT_PASSWORD, server.strFTPPassword.toUtf8().constData());
    set(CURLOPT_FTP_FILEMETHOD, long(CURLFTPMETHOD_NOCWD));
    set(CURLOPT_USE_SSL, long(server.ftpTls ? CURLUSESSL_ALL : CURLUSESSL_NONE));
    if (!server.certificate.isEmpty())
        set(CURLOPT_CAINFO, QFile::encodeName(server.certificate).constData());
    set(CURLOPT_CONNECTTIMEOUT, kSecondsToConnect);
    set(CURLOPT_SERVER_RESPONSE_TIMEOUT, kSecondsOfSilence);
    set(CURLOPT_LOW_SPEED_LIMIT, 1L);
    set(CURLOPT_LOW_SPEED_TIME, kSecondsOfSilence);
    set(CURLOPT_UPLOAD_BUFFERSIZE, kUploadBuffer);
    set(CURLOPT_READFUNCTION, &Session::read);
    set(CURLOPT_READDATA, static_cast<void*>(this));
    set(CURLOPT_HEADERFUNCTION, &Session::header);
    set(CURLOPT_HEADERDATA, static_cast<void*>(this));
    set(CURLOPT_DEBUGFUNCTION, &Session::debug);
    set(CURLOPT_DEBUGDATA, static_cast<void*>(this));
    set(CURLOPT_VERBOSE, 1L);
    set(CURLOPT_NOPROGRESS, 0L);
    set(CURLOPT_XFERINFOFUNCTION, &Session::progress);
    set(CURLOPT_XFERINFODATA, static_cast<void*>(this));
}

/// In libcurl's thread.
int CurlFtp::Session::logIn() {
    tell({FtpStatus::ResolvingName, server.strFTPServer});
    const QHostInfo host = QHostInfo::fromName(server.strFTPServer);
    if (host.addresses().isEmpty()) {
        qstrncpy(error, "host not found", sizeof error);
        return kNameNotResolved;
    }
    tell({FtpStatus::ConnectingToServer, host.addresses().constFirst().toString()});
    curl_easy_setopt(curl, CURLOPT_URL, address(server, {}).constData());
    curl_easy_setopt(curl, CURLOPT_NOBODY, 1L);
    const CURLcode code = curl_easy_perform(curl);
    curl_easy_setopt(curl, CURLOPT_NOBODY, 0L);
    const char* ip = nullptr;
    curl_easy_getinfo(curl, CURLINFO_PRIMARY_IP, &ip);
    if (code != CURLE_COULDNT_CONNECT && ip && *ip)
        tell({FtpStatus::ConnectedToServer, QString::fromLatin1(ip)});
    return numberOf(code, lastCommand);
}

/// In libcurl's thread.
int CurlFtp::Session::transfer() {
    sent = 0;
    const CURLcode code = curl_easy_perform(curl);
    return numberOf(code, lastCommand);
}

CurlFtp::CurlFtp() : m_session(std::make_unique<Session>()) {
    static const CURLcode once = curl_global_init(CURL_GLOBAL_DEFAULT);
    Q_UNUSED(once);
}

CurlFtp::~CurlFtp() {
    if (m_session->curl)
        curl_easy_cleanup(m_session->curl);
}

/// Runs the work in a thread of its own, and the event loop meanwhile.
int CurlFtp::beside(const std::function<int()>& work) {
    const common::NestedEventLoop nested;
    QEventLoop loop;
    int result = 0;
    std::thread thread([&] {
        result = work();
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    thread.join();
    return result;
}

int CurlFtp::Connect(const Endpoints& server) {
    if (m_session->curl)
        return kIncorrectState;
    m_session->givenUp = false;
    m_session->onStatus = onStatus;
    m_session->server = server;
    m_session->open();
    const int result = beside([this] { return m_session->logIn(); });
    m_session->connected = result == 0;
    return result;
}

bool CurlFtp::IsConnected() const {
    return m_session->connected;
}

int CurlFtp::PutFile(const QString& localPath, const QString& remotePath) {
    if (!m_session->connected)
        return kIncorrectState;
    if (m_session->givenUp)
        return kCancelled;
    m_session->file.setFileName(localPath);
    if (!m_session->file.open(QIODevice::ReadOnly)) {
        qstrncpy(m_session->error, "the file cannot be read", sizeof m_session->error);
        return kInternalError;
    }
    CURL* const curl = m_session->curl;
    curl_easy_setopt(curl, CURLOPT_URL, address(m_session->server, remotePath).constData());
    curl_easy_setopt(curl, CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(curl, CURLOPT_INFILESIZE_LARGE, curl_off_t(m_session->file.size()));
    const int result = beside([this] { return m_session->transfer(); });
    m_session->file.close();
    return result;
}

void CurlFtp::Close() {
    if (!m_session->curl)
        return;
    const bool wasOpen = std::exchange(m_session->connected, false);
    if (wasOpen)
        m_session->tell({FtpStatus::ClosingConnection});
    // A server that does not answer any more is not waited for in this thread.
    beside([this] {
        curl_easy_cleanup(m_session->curl);
        return 0;
    });
    m_session->curl = nullptr;
    if (wasOpen && onStatus)
        onStatus({FtpStatus::ConnectionClosed});
}

void CurlFtp::giveUp() {
    m_session->givenUp = true;
}

QString CurlFtp::LastResponse() const {
    return QString::fromUtf8(m_session->lastResponse);
}

QString CurlFtp::Detail() const {
    return QString::fromUtf8(m_session->error);
}

} // namespace platform
