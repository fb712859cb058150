#include "store/CreateDatabase.h"
#include "store/CreateServerDatabase.h"
#include "store/Recordset.h"
#include "support/DatabaseServer.h"
#include "support/LineProxy.h"
#include "support/Outcome.h"
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using common::Value;
using test::LineProxy;

namespace {

const QString kTables =
    u"CREATE TABLE tbl_Dinge (lng_ID INTEGER PRIMARY KEY AUTOINCREMENT, txt_Name TEXT COLLATE GERMAN_CI, "
    u"flag_Status YESNO, date_Tag DATE, dbl_Preis DOUBLE);"
    u"CREATE TABLE tbl_Zeilen (lng_Nr INTEGER, txt_Text TEXT COLLATE GERMAN_CI);"_s;

/// A database with two tables, reached by a line that can be cut.
class MariaEngine : public testing::Test {
  protected:
    void SetUp() override {
        server = test::DatabaseServer::shared();
        if (!server)
            GTEST_SKIP() << test::DatabaseServer::whyNotShared().toStdString();
        database = std::make_unique<test::ServerDatabase>(*server);
        server->sql(u"CREATE DATABASE "_s + database->name());
        store::createServerDatabase(database->connection().serverText(), {kTables});
        line = std::make_unique<LineProxy>(server->port());
        byLine = database->connection();
        byLine.servers = {u"127.0.0.1:%1"_s.arg(line->port())};
        byLine.tls = false;
        connection.Open(byLine.serverText());
    }

    QStringList rows(const QString& sql) { return server->sql(u"USE "_s + database->name() + u"; "_s + sql); }

    int openingWith(const std::function<void(store::ConnectionString&)>& change) {
        store::ConnectionString parts = database->connection();
        change(parts);
        store::Connection other;
        return test::errorOf([&] { other.Open(parts.serverText()); });
    }

    void add() {
        const store::WriteRecordset dinge(recordset, u"SELECT * FROM tbl_Dinge"_s, connection);
        dinge->AddNew();
        dinge->Fields(u"txt_Name") = u"Ding"_s;
        dinge->Update();
    }

