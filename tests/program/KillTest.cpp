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

const QString kOrders = u"Bestellungen"_s;
const QString kPreOrders = u"Vorbestellungen"_s;

struct Stored {
    int lines = 0;
    QString total;
};

/// By number, the latest state of each.
struct Acknowledged {
    QMap<qint64, Stored> orders, preOrders;
};

/// Lets another process book, kills it at some instant and gives what it had acknowledged. A line cut off by
/// the kill is not acknowledged.
void bookAndKill(const QString& installation, int milliseconds, Acknowledged& acknowledged) {
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
        if (words.size() != 3)
            continue;
        const Stored stored{words[1].toInt(), QString::fromLatin1(words[2])};
        if (words[0].startsWith('V'))
            acknowledged.preOrders[words[0].mid(1).toLongLong()] = stored;
        else
            acknowledged.orders[words[0].toLongLong()] = stored;
    }
}

/// Every stored head agrees with its lines. `kind` is the part of the tables' names that tells them apart.
void expectWholeOrders(const QString& kind) {
    const auto value = [&](const QString& sql) {
        return TestFirm::value(QString(sql).replace(u"{kind}"_s, kind));
    };
    EXPECT_EQ(value(u"SELECT Count(*) AS N FROM tbl_Auftragswesen_{kind}_Details WHERE lng_TrxNrMaster "
                    u"NOT IN (SELECT lng_TrxNr FROM tbl_Auftragswesen_{kind}_Master)"_s),
              u"0"_s);
    EXPECT_EQ(
        value(u"SELECT Count(*) AS N FROM tbl_Auftragswesen_{kind}_Master AS m WHERE "
              u"abs(m.dbl_TotalMitMWSt - "
              u"(SELECT coalesce(sum(d.dbl_PreisMitMWSt - d.dbl_Rabatt), -1) FROM "
              u"tbl_Auftragswesen_{kind}_Details AS d WHERE d.lng_TrxNrMaster = m.lng_TrxNr)) > 0.001"_s),
        u"0"_s);
}

int storedLines(const QString& kind, qint64 number) {
    return TestFirm::value(
               u"SELECT Count(*) AS N FROM tbl_Auftragswesen_%1_Details WHERE lng_TrxNrMaster = %2"_s
                   .arg(kind)
                   .arg(number))
        .toInt();
}

QString storedTotal(const QString& kind, qint64 number) {
    const QString total = TestFirm::value(
        u"SELECT dbl_TotalMitMWSt FROM tbl_Auftragswesen_%1_Master WHERE lng_TrxNr = %2"_s.arg(kind).arg(
            number));
    return common::formatNumber(total.toDouble(), u"0.00");
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
    Acknowledged acknowledged;
    for (int kill = 0; kill < kKills && !testing::Test::HasFatalFailure(); ++kill)
        bookAndKill(firm.folder(), QRandomGenerator::global()->bounded(40), acknowledged);
    store::setAppPath(firm.folder());
    store::OpenDatabases();

    EXPECT_GE(acknowledged.orders.size(), kKills);
    EXPECT_GE(acknowledged.preOrders.size(), kKills / 2);
    EXPECT_EQ(TestFirm::value(u"SELECT integrity_check AS T FROM pragma_integrity_check"_s), u"ok"_s);
    expectGaplessNumbers();
    expectWholeOrders(kOrders);
    expectWholeOrders(kPreOrders);
    for (auto order = acknowledged.orders.constBegin(); order != acknowledged.orders.constEnd(); ++order) {
        const int lines = storedLines(kOrders, order.key());
        // A change that was stored, but not acknowledged yet, has one line more.
        EXPECT_TRUE(lines == order->lines || lines == order->lines + 1) << order.key();
        EXPECT_TRUE(lines > order->lines || storedTotal(kOrders, order.key()) == order->total) << order.key();
    }
    for (auto order = acknowledged.preOrders.constBegin(); order != acknowledged.preOrders.constEnd();
         ++order) {
        EXPECT_EQ(storedLines(kPreOrders, order.key()), order->lines) << order.key();
        EXPECT_EQ(storedTotal(kPreOrders, order.key()), order->total) << order.key();
    }
}

} // namespace
