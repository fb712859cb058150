#pragma once
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>

namespace test {

/// A web server in the test's own process: whoever asks gets these bytes, head and all, whatever he asks.
class AnswerServer : public QTcpServer {
  public:
    enum class After { Close, Stay };

    explicit AnswerServer(QByteArray bytes, After after = After::Close) : answer(std::move(bytes)) {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this, after] {
            QTcpSocket* const socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, after, socket] {
                asked += socket->readAll();
                if (!asked.contains("\r\n\r\n"))
                    return;
                socket->write(answer);
                if (after == After::Close)
                    socket->disconnectFromHost();
            });
        });
    }

    QString url() const { return QStringLiteral("http://127.0.0.1:%1/a.asp").arg(serverPort()); }

    QByteArray answer, asked;
};

} // namespace test