    test::DatabaseServer* server = nullptr;
    std::unique_ptr<test::ServerDatabase> database;
    std::unique_ptr<LineProxy> line;
    store::ConnectionString byLine;
    store::Connection connection;
    store::Recordset recordset;
};

TEST_F(MariaEngine, AnAnswerThatIsLostDoesNothingTwiceAndLosesNothing) {
    int nr = 0;
    for (const auto cut : {LineProxy::Cut::BeforeAnswer, LineProxy::Cut::BeforeServer}) {
        line->cutAt("COMMIT", cut);
        store::transact(connection, [&, next = ++nr] {
            connection.Execute(u"INSERT INTO tbl_Zeilen (lng_Nr) VALUES (%1)"_s.arg(next));
        });
        EXPECT_TRUE(line->hasCut());
        line->cutAt("COMMIT", cut);
        add();
        EXPECT_TRUE(line->hasCut());
        line->cutAt("UPDATE `tbl_Dinge`", cut);
        EXPECT_EQ(connection.Execute(u"UPDATE tbl_Dinge SET dbl_Preis = coalesce(dbl_Preis, 0) + 1"_s), nr);
        EXPECT_TRUE(line->hasCut());
        line->cut();
        EXPECT_FALSE(store::OpenRecordset(recordset, u"SELECT * FROM tbl_Zeilen"_s, connection)->Eof());
    }
    EXPECT_EQ(rows(u"SELECT lng_Nr FROM tbl_Zeilen ORDER BY 1"_s), QStringList({u"1"_s, u"2"_s}));
    EXPECT_EQ(rows(u"SELECT dbl_Preis FROM tbl_Dinge ORDER BY lng_ID"_s), QStringList({u"2"_s, u"1"_s}));
}

TEST_F(MariaEngine, ATransactionIsTwoTripsAndItsKeysAreRight) {
    store::Engine& engine = connection.engine();
    const std::vector<store::Column> number{engine.columnsOf(u"TBL_Zeilen"_s).front()};
    engine.query(u"SELECT lng_Nr FROM tbl_Zeilen"_s, false);
    const qint64 before = engine.roundTrips();
    qint64 second = 0;
    store::transact(connection, [&] {
        EXPECT_FALSE(engine.query(u"SELECT lng_Nr FROM tbl_Zeilen"_s, false)->next());
        engine.insert(u"tbl_Zeilen"_s, number, {Value(1)});
        second = engine.insert(u"tbl_Zeilen"_s, number, {Value(2)});
        connection.Execute(u"INSERT INTO tbl_Zeilen (lng_Nr, txt_Text) VALUES (3, 'a\\''b')"_s);
    });
    EXPECT_EQ(engine.roundTrips() - before, 2);
    engine.update(u"tbl_Zeilen"_s, second, number, {Value(20)});
    EXPECT_EQ(rows(u"SELECT lng_Nr, txt_Text FROM tbl_Zeilen ORDER BY 1"_s),
              QStringList({u"1\tNULL"_s, u"3\ta\\\\'b"_s, u"20\tNULL"_s}));

    qint64 key = 0;
    test::errorOf([&] {
        store::transact(connection,
                        [&] { key = engine.newKey(u"tbl_Dinge"_s), throw common::RunTimeError(1, {}); });
    });
    EXPECT_GT(engine.newKey(u"tbl_Dinge"_s), key) << "a key is given once, whatever becomes of it";
    EXPECT_EQ(test::errorOf([&] {
                  store::transact(connection, [&] {
                      connection.Execute(u"INSERT INTO tbl_Dinge (lng_ID) VALUES (7)"_s);
                      connection.Execute(u"INSERT INTO tbl_Dinge (lng_ID) VALUES (7)"_s);
                  });
              }),
              common::kDuplicateKey);
    EXPECT_EQ(rows(u"SELECT count(*) FROM tbl_Dinge"_s), QStringList(u"0"_s));
}

TEST_F(MariaEngine, WritersTakeTurns) {
    store::Connection other;
    other.Open(byLine.serverText());
    store::Engine& engine = connection.engine();
    engine.begin();
    engine.query(u"SELECT lng_Nr FROM tbl_Zeilen"_s, false);
    other.engine().begin();
    EXPECT_EQ(test::errorOf([&] { other.engine().query(u"SELECT lng_Nr FROM tbl_Zeilen"_s, false); }),
              common::kTryAgain);
    EXPECT_EQ(test::errorOf([&] { other.engine().commit(); }), common::kTryAgain);
    other.engine().rollback();
    EXPECT_TRUE(engine.inTransaction());
    engine.commit();
    line->setClosed(true);
    EXPECT_EQ(test::errorOf([&] { engine.query(u"SELECT lng_Nr FROM tbl_Zeilen"_s, false); }),
              common::kServerGone);
    line->setClosed(false);
}

TEST_F(MariaEngine, WhatIsNotOursIsRefused) {
    EXPECT_EQ(openingWith([](auto&) {}), 0);
    EXPECT_EQ(openingWith([](auto& parts) { parts.password = u"falsch"_s; }), common::kPasswordRefused);
    EXPECT_EQ(openingWith([](auto& parts) { parts.database += u"_x"_s; }), common::kStoreFailure);
    EXPECT_EQ(openingWith([](auto& parts) { parts.authority.clear(); }), common::kStoreFailure);
    EXPECT_EQ(openingWith([](auto& parts) { parts.servers = {u"127.0.0.1:1"_s}; }), common::kServerGone);
    EXPECT_EQ(openingWith([](auto& parts) { parts.servers.prepend(u"127.0.0.1:1"_s); }), 0);
    EXPECT_EQ(
        test::errorOf([&] { store::createServerDatabase(database->connection().serverText(), {kTables}); }),
        common::kTargetExists);
    rows(u"UPDATE tbl_Store_Kopf SET lng_Schema = %1"_s.arg(store::kSchemaVersion + 1));
    EXPECT_EQ(openingWith([](auto&) {}), common::kSchemaTooNew);
    rows(u"UPDATE tbl_Store_Kopf SET lng_Schema = %1"_s.arg(store::kSchemaVersion - 1));
    EXPECT_EQ(openingWith([](auto&) {}), common::kStoreFailure);
    rows(
        u"UPDATE tbl_Store_Kopf SET lng_Schema = %1; ALTER TABLE tbl_Dinge MODIFY txt_Name VARCHAR(9) COLLATE utf8mb4_general_ci"_s
            .arg(store::kSchemaVersion));
    EXPECT_EQ(openingWith([](auto&) {}), common::kStoreFailure);
    rows(u"DROP TABLE tbl_Store_Kopf"_s);
    EXPECT_EQ(openingWith([](auto&) {}), common::kStoreFailure);
}

} // namespace
