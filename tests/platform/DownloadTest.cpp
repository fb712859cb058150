#include "platform/net/Download.h"
#include "common/RunTimeError.h"
#include "platform/net/Ftp.h"
#include "platform/net/Signature.h"
#include "support/AnsweringServer.h"
#include "support/FullDisk.h"
#include "support/LineSupport.h"
#include "support/Servers.h"
#include <QDir>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::Download;
using test::AnsweringServer;

namespace {

void write(const QString& name, const QByteArray& bytes) {
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QByteArray read(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class DownloadTest : public testing::Test {
  protected:
    /// The problem's number.
    int fetch(const QString& url, const QString& certificate = {}, const Download::Limits& limits = {}) {
        Download download(certificate, limits);
        int ends = 0;
        last = {};
        QObject::connect(&download, &Download::ended, [&] { ++ends; });
        QObject::connect(&download, &Download::progressed, [&](qint64 done, qint64 total) {
            last = {done, total};
        });
        download.CopyURLToFile(url, file);
        EXPECT_EQ(ends, 0) << "before the call has returned";
        EXPECT_TRUE(QTest::qWaitFor([&] { return !download.isUnderway(); }, 10'000));
        EXPECT_EQ(ends, 1);
        return download.problem().number;
    }

    QStringList left() const { return QDir(folder.path()).entryList(QDir::Files); }

    QTemporaryDir folder;
    const QString file = folder.filePath(u"Update.exe"_s);
    std::pair<qint64, qint64> last;
};

TEST_F(DownloadTest, OnlyAWholeFileGetsItsName) {
    const auto page = [](const QByteArray& body, const QByteArray& more = {},
                         const QByteArray& status = "200 OK") {
        return AnsweringServer::page(body, status, more);
    };
    const QByteArray chunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\nab\r\n1\r\nc\r\n";
    const QByteArray large(300'000, 'x');
    const QByteArray endless = "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + large;

    const struct {
        const char* what;
        QByteArray answer;
        QByteArray stored;
        int number;
    } cases[] = {
        {"whole", page("abc"), "abc", 0},
        {"in chunks", chunked + "0\r\n\r\n", "abc", 0},
        {"cut", page("abc").chopped(1), {}, platform::Ftp::kConnectionAborted},
        {"cut between chunks", chunked, {}, platform::Ftp::kConnectionAborted},
        {"error page", page("<html>", {}, "404 Not Found"), {}, 404},
        {"a part", page("abc", {}, "206 Partial Content"), {}, 206},
        {"moved", page("", "Location: /b.exe\r\n", "302 Found"), {}, 12156},
        {"packed", page("abc", "Content-Encoding: gzip\r\n"), {}, 12152},
        {"too large by its head", page(large).first(200), {}, 12152},
        {"too large", endless, {}, 12152},
    };

    for (const auto& [what, answer, stored, number] : cases) {
        SCOPED_TRACE(what);
        write(file, "former");
        const AnsweringServer server(answer);
        EXPECT_EQ(fetch(server.url(), {}, {.bytes = 200'000}), number);
        EXPECT_EQ(read(file), number == 0 ? stored : "former");
        EXPECT_EQ(left(), QStringList{u"Update.exe"_s});
        EXPECT_EQ(server.requests.value(0), u"GET /a.asp HTTP/1.1");
    }
    EXPECT_EQ(fetch(u"http://127.0.0.1:%1/"_s.arg(freePort())), platform::Ftp::kCannotConnect);
    EXPECT_EQ(fetch(u"ftp://127.0.0.1/"_s), platform::Ftp::kInvalidUrl);
    const AnsweringServer server(page(large));
    EXPECT_EQ(fetch(server.url()), 0);
    EXPECT_EQ(last, std::pair(qint64(large.size()), qint64(large.size())));
    {
        const test::FullDisk full(100'000);
        EXPECT_EQ(fetch(server.url()), common::kNotWritable);
    }
    EXPECT_EQ(read(file), large);
    EXPECT_EQ(left(), QStringList{u"Update.exe"_s});
}

TEST_F(DownloadTest, ASilentServerAndAChangeOfMindLeaveNothing) {
    const QByteArray begun = AnsweringServer::page(QByteArray(50'000, 'x')).chopped(20'000);
    const AnsweringServer stalls(begun, AnsweringServer::After::Stay);
    const AnsweringServer silent(QByteArray(), AnsweringServer::After::Stay);
    for (const AnsweringServer* server : {&stalls, &silent})
        EXPECT_EQ(fetch(server->url(), {}, {.millisecondsOfSilence = 300}), platform::Ftp::kTimeout);
    EXPECT_EQ(left(), QStringList());
    for (const bool isDeleted : {false, true}) {
        auto download = std::make_unique<Download>(QString(), Download::Limits());
        bool ended = false;
        QObject::connect(download.get(), &Download::ended, [&] { ended = true; });
        download->CopyURLToFile(stalls.url(), file);
        EXPECT_TRUE(QTest::qWaitFor([&] { return download->hasBegun(); }));
        EXPECT_EQ(left(), QStringList{u"Update.exe.teil"_s});
        isDeleted ? download.reset() : download->giveUp();
        EXPECT_EQ(left(), QStringList());
        QTest::qWait(20);
        EXPECT_FALSE(ended);
    }
}

TEST_F(DownloadTest, TrustsTheCertificateThatIsNamed) {
    const test::ShopServers servers(test::ShopServers::Tls::Yes);
    const QString url = servers.endpoints().strDomainMapping + u"/nothing"_s;
    EXPECT_EQ(fetch(url, servers.certificate.certificate()), 404);
    EXPECT_EQ(fetch(url), platform::Ftp::kCertificateInvalid);
}

TEST_F(DownloadTest, ASignatureHoldsForOneFileOneKindAndOneVersion) {
    const platform::SigningKeys keys = platform::makeSigningKeys();
    const QString exe = u"Update.exe"_s;
    const QByteArray bytes(3'000'000, 'x');
    write(file, bytes);
    const QByteArray good = *platform::signFile(file, exe, u"1.0.5"_s, keys.secretKey);
    const auto version = [&](const QByteArray& signature, const QString& kind, const QByteArray& key) {
        return platform::signedVersion(file, signature, kind, key);
    };
    EXPECT_EQ(version(good, exe, keys.publicKey), u"1.0.5"_s);
    EXPECT_TRUE(good.startsWith("Tavolino-Signatur 1\nDatei: Update.exe\nVersion: 1.0.5\nSignatur: "));
    EXPECT_FALSE(version(good, u"DBTavolinoPhone.exe"_s, keys.publicKey)) << "swapped";
    EXPECT_FALSE(version(good, exe, platform::makeSigningKeys().publicKey));
    EXPECT_FALSE(version(good, exe, {})) << "nobody is trusted";
    const auto replaced = [&good](const char* what, const char* with) {
        return QByteArray(good).replace(what, with);
    };
    for (const QByteArray& bad :
         {QByteArray(), replaced("1.0.5", "1.0.6"), replaced("Signatur 1", "Signatur 2"), good.chopped(9),
          good + "Version: 9.0.0\n", "Version: 9.0.0\n" + good, replaced("Signatur: ", "Signatur: !"),
          replaced("\n", "\r\n"), QByteArray("<html>404</html>")})
        EXPECT_FALSE(version(bad, exe, keys.publicKey)) << bad.toStdString();
    for (const qsizetype at : {qsizetype(0), bytes.size() / 2, bytes.size() - 1}) {
        QByteArray altered = bytes;
        altered[at] = 'y';
        write(file, altered);
        EXPECT_FALSE(version(good, exe, keys.publicKey)) << at;
    }
    write(file, bytes.chopped(1));
    EXPECT_FALSE(version(good, exe, keys.publicKey));
    QFile::remove(file);
    EXPECT_FALSE(version(good, exe, keys.publicKey));
    EXPECT_FALSE(platform::signFile(file, exe, u"1.0.5"_s, keys.secretKey));
}

} // namespace
