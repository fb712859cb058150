#include "common/Convert.h"
#include "store/StoreGlobals.h"
#include "support/TestFirm.h"
#include <QCoreApplication>
#include <QMap>
#include <QProcess>
#include <QRandomGenerator>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::TestFirm;

namespace {

struct Acknowledged {
    int lines = 0;
    QString total;
};

/// Lets another process book, kills it at some instant and gives what it had acknowledged, the latest state
/// of each order. A line cut off by the kill is not acknowledged.
void bookAndKill(const QString& installation, int milliseconds, QMap<qint64, Acknowledged>& acknowledged) {
    QProcess booker;
    booker.start(QCoreApplication::applicationFilePath(), {u"--book"_s, installation});
    ASSERT_TRUE(booker.waitForReadyRead(20000)) << booker.readAllStandardError().toStdString();
    booker.waitForFinished(milliseconds);
    booker.kill();
    ASSERT_TRUE(booker.waitForFinished(20000));
    ASSERT_EQ(booker.exitStatus(), QProcess::CrashExit) << "it was to be killed, not to end";
    const QByteArray all = booker.readAllStandardOutput();
    for (const QByteArray& line : all.left(all.lastIndexOf('\n') + 1).split('\n')) {
        const QList<QByteArray> words = line.split(' ');
        if (words.size() == 3)
            acknowledged[words[0].toLongLong()] = {words[1].toInt(), QString::fromLatin1(words[2])};
    }
}

/// Every stored head agrees with its lines.
void expectWholeOrders() {
    EXPECT_EQ(TestFirm::value(
                  u"SELECT Count(*) AS N FROM tbl_Auftragswesen_Bestellungen_Details WHERE lng_TrxNrMaster "
                  u"NOT IN (SELECT lng_TrxNr FROM tbl_Auftragswesen_Bestellungen_Master)"_s),
              u"0"_s);
    EXPECT_EQ(
        TestFirm::value(
            u"SELECT Count(*) AS N FROM tbl_Auftragswesen_Bestellungen_Master AS m WHERE "
            u"abs(m.dbl_TotalMitMWSt - "
            u"(SELECT coalesce(sum(d.dbl_PreisMitMWSt - d.dbl_Rabatt), -1) FROM "
            u"tbl_Auftragswesen_Bestellungen_Details AS d WHERE d.lng_TrxNrMaster = m.lng_TrxNr)) > 0.001"_s),
        u"0"_s);
}

void expectGaplessNumbers() {
    EXPECT_EQ(TestFirm::value(u"SELECT max(lng_TrxNr) - min(lng_TrxNr) + 1 - Count(*) AS N FROM "
                              u"tbl_Auftragswesen_Bestellungen_Master"_s),
              u"0"_s);
    EXPECT_EQ(TestFirm::value(u"SELECT min(lng_TrxNr) AS N FROM tbl_Auftragswesen_Bestellungen_Master"_s),
              u"1000"_s);
}

TEST(Kill, EveryAcknowledgedOrderIsFoundWhole) {
    constexpr int kKills = 60;
    TestFirm firm;
    store::CloseDatabases();
    QMap<qint64, Acknowledged> acknowledged;
    for (int kill = 0; kill < kKills && !testing::Test::HasFatalFailure(); ++kill)
        bookAndKill(firm.folder(), QRandomGenerator::global()->bounded(40), acknowledged);
    store::setAppPath(firm.folder());
    store::OpenDatabases();

    EXPECT_GE(acknowledged.size(), kKills);
    EXPECT_EQ(TestFirm::value(u"SELECT integrity_check AS T FROM pragma_integrity_check"_s), u"ok"_s);
    expectGaplessNumbers();
    expectWholeOrders();
    for (auto order = acknowledged.constBegin(); order != acknowledged.constEnd(); ++order) {
        const QString number = QString::number(order.key());
        const int lines =
            TestFirm::value(u"SELECT Count(*) AS N FROM tbl_Auftragswesen_Bestellungen_Details WHERE "
                            u"lng_TrxNrMaster = "_s +
                            number)
                .toInt();
        const double total =
            TestFirm::value(u"SELECT dbl_TotalMitMWSt FROM tbl_Auftragswesen_Bestellungen_Master WHERE "
                            u"lng_TrxNr = "_s +
                            number)
                .toDouble();
        // A change that was stored, but not acknowledged yet, has one line more.
        EXPECT_TRUE(lines == order->lines || lines == order->lines + 1) << order.key();
        EXPECT_TRUE(lines > order->lines || common::formatNumber(total, u"0.00") == order->total)
            << order.key();
    }
}

} // namespace
