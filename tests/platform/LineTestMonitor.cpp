#include "common/Guard.h"
#include "common/RunTimeError.h"
#include "platform/line/CallMonitorReader.h"
#include "platform/line/LineFactory.h"
#include "support/LineSupport.h"
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

TEST(CallMonitorReader, PicksTheIncomingCalls) {
    const std::tuple<QByteArray, QStringList> cases[] = {
        {"16.07.26 18:01:02;RING;0;0441234567;620;SIP0;\r\n", {u"0441234567"_s}},
        {"16.07.26 18:01:02;RING;0;+41791234567;620;SIP0;\n16.07.26 18:01:03;RING;1;044;620;SIP0;\n",
         {u"+41791234567"_s, u"044"_s}},
        {"16.07.26 18:01:02;RING;0;;620;SIP0;\r\n", {u""_s}},
        {"16.07.26 18:01:02;RING;0;044;620\r\n", {u"044"_s}},
        {"16.07.26 18:01:02;CALL;1;10;620;0441234567;SIP0;\r\n", {}},
        {"16.07.26 18:01:02;CONNECT;0;10;0441234567;\r\n16.07.26 18:01:02;DISCONNECT;0;7;\r\n", {}},
        {";;;;;;\n\n\r\n;RING;\nRING;0;044;620\n", {}},
        {"16.07.26 18:01:02;RING;0;044;620;SIP0;", {}},
        {QByteArray(3000, 'x') + ";RING;0;044;620;\nd;RING;0;055;620;\n", {u"055"_s}},
        {"d;RING;0;044;620;" + QByteArray(2000, 'x') + "\nd;RING;0;055;620;\n", {u"055"_s}},
        {QByteArray("\0\xff\x80;RING;\n", 11) + "d;RING;0;055;620;\n", {u"055"_s}},
    };
    for (const auto& [stream, callers] : cases) {
        for (const int pieceSize : {1, 7, 100000}) {
            platform::CallMonitorReader reader;
            QStringList found;
            for (int at = 0; at < stream.size(); at += pieceSize) {
                for (const auto& call : reader.feed(stream.mid(at, pieceSize)))
                    found << call.caller;
            }
            EXPECT_EQ(found, callers) << stream.left(60).toStdString() << " in pieces of " << pieceSize;
        }
    }
}

namespace {

/// A router on the loopback.
class Router {
  public:
    bool open(int port) { return m_server.listen(QHostAddress::LocalHost, quint16(port)); }

    void close() {
        m_server.close();
        m_client.reset();
    }

    bool waitForClient() {
        if (!QTest::qWaitFor([this] { return m_server.hasPendingConnections(); }))
            return false;
        m_client.reset(m_server.nextPendingConnection());
        m_client->setParent(nullptr);
        return true;
    }

    void say(const QByteArray& text) {
        m_client->write(text);
        m_client->flush();
    }

    bool clientLeaves() {
        return QTest::qWaitFor([this] { return m_client->state() == QAbstractSocket::UnconnectedState; });
    }

  private:
    QTcpServer m_server;
    std::unique_ptr<QTcpSocket> m_client;
};

} // namespace

TEST(CallMonitorLine, ManyCallsAtOnceLeaveTheOthersTheirTurn) {
    constexpr size_t kCalls = 500;
    platform::LineSettings settings;
    settings.kind = platform::LineSettings::Kind::Monitor;
    settings.monitor = {u"127.0.0.1"_s, freePort()};
    Router router;
    ASSERT_TRUE(router.open(settings.monitor.port));
    LineWatcher phone(platform::createLine(settings));
    size_t before = kCalls;
    QTimer others;
    others.callOnTimeout([&] {
        before = phone.calls.size();
        others.stop();
    });
    QObject::connect(phone.line.get(), &platform::BasicCAPI32::IncomingCall, &others, [&] {
        if (phone.calls.size() == 1)
            others.start(0);
    });
    phone.line->Start();
    ASSERT_TRUE(router.waitForClient());
    router.say(QByteArray("d;RING;0;0441234567;620;SIP0;\n").repeated(kCalls));
    ASSERT_TRUE(phone.waitForCalls(kCalls));
    EXPECT_LT(before, kCalls / 2);
}

