#pragma once
#include <QByteArray>
#include <QHash>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>

namespace test {

/// A web server on loopback that sends what the test tells it to, byte for byte, and closes the connection:
/// for answers that no well-made server gives.
class AnsweringServer : public QTcpServer {
  public:
    enum class After { Close, Stay };

    explicit AnsweringServer(QByteArray bytes = {}, After after = After::Close) :
        answer(std::move(bytes)), m_after(after) {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* socket = nextPendingConnection())
                connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { answerTo(*socket); });
        });
    }

    QString address() const { return QStringLiteral("http://127.0.0.1:%1").arg(serverPort()); }

    QString url() const { return address() + QStringLiteral("/a.asp"); }

    /// An answer with its length, as servers send it.
    static QByteArray page(const QByteArray& body, const QByteArray& status = "200 OK",
                           const QByteArray& headers = "Content-Type: text/html; charset=utf-8\r\n") {
        return "HTTP/1.1 " + status + "\r\n" + headers +
               "Content-Length: " + QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
    }

    /// Sent to every request; nothing at all while null, so that it is waited for.
    QByteArray answer;
    /// Sent instead to those whose first line holds the key.
    QHash<QString, QByteArray> answersTo;
    /// First lines of the requests, such as "POST /a.asp HTTP/1.1".
    QStringList requests;
    /// All that was asked, head and body.
    QByteArray asked;

  private:
    void answerTo(QTcpSocket& socket) {
        QByteArray& request = m_requests[&socket];
        const QByteArray arrived = socket.readAll();
        asked += arrived;
        request += arrived;
        if (!request.contains("\r\n\r\n"))
            return;
        requests << QString::fromLatin1(request.left(request.indexOf("\r\n")));
        m_requests.remove(&socket);
        QByteArray bytes = answer;
        for (auto special = answersTo.cbegin(); special != answersTo.cend(); ++special)
            if (requests.last().contains(special.key()))
                bytes = special.value();
        if (bytes.isNull())
            return;
        socket.write(bytes);
        if (m_after == After::Close)
            socket.disconnectFromHost();
    }

    After m_after;
    QHash<QTcpSocket*, QByteArray> m_requests;
};

} // namespace test
