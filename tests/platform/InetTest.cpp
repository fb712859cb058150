#include "platform/net/QtInet.h"
#include "support/AnsweringServer.h"
#include "support/LineSupport.h"
#include "support/Servers.h"
#include <QTest>
#include <future>
#include <gtest/gtest.h>
#include <thread>

using namespace Qt::StringLiterals;
using platform::QtInet;
using test::AnsweringServer;

namespace {

struct End {
    QString answer, problem;
    QList<int> states;
    qint64 milliseconds = 0;
};

End ask(const QString& url, const QString& certificate = {}, const QtInet::Limits& limits = {}) {
    QtInet inet(certificate, limits);
    End end;
    QObject::connect(&inet, &QtInet::StateChanged, &inet, [&](int state) {
        end.states << state;
        EXPECT_EQ(inet.StillExecuting(), state == QtInet::icRequesting);
    });
    QElapsedTimer taken;
    taken.start();
    inet.Execute(url);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !inet.StillExecuting(); }, 25'000));
    QTest::qWait(20);
    end.milliseconds = taken.elapsed();
    end.answer = inet.Answer();
    end.problem = inet.Problem();
    EXPECT_EQ(end.states,
              (QList<int>{QtInet::icRequesting,
                          end.problem.isEmpty() ? QtInet::icResponseCompleted : QtInet::icError}));
    return end;
}

QByteArray page(const QByteArray& body, const QByteArray& more = {}, const QByteArray& status = "200 OK") {
    return AnsweringServer::page(body, status, more);
}

} // namespace

TEST(Inet, ReadsTheCharacterSetThatIsTold) {
    const struct {
        QByteArray bytes;
        const char* type;
        const char* text;
    } cases[] = {
        {"Z\xc3\xbcrich", "", "Zürich"},
        {"Z\xfcrich", "", "Zürich"},
        {"Z\xfcrich \x80 \x84\x93", "text/html", "Zürich € „“"},
        {"Z\xfcrich", "text/html; charset=utf-8", "Zürich"},
        {"Z\xfcrich \x80", "text/html; Charset=\"ISO-8859-1\"", "Zürich €"},
        {"Z\xc3\xbcrich", "text/html;charset=windows-1252", "ZÃ¼rich"},
        {"Z\xc3\xbcrich", "text/html; charset=unknown-9", "Zürich"},
        {QByteArray("\xff\xfeZ\0\xfc\0", 6), "text/plain; charset=utf-16", "Zü"},
        {"\xef\xbb\xbf<RECORD>", "", "<RECORD>"},
        {"\x81\x8d\x8f\x90\x9d\xff", "", "\u0081\u008d\u008f\u0090\u009dÿ"},
        {"", "text/html; charset=", ""},
    };

    for (const auto& [bytes, type, text] : cases)
        EXPECT_EQ(platform::decodedAnswer(bytes, QString::fromLatin1(type)), QString::fromUtf8(text))
            << type << bytes.toHex().toStdString();
}

TEST(Inet, TellsAnAnswerFromNone) {
    const struct {
        const char* what;
        QByteArray bytes;
        QString answer;
        const char* problem;
    } cases[] = {
        {"answer", page("Z\xfcrich"), u"Zürich"_s, ""},
        {"empty", page(""), {}, ""},
        {"without a length", "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n<RECORD>", u"<RECORD>"_s, ""},
        {"in chunks", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\nab\r\n1\r\nc\r\n0\r\n\r\n",
         u"abc"_s, ""},
        {"error page", page("<html>", {}, "500 Internal Server Error"), u"<html>"_s, ""},
        {"not found", page("<html>", {}, "404 Not Found"), u"<html>"_s, ""},
        {"cut", page("<BESTELLUNGEN><RECORD>").chopped(3), {}, "mitten in der Antwort"},
        {"error page cut",
         page("<html>", {}, "500 Internal Server Error").chopped(3),
         {},
         "mitten in der Antwort"},
        {"cut in the head", "HTTP/1.1 200 OK\r\nConte", {}, "mitten in der Antwort"},
        {"cut between chunks",
         "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\nab\r\n",
         {},
         "mitten in der Antwort"},
        {"nothing", "", {}, "mitten in der Antwort"},
        {"no HTTP", "220 ftp ready\r\n", {}, "mitten in der Antwort"},
        {"as large as may be", page(QByteArray(2000, 'x')), QString(2000, u'x'), ""},
        {"too large", page(QByteArray(2001, 'x')), {}, "zu gross"},
        {"packed and cut", page("\x1f\x8b\x08", "Content-Encoding: gzip\r\n"), {}, "nicht gelesen"},
    };

    for (const auto& [what, bytes, answer, problem] : cases) {
        const AnsweringServer server(bytes);
        const End end = ask(server.url(), {}, {.bytes = 2000});
        EXPECT_EQ(end.answer, answer) << what;
        EXPECT_TRUE(*problem ? end.problem.contains(QString::fromUtf8(problem)) : end.problem.isEmpty())
            << what << ": " << end.problem.toStdString();
        EXPECT_EQ(server.asked.count("POST"), 1) << what;
    }
}

