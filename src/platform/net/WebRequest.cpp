#include "platform/net/WebRequest.h"
#include "platform/net/Ftp.h"
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr int kInvalidServerResponse = 12152;
constexpr int kRedirectFailed = 12156;

QString tr(const char* text) {
    return QObject::tr(text);
}

} // namespace

bool isWebAddress(const QUrl& url) {
    return url.isValid() && !url.host().isEmpty() && url.scheme().startsWith(u"http");
}

QNetworkRequest webRequest(const QUrl& url, const QString& certificate) {
    QNetworkRequest request(url);
    // Followed, a request by POST would become one by GET, and mean something else to the server.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    // Qt makes an empty answer of packed bytes that are cut or damaged.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    if (!certificate.isEmpty()) {
        QSslConfiguration tls = request.sslConfiguration();
        tls.addCaCertificates(QSslCertificate::fromPath(certificate));
        request.setSslConfiguration(tls);
    }
    return request;
}

int statusOf(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

bool isPacked(const QNetworkReply& reply) {
    const QByteArray encoding = reply.rawHeader("Content-Encoding").trimmed().toLower();
    return !encoding.isEmpty() && encoding != "identity";
}

WebProblem problemOf(QNetworkReply::NetworkError error) {
    switch (error) {
    case QNetworkReply::HostNotFoundError:
        return {Ftp::kNameNotResolved,
                tr("Der Name des Servers ist nicht bekannt, oder es besteht keine Verbindung zum Internet.")};
    case QNetworkReply::ConnectionRefusedError:
        return {Ftp::kCannotConnect, tr("Der Server nimmt keine Verbindung an.")};
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ContentReSendError:
        return {Ftp::kConnectionAborted, tr("Der Server hat die Verbindung mitten in der Antwort beendet.")};
    case QNetworkReply::SslHandshakeFailedError:
        return {Ftp::kCertificateInvalid, tr("Dem Zertifikat des Servers kann nicht vertraut werden.")};
    default:
        return {Ftp::kCannotConnect, tr("Es besteht keine Verbindung zum Server.")};
    }
}

WebProblem problemOfRedirect() {
    return {kRedirectFailed,
            tr("Der Server schickt die Anfrage an eine andere Adresse, der nicht gefolgt wird.")};
}

WebProblem problemOfUnreadable() {
    return {kInvalidServerResponse, tr("Die Antwort des Servers kann nicht gelesen werden.")};
}

WebProblem problemOfAddress() {
    return {Ftp::kInvalidUrl, tr("Die Adresse des Servers ist ungültig.")};
}

WebProblem problemOfSilence() {
    return {Ftp::kTimeout, tr("Der Server hat nicht rechtzeitig geantwortet.")};
}

WebProblem problemOfSize() {
    return {kInvalidServerResponse, tr("Die Antwort des Servers ist zu gross.")};
}

} // namespace platform
