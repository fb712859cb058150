// An installation goes to a server and back.
#include "install/Moving.h"
#include "common/RunTimeError.h"
#include "install/IniFile.h"
#include "install/Installer.h"
#include "install/Schema.h"
#include "platform/DatabaseSettings.h"
#include "store/CopyTables.h"
#include "store/CreateDatabase.h"
#include "store/ServerDatabase.h"
#include "store/SoleHold.h"
#include "store/SqliteEngine.h"
#include "store/StoreGlobals.h"
#include "support/DatabaseServer.h"
#include "support/Outcome.h"
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using install::Database;
using install::MoveTo;
using store::ServerDatabase;
using test::errorOf;

namespace {

struct GivenUp {};

/// Gives the work up at its middle, as a crash would.
void cutOff(qint64 done, qint64 total) {
    if (done > total / 2)
        throw GivenUp();
}

class Moving : public testing::Test {
  protected:
    void SetUp() override {
        if (!test::DatabaseServer::shared())
            GTEST_SKIP() << test::DatabaseServer::whyNotShared().toStdString();
        server = test::DatabaseServer::shared();
        database.emplace(*server);
        server->sql(u"CREATE DATABASE "_s + database->name());
    }

    /// A demo firm in that folder, whose ini tells of the server.
    void makeFirm(const QTemporaryDir& station, bool onServer = false) {
        QFile::copy(QStringLiteral(TAVOLINO_SOURCE_DIR "/install/files/tavolino.ini"),
                    install::iniFile(station.path()));
        const store::ConnectionString parts = database->connection();
        const auto set = [&](const char* key, const QString& value) {
            install::setIniValue(station.path(), "Datenbank", key, value.toUtf8());
        };
        set("Server", parts.servers.first());
        set("Datenbank", parts.database);
        set("Benutzer", parts.user);
        set("Passwort", u'"' + parts.password + u'"');
        set("Zertifikat", parts.authority);
        set("Telefonbuch", u"mariadb"_s);
        if (onServer)
            set("Motor", u"mariadb"_s);
        install::InstallOptions options;
        options.demo = true;
        install::installDatabases(station.path(), options);
    }

    static QString main(const QTemporaryDir& station) { return station.filePath(u"Data/DBTavolino.mdb"_s); }

    static QString textOf(const QString& file) {
        return u"Data Source=%1;Jet OLEDB:Database Password=%2;"_s.arg(
            file, QString::fromLatin1(store::kMainPassword));
    }

    /// All rows with their keys, and the counters.
    static QStringList contents(const QString& file, Database database) {
        store::SqliteEngine engine(file, install::databaseFiles()[int(database)].password);
        store::FileEnd end(engine);
        QStringList all;
        for (const store::CopiedTable& table : end.tables(database)) {
            all << table.name + u' ' + QString::number(end.lastKey(table));
            end.read(table, [&](const store::Row& row) {
                QString line;
                for (const common::Value& value : row)
                    line += (value.isNull() ? u"-"_s : value.toText()) + u'|';
                all << line;
            });
        }
        return all;
    }

    ServerDatabase::State state() { return ServerDatabase(database->connection()).state(); }

    int opening() {
        return errorOf([&] { store::openEngine(database->connection()); });
    }

