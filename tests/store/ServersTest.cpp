#include "support/DatabaseServer.h"
#include "support/LineProxy.h"
#include <QElapsedTimer>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::LineProxy;

namespace {

/// What the other tests' servers and lines are worth.
TEST(Servers, AClusterLosesAndRegainsItsNodes) {
    test::GaleraCluster cluster;
    if (!cluster.isStarted())
        GTEST_SKIP() << cluster.why().toStdString();
    ASSERT_TRUE(cluster.waitForSize(0, 3));
    cluster.node(0).sql(u"CREATE DATABASE tavolino_x; CREATE TABLE tavolino_x.a (i INT PRIMARY KEY)"_s);
    cluster.node(0).kill();
    ASSERT_TRUE(cluster.waitForSize(1, 2));
    cluster.node(1).sql(u"INSERT INTO tavolino_x.a VALUES (1)"_s);
    ASSERT_TRUE(cluster.restart(0));
    cluster.node(2).pause();
    cluster.node(0).sql(u"INSERT INTO tavolino_x.a VALUES (2)"_s);
    ASSERT_TRUE(cluster.waitForSize(0, 2));
    cluster.node(2).resume();
    ASSERT_TRUE(cluster.waitForSize(0, 3) && cluster.waitForSize(2, 3));
    EXPECT_EQ(cluster.node(2).sql(u"SET wsrep_sync_wait = 1; SELECT i FROM tavolino_x.a ORDER BY i"_s),
              QStringList({u"1"_s, u"2"_s}));
}

QByteArray clientsAnswer(const LineProxy& line, const QString& sql) {
    const store::ConnectionString as = test::DatabaseServer::shared()->connection({});
    QProcess client;
    client.start(u"mariadb"_s, {u"--no-defaults"_s, u"--skip-ssl"_s, u"-N"_s, u"-B"_s, u"-h127.0.0.1"_s,
                                u"--connect-timeout=1"_s, u"-P%1"_s.arg(line.port()), u"-u"_s + as.user,
                                u"-p"_s + as.password, u"-e"_s, sql});
    client.waitForFinished();
    return client.readAllStandardOutput().replace('\n', '|') + (client.exitCode() == 0 ? "" : "failed");
}

TEST(Servers, ALineIsSlowSilentOrCut) {
    test::DatabaseServer* server = test::DatabaseServer::shared();
    if (!server)
        GTEST_SKIP() << test::DatabaseServer::whyNotShared().toStdString();
    const test::ServerDatabase database(*server);
    server->sql(u"CREATE DATABASE %1; CREATE TABLE %1.a (i INT)"_s.arg(database.name()));
    const auto insert = [&](const char* value) {
        return u"INSERT INTO %1.a VALUES (%2)"_s.arg(database.name(), QString::fromLatin1(value));
    };
    LineProxy line(server->port());
    // Slow in both: packets that follow each other at once may come as one.
    line.setDelay(20);
    EXPECT_EQ(clientsAnswer(line, u"SELECT 1"_s), "1|");
    const int once = line.takeRoundTrips();
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(clientsAnswer(line, u"SELECT 1; SELECT 2"_s), "1|2|");
    EXPECT_EQ(line.takeRoundTrips(), once + 1);
    EXPECT_GE(time.elapsed(), once * 40) << "the farewell has no answer";

    line.setDelay(0);
    line.cutAt("VALUES (3)", LineProxy::Cut::BeforeAnswer);
    EXPECT_EQ(clientsAnswer(line, insert("2")) + clientsAnswer(line, insert("3")), "failed");
    EXPECT_TRUE(line.hasCut());
    line.cutAt("VALUES (4)", LineProxy::Cut::BeforeServer);
    EXPECT_EQ(clientsAnswer(line, insert("4")), "failed");
    EXPECT_EQ(server->sql(u"SELECT i FROM %1.a ORDER BY i"_s.arg(database.name())),
              QStringList({u"2"_s, u"3"_s}));
    line.setSilent(true);
    EXPECT_EQ(clientsAnswer(line, u"SELECT 1"_s), "failed");
    line.setSilent(false);
    line.setClosed(true);
    EXPECT_EQ(clientsAnswer(line, u"SELECT 1"_s), "failed");
    line.setClosed(false);
    EXPECT_EQ(clientsAnswer(line, u"SELECT 1"_s), "1|");
}

} // namespace
