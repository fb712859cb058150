#include "maintenance/CheckedCopy.h"
#include "maintenance/modTagessicherung.h"
#include "platform/Progress.h"
#include "program/Saver.h"
#include "store/MainCopies.h"
#include "store/PasswordGate.h"
#include "store/SchemaSteps.h"
#include "support/FirstSchema.h"
#include "support/TestFirm.h"
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QRandomGenerator>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::TestFirm;

namespace {

struct Acknowledged {
    qint64 stored = 0, saved = 0;
    QMap<QString, int> killedIn;
    QString last;

    void take(const QString& all) {
        QString doing;
        for (const QString& line : all.left(all.lastIndexOf(u'\n')).split(u'\n')) {
            if (line.startsWith(u"> "))
                doing = line.mid(2);
            else if (line.startsWith(u"K "))
                stored = line.mid(2).toLongLong();
            else if (line.startsWith(u"B "))
                saved = line.mid(2).toLongLong();
        }
        ++killedIn[doing];
        last = doing;
    }
};

/// To open a file is quick, so that the kills fall into the work on files.
void makeGateQuick() {
    ConnMain.Execute(u"UPDATE tbl_Store_Gate SET txt_Verifier = %1"_s.arg(store::sqlText(
        QString::fromLatin1(store::makeVerifier(QString::fromLatin1(store::kMainPassword), 1)))));
}

void makeLarge() {
    ConnMain.Execute(
        u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000) INSERT INTO "
        u"tbl_Verwaltung_AnruferListe(txt_Telefon, txt_Zeit) SELECT hex(randomblob(30)), i FROM n"_s);
}

/// Many rows, so that the steps' indexes take their time.
void makeFirstDatabase(const QString& installation) {
    const QByteArray rows =
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000) INSERT INTO "
        "tbl_Verwaltung_Kunden (txt_Telefon, txt_Natel) SELECT hex(randomblob(9)), i FROM n;"
        "UPDATE tbl_Store_Gate SET txt_Verifier = '" +
        store::makeVerifier(QString::fromLatin1(store::kMainPassword), 1) + "'";
    test::createFirstSchema(test::firstDatabase(installation), rows.constData());
}

/// Its version, its tables, indexes and views, and how many customers it has.
QStringList stateOf(const QString& file, bool isBroughtUpToDate = false) {
    store::Connection database;
    database.Open(store::backupConnectionString(file));
    if (isBroughtUpToDate)
        store::BringUpToDate(database);
    EXPECT_EQ(TestFirm::value(u"SELECT integrity_check AS T FROM pragma_integrity_check"_s, database),
              u"ok"_s);
    return QStringList{QString::number(database.engine().schemaVersion()),
                       TestFirm::value(u"SELECT Count(*) AS N FROM tbl_Verwaltung_Kunden"_s, database)} +
           TestFirm::rows(u"SELECT name, sql FROM sqlite_schema ORDER BY name"_s, database);
}

void saveAndKill(const QString& installation, int milliseconds, Acknowledged& acknowledged) {
    QProcess saver;
    saver.start(QCoreApplication::applicationFilePath(), {u"--save"_s, installation});
    ASSERT_TRUE(saver.waitForReadyRead(20000)) << saver.readAllStandardError().toStdString();
    saver.waitForFinished(milliseconds);
    saver.kill();
    ASSERT_TRUE(saver.waitForFinished(20000));
    ASSERT_EQ(saver.exitStatus(), QProcess::CrashExit)
        << "it was to be killed, not to end: " << saver.readAllStandardError().toStdString();
    acknowledged.take(QString::fromUtf8(saver.readAllStandardOutput()));
}

qint64 couriersIn(const QString& file) {
    maintenance::checkCopy(file, platform::unwatched);
    store::Connection copy;
    copy.Open(store::backupProbeString(file));
    return TestFirm::value(u"SELECT Count(*) AS N FROM tbl_Verwaltung_Kuriere"_s, copy).toLongLong();
}

/// Every file under its name is whole.
void expectWholeFiles(const QString& installation, const Acknowledged& acknowledged) {
    if (const QString backup = test::backupFile(installation);
        acknowledged.saved > 0 || QFile::exists(backup)) {
        EXPECT_GE(couriersIn(backup), acknowledged.saved);
    }
    for (const modTagessicherung::Copy& copy : modTagessicherung::Copies())
        EXPECT_GT(couriersIn(copy.file), 0);
}

TEST(Kill, ABackupARestoreADailyCopyOrASchemaStepThatIsKilledLeavesWholeFiles) {
    constexpr int kKills = 100;
    TestFirm firm;
    makeLarge();
    makeFirstDatabase(firm.folder());
    const QString probe = firm.folder() + u"/Probe.mdb"_s;
    ASSERT_TRUE(QFile::copy(test::firstDatabase(firm.folder()), probe));
    const QList<QStringList> oldAndNew{stateOf(probe), stateOf(probe, true)};
    Acknowledged acknowledged;
    const auto enough = [&] {
        return acknowledged.killedIn[u"Tagessicherung"_s] > 9 && acknowledged.killedIn[u"Backup"_s] > 9 &&
               acknowledged.killedIn[u"Einlesen"_s] > 9 && acknowledged.killedIn[u"Schritte"_s] > 9;
    };
    for (int kill = 0; (kill < kKills || !enough()) && kill < 4 * kKills && !HasFailure(); ++kill) {
        makeGateQuick();
        store::CloseDatabases();
        saveAndKill(firm.folder(), QRandomGenerator::global()->bounded(500), acknowledged);
        store::OpenDatabases();
        EXPECT_EQ(TestFirm::value(u"SELECT integrity_check AS T FROM pragma_integrity_check"_s), u"ok"_s);
        EXPECT_GE(TestFirm::count(u"tbl_Verwaltung_Kuriere"_s), acknowledged.stored);
        expectWholeFiles(firm.folder(), acknowledged);
        if (acknowledged.last == u"Schritte") {
            EXPECT_TRUE(oldAndNew.contains(stateOf(test::olderDatabase(firm.folder()))));
        }
    }
    EXPECT_TRUE(enough());
}

} // namespace
