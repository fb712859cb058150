#include "platform/net/CurlFtp.h"
#include "common/Guard.h"
#include "platform/net/Endpoints.h"
#include <QEventLoop>
#include <QFile>
#include <QScopedValueRollback>
#include <QTimer>
#include <QUrl>
#include <atomic>
#include <curl/curl.h>
#include <mutex>
#include <netdb.h>
#include <poll.h>
#include <set>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace platform {
namespace {

constexpr long kUploadBuffer = 512L * 1024;
constexpr int kMillisecondsToListen = 500;
constexpr long kSecondsToStayConnected = 24L * 3600;

bool isRefusal(const QByteArray& response) {
    return response.startsWith('4') || response.startsWith('5');
}

/// In the words of the operating system's error numbers. `lastCommand` tells a refused user from a refused
/// password.
int numberOf(CURLcode code, const QByteArray& lastCommand, const QByteArray& lastResponse) {
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
        return isRefusal(lastResponse) ? Ftp::kExtendedError : Ftp::kConnectionAborted;
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

/// All that libcurl's thread touches. While it runs, the owner's thread touches only what is atomic or
/// locked.
struct CurlFtp::Session : QObject {
    CURL* curl = nullptr;
    Endpoints server;
    QFile file;
    char error[CURL_ERROR_SIZE] = "";
    QByteArray lastResponse, lastCommand;
    curl_off_t sent = 0;
    bool connected = false;
    /// Whether libcurl may open the line to the server, which it would do anew by itself when that one broke.
    bool mayLogIn = false;
    bool wasKeptFromLogIn = false;
    std::atomic<bool> givenUp = false;
    std::function<void(const FtpStatus&)> onStatus;
    /// Several while libcurl tries the addresses of a server. Only its own thread changes them.
    std::set<curl_socket_t> lines;
    std::mutex linesMutex;
    bool isSending = false;
    /// Whether the server said why it would not take the rest of a file.
    bool hasRefused = false;

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
        const qint64 bytes = of(data).file.read(to, qint64(size) * qint64(count));
        return bytes < 0 ? CURL_READFUNC_ABORT : size_t(bytes);
    }

    static size_t header(char* text, size_t size, size_t count, void* data) {
        Session& session = of(data);
        session.lastResponse = session.withoutPassword(QByteArray(text, qsizetype(size * count)).trimmed());
        session.tell({FtpStatus::ResponseReceived, {}, qint64(size * count)});
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

    static curl_socket_t openSocket(void* data, curlsocktype, curl_sockaddr* address);
    static int closeSocket(void* data, curl_socket_t socket);

    QByteArray withoutPassword(QByteArray text) const {
        const QByteArray password = server.strFTPPassword.toUtf8();
        return password.isEmpty() ? text : text.replace(password, "***");
    }

    void open(const Limits& limits);
    int logIn();
    int transfer();
    void hearLastWords(curl_socket_t line);
    void hangUp();
};

void CurlFtp::Session::open(const Limits& limits) {
    curl = curl_easy_init();
    const auto set = [this](CURLoption option, auto value) { curl_easy_setopt(curl, option, value); };
    set(CURLOPT_ERRORBUFFER, error);
    set(CURLOPT_NOSIGNAL, 1L);
    // A name server that does not answer is not waited for once it was given up.
    set(CURLOPT_QUICK_EXIT, 1L);
    set(CURLOPT_NOPROXY, "*");
    set(CURLOPT_USERNAME, server.strFTPUser.toUtf8().constData());
    set(CURLOPT_PASSWORD, server.strFTPPassword.toUtf8().constData());
    set(CURLOPT_FTP_FILEMETHOD, long(CURLFTPMETHOD_NOCWD));
    set(CURLOPT_USE_SSL, long(server.ftpTls ? CURLUSESSL_ALL : CURLUSESSL_NONE));
    if (!server.certificate.isEmpty())
        set(CURLOPT_CAINFO, QFile::encodeName(server.certificate).constData());
    set(CURLOPT_CONNECTTIMEOUT, limits.secondsToConnect);
    set(CURLOPT_SERVER_RESPONSE_TIMEOUT, limits.secondsOfSilence);
    set(CURLOPT_LOW_SPEED_LIMIT, 1L);
    set(CURLOPT_LOW_SPEED_TIME, limits.secondsOfSilence);
    // One connection for all files, however long the pauses.
    set(CURLOPT_MAXAGE_CONN, kSecondsToStayConnected);
    set(CURLOPT_UPLOAD_BUFFERSIZE, kUploadBuffer);
    set(CURLOPT_OPENSOCKETFUNCTION, &Session::openSocket);
    set(CURLOPT_OPENSOCKETDATA, static_cast<void*>(this));
    set(CURLOPT_CLOSESOCKETFUNCTION, &Session::closeSocket);
    set(CURLOPT_CLOSESOCKETDATA, static_cast<void*>(this));
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

/// For the line to the server and for each file's data, which have ports of their own.
curl_socket_t CurlFtp::Session::openSocket(void* data, curlsocktype, curl_sockaddr* address) {
    Session& session = of(data);
    char host[NI_MAXHOST] = "", port[NI_MAXSERV] = "";
    getnameinfo(&address->addr, address->addrlen, host, sizeof host, port, sizeof port,
                NI_NUMERICHOST | NI_NUMERICSERV);
    const bool isLine = QByteArray(port).toInt() == session.server.lngFTPPort;
    if (isLine && !session.mayLogIn) {
        session.wasKeptFromLogIn = true;
        return CURL_SOCKET_BAD;
    }
    const curl_socket_t socket =
        ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
    if (isLine) {
        const std::lock_guard lock(session.linesMutex);
        session.lines.insert(socket);
        session.tell({FtpStatus::ConnectingToServer, QString::fromLatin1(host)});
    }
    return socket;
}

int CurlFtp::Session::closeSocket(void* data, curl_socket_t socket) {
    Session& session = of(data);
    if (session.isSending && !session.givenUp && session.lines.contains(socket))
        session.hearLastWords(socket);
    const std::lock_guard lock(session.linesMutex);
    session.lines.erase(socket);
    return ::close(socket);
}

/// libcurl hangs up when a server takes no more of a file, without listening why. Words under TLS cannot be
/// read, and still tell that the server lives.
void CurlFtp::Session::hearLastWords(curl_socket_t line) {
    pollfd listening{line, POLLIN, 0};
    char words[512];
    if (poll(&listening, 1, kMillisecondsToListen) <= 0)
        return;
    const ssize_t size = recv(line, words, sizeof words, MSG_DONTWAIT);
    hasRefused = size > 0;
    if (hasRefused && !server.ftpTls)
        header(words, 1, size_t(size), this);
}

/// Whoever waits for the server in libcurl's thread waits no longer.
void CurlFtp::Session::hangUp() {
    const std::lock_guard lock(linesMutex);
    for (const curl_socket_t line : lines)
        shutdown(line, SHUT_RDWR);
}

/// In libcurl's thread.
int CurlFtp::Session::logIn() {
    tell({FtpStatus::ResolvingName, server.strFTPServer});
    mayLogIn = true;
    curl_easy_setopt(curl, CURLOPT_URL, address(server, {}).constData());
    curl_easy_setopt(curl, CURLOPT_NOBODY, 1L);
    const CURLcode code = curl_easy_perform(curl);
    curl_easy_setopt(curl, CURLOPT_NOBODY, 0L);
    mayLogIn = false;
    const char* ip = nullptr;
    curl_easy_getinfo(curl, CURLINFO_PRIMARY_IP, &ip);
    if (code != CURLE_COULDNT_CONNECT && ip && *ip)
        tell({FtpStatus::ConnectedToServer, QString::fromLatin1(ip)});
    return numberOf(code, lastCommand, lastResponse);
}

/// In libcurl's thread.
int CurlFtp::Session::transfer() {
    sent = 0;
    wasKeptFromLogIn = hasRefused = false;
    isSending = true;
    const CURLcode code = curl_easy_perform(curl);
    isSending = false;
    if (wasKeptFromLogIn) {
        qstrncpy(error, "the connection is gone", sizeof error);
        return kConnectionAborted;
    }
    // A file that the server would not take is no reason not to send the next one.
    mayLogIn = code == CURLE_SEND_ERROR && hasRefused;
    return mayLogIn && isRefusal(lastResponse) ? int(kExtendedError)
                                               : numberOf(code, lastCommand, lastResponse);
}

CurlFtp::CurlFtp(const Limits& limits) : m_limits(limits), m_session(std::make_unique<Session>()) {
    static const CURLcode once = curl_global_init(CURL_GLOBAL_DEFAULT);
    Q_UNUSED(once);
}

CurlFtp::~CurlFtp() {
    if (!m_session->curl)
        return;
    m_session->hangUp();
    curl_easy_cleanup(m_session->curl);
}

/// Runs the work in a thread of its own, and the event loop meanwhile.
int CurlFtp::beside(const std::function<int()>& work) {
    const QScopedValueRollback busy(m_busy, true);
    const common::NestedEventLoop nested;
    QEventLoop loop;
    int result = 0;
    std::atomic<bool> isDone = false;
    std::thread thread([&] {
        result = work();
        isDone = true;
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    // The program ends: nobody waits for the server any more.
    if (!isDone)
        m_session->givenUp = true;
    thread.join();
    return result;
}

int CurlFtp::Connect(const Endpoints& server) {
    if (m_session->curl || m_busy)
        return kIncorrectState;
    m_session->givenUp = false;
    m_session->onStatus = onStatus;
    m_session->server = server;
    m_session->open(m_limits);
    const int result = beside([this] { return m_session->logIn(); });
    m_session->connected = result == 0;
    return result;
}

bool CurlFtp::IsConnected() const {
    return m_session->connected;
}

int CurlFtp::PutFile(const QString& localPath, const QString& remotePath) {
    if (!m_session->connected || m_busy)
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
    if (m_busy)
        return giveUp();
    if (!m_session->curl)
        return;
    const bool wasOpen = std::exchange(m_session->connected, false);
    if (wasOpen)
        m_session->tell({FtpStatus::ClosingConnection});
    if (m_session->givenUp)
        m_session->hangUp();
    // libcurl takes leave of the server, and would wait half a minute for its answer.
    QTimer patience;
    patience.setSingleShot(true);
    QObject::connect(&patience, &QTimer::timeout, m_session.get(), [this] { m_session->hangUp(); });
    patience.start(m_limits.millisecondsToQuit);
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
    // A server may send several lines at once, and signs that would forge a line of the log.
    const QByteArray& said = m_session->lastResponse;
    QString line = QString::fromUtf8(said.mid(said.lastIndexOf('\n') + 1));
    return line.removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
}

QString CurlFtp::Detail() const {
    return QString::fromUtf8(m_session->withoutPassword(m_session->error));
}

} // namespace platform
