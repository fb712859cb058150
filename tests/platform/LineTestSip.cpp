#include "common/RunTimeError.h"
#include "platform/line/LineFactory.h"
#include "support/LineSupport.h"
#include <QElapsedTimer>
#include <QNetworkDatagram>
#include <QRandomGenerator>
#include <QTest>
#include <QUdpSocket>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

LineWatcher sipLine(int port, int registrarPort = 0) {
    platform::LineSettings settings;
    settings.kind = platform::LineSettings::Kind::Sip;
    settings.retry = 200ms;
    settings.sip.address = u"127.0.0.1"_s;
    settings.sip.port = port;
    if (registrarPort) {
        settings.sip.registrar = settings.sip.domain = u"127.0.0.1"_s;
        settings.sip.registrarPort = registrarPort;
        settings.sip.user = u"620"_s;
        settings.sip.loginName = u"login620"_s;
        settings.sip.password = u"ge:heim;%"_s;
    }
    return LineWatcher(platform::createLine(settings));
}

/// Tells that the line's registrar has taken it, which only its log does.
class Registered {
  public:
    Registered() : m_former(qInstallMessageHandler(note)) { s_is = false; }

    ~Registered() { qInstallMessageHandler(m_former); }

    bool comes() const {
        return QTest::qWaitFor([] { return s_is; }, 20000);
    }

  private:
    static void note(QtMsgType, const QMessageLogContext&, const QString& text) {
        s_is = s_is || text.startsWith(u"SIP: registered at"_s);
    }

    static inline bool s_is = false;
    QtMessageHandler m_former;
};

/// A caller that sends what it likes.
class RawCaller {
  public:
    explicit RawCaller(int port) : m_port(quint16(port)) { m_socket.bind(QHostAddress::LocalHost, 0); }

    void send(const QByteArray& packet) { m_socket.writeDatagram(packet, QHostAddress::LocalHost, m_port); }

    /// A whole request; `callId` makes it a call of its own.
    QByteArray request(const QByteArray& method, const QByteArray& callId,
                       const QByteArray& extra = {}) const {
        const auto own = "127.0.0.1:" + QByteArray::number(m_socket.localPort());
        return method + " sip:620@127.0.0.1:" + QByteArray::number(m_port) + " SIP/2.0\r\nVia: SIP/2.0/UDP " +
               own + ";branch=z9hG4bK" + callId +
               "\r\nFrom: <sip:0791234567@127.0.0.1>;tag=1\r\nTo: <sip:620@127.0.0.1>" +
               "\r\nCall-ID: " + callId + "\r\nCSeq: 1 " + method + "\r\nContact: <sip:" + own +
               ">\r\nMax-Forwards: 70\r\n" + extra + "Content-Length: 0\r\n\r\n";
    }

    /// Runs the event loop until an answer with this status has come.
    bool hears(const QByteArray& status) {
        return QTest::qWaitFor(
            [&] {
                while (m_socket.hasPendingDatagrams()) {
                    QByteArray packet(m_socket.pendingDatagramSize(), '\0');
                    m_socket.readDatagram(packet.data(), packet.size());
                    m_heard << packet.mid(8, 3);
                }
                return m_heard.contains(status);
            },
            5000);
    }

    const QByteArrayList& heard() const { return m_heard; }

  private:
    quint16 m_port;
    QUdpSocket m_socket;
    QByteArrayList m_heard;
};

} // namespace