    test::DatabaseServer* server = nullptr;
    std::optional<test::ServerDatabase> database;
    QTemporaryDir folder;
};

TEST_F(Moving, AFirmGoesToTheServerAndBackWithAllItsRowsKeysAndCounters) {
    makeFirm(folder);
    {
        store::SqliteEngine engine(main(folder), QString::fromLatin1(store::kMainPassword));
        engine.execute(
            u"UPDATE tbl_Verwaltung_Kunden SET txt_Zusatzinfo = 'it''s \\ \"ä\" 😀 ' WHERE lng_ID = 1"_s);
        engine.execute(u"DELETE FROM tbl_Auftragswesen_Bestellungen_Details WHERE lng_TrxNrMaster = 1010"_s);
        engine.newKey(u"tbl_Verwaltung_Kunden"_s);
    }
    const QString phone = folder.filePath(u"Data/DBTavolinoPhone.mdb"_s);
    const QStringList rows = contents(main(folder), Database::Main);
    const QStringList phoneRows = contents(phone, Database::PhoneBook);
    ASSERT_GT(rows.size(), 10'000);
    install::moveInstallation(folder.path(), MoveTo::Server);
    EXPECT_EQ(contents(main(folder), Database::Main), rows);
    EXPECT_TRUE(platform::DatabaseSettings::read(install::iniFile(folder.path())).phoneBookOnServer);
    const auto refused = [&](MoveTo target) {
        return errorOf([&] { install::moveInstallation(folder.path(), target); });
    };
    EXPECT_EQ(refused(MoveTo::Server), common::kTargetExists);
    EXPECT_EQ(refused(MoveTo::Files), common::kTargetExists);

    QFile::remove(main(folder));
    EXPECT_EQ(refused(MoveTo::Files), common::kTargetExists) << "the phone book";
    QFile::remove(phone);
    install::moveInstallation(folder.path(), MoveTo::Files);
    EXPECT_EQ(contents(main(folder), Database::Main), rows);
    EXPECT_EQ(contents(phone, Database::PhoneBook), phoneRows);
    EXPECT_FALSE(platform::DatabaseSettings::read(install::iniFile(folder.path())).server.isServer());
    EXPECT_EQ(QFile::permissions(main(folder)) & (QFile::ReadGroup | QFile::ReadOther), 0);
}

TEST_F(Moving, WhatIsCutOffIsNoInstallationAndBegunAnew) {
    makeFirm(folder);
    EXPECT_THROW(install::moveInstallation(folder.path(), MoveTo::Server, cutOff), GivenUp);
    EXPECT_EQ(state(), ServerDatabase::State::Unfinished);
    EXPECT_NE(opening(), 0);
    // As if it had been cut off between the rows and the head.
    server->sql(
        u"CREATE TABLE %1.tbl_Store_Sperre (i INT); RENAME TABLE %1.neu_tbl_Verwaltung_Kuriere TO %1.tbl_Verwaltung_Kuriere"_s
            .arg(database->name()));
    EXPECT_NE(opening(), 0);
    install::moveInstallation(folder.path(), MoveTo::Server);
    EXPECT_EQ(opening(), 0);

    QFile::remove(main(folder));
    QFile::remove(folder.filePath(u"Data/DBTavolinoPhone.mdb"_s));
    EXPECT_THROW(install::moveInstallation(folder.path(), MoveTo::Files, cutOff), GivenUp);
    EXPECT_FALSE(QFile::exists(main(folder)));
    bool written = false;
    const auto writeMeanwhile = [&](qint64, qint64) {
        if (!std::exchange(written, true)) {
            const auto station = store::openEngine(database->connection());
            station->begin();
            station->execute(u"UPDATE tbl_Verwaltung_Kunden SET txt_Etage = '4' WHERE lng_ID = 1"_s);
            station->commit();
        }
    };
    EXPECT_EQ(errorOf([&] { install::moveInstallation(folder.path(), MoveTo::Files, writeMeanwhile); }),
              common::kStoreFailure);
    EXPECT_FALSE(QFile::exists(main(folder)));
    install::moveInstallation(folder.path(), MoveTo::Files);
    EXPECT_TRUE(QFile::exists(main(folder)));
}

TEST_F(Moving, OtherPeoplesTablesAndRowsThatDoNotFitAreRefused) {
    makeFirm(folder);
    server->sql(u"CREATE TABLE %1.tbl_Kunden (i INT)"_s.arg(database->name()));
    EXPECT_EQ(errorOf([&] { install::moveInstallation(folder.path(), MoveTo::Server); }),
              common::kTargetExists);
    server->sql(u"DROP TABLE %1.tbl_Kunden"_s.arg(database->name()));
    store::SqliteEngine(main(folder), QString::fromLatin1(store::kMainPassword))
        .runScript("UPDATE tbl_Verwaltung_Kuriere SET lng_Reihenfolge = 1.5");
    EXPECT_EQ(errorOf([&] { install::moveInstallation(folder.path(), MoveTo::Server); }),
              common::kStoreFailure);
    EXPECT_NE(opening(), 0);
    {
        const store::SqliteEngine atWork(main(folder), QString::fromLatin1(store::kMainPassword));
        EXPECT_EQ(errorOf([&] { install::moveInstallation(folder.path(), MoveTo::Server); }),
                  common::kStoreFailure);
    }
}

TEST_F(Moving, ANewShopBeginsOnTheServerAndAnotherStationJoins) {
    makeFirm(folder, true);
    EXPECT_FALSE(QFile::exists(main(folder)));
    EXPECT_TRUE(QFile::exists(folder.filePath(u"Data/DB_PRINT_Tavolino.mdb"_s)));
    const auto orders = [&] {
        return server->sql(
            u"SELECT count(*) FROM %1.tbl_Auftragswesen_Bestellungen_Master"_s.arg(database->name()));
    };
    const QStringList first = orders();
    EXPECT_GT(first.value(0).toInt(), 1000);
    const QTemporaryDir other;
    makeFirm(other, true);
    EXPECT_EQ(orders(), first);
    EXPECT_FALSE(QFile::exists(other.filePath(u"Data/DBTavolino.mdb.neu"_s)));
    EXPECT_EQ(opening(), 0);
}

TEST_F(Moving, ARestoreReplacesAllRowsAtOnceOrNone) {
    makeFirm(folder);
    install::moveInstallation(folder.path(), MoveTo::Server);
    const QString coming = folder.filePath(u"coming.mdb"_s), kept = folder.filePath(u"kept.mdb"_s);
    const QString onServer = database->connection().serverText();
    store::CompactDatabase(onServer, textOf(coming));
    const auto station = store::openEngine(database->connection());
    const auto count = [&](const QString& what) {
        const auto rows = station->query(u"SELECT Count(*) AS N FROM "_s + what, false);
        return rows->next() ? rows->value(0).toLong() : -1;
    };
    const qint64 couriers = count(u"tbl_Verwaltung_Kuriere"_s);
    station->execute(u"DELETE FROM tbl_Verwaltung_Kuriere"_s);
    station->execute(u"INSERT INTO tbl_Stationen_Pacht(txt_Aufgabe) VALUES('x')"_s);
    {
        store::SoleHold hold(onServer);
        EXPECT_EQ(errorOf([&] { store::SoleHold second(onServer); }), common::kStoreFailure);
        EXPECT_THROW(hold.prepare(coming, cutOff), GivenUp);
    }
    EXPECT_EQ(count(u"tbl_Verwaltung_Kuriere"_s), 0);
    store::SoleHold hold(onServer);
    hold.prepare(coming);
    station->execute(u"INSERT INTO tbl_Verwaltung_Kuriere(txt_Kurzzeichen) VALUES('NEU')"_s);
    hold.CompactDatabase(textOf(kept));
    hold.replaceWith(coming);
    EXPECT_EQ(count(u"tbl_Verwaltung_Kuriere"_s), couriers);
    EXPECT_EQ(count(u"view_Verwaltung_Produkte"_s) > 0, true);
    EXPECT_EQ(count(u"tbl_Stationen_Pacht"_s), 1) << "what the stations do goes on";
    EXPECT_EQ(count(u"tbl_Stationen_Neues WHERE lng_Stand > 0"_s), 6) << "they read anew";
    EXPECT_TRUE(contents(kept, Database::Main).filter(u"|NEU|"_s).size() == 1) << "kept is what was replaced";
    EXPECT_EQ(server->sql(u"SHOW TABLES IN %1 LIKE '%\\_tbl\\_%'"_s.arg(database->name())), QStringList());
}

} // namespace
