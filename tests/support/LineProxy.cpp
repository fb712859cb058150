#include "tests/support/LineProxy.h"
#include <QQueue>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <utility>

namespace test {
namespace {

/// A server that has said nothing for so long has carried out what it was told.
constexpr int kMillisecondsToAnswer = 300;

struct Orders {
    int delay = 0;
    int roundTrips = 0;
    bool isSilent = false;
    bool hasCut = false;
    QByteArray cutText;
    LineProxy::Cut moment = LineProxy::Cut::BeforeAnswer;
};

/// One connection. It ends by itself when one of its sides does.
class Line : public QObject {
  public:
    Line(QTcpSocket* client, quint16 serverPort, Orders& orders, QObject* parent) :
        QObject(parent), m_client(client), m_orders(orders) {
        m_client->setParent(this);
        for (QTcpSocket* socket : {m_client, &m_server}) {
            socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
            connect(socket, &QTcpSocket::readyRead, this, &Line::passOn);
        }
        connect(m_client, &QTcpSocket::disconnected, this, [this] {
            if (!m_isCut)
                deleteLater();
        });
        connect(&m_server, &QTcpSocket::disconnected, this, &QObject::deleteLater);
        connect(&m_server, &QTcpSocket::errorOccurred, this, &QObject::deleteLater);
        m_server.connectToHost(QHostAddress::LocalHost, serverPort);
    }

    ~Line() override {
        for (QTcpSocket* socket : {m_client, &m_server}) {
            socket->disconnect(this);
            socket->abort();
        }
    }

    void passOn() {
        if (m_orders.isSilent || m_isCut)
            return;
        if (const QByteArray bytes = m_client->readAll(); !bytes.isEmpty())
            ask(bytes);
        if (const QByteArray bytes = m_server.readAll(); !bytes.isEmpty() && !m_isCut) {
            m_request.clear();
            later(m_answers, *m_client, bytes);
        }
    }

  private:
    void ask(const QByteArray& bytes) {
        if (m_request.isEmpty())
            ++m_orders.roundTrips;
        m_request += bytes;
        const bool cuts = !m_orders.cutText.isEmpty() && m_request.contains(m_orders.cutText);
        if (!cuts || m_orders.moment == LineProxy::Cut::BeforeAnswer)
            later(m_requests, m_server, bytes);
        if (cuts)
            cut();
    }

    void later(QQueue<QByteArray>& waiting, QTcpSocket& to, const QByteArray& bytes) {
        waiting.enqueue(bytes);
        const auto send = [&waiting, &to] { to.write(waiting.dequeue()); };
        m_orders.delay > 0 ? QTimer::singleShot(m_orders.delay, Qt::PreciseTimer, this, send) : send();
    }

    void cut() {
        m_isCut = m_orders.hasCut = true;
        m_orders.cutText.clear();
        m_client->abort();
        if (m_orders.moment == LineProxy::Cut::BeforeServer)
            deleteLater();
        else
            QTimer::singleShot(m_orders.delay + kMillisecondsToAnswer, this, &QObject::deleteLater);
    }

    QTcpSocket* m_client;
    QTcpSocket m_server;
    Orders& m_orders;
    QByteArray m_request; ///< all that the client has said since the server's last word
    QQueue<QByteArray> m_requests, m_answers;
    bool m_isCut = false;
};

} // namespace

class LineProxy::Listener : public QTcpServer {
  public:
    explicit Listener(int serverPort) : m_serverPort(quint16(serverPort)) {
        connect(this, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* client = nextPendingConnection())
                new Line(client, m_serverPort, orders, this);
        });
    }

    void open() {
        listen(QHostAddress::LocalHost, port);
        port = serverPort();
    }

    QList<Line*> lines() const {
        QList<Line*> all;
        for (QObject* child : children())
            if (auto* line = dynamic_cast<Line*>(child))
                all << line;
        return all;
    }

    Orders orders;
    quint16 port = 0;

  private:
    quint16 m_serverPort;
};

template <typename Work> void LineProxy::inThread(Work work) const {
    QMetaObject::invokeMethod(m_listener, work, Qt::BlockingQueuedConnection);
}

LineProxy::LineProxy(int serverPort) : m_listener(new Listener(serverPort)) {
    QObject::connect(&m_thread, &QThread::finished, m_listener, &QObject::deleteLater);
    m_listener->moveToThread(&m_thread);
    m_thread.start();
    inThread([this] { m_listener->open(); });
}

LineProxy::~LineProxy() {
    m_thread.quit();
    m_thread.wait();
}

int LineProxy::port() const {
    return m_listener->port;
}

void LineProxy::setDelay(int delay) {
    inThread([&] { m_listener->orders.delay = delay; });
}

int LineProxy::takeRoundTrips() {
    int trips = 0;
    inThread([&] { trips = std::exchange(m_listener->orders.roundTrips, 0); });
    return trips;
}

void LineProxy::cut() {
    inThread([this] { qDeleteAll(m_listener->lines()); });
}

void LineProxy::cutAt(const QByteArray& text, Cut moment) {
    inThread([&] {
        m_listener->orders.hasCut = false;
        m_listener->orders.cutText = text;
        m_listener->orders.moment = moment;
    });
}

bool LineProxy::hasCut() const {
    bool cut = false;
    inThread([&] { cut = m_listener->orders.hasCut; });
    return cut;
}

void LineProxy::setSilent(bool silent) {
    inThread([&] {
        m_listener->orders.isSilent = silent;
        for (Line* line : m_listener->lines())
            line->passOn();
    });
}

void LineProxy::setClosed(bool closed) {
    inThread([&] {
        if (!closed)
            return m_listener->open();
        m_listener->close();
        qDeleteAll(m_listener->lines());
    });
}

} // namespace test