TEST(SipLine, RingsAndNeverPicksUp) {
    struct Case {
        QString from;
        QString extra;
        QString caller;
        QStringList options{};
    };

    const Case cases[] = {
        {u"sip:0441234567@10.0.0.1;user=phone"_s, u"X-Extra: 1"_s, u"0441234567"_s},
        {u"sip:+41441234567@pbx"_s, u"Subject: Pizza"_s, u"0441234567"_s},
        {u"sip:620@pbx"_s, u"P-Asserted-Identity: \"A, B\" <sip:0791234567@pbx>"_s, u"0791234567"_s},
        {u"sip:620@pbx"_s, u"P-Asserted-Identity: <tel:+49791234567>"_s, u"+49791234567"_s},
        {u"sip:anonymous@anonymous.invalid"_s, u"Privacy: none"_s, u""_s},
        {u"sip:0441234567@pbx"_s, u"Privacy: critical;id"_s, u""_s},
        {u"sip:0441234567@pbx"_s, u"Session-Expires: 30"_s, u"0441234567"_s},
        {u"sip:1@a"_s, u"X-Over: TCP"_s, u"1"_s, {u"-t"_s, u"t1"_s}},
    };
    const int port = freePort();
    auto phone = sipLine(port);
    phone.line->Start();
    QStringList expected;
    for (const auto& [from, extra, caller, options] : cases) {
        const auto sipp =
            Sipp::caller(u"call_cancel.xml"_s, port,
                         QStringList{u"-key"_s, u"from_uri"_s, from, u"-key"_s, u"extra"_s, extra} + options);
        EXPECT_TRUE(sipp->succeeds()) << from.toStdString() << sipp->errors().toStdString();
        expected << caller;
    }
    EXPECT_EQ(phone.callers(), expected);
    EXPECT_EQ(phone.calls.at(0).called, u"620"_s);
}

TEST(SipLine, TakesManyCallsAtOnceAndARepeatedInviteOnce) {
    const int port = freePort();
    auto phone = sipLine(port);
    phone.line->Start();
    RawCaller caller(port);
    const auto invite = caller.request("INVITE", "a");
    caller.send(invite);
    caller.send(invite);
    ASSERT_TRUE(caller.hears("180"));
    caller.send(invite);
    for (int i = 0; i < 40; ++i)
        caller.send(caller.request("INVITE", "many" + QByteArray::number(i)));
    ASSERT_TRUE(phone.waitForCalls(41));
    EXPECT_EQ(phone.calls.size(), 41U);
    EXPECT_FALSE(caller.heard().contains("200"));
}

TEST(SipLine, RingsWhateverTheExchangeAddsToTheCall) {
    const int port = freePort();
    auto phone = sipLine(port);
    phone.line->Start();
    size_t count = 0;
    for (const QByteArray extra :
         {"Content-Type: multipart/mixed;boundary=x\r\n", "Content-Type: application/ISUP\r\n",
          "Require: 100rel\r\n", "Require: timer\r\nSession-Expires: 30\r\n", "Accept: application/foo\r\n",
          "Expires: 120\r\n", "Alert-Info: <http://127.0.0.1/bell>\r\nHistory-Info: <sip:1@a>;index=1\r\n",
          "Diversion: <sip:1@a>\r\n"}) {
        RawCaller caller(port);
        caller.send(caller.request("INVITE", "extra" + QByteArray::number(qint64(++count)), extra));
        EXPECT_TRUE(caller.hears("180")) << extra.toStdString() << caller.heard().join(' ').toStdString();
    }
    EXPECT_TRUE(phone.waitForCalls(count));
}

TEST(SipLine, AnswersWhetherItLivesAndRefusesTheRest) {
    const int port = freePort();
    auto phone = sipLine(port);
    phone.line->Start();
    RawCaller caller(port);
    for (const QByteArray method :
         {"MESSAGE", "SUBSCRIBE", "NOTIFY", "REFER", "PUBLISH", "REGISTER", "INFO", "BYE", "FOO"})
        caller.send(caller.request(method, method, "Event: message-summary\r\nRefer-To: <sip:1@a>\r\n"));
    caller.send(caller.request("OPTIONS", "o"));
    EXPECT_TRUE(caller.hears("200"));
    EXPECT_TRUE(phone.calls.empty());
}

