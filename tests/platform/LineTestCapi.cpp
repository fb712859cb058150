#include "common/RunTimeError.h"
#include "platform/line/CapiMessage.h"
#include "platform/line/LineFactory.h"
#include "support/LineSupport.h"
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QThread>
#include <QtEndian>
#include <atomic>
#include <gtest/gtest.h>

using namespace platform;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QByteArray word(quint16 number) {
    QByteArray bytes(2, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray structure(const QByteArray& content) {
    return char(content.size()) + content;
}

QByteArray message(quint16 application, const QByteArray& command, quint16 number, const QByteArray& rest) {
    return word(quint16(8 + rest.size())) + word(application) + command + word(number) + rest;
}

QByteArray connectInd(quint16 application, const QByteArray& caller, quint32 plci = 0x101) {
    QByteArray rest(4, '\0');
    qToLittleEndian(plci, rest.data());
    rest += word(16) +
            structure("\xc1"
                      "4455") +
            structure(caller) + QByteArray(6, '\0');
    return message(application, "\x02\x82", 77, rest);
}

} // namespace

TEST(CapiMessage, CallersNumber) {
    const std::tuple<QByteArray, QString> cases[] = {{"\x21\x83"
                                                      "441234567",
                                                      u"441234567"_s},
                                                     {QByteArray("\0\x80"
                                                                 "0441234567",
                                                                 12),
                                                      u"0441234567"_s},
                                                     {"\x21\xa3"
                                                      "441234567",
                                                      u""_s},             // restricted
                                                     {"\x21\xc3", u""_s}, // not available
                                                     {"\xa1"
                                                      "0441234567",
                                                      u"0441234567"_s},
                                                     {"\x81\x81"
                                                      "044",
                                                      u"044"_s},
                                                     {"", u""_s},
                                                     {"\x21", u""_s}};
    for (const auto& [field, caller] : cases) {
        const auto call = capi::callIn(connectInd(1, field));
        ASSERT_TRUE(call);
        EXPECT_EQ(call->caller, caller) << field.toHex().toStdString();
        EXPECT_EQ(call->called, u"4455"_s);
    }
}

TEST(CapiMessage, BrokenMessagesAreNoCalls) {
    const auto whole = connectInd(1, "\x21\x83"
                                     "441234567");
    const auto numbersEnd = whole.size() - 6;
    for (qsizetype length = 0; length < numbersEnd; ++length)
        EXPECT_FALSE(capi::callIn(whole.left(length))) << length;
    for (qsizetype length = 0; length < 12; ++length)
        EXPECT_FALSE(capi::header(whole.left(length))) << length;
    auto longLength = whole;
    longLength[14] = char(0xff);
    EXPECT_FALSE(capi::callIn(longLength));
}

namespace {

/// A CAPI in the network, on the loopback, in a thread of its own since the library waits for its answers.
class RemoteCapi : public QThread {
  public:
    RemoteCapi() { start(); }

    ~RemoteCapi() override {
        m_isEnding = true;
        wait();
    }

    quint16 port() {
        while (!m_port)
            yieldCurrentThread();
        return m_port;
    }

    std::atomic<int> callsToSend = 0;
    std::atomic<bool> dropConnection = false;
    std::atomic<quint16> listenResult = 0;
    std::atomic<int> ignored = 0; ///< CONNECT_RESP with "ignore" that came back

  private:
    void run() override {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost, 0);
        m_port = server.serverPort();
        while (!m_isEnding) {
            server.waitForNewConnection(5);
            while (auto* client = server.nextPendingConnection())
                m_clients.emplace_back(client)->setParent(nullptr);
            for (const auto& client : m_clients)
                serve(*client);
            if (dropConnection.exchange(false))
                m_clients.clear();
        }
        m_clients.clear();
    }

    void serve(QTcpSocket& client) {
        client.waitForReadyRead(5);
        QByteArray header(2, '\0');
        while (client.peek(header.data(), 2) == 2 &&
               client.bytesAvailable() >= qFromBigEndian<quint16>(header.data()))
            answer(client, client.read(qFromBigEndian<quint16>(header.data())).mid(2));
        if (&client == m_listener && callsToSend > 0) {
            --callsToSend;
            send(client, connectInd(1, "\x11\x83"
                                       "41441234567"));
        }
    }

    void answer(QTcpSocket& client, const QByteArray& request) {
        const auto command = request.mid(4, 2);
        const auto number = qFromLittleEndian<quint16>(request.constData() + 6);
        if (command == "\xf2\xff") { // registration
            send(client, message(0, "\xf3\xff", number, word(0)));
        } else if (command == "\x05\x80") { // LISTEN_REQ
            m_listener = &client;
            send(client, message(1, "\x05\x81", number, request.mid(8, 4) + word(listenResult)));
        } else if (command == "\x02\x83" && request.mid(8, 6) == QByteArray("\x01\x01\0\0\x01\0", 6)) {
            ++ignored;
        }
    }

    static void send(QTcpSocket& client, const QByteArray& text) {
        QByteArray header(2, '\0');
        qToBigEndian(quint16(text.size() + 2), header.data());
        client.write(header + text);
        client.waitForBytesWritten(1000);
    }

    std::atomic<quint16> m_port = 0;
    std::atomic<bool> m_isEnding = false;
    std::vector<std::unique_ptr<QTcpSocket>> m_clients;
    QTcpSocket* m_listener = nullptr;
};

/// Lets the library find the remote CAPI through the user's folder.
class UserFolder {
  public:
    explicit UserFolder(quint16 port) : m_previous(qgetenv("HOME")) {
        QFile file(m_folder.filePath(u".capi20rc"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("REMOTE rcapi 127.0.0.1 " + QByteArray::number(port) + "\n");
        qputenv("HOME", QFile::encodeName(m_folder.path()));
    }

    ~UserFolder() { qputenv("HOME", m_previous); }

  private:
    QTemporaryDir m_folder;
    QByteArray m_previous;
};

} // namespace

// One test, since the library reads the user's folder only once in a process.
TEST(CapiLine, ReportsCallsLeavesThemAloneAndComesBackByItself) {
    RemoteCapi remote;
    const UserFolder folder(remote.port());
    LineSettings settings;
    settings.kind = LineSettings::Kind::Capi;
    settings.retry = 50ms;
    LineWatcher phone(createLine(settings));

    remote.listenResult = 0x2002;
    EXPECT_THROW(phone.line->Start(), common::RunTimeError);
    remote.listenResult = 0;
    ASSERT_TRUE(phone.line->IsAvailable());
    phone.line->Start();
    remote.callsToSend = 2;
    ASSERT_TRUE(phone.waitForCalls(2));
    EXPECT_EQ(phone.calls.at(0), (LineWatcher::Call{u"4455"_s, u"0441234567"_s}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return remote.ignored == 2; }));

    remote.dropConnection = true;
    ASSERT_TRUE(QTest::qWaitFor([&] { return !remote.dropConnection; }));
    remote.callsToSend = 1;
    EXPECT_TRUE(phone.waitForCalls(3));
    phone.line->Stop();
}
