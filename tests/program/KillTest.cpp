#include "common/Convert.h"
#include "orders/OrderDraft.h"
#include "orders/modAuftragswesenAuftragserfassung.h"
#include "program/Booker.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"
#include "support/TestDialogs.h"
#include "support/TestFirm.h"
#include "support/TestFirmServices.h"
#include <QCoreApplication>
#include <QDir>
#include <QMap>
#include <QProcess>
#include <QRandomGenerator>
#include <QSet>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using orders::OrderDraft;
using test::TestFirm;

namespace {

const QString kOrders = u"Bestellungen"_s;
const QString kPreOrders = u"Vorbestellungen"_s;

struct Stored {
    int lines = 0;
    QString total;
};

/// An order as its draft was announced.
struct Keyed {
    QString fingerprint, conditions;
    int lines = 0;
};

struct Acknowledged {
    /// By number, the latest state of each.
    QMap<qint64, Stored> orders, preOrders;
    /// The states of the order on the screen at the end, and the last one that was written for certain.
    QList<Keyed> keyed;
    qsizetype kept = -1;
    /// What is or was to be deleted, and whether that was the last thing.
    QSet<qint64> doomed;
    bool deleting = false;

    void take(const QByteArray& line) {
        const QList<QByteArray> words = line.split(' ');
        const QByteArray& kind = words[0];
        if (kind == "C") {
            keyed.clear();
            kept = -1;
            deleting = false;
        } else if (kind == "X") {
            doomed.insert(words[1].toLongLong());
            deleting = true;
        } else if (kind == "K") {
            keyed.append({QString::fromLatin1(words[1]), QString::fromLatin1(words[2]), words[3].toInt()});
        } else if (kind == "D") {
            kept = keyed.size() - 1;
        } else if (kind == "B" || kind == "V") {
            (kind == "B" ? orders : preOrders)[words[1].toLongLong()] = {words[2].toInt(),
                                                                         QString::fromLatin1(words[3])};
        }
    }
};

/// Lets another process book, kills it at some instant and takes what it had acknowledged. A line cut off by
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
    acknowledged.take("C");
    for (const QByteArray& line : all.left(all.lastIndexOf('\n')).split('\n'))
        acknowledged.take(line);
}

/// Every stored head agrees with its lines, and is remembered as the web order that it was. `kind` is the
/// part of the tables' names that tells them apart.
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
              u"(SELECT coalesce(sum(d.dbl_PreisMitMWSt - d.dbl_Rabatt), -(m.lng_KundenID > 0)) FROM "
              u"tbl_Auftragswesen_{kind}_Details AS d WHERE d.lng_TrxNrMaster = m.lng_TrxNr)) > 0.001"_s),
        u"0"_s);
    const QString remembered =
        u"SELECT Count(*) AS N FROM (SELECT lng_TrxNr FROM tbl_Auftragswesen_{kind}_Master WHERE "
        u"lng_KundenID > 0) AS m FULL JOIN (SELECT lng_TrxNr AS lng_Nr FROM "
        u"tbl_WebShop_Bestellungen_Verbucht WHERE flag_Vorbestellung = %1) AS v ON v.lng_Nr = m.lng_TrxNr "
        u"WHERE m.lng_TrxNr IS NULL OR v.lng_Nr IS NULL"_s.arg(kind == kPreOrders ? 1 : 0);
    EXPECT_EQ(value(remembered), u"0"_s);
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

int standing(const QString& kind, const Keyed& order) {
    return TestFirm::value(u"SELECT Count(*) AS N FROM tbl_Auftragswesen_%1_Details AS d, "
                           u"tbl_Auftragswesen_%1_Master AS m WHERE d.lng_TrxNrMaster = m.lng_TrxNr AND "
                           u"m.txt_Konditionen = '%2'"_s.arg(kind, order.conditions))
        .toInt();
}