TEST(SipLine, SurvivesGarbage) {
    const int port = freePort();
    auto phone = sipLine(port);
    phone.line->Start();
    RawCaller caller(port);
    QRandomGenerator random(20260101);
    const auto invite = caller.request("INVITE", "x", "P-Asserted-Identity: <sip:1@a>\r\n");
    for (const QByteArray packet :
         {"", "\r\n\r\n", "INVITE", "INVITE sip: SIP/2.0\r\n\r\n", "SIP/2.0 200 OK\r\n\r\n"})
        caller.send(packet);
    for (int i = 0; i < 300; ++i) {
        auto packet = invite.left(random.bounded(int(invite.size())));
        for (int j = 0; j < 5 && !packet.isEmpty(); ++j)
            packet[random.bounded(int(packet.size()))] = char(random.bounded(256));
        caller.send(packet);
        if (i % 50 == 0) { // or the system drops what does not fit into the socket
            RawCaller pacemaker(port);
            pacemaker.send(pacemaker.request("OPTIONS", "pace" + QByteArray::number(i)));
            ASSERT_TRUE(pacemaker.hears("200"));
        }
    }
    RawCaller honest(port);
    honest.send(honest.request("INVITE", "honest", "P-Asserted-Identity: <sip:4711@a>\r\n"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return phone.callers().contains(u"4711"_s); }));
}

TEST(SipLine, RefusesToStartOnATakenPortOrWithoutAUser) {
    const int port = freePort();
    auto first = sipLine(port);
    first.line->Start();
    auto second = sipLine(port);
    EXPECT_THROW(second.line->Start(), common::RunTimeError);
    first.line->Stop();
    EXPECT_NO_THROW(second.line->Start());

    platform::LineSettings settings;
    settings.kind = platform::LineSettings::Kind::Sip;
    settings.sip.registrar = u"127.0.0.1"_s;
    EXPECT_THROW(platform::createLine(settings)->Start(), common::RunTimeError);
}

TEST(SipLine, RegistersRefreshesAndSignsOff) {
    const int registrarPort = freePort();
    auto phone = sipLine(freePort(), registrarPort);
    const auto registrar = Sipp::registrar(u"registrar.xml"_s, registrarPort);
    phone.line->Start();
    EXPECT_TRUE(registrar->succeeds()) << registrar->errors().toStdString();

    const auto signOff = Sipp::registrar(u"registrar_signoff.xml"_s, registrarPort);
    phone.line->Stop();
    EXPECT_TRUE(signOff->succeeds()) << signOff->errors().toStdString();
}

TEST(SipLine, KeepsTryingUntilTheRegistrarIsThereAndStopsWhenItIsGone) {
    const int registrarPort = freePort();
    const int port = freePort();
    auto phone = sipLine(port, registrarPort);
    phone.line->Start();
    RawCaller caller(port);
    caller.send(caller.request("INVITE", "a"));
    ASSERT_TRUE(phone.waitForCalls(1)); // not registered, and yet it rings

    const Registered registered;
    const auto registrar = Sipp::registrar(u"registrar_grants.xml"_s, registrarPort);
    EXPECT_TRUE(registrar->succeeds()) << registrar->errors().toStdString();
    ASSERT_TRUE(registered.comes());

    QUdpSocket silentRegistrar;
    ASSERT_TRUE(silentRegistrar.bind(QHostAddress::LocalHost, quint16(registrarPort)));
    QElapsedTimer stopping;
    stopping.start();
    phone.line->Stop();
    EXPECT_LT(stopping.elapsed(), 2000);
    ASSERT_TRUE(silentRegistrar.hasPendingDatagrams());

    phone.line->Start(); // nobody answers the log-in
    while (silentRegistrar.hasPendingDatagrams())
        silentRegistrar.receiveDatagram();
    ASSERT_TRUE(QTest::qWaitFor([&] { return silentRegistrar.hasPendingDatagrams(); }));
    stopping.start();
    phone.line->Stop();
    EXPECT_LT(stopping.elapsed(), 2000);
}

TEST(SipLine, DoesNotRepeatARefusedPassword) {
    const int registrarPort = freePort();
    const auto registrar = Sipp::registrar(u"registrar_refuses.xml"_s, registrarPort);
    auto phone = sipLine(freePort(), registrarPort);
    phone.line->Start();
    EXPECT_TRUE(registrar->succeeds()) << registrar->errors().toStdString();
}
