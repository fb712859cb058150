// Backup, restore and daily copies of the small firm's database.
#include "common/Clock.h"
#include "common/RunTimeError.h"
#include "maintenance/CheckedCopy.h"
#include "maintenance/modDatenBackup.h"
#include "maintenance/modDatenRestore.h"
#include "maintenance/modTagessicherung.h"
#include "store/CreateDatabase.h"
#include "store/MainCopies.h"
#include "store/ServerDatabase.h"
#include "store/SqliteEngine.h"
#include "support/DatabaseServer.h"
#include "support/FirstSchema.h"
#include "support/FullDisk.h"
#include "support/Outcome.h"
#include "support/ServerFirm.h"
#include "support/TestFirm.h"
#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::bytes;
using test::errorOf;
using test::TestFirm;

namespace {

const QDate kDay(2026, 5, 15);

class Datensicherung : public testing::Test {
  protected:
    void SetUp() override {
        if (test::stand() != test::Stand::File)
            GTEST_SKIP() << "of the file";
    }

    ~Datensicherung() override {
        if (!ConnMain.IsOpen())
            store::OpenDatabases();
    }

    /// With the databases closed. The percentages told, each once.
    QList<int> backUp() {
        QList<int> told;
        modDatenBackup::CreateBackup(backup, [&](qint64 done, qint64 total) {
            if (const int now = int(done * 100 / total); told.isEmpty() || told.last() != now)
                told << now;
        });
        return told;
    }

    void restore() { modDatenRestore::RestoreBackup(backup, platform::unwatched); }

    static void addKurier(const QString& name) {
        ConnMain.Execute(u"INSERT INTO tbl_Verwaltung_Kuriere(txt_Kurzzeichen) VALUES('%1')"_s.arg(name));
    }

    static int kuriere(const QString& name) {
        return TestFirm::value(
                   u"SELECT Count(*) AS N FROM tbl_Verwaltung_Kuriere WHERE txt_Kurzzeichen = '%1'"_s.arg(
                       name))
            .toInt();
    }

    static void write(const QString& file, const QByteArray& text) {
        QFile open(file);
        ASSERT_TRUE(open.open(QIODevice::WriteOnly));
        open.write(text);
    }

    /// Destroys a page of the main database with rows of the postcodes; gives the file before.
    static QByteArray damage() {
        const QByteArray whole = bytes(maintenance::mainFile());
        const qsizetype page = whole.indexOf("Winterthur") & ~4095;
        EXPECT_GT(page, 0);
        write(maintenance::mainFile(), QByteArray(whole).replace(page, 4096, kDamage));
        return whole;
    }

    static inline const QByteArray kDamage{4096, 'x'};

    QString data(const QString& name) const { return firm.folder() + u"/Data/"_s + name; }

    QStringList files(const QString& folder, const QString& like = u"*"_s) const {
        return QDir(folder).entryList({like}, QDir::Files, QDir::Name);
    }

