#include "platform/net/CurlFtp.h"
#include "support/LineSupport.h"
#include "support/Servers.h"
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::CurlFtp;
using platform::Endpoints;
using platform::Ftp;
using platform::FtpStatus;
using test::ShopServers;

namespace {

constexpr qint64 kLarge = 100'000'000;
constexpr CurlFtp::Limits kImpatient{.secondsToConnect = 2, .secondsOfSilence = 2, .millisecondsToQuit = 500};

/// A line, what it tells, and files to send.
struct Line {
    Line() : ftp(kImpatient) {
        ftp.onStatus = [this](const FtpStatus& status) {
            if (status.code == FtpStatus::RequestSent)
                sent += status.bytes;
            else if (status.code == FtpStatus::ResponseReceived)
                received += status.bytes;
            else
                told << u"%1 %2"_s.arg(status.code).arg(status.text).trimmed();
            if (onStatus)
                onStatus(status);
        };
        QFile small(path(u"Pizza %41 ü#?.jpg"_s));
        EXPECT_TRUE(small.open(QIODevice::WriteOnly));
        small.write(QByteArray("picture").repeated(1000));
        QFile large(path(u"large"_s));
        EXPECT_TRUE(large.open(QIODevice::WriteOnly) && large.resize(kLarge));
    }

    QString path(const QString& name) const { return folder.filePath(name); }

    /// Into the folder of the pictures, under its own name.
    int put(const QString& name) {
        taken.start();
        return ftp.PutFile(path(name), test::WebShop::kFolder.toString() + u"Pictures/"_s + name);
    }

    int putSmall() { return put(u"Pizza %41 ü#?.jpg"_s); }