TEST(Inet, PostsWithAnEmptyBody) {
    const AnsweringServer server(page("OK"));
    EXPECT_EQ(ask(server.url() + u"?ID=7&id2=%2521%20Gr%C3%BCezi"_s).answer, u"OK");
    EXPECT_TRUE(server.asked.startsWith("POST /a.asp?ID=7&id2=%2521%20Gr%C3%BCezi HTTP/1.1\r\n"))
        << server.asked.toStdString();
    EXPECT_TRUE(server.asked.contains("Content-Type: application/x-www-form-urlencoded\r\n"));
    EXPECT_TRUE(server.asked.contains("Content-Length: 0\r\n"));
    EXPECT_TRUE(server.asked.contains("Accept-Encoding: identity\r\n"));
}

TEST(Inet, FollowsNoRedirect) {
    const AnsweringServer last(page("OK"));
    for (const char* status : {"301 Moved", "302 Found", "307 Temporary", "308 Permanent"}) {
        const AnsweringServer first(page("", "Location: " + last.url().toUtf8() + "\r\n", status));
        EXPECT_TRUE(ask(first.url()).problem.contains(u"andere Adresse"_s)) << status;
    }
    EXPECT_TRUE(last.requests.isEmpty());
}

TEST(Inet, AnAnswerWithoutEndIsRefusedAtItsBound) {
    std::promise<QString> address;
    std::thread endless([&] {
        AnsweringServer server;
        server.disconnect();
        address.set_value(server.url());
        if (!server.waitForNewConnection(5000))
            return;
        QTcpSocket& socket = *server.nextPendingConnection();
        socket.write("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
        const QByteArray chunk = "1000\r\n" + QByteArray(0x1000, 'x') + "\r\n";
        do
            socket.write(chunk.repeated(64));
        while (socket.waitForBytesWritten(5000));
    });
    const End end = ask(address.get_future().get(), {}, {.bytes = 300'000, .milliseconds = 15'000});
    endless.join();
    EXPECT_TRUE(end.problem.contains(u"zu gross"_s)) << end.problem.toStdString();
}

TEST(Inet, EndsInTime) {
    const AnsweringServer silent(QByteArray(), AnsweringServer::After::Stay);
    const AnsweringServer slow(page("abc").chopped(1), AnsweringServer::After::Stay);
    for (const AnsweringServer* server : {&silent, &slow}) {
        const End end = ask(server->url(), {}, {.milliseconds = 300});
        EXPECT_TRUE(end.problem.contains(u"nicht rechtzeitig"_s)) << end.problem.toStdString();
        EXPECT_EQ(end.answer, QString());
        EXPECT_LT(end.milliseconds, 2000);
    }
    QtInet inet{QString()};
    inet.Execute(silent.url());
    QTest::qWait(20);
    inet.Cancel();
    EXPECT_FALSE(inet.StillExecuting());
    EXPECT_TRUE(inet.Problem().contains(u"abgebrochen"_s));
    const AnsweringServer next(page("OK"));
    inet.Execute(next.url());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !inet.StillExecuting(); }));
    EXPECT_EQ(inet.Answer(), u"OK") << "one control, one request after the other";
}

TEST(Inet, SaysWhyThereIsNoConnection) {
    EXPECT_TRUE(
        ask(u"http://127.0.0.1:%1/"_s.arg(freePort())).problem.contains(u"nimmt keine Verbindung an"_s));
    EXPECT_TRUE(ask(u"http://shop.invalid/"_s).problem.contains(u"Name des Servers"_s));
    for (const QString& address : {u""_s, u"shop"_s, u"http://"_s, u"ftp://127.0.0.1/"_s, u"http://a b/"_s})
        EXPECT_TRUE(ask(address).problem.contains(u"ungültig"_s)) << address.toStdString();
}

TEST(Inet, TrustsTheCertificateThatIsNamed) {
    const test::ShopServers servers(test::ShopServers::Tls::Yes);
    const platform::Endpoints ends = servers.endpoints();
    const QString url = ends.script(u"WebShopBestellungen_Master.asp"_s);
    EXPECT_EQ(ask(url, ends.certificate).answer, u"<BESTELLUNGEN></BESTELLUNGEN>");
    EXPECT_TRUE(ask(url).problem.contains(u"Zertifikat"_s));
    EXPECT_TRUE(ask(url, test::Certificate().certificate()).problem.contains(u"Zertifikat"_s));
    // Plain where TLS is spoken, and the other way round.
    EXPECT_FALSE(ask(QString(url).replace(u"https"_s, u"http"_s)).problem.isEmpty());
    const AnsweringServer plain(page("OK"));
    EXPECT_FALSE(ask(plain.url().replace(u"http:"_s, u"https:"_s), ends.certificate, {.milliseconds = 300})
                     .problem.isEmpty());
}