    TestFirm firm;
    QString backup = firm.folder() + u"/Backup 1.mdb"_s;
};

TEST_F(Datensicherung, ABackupIsReadInAgainAndThePresentDatabaseIsKept) {
    addKurier(u"ALT"_s);
    ConnMain.Execute(
        u"UPDATE tbl_Verwaltung_Produkte SET txt_Beschreibung = '%1'"_s.arg(QString(500'000, u'x')));
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte SET txt_Beschreibung = NULL"_s);
    store::CloseDatabases();
    const qint64 large = QFileInfo(maintenance::mainFile()).size();
    write(data(u"DBTavolino_CLEAN.mdb"_s), "left over");
    write(backup, "the former backup");
    const QList<int> told = backUp();
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    for (const int step : {10, 15, 40, 45, 60, 100})
        EXPECT_TRUE(told.contains(step)) << step;
    EXPECT_LT(QFileInfo(maintenance::mainFile()).size(), large / 2);
    EXPECT_EQ(files(data({}), u"DBTavolino.*"_s) + files(data({}), u"DBTavolino_*"_s),
              QStringList{u"DBTavolino.mdb"_s});
    EXPECT_EQ(files(firm.folder(), u"Backup*"_s), QStringList{u"Backup 1.mdb"_s});
    EXPECT_FALSE(QFile::permissions(backup) & (QFile::ReadGroup | QFile::ReadOther));

    store::OpenDatabases();
    addKurier(u"NEU"_s);
    const QByteArray before = bytes(backup);
    QFile::setPermissions(backup, QFile::ReadOwner);
    modDatenRestore::ProbeBackup(backup);
    store::CloseDatabases();
    restore();
    EXPECT_EQ(bytes(backup), before);
    store::OpenDatabases();
    EXPECT_EQ(kuriere(u"ALT"_s), 1);
    EXPECT_EQ(kuriere(u"NEU"_s), 0);
    const QList<modTagessicherung::Copy> kept = modTagessicherung::Copies();
    ASSERT_EQ(kept.size(), 1);
    EXPECT_EQ(kept[0].occasion, modTagessicherung::Occasion::Restore);
    store::CloseDatabases();
    backup = kept[0].file;
    restore();
    store::OpenDatabases();
    EXPECT_EQ(kuriere(u"NEU"_s), 1);
}

TEST_F(Datensicherung, WhatIsNoBackupOfThisSystemIsRefused) {
    const auto probe = [this] { return errorOf([this] { modDatenRestore::ProbeBackup(backup); }); };
    EXPECT_EQ(probe(), common::kFileNotFound);
    write(backup, QByteArray(5000, 'x'));
    EXPECT_EQ(probe(), common::kStoreFailure);
    QFile::remove(backup);
    store::createDatabase(backup, QString::fromLatin1(store::kMainPassword));
    EXPECT_EQ(probe(), common::kSqlFailure) << "without the tables";
    QFile::remove(backup);
    store::CompactDatabase(store::mainConnectionString(), store::backupConnectionString(backup));
    EXPECT_EQ(probe(), 0);
    const QByteArray whole = bytes(backup);
    QByteArray newer = whole;
    write(backup, newer.replace(60, 4, QByteArray("\0\0\1\0", 4)));
    EXPECT_EQ(probe(), common::kSchemaTooNew);
    write(backup, whole);
    store::setPassword(backup, QString::fromLatin1(store::kMainPassword), u"ein anderes"_s);
    EXPECT_EQ(probe(), common::kPasswordRefused);

    // What opens, and is damaged further in, is found before anything is replaced.
    write(backup, QByteArray(whole).replace(whole.size() - 8192, 8192, QByteArray(8192, 'x')));
    addKurier(u"BLEIBT"_s);
    store::CloseDatabases();
    EXPECT_EQ(errorOf([this] { restore(); }), common::kStoreFailure);
    store::OpenDatabases();
    EXPECT_EQ(kuriere(u"BLEIBT"_s), 1);
    EXPECT_EQ(files(data({}), u"DBTavolino_*"_s), QStringList());
}

TEST_F(Datensicherung, APathThatCannotTakeABackupIsRefusedBeforeAnythingCloses) {
    EXPECT_EQ(modDatenBackup::ProposedName(), u"Backup_TavolinoNET_15Mai2026");
    EXPECT_EQ(modDatenBackup::Refusal(backup), QString());
    QFile::link(maintenance::mainFile(), firm.folder() + u"/link.mdb"_s);
    for (const QString& path :
         {maintenance::mainFile(), firm.folder() + u"/Data/../Data/DBTavolinoPhone.mdb"_s,
          firm.folder() + u"/link.mdb"_s, data(u"DBOnlineShop.mdb"_s), data(u"DBTavolino_NEU.mdb"_s)}) {
        EXPECT_TRUE(modDatenBackup::Refusal(path).contains(u"mit denen Tavolino arbeitet"_s))
            << path.toStdString();
        EXPECT_FALSE(modDatenRestore::Refusal(path).isEmpty());
    }
    EXPECT_TRUE(modDatenBackup::Refusal(firm.folder() + u"/fehlt/x.mdb"_s).contains(u"nicht vorhanden"_s));
    EXPECT_TRUE(modDatenBackup::Refusal(firm.folder()).contains(u"Ordner"_s));
    write(backup + u"-wal"_s, "x");
    EXPECT_TRUE(modDatenBackup::Refusal(backup).contains(u"geöffnet"_s));
}

TEST_F(Datensicherung, WhateverFailsTheWorkingDatabaseAndTheFormerBackupStay) {
    addKurier(u"BLEIBT"_s);
    store::CloseDatabases();
    write(backup, "the former backup");
    const auto stays = [&](const char* cause) {
        EXPECT_EQ(bytes(backup), "the former backup") << cause;
        EXPECT_EQ(files(firm.folder(), u"Backup*"_s), QStringList{u"Backup 1.mdb"_s}) << cause;
        EXPECT_EQ(files(data({}), u"DBTavolino_*"_s), QStringList()) << cause;
        store::OpenDatabases();
        EXPECT_EQ(kuriere(u"BLEIBT"_s), 1) << cause;
        store::CloseDatabases();
    };
    {
        const test::FullDisk full(60'000);
        EXPECT_NE(errorOf([this] { backUp(); }), 0);
    }
    stays("full");
    {
        const store::SqliteEngine other(maintenance::mainFile(), QString::fromLatin1(store::kMainPassword));
        EXPECT_EQ(errorOf([this] { backUp(); }), common::kStoreFailure);
        EXPECT_EQ(errorOf([this] { restore(); }), common::kStoreFailure);
    }
    stays("open elsewhere");
    const QByteArray whole = damage();
    const QByteArray damaged = bytes(maintenance::mainFile());
    EXPECT_EQ(errorOf([this] { backUp(); }), common::kStoreFailure);
    EXPECT_EQ(bytes(maintenance::mainFile()).mid(4096), damaged.mid(4096)) << "nothing of it is replaced";
    write(maintenance::mainFile(), whole);
    stays("damaged");
    QDir().mkpath(backup + u".unfertig/x"_s);
    EXPECT_NE(errorOf([this] { backUp(); }), 0);
    QDir(backup + u".unfertig"_s).removeRecursively();
    stays("the name is taken");
}

TEST_F(Datensicherung, ADamagedDatabaseIsKeptAsItIsAndABackupTakesItsPlace) {
    addKurier(u"ALT"_s);
    store::CloseDatabases();
    backUp();
    damage();
    // Its disk is away: the copy goes to the program's own.
    write(firm.folder() + u"/tavolino.ini"_s, "[Sicherung]\nOrdner=/gibt/es/nicht\n");
    const QStringList drafts = {data(u"Auftrag.entwurf"_s), data(u"Auftrag.entwurf.verworfen"_s)};
    for (const QString& draft : drafts)
        write(draft, "an order of the former database's customer");
    restore();
    EXPECT_EQ(files(data({}), u"Auftrag*"_s), QStringList());
    EXPECT_EQ(files(data({}), u"DBTavolino_NEU*"_s), QStringList());
    store::OpenDatabases();
    EXPECT_EQ(kuriere(u"ALT"_s), 1);
    ASSERT_EQ(modTagessicherung::Copies().size(), 1);
    EXPECT_TRUE(bytes(modTagessicherung::Copies()[0].file).contains(kDamage));
}

TEST_F(Datensicherung, AnOlderProgramsBackupIsBroughtUpToDate) {
    test::createFirstSchema(backup);
    modDatenRestore::ProbeBackup(backup);
    const QByteArray before = bytes(backup);
    store::CloseDatabases();
    restore();
    EXPECT_EQ(bytes(backup), before);
    EXPECT_EQ(store::SqliteEngine(maintenance::mainFile(), QString::fromLatin1(store::kMainPassword))
                  .schemaVersion(),
              store::kSchemaVersion);
    store::OpenDatabases();
    EXPECT_EQ(TestFirm::value(u"SELECT txt_Vorname FROM tbl_Verwaltung_Kunden"_s), u"Anna"_s);
}

TEST_F(Datensicherung, ADayHasOneCopyAndTheOldOnesGo) {
    const QString folder = firm.folder() + u"/Data/Sicherungen"_s;
    EXPECT_TRUE(modTagessicherung::IsDue(kDay));
    QDir().mkpath(folder);
    const QString others[] = {u"Ferien.mdb"_s, u"Tagessicherung_alt.mdb"_s,
                              u"Tagessicherung_2020-13-01.mdb"_s};
    for (const QString& name : others)
        write(folder + u'/' + name, "foreign");
    write(folder + u"/Tagessicherung_2026-05-14.mdb.unfertig"_s, "cut off");
    for (int days = 1; days < 500; ++days)
        write(folder + u"/Tagessicherung_%1.mdb"_s.arg(kDay.addDays(-days).toString(Qt::ISODate)), "x");
    for (int i = 0; i < 5; ++i)
        write(folder + u"/Vor_dem_Einlesen_2026-05-0%1_180000.mdb"_s.arg(i + 1), "x");
    addKurier(u"HEUTE"_s);
    modTagessicherung::MakeCopy(kDay, platform::unwatched);
    EXPECT_FALSE(modTagessicherung::IsDue(kDay));
    QStringList left = files(folder);
    for (const QString& name : others)
        EXPECT_EQ(left.removeAll(name), 1) << name.toStdString();
    QStringList expected;
    for (int days = 0; days < 14; ++days)
        expected << u"Tagessicherung_%1.mdb"_s.arg(kDay.addDays(-days).toString(Qt::ISODate));
    for (QDate month(2026, 4, 1); month >= QDate(2025, 6, 1); month = month.addMonths(-1))
        expected << u"Tagessicherung_%1.mdb"_s.arg(
            QDate(month.year(), month.month(), month.daysInMonth()).toString(Qt::ISODate));
    for (int i = 3; i <= 5; ++i)
        expected << u"Vor_dem_Einlesen_2026-05-0%1_180000.mdb"_s.arg(i);
    expected.sort();
    EXPECT_EQ(left, expected);
    const QString today = modTagessicherung::Copies()[0].file;
    EXPECT_FALSE(QFile::permissions(today) & (QFile::ReadGroup | QFile::ReadOther));
    modDatenRestore::ProbeBackup(today);
    maintenance::checkCopy(today, platform::unwatched);
}

TEST_F(Datensicherung, AClockThatIsWrongTakesNoCopyAway) {
    using modTagessicherung::Copy;
    QList<Copy> copies;
    for (int days = 0; days < 30; ++days)
        copies << Copy{QString::number(days), kDay.addDays(-days).startOfDay()};
    const Copy late{u"late"_s, kDay.addYears(9).startOfDay()};
    const QList<Copy> beside = QList<Copy>{late} + copies;
    const auto goes = [](const QList<Copy>& all, QDate today) {
        QStringList files;
        for (const Copy& copy : modTagessicherung::Superfluous(all, today))
            files << copy.file;
        return files;
    };
    const QStringList superfluous = goes(copies, kDay);
    EXPECT_EQ(superfluous.size(), 15) << "but 14 and the newest of April";
    EXPECT_EQ(goes(beside, late.time.date()).size(), 16) << "it was ahead";
    EXPECT_EQ(goes(beside.mid(0, 14), kDay), QStringList()) << "is it behind?";
    EXPECT_EQ(goes(copies, kDay.addYears(-9)), QStringList());
    EXPECT_EQ(goes(beside, kDay), superfluous) << "it is right again";
}

TEST_F(Datensicherung, ACopyThatFailsOrIsGivenUpLeavesTheOthers) {
    const QString folder = firm.folder() + u"/Netz"_s;
    write(firm.folder() + u"/tavolino.ini"_s, "[Sicherung]\nOrdner=" + folder.toUtf8() + "\n");
    EXPECT_EQ(errorOf([] { modTagessicherung::MakeCopy(kDay, platform::unwatched); }),
              common::kPlatformFailure)
        << "a disk that is away";
    QDir().mkpath(folder);
    modTagessicherung::MakeCopy(kDay.addDays(-20), platform::unwatched);
    EXPECT_THROW(modTagessicherung::MakeCopy(kDay, [](qint64, qint64) { throw platform::GivenUp(); }),
                 platform::GivenUp);
    {
        const test::FullDisk full(60'000);
        EXPECT_NE(errorOf([] { modTagessicherung::MakeCopy(kDay, platform::unwatched); }), 0);
    }
    EXPECT_EQ(files(folder), QStringList{u"Tagessicherung_2026-04-25.mdb"_s});
    using modTagessicherung::Settings;
    EXPECT_EQ(Settings::read(firm.folder() + u"/tavolino.ini"_s).problem, QString());
    write(firm.folder() + u"/tavolino.ini"_s, "[Sicherung]\nOrdner=Netz\nOrder=x\n");
    EXPECT_EQ(
        Settings::read(firm.folder() + u"/tavolino.ini"_s).problem,
        u"Der Wert von \"Ordner\" ist nicht zu verstehen.\n\"Order\" im Abschnitt [Sicherung] ist unbekannt."_s);
}

/// The firm's database on a server, and not in its file any more.
class OnServer {
  public:
    explicit OnServer(test::DatabaseServer& server) : m_database(server) {
        server.sql(u"CREATE DATABASE "_s + m_database.name());
        store::CloseDatabases();
        store::ServerDatabase target(m_database.connection());
        target.load(*store::openEngine(store::ConnectionString::parse(store::mainConnectionString())),
                    store::Database::Main);
        target.putInPlace();
        QFile::rename(maintenance::mainFile(), away());
        store::setServer(m_database.connection(), false);
    }

    ~OnServer() {
        store::setServer({}, false);
        QFile::rename(away(), maintenance::mainFile());
    }

    static QString away() { return maintenance::mainFile() + u".fort"_s; }

  private:
    const test::ServerDatabase m_database;
};

TEST_F(Datensicherung, ABackupOfAServerGoesBackThereAndIntoAFile) {
    if (!test::DatabaseServer::shared())
        GTEST_SKIP() << test::DatabaseServer::whyNotShared().toStdString();
    {
        const OnServer moved(*test::DatabaseServer::shared());
        store::OpenDatabases();
        addKurier(u"ALT"_s);
        store::CloseDatabases();
        const QList<int> told = backUp();
        EXPECT_TRUE(std::is_sorted(told.begin(), told.end()) && told.last() == 100);
        EXPECT_EQ(files(data({}), u"DBTavolino*.mdb"_s).filter(u"CLEAN"_s), QStringList());
        modDatenRestore::ProbeBackup(backup);

        store::OpenDatabases();
        addKurier(u"NEU"_s);
        modTagessicherung::MakeCopy(kDay, platform::unwatched);
        EXPECT_EQ(modTagessicherung::Copies().size(), 1);
        store::CloseDatabases();
        restore();
        store::OpenDatabases();
        EXPECT_EQ(kuriere(u"ALT"_s), 1);
        EXPECT_EQ(kuriere(u"NEU"_s), 0);
        store::CloseDatabases();
        EXPECT_FALSE(QFile::exists(maintenance::mainFile()));
        ASSERT_EQ(modTagessicherung::Copies().first().occasion, modTagessicherung::Occasion::Restore);
        store::SqliteEngine kept(modTagessicherung::Copies().first().file,
                                 QString::fromLatin1(store::kMainPassword));
        EXPECT_TRUE(kept.query(u"SELECT * FROM tbl_Verwaltung_Kuriere WHERE txt_Kurzzeichen = 'NEU'"_s, false)
                        ->next());
    }
    restore();
    store::OpenDatabases();
    EXPECT_EQ(kuriere(u"ALT"_s), 1);
}

} // namespace