    QTemporaryDir folder;
    CurlFtp ftp;
    QStringList told;
    qint64 sent = 0, received = 0;
    std::function<void(const FtpStatus&)> onStatus;
    QElapsedTimer taken;
};

class FtpTest : public testing::TestWithParam<ShopServers::Tls> {
  protected:
    ShopServers servers{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Lines, FtpTest, testing::Values(ShopServers::Tls::No, ShopServers::Tls::Yes),
                         [](const auto& line) {
                             return line.param == ShopServers::Tls::Yes ? "Tls" : "Plain";
                         });

} // namespace

TEST_P(FtpTest, SendsFilesOverOneConnection) {
    Line line;
    ASSERT_EQ(line.ftp.Connect(servers.endpoints()), 0) << line.ftp.Detail().toStdString();
    EXPECT_EQ(line.told, (QStringList{u"10 127.0.0.1"_s, u"20 127.0.0.1"_s, u"21 127.0.0.1"_s}));
    EXPECT_GT(line.received, 0);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(line.putSmall(), 0) << line.ftp.Detail().toStdString();
    EXPECT_EQ(line.sent, 3 * 7000);
    bool painted = false;
    QTimer::singleShot(0, [&] { painted = true; });
    EXPECT_EQ(line.put(u"large"_s), 0);
    EXPECT_TRUE(painted);
    EXPECT_EQ(QFileInfo(servers.file(u"Pictures/large"_s)).size(), kLarge);
    QFile file(servers.file(u"Pictures/Pizza %41 ü#?.jpg"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("picture").repeated(1000));
    line.ftp.Close();
    EXPECT_EQ(line.told.mid(3), (QStringList{u"50"_s, u"51"_s}));
    EXPECT_EQ(line.putSmall(), Ftp::kIncorrectState);
    EXPECT_EQ(servers.ftp.log().count(u"FTP session opened"_s), 1) << servers.ftp.log().toStdString();
    EXPECT_EQ(line.ftp.Connect(servers.endpoints()), 0) << "a closed line can be opened again";
}

TEST_P(FtpTest, TellsWhyItFails) {
    const struct {
        const char* what;
        std::function<void(Endpoints&)> change;
        int result;
    } cases[] = {
        {"user", [](Endpoints& ends) { ends.strFTPUser = u"niemand"_s; }, Ftp::kIncorrectUser},
        {"password", [](Endpoints& ends) { ends.strFTPPassword += u'x'; }, Ftp::kIncorrectPassword},
        {"name", [](Endpoints& ends) { ends.strFTPServer = u"ftp.invalid"_s; }, Ftp::kNameNotResolved},
        {"port", [](Endpoints& ends) { ends.lngFTPPort = freePort(); }, Ftp::kCannotConnect},
        {"no server", [](Endpoints& ends) { ends.strFTPServer.clear(); }, Ftp::kInvalidUrl},
    };

    for (const auto& [what, change, result] : cases) {
        Line line;
        Endpoints ends = servers.endpoints();
        change(ends);
        EXPECT_EQ(line.ftp.Connect(ends), result) << what << ": " << line.ftp.Detail().toStdString();
        EXPECT_FALSE(line.ftp.IsConnected());
        EXPECT_EQ(line.putSmall(), Ftp::kIncorrectState);
        line.ftp.Close();
        EXPECT_FALSE(line.told.contains(u"51"_s)) << what;
        for (const QString& said : {line.ftp.Detail(), line.ftp.LastResponse(), line.told.join(u' ')})
            EXPECT_FALSE(said.contains(u"geheim"_s)) << what;
    }
    Line line;
    ASSERT_EQ(line.ftp.Connect(servers.endpoints()), 0);
    EXPECT_EQ(line.ftp.PutFile(line.path(u"large"_s), u"nirgends/a"_s), Ftp::kExtendedError);
    EXPECT_TRUE(line.ftp.LastResponse().startsWith(u"550"_s)) << line.ftp.LastResponse().toStdString();
    EXPECT_EQ(line.put(u"missing"_s), Ftp::kInternalError);
    EXPECT_EQ(line.putSmall(), 0) << "one refused file does not stand in the way of the next";
}

TEST_P(FtpTest, GoesOnBehindAFileOverTheQuota) {
    servers.ftp.stop();
    servers.ftp.setQuota(1'000'000);
    ASSERT_TRUE(servers.ftp.start());
    Line line;
    ASSERT_EQ(line.ftp.Connect(servers.endpoints()), 0);
    EXPECT_EQ(line.putSmall(), 0);
    const bool isTls = GetParam() == ShopServers::Tls::Yes;
    EXPECT_EQ(line.put(u"large"_s), isTls ? Ftp::kConnectionReset : Ftp::kExtendedError)
        << "cut in the middle";
    EXPECT_EQ(line.ftp.LastResponse() == u"552 Quota exceeded.", !isTls)
        << line.ftp.LastResponse().toStdString();
    QFile::remove(servers.file(u"Pictures/large"_s));
    EXPECT_EQ(line.putSmall(), 0) << line.ftp.Detail().toStdString();
    QFile full(servers.file(u"full"_s));
    ASSERT_TRUE(full.open(QIODevice::WriteOnly) && full.resize(1'000'000));
    EXPECT_EQ(line.putSmall(), Ftp::kExtendedError);
    EXPECT_EQ(line.ftp.LastResponse(), u"552 Quota exceeded.");
}

TEST_P(FtpTest, ALostConnectionFailsEachFurtherFile) {
    for (const bool inTheMiddle : {true, false}) {
        Line line;
        ASSERT_EQ(line.ftp.Connect(servers.endpoints()), 0);
        if (inTheMiddle)
            line.onStatus = [&](const FtpStatus& status) {
                if (status.code == FtpStatus::RequestSent)
                    servers.ftp.kill();
            };
        else
            servers.ftp.kill();
        const int first = line.put(u"large"_s);
        EXPECT_TRUE(first == Ftp::kConnectionAborted || first == Ftp::kConnectionReset) << first;
        line.onStatus = nullptr;
        ASSERT_TRUE(servers.ftp.start());
        EXPECT_TRUE(line.ftp.IsConnected());
        EXPECT_EQ(line.putSmall(), Ftp::kConnectionAborted) << "also when the server is back";
        EXPECT_EQ(line.putSmall(), Ftp::kConnectionAborted);
        line.ftp.Close();
        EXPECT_LT(line.taken.elapsed(), 1500);
    }
}

TEST_P(FtpTest, ASilentServerIsNotWaitedForLong) {
    Line line;
    ASSERT_EQ(line.ftp.Connect(servers.endpoints()), 0);
    line.onStatus = [&](const FtpStatus& status) {
        if (status.code == FtpStatus::RequestSent)
            servers.ftp.pause();
    };
    EXPECT_EQ(line.put(u"large"_s), Ftp::kTimeout) << line.ftp.Detail().toStdString();
    EXPECT_EQ(line.putSmall(), Ftp::kConnectionAborted);
    line.ftp.Close();
    EXPECT_LT(line.taken.elapsed(), 2000);
    Line unanswered;
    EXPECT_EQ(unanswered.ftp.Connect(servers.endpoints()), Ftp::kTimeout);
    servers.ftp.resume();

    Line idle;
    ASSERT_EQ(idle.ftp.Connect(servers.endpoints()), 0);
    servers.ftp.pause();
    QElapsedTimer closing;
    closing.start();
    idle.ftp.Close();
    EXPECT_LT(closing.elapsed(), 1500);
    EXPECT_EQ(idle.told.constLast(), u"51");
    servers.ftp.resume();
}

TEST_P(FtpTest, IsGivenUpInTheMiddle) {
    Line line;
    ASSERT_EQ(line.ftp.Connect(servers.endpoints()), 0);
    line.onStatus = [&](const FtpStatus& status) {
        if (status.code != FtpStatus::RequestSent)
            return;
        EXPECT_EQ(line.ftp.PutFile(line.path(u"large"_s), u"other"_s), Ftp::kIncorrectState);
        line.ftp.Close();
    };
    EXPECT_EQ(line.put(u"large"_s), Ftp::kCancelled);
    EXPECT_LT(QFileInfo(servers.file(u"Pictures/large"_s)).size(), kLarge);
    EXPECT_EQ(line.putSmall(), Ftp::kCancelled);
    line.ftp.Close();
    EXPECT_LT(line.taken.elapsed(), 2500);

    // Before the server has said a word.
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    Endpoints ends = servers.endpoints();
    ends.lngFTPPort = silent.serverPort();
    Line early;
    QTimer::singleShot(100, [&] { early.ftp.giveUp(); });
    EXPECT_EQ(early.ftp.Connect(ends), Ftp::kCancelled);
}

TEST(FtpTls, ChecksTheCertificateAndGoesNoOtherWay) {
    ShopServers servers(ShopServers::Tls::Yes);
    const test::Certificate other;
    for (const QString& certificate : {QString(), other.certificate()}) {
        Line line;
        Endpoints ends = servers.endpoints();
        ends.certificate = certificate;
        EXPECT_EQ(line.ftp.Connect(ends), Ftp::kCertificateInvalid) << line.ftp.Detail().toStdString();
    }
    EXPECT_FALSE(servers.ftp.log().contains(u"USER"_s));
    Line named;
    Endpoints ends = servers.endpoints();
    ends.strFTPServer = u"localhost"_s;
    EXPECT_EQ(named.ftp.Connect(ends), 0) << named.ftp.Detail().toStdString();
    const test::Certificate ofAnother(u"DNS:shop.example.ch"_s);
    test::FtpServer another(servers.file({}), &ofAnother);
    ASSERT_TRUE(another.start());
    ends = servers.endpoints();
    ends.lngFTPPort = another.port();
    ends.certificate = ofAnother.certificate();
    Line trusting;
    EXPECT_EQ(trusting.ftp.Connect(ends), Ftp::kCertificateInvalid) << "trusted, but of another server";
    EXPECT_FALSE(another.log().contains(u"USER"_s));

    // A server without TLS never gets the user's name, let alone the password.
    ShopServers plain(ShopServers::Tls::No);
    ends = plain.endpoints();
    ends.ftpTls = true;
    Line line;
    EXPECT_EQ(line.ftp.Connect(ends), Ftp::kTlsRefused) << line.ftp.Detail().toStdString();
    EXPECT_FALSE(plain.ftp.log().contains(u"USER"_s)) << plain.ftp.log().toStdString();
    ends = servers.endpoints();
    ends.ftpTls = false;
    Line bare;
    EXPECT_NE(bare.ftp.Connect(ends), 0) << "a server that demands TLS";
}

TEST(FtpTls, APasswordThatTheServerRepeatsIsNotTold) {
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    QObject::connect(&server, &QTcpServer::newConnection, &server, [&] {
        QTcpSocket* const socket = server.nextPendingConnection();
        socket->write("220 ready\r\n");
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket] {
            const QByteArray command = socket->readAll();
            socket->write(command.startsWith("USER") ? QByteArray("331 go on\r\n")
                                                     : "530 what is " + command);
        });
    });
    Endpoints ends;
    ends.strFTPServer = u"127.0.0.1"_s;
    ends.lngFTPPort = server.serverPort();
    ends.strFTPUser = u"pizzeria"_s;
    ends.strFTPPassword = u"geheim"_s;
    ends.ftpTls = false;
    Line line;
    EXPECT_EQ(line.ftp.Connect(ends), Ftp::kIncorrectPassword);
    EXPECT_EQ(line.ftp.LastResponse(), u"530 what is PASS ***");
}