TEST(CallMonitorLine, ReportsCallsAndComesBackByItself) {
    platform::LineSettings settings;
    settings.kind = platform::LineSettings::Kind::Monitor;
    settings.retry = 50ms;
    settings.monitor = {u"127.0.0.1"_s, freePort()};
    LineWatcher phone(platform::createLine(settings));
    phone.line->Start(); // the router is not there yet

    Router router;
    ASSERT_TRUE(router.open(settings.monitor.port));
    ASSERT_TRUE(router.waitForClient());
    router.say("d;RING;0;0441234567;620;SIP0;\r\nd;RI");
    ASSERT_TRUE(phone.waitForCalls(1));
    router.close(); // in the middle of a line, which is then forgotten

    ASSERT_TRUE(router.open(settings.monitor.port));
    ASSERT_TRUE(router.waitForClient());
    router.say("NG;0;1;620;SIP0;\r\nd;RING;0;0791234567;621;SIP0;\r\n");
    ASSERT_TRUE(phone.waitForCalls(2));
    const std::vector<LineWatcher::Call> expected{{u"620"_s, u"0441234567"_s}, {u"621"_s, u"0791234567"_s}};
    EXPECT_EQ(phone.calls, expected);

    phone.line->Stop();
    EXPECT_TRUE(router.clientLeaves());
    phone.line->Start();
    ASSERT_TRUE(router.waitForClient());
    router.say("d;RING;0;3;620;SIP0;\n");
    EXPECT_TRUE(phone.waitForCalls(3));
}

TEST(CallMonitorLine, EachCallStandsForItselfAndThoseOfTheOwnCountryAreNational) {
    platform::LineSettings settings;
    settings.kind = platform::LineSettings::Kind::Monitor;
    settings.monitor = {u"127.0.0.1"_s, freePort()};
    LineWatcher phone(platform::createLine(settings));
    std::vector<common::Origin> errors;
    common::setErrorHandler([&](common::Origin origin, std::exception_ptr) { errors.push_back(origin); });
    QObject::connect(phone.line.get(), &platform::BasicCAPI32::IncomingCall, phone.line.get(), [&] {
        if (phone.calls.size() == 1)
            throw common::RunTimeError(1, u"x"_s);
        if (phone.calls.size() == 8)
            phone.line->Stop();
    });
    Router router;
    ASSERT_TRUE(router.open(settings.monitor.port));
    phone.line->Start();
    ASSERT_TRUE(router.waitForClient());
    QByteArray rings;
    for (const char* number : {"+41441234567", "0041791234567", "+410441234567", "+49301234567",
                               "0049301234567", "41441234567", "0041", "+41", "+41111"})
        rings += QByteArray("d;RING;0;") + number + ";620;\n";
    router.say(rings);
    ASSERT_TRUE(phone.waitForCalls(8));
    QTest::qWait(1);
    EXPECT_EQ(phone.callers(),
              (QStringList{u"0441234567"_s, u"0791234567"_s, u"0441234567"_s, u"+49301234567"_s,
                           u"0049301234567"_s, u"41441234567"_s, u"0041"_s, u"+41"_s}))
        << "the handler has stopped the line before the last one";
    EXPECT_EQ(errors, std::vector<common::Origin>{common::Origin::Call});
    common::setErrorHandler({});

    settings.countryCode.clear();
    LineWatcher asDelivered(platform::createLine(settings));
    asDelivered.line->Start();
    ASSERT_TRUE(router.waitForClient());
    router.say("d;RING;0;+41441234567;620;\n");
    ASSERT_TRUE(asDelivered.waitForCalls(1));
    EXPECT_EQ(asDelivered.callers(), QStringList{u"+41441234567"_s});
}
