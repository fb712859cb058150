// Several stations on a cluster of database servers, whose processes are killed without a warning.
#include "common/RunTimeError.h"
#include "program/Shift.h"
#include "support/ServerFirm.h"
#include "support/TestFirm.h"
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTest>
#include <QThread>
#include <gtest/gtest.h>
#include <iostream>

using namespace Qt::StringLiterals;
using test::TestFirm;

namespace {

constexpr int kPatience = 60;

class Stations : public testing::Test {
  protected:
    void SetUp() override {
        if (!cluster.isStarted())
            GTEST_SKIP() << cluster.why().toStdString();
        cluster.node(0).sql(u"CREATE DATABASE IF NOT EXISTS tavolino_schicht"_s);
        const TestFirm firm;
        test::copyFirmTo(server);
        main.Open(server.serverText());
    }

    test::GaleraCluster cluster;
    const store::ConnectionString server = cluster.connection(u"tavolino_schicht"_s);
    store::Connection main;
};

TEST_F(Stations, BothGoOnAtTheNextServerAndNothingIsLostNorTwice) {
    test::Shift shift(server, 2);
    shift.startAll();
    ASSERT_TRUE(shift.waitForMore(10, kPatience));
    cluster.node(0).kill();
    ASSERT_TRUE(shift.waitForMore(10, kPatience)) << "at the next node";
    shift.killAll();
    shift.expectAllThereOnce(main);
}

TEST_F(Stations, ANodeWithoutMajorityIsReadAndNotWritten) {
    cluster.node(1).kill();
    cluster.node(2).kill();
    const auto isAlone = [this] {
        return cluster.node(0)
            .sql(u"SHOW STATUS LIKE 'wsrep_cluster_status'"_s)
            .join(u' ')
            .contains(u"non-"_s);
    };
    ASSERT_TRUE(QTest::qWaitFor(isAlone, kPatience * 1000));
    EXPECT_NE(TestFirm::value(u"SELECT Count(*) AS N FROM tbl_Verwaltung_Kunden"_s, main), u"0"_s);
    for (int attempt = 0; attempt < 2; ++attempt)
        try {
            main.Execute(u"UPDATE tbl_Einstellungen_System SET txt_Werbetext = 'x'"_s);
            ADD_FAILURE() << "written";
        } catch (const common::RunTimeError& error) {
            EXPECT_EQ(error.number(), common::kServerGone);
            EXPECT_TRUE(error.sentence().contains(u"Mehrheit"_s)) << error.what();
        }
    EXPECT_NE(TestFirm::value(u"SELECT txt_Werbetext AS T FROM tbl_Einstellungen_System"_s, main), u"x"_s);
}

/// For TAVOLINO_SHIFT_MINUTES, else some seconds. Two nodes stand at any time: the majority.
TEST_F(Stations, AShiftWithKillsLosesNothing) {
    const double minutes = qEnvironmentVariable("TAVOLINO_SHIFT_MINUTES", u"0.2"_s).toDouble();
    constexpr int kLongestRest = 1500;
    auto* chance = QRandomGenerator::global();
    test::Shift shift(server, 4);
    shift.startAll();
    ASSERT_TRUE(shift.waitForMore(1, kPatience));
    const qint64 before = shift.acknowledged();
    int stationsKilled = 0, nodesKilled = 0;
    QElapsedTimer time;
    for (time.start(); !time.hasExpired(qint64(minutes * 60'000)) && !HasFailure();) {
        QThread::msleep(chance->bounded(kLongestRest));
        if (chance->bounded(3) == 0) {
            const int node = chance->bounded(test::GaleraCluster::kNodes);
            cluster.node(node).kill();
            ++nodesKilled;
            QThread::msleep(chance->bounded(kLongestRest));
            ASSERT_TRUE(cluster.restart(node)) << node;
        } else {
            const int station = chance->bounded(shift.size());
            shift.kill(station);
            ++stationsKilled;
            shift.start(station);
        }
    }
    const double seconds = double(time.elapsed()) / 1000;
    const auto orders = double(shift.acknowledged() - before);
    ASSERT_TRUE(shift.waitForMore(1, kPatience)) << "all still book" << shift.lastWords();
    shift.killAll();
    shift.expectAllThereOnce(main);
    const auto [repeats, waits] = shift.repeatsAndWaits();
    std::cout << orders << " orders in " << seconds << " s, " << orders / seconds << " a second; "
              << stationsKilled << " stations and " << nodesKilled << " nodes killed; " << repeats
              << " transactions done anew, " << waits << " waits for a server\n";
}

} // namespace