/// The next start: what was keyed is there, in its last acknowledged state or a later one, as the draft or as
/// the order that was stored in the last moment. Goes on with a draft as staff would; gives whether there was
/// one.
bool goOn(Acknowledged& acknowledged) {
    const QString file = OrderDraft::defaultFile();
    if (!OrderDraft::look(file).order) {
        if (acknowledged.kept >= 0 && !acknowledged.deleting) {
            const Keyed& last = acknowledged.keyed.last();
            EXPECT_TRUE(standing(kOrders, last) == last.lines || standing(kPreOrders, last) == last.lines)
                << last.lines;
        }
        return false;
    }
    orders::WorkingOrder order;
    order.SetUp();
    EXPECT_TRUE(OrderDraft::restore(file, order));
    const QString found = test::fingerprint(order);
    const QList<Keyed>& keyed = acknowledged.keyed;
    const auto state =
        std::find_if(keyed.begin(), keyed.end(), [&](const Keyed& one) { return one.fingerprint == found; });
    EXPECT_GE(state == keyed.end() ? -1 : state - keyed.begin(), qMax<qsizetype>(0, acknowledged.kept));
    if (order.LastFilledRow() < 0) {
        OrderDraft::decline(file);
        return true;
    }
    const qint64 number = order.detail(orders::Detail::AuftragsNr).toLongLong();
    test::TestDialogs dialogs;
    test::TestNavigation navigation;
    if (order.buttons().cmdVerwaltungSave) {
        EXPECT_NE(storedLines(kOrders, number), 0) << "deleted, and offered again";
        modAuftragswesenAuftragserfassung::UpdateBestellung(order, number);
    } else {
        modAuftragswesenAuftragserfassung::SaveBestellung(order, dialogs, navigation);
    }
    EXPECT_FALSE(OrderDraft::look(file).order) << "it stands booked now";
    return true;
}

void expectStored(const QString& kind, const QMap<qint64, Stored>& acknowledged,
                  const QSet<qint64>& doomed = {}) {
    for (auto order = acknowledged.begin(); order != acknowledged.end(); ++order) {
        const int lines = storedLines(kind, order.key());
        if (lines == 0 && doomed.contains(order.key()))
            continue;
        // A change that was stored, but not acknowledged yet, has one line more.
        EXPECT_TRUE(lines == order->lines || (kind == kOrders && lines == order->lines + 1)) << order.key();
        EXPECT_TRUE(lines > order->lines || storedTotal(kind, order.key()) == order->total) << order.key();
    }
}

TEST(Kill, NothingAcknowledgedIsLostNorHalfNorStoredTwice) {
    constexpr int kKills = 60;
    constexpr int kMostKills = 10 * kKills;
    TestFirm firm;
    Acknowledged acknowledged;
    int drafts = 0;
    // A busy machine gets less done between two kills.
    const auto enough = [&] {
        return drafts > 0 && acknowledged.orders.size() > kKills / 2 && !acknowledged.doomed.isEmpty() &&
               acknowledged.preOrders.size() > kKills / 4;
    };
    for (int kill = 0; (kill < kKills || !enough()) && kill < kMostKills && !HasFailure(); ++kill) {
        store::CloseDatabases();
        bookAndKill(firm.folder(), QRandomGenerator::global()->bounded(80), acknowledged);
        store::OpenDatabases();
        drafts += goOn(acknowledged) ? 1 : 0;
    }
    EXPECT_TRUE(enough()) << acknowledged.orders.size() << ' ' << acknowledged.preOrders.size();
    EXPECT_EQ(TestFirm::value(u"SELECT integrity_check AS T FROM pragma_integrity_check"_s), u"ok"_s);
    expectGaplessNumbers();
    for (const QString& kind : {kOrders, kPreOrders})
        expectWholeOrders(kind);
    expectStored(kOrders, acknowledged.orders, acknowledged.doomed);
    expectStored(kPreOrders, acknowledged.preOrders);
    EXPECT_EQ(TestFirm::value(u"SELECT Count(*) - Count(DISTINCT txt_Konditionen) AS N FROM (SELECT "
                              u"txt_Konditionen FROM tbl_Auftragswesen_Bestellungen_Master WHERE "
                              u"lng_KundenID > 0 UNION ALL SELECT "
                              u"txt_Konditionen FROM tbl_Auftragswesen_Vorbestellungen_Master)"_s),
              u"0"_s);
    EXPECT_TRUE(QDir(firm.folder() + u"/Data"_s).entryList({u"Auftrag.entwurf*"_s}).isEmpty());
}

} // namespace
