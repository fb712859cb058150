#include "common/RunTimeError.h"
#include "store/Collation.h"
#include "store/CreateDatabase.h"
#include "store/CreateServerDatabase.h"
#include "store/Dialect.h"
#include "store/Recordset.h"
#include "store/Rows.h"
#include "support/DatabaseServer.h"
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using common::RunTimeError;
using common::Value;
using store::Connection;
using store::OpenRecordset;
using store::Recordset;
using store::WriteRecordset;

namespace {

const QString kDefinitions =
    u"CREATE TABLE tbl_Dinge (lng_ID INTEGER PRIMARY KEY AUTOINCREMENT, txt_Name TEXT COLLATE GERMAN_CI, "
    "txt_Stückelung TEXT COLLATE GERMAN_CI, dbl_Preis DOUBLE, flag_Status YESNO, flag_Zahl INTEGER, "
    "date_Tag DATE, lng_Rang INTEGER);\n"
    "CREATE INDEX idx_Name ON tbl_Dinge (txt_Name);\n"_s;

/// A database with one table of every kind of column, and a connection to it: in a file.
class StoreTest : public testing::Test {
  protected:
    void SetUp() override {
        path = folder.filePath(u"Data/Test.mdb"_s);
        QDir(folder.path()).mkdir(u"Data"_s);
        store::createDatabase(path, u"geheim"_s);
        connection.Open(text(u"geheim"_s));
        for (const QString& definition : kDefinitions.split(u";\n"_s, Qt::SkipEmptyParts))
            connection.Execute(definition);
        connection.Close();
        connection.Open(text(u"geheim"_s));
    }

    /// Another connection to the same database.
    virtual QString again() const { return text(u"geheim"_s); }

    QString text(const QString& password) const {
        return u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s + folder.path() +
               u"\\Data\\Test.mdb ;Persist Security Info=False; Jet OLEDB:Database Password="_s + password +
               u';';
    }

    void add(const QString& name, double price = 0, bool status = false, int rank = 0) {
        const WriteRecordset rows(recordset, u"SELECT * FROM tbl_Dinge WHERE 1 = 1;"_s, connection);
        rows->AddNew();
        rows->Fields(u"txt_Name") = name;
        rows->Fields(u"dbl_Preis") = price;
        rows->Fields(u"flag_Status") = Value(status ? 1 : 0);
        rows->Fields(u"lng_Rang") = rank;
        rows->Update();
    }

    QStringList names(const QString& where) {
        QStringList result;
        for (OpenRecordset rows(recordset, u"SELECT txt_Name FROM tbl_Dinge "_s + where, connection);
             !rows->Eof(); rows->MoveNext())
            result << rows->Fields(u"txt_Name").text();
        return result;
    }

    int errorOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const RunTimeError& error) {
            told = error;
            return error.number();
        }
        return 0;
    }

    RunTimeError told{0, {}};

    QTemporaryDir folder;
    QString path;
    Connection connection;
    Recordset recordset;
};

enum class Stand { File, Server };

/// What has to be the same whichever engine runs.
class SeamTest : public StoreTest, public testing::WithParamInterface<Stand> {
  protected:
    void SetUp() override {
        if (GetParam() == Stand::File)
            return StoreTest::SetUp();
        test::DatabaseServer* server = test::DatabaseServer::shared();
        if (!server)
            GTEST_SKIP() << test::DatabaseServer::whyNotShared().toStdString();
        database = std::make_unique<test::ServerDatabase>(*server);
        server->sql(u"CREATE DATABASE "_s + database->name());
        store::createServerDatabase(again(), {kDefinitions});
        connection.Open(again());
    }

    ~SeamTest() override {
        if (connection.IsOpen())
            connection.Close();
    }

    QString again() const override {
        return database ? database->connection().serverText() : StoreTest::again();
    }

    bool isOnServer() const { return GetParam() == Stand::Server; }

    std::unique_ptr<test::ServerDatabase> database;
};

INSTANTIATE_TEST_SUITE_P(On, SeamTest, testing::Values(Stand::File, Stand::Server),
                         [](const auto& stand) { return stand.param == Stand::File ? "File" : "Server"; });

TEST_F(StoreTest, RefusesWhatItCannotOpen) {
    Connection other;
    EXPECT_EQ(errorOf([&] { other.Open(text(u"falsch"_s)); }), common::kPasswordRefused);
    EXPECT_EQ(errorOf([&] { connection.Open(text(u"geheim"_s)); }), common::kObjectOpen);
    EXPECT_EQ(errorOf([&] { other.Open(u"Data Source="_s + folder.path() + u"\\Data\\Fehlt.mdb;"_s); }),
              common::kFileNotFound);
    EXPECT_FALSE(QFile::exists(folder.filePath(u"Data/Fehlt.mdb"_s)));
    for (const QByteArray& damaged : {QByteArray(), QByteArray(5000, 'x')}) {
        QFile file(folder.filePath(u"kaputt.mdb"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(damaged);
        file.close();
        EXPECT_EQ(errorOf([&] { other.Open(u"Data Source="_s + file.fileName()); }), common::kStoreFailure);
        EXPECT_TRUE(told.sentence().contains(u"\"kaputt.mdb\""_s)) << told.what();
    }
    connection.Execute(u"PRAGMA user_version = 99"_s);
    EXPECT_EQ(errorOf([&] { other.Open(text(u"geheim"_s)); }), common::kSchemaTooNew);
}

TEST_F(StoreTest, DamageIsToldWithItsFile) {
    for (int i = 0; i < 500; ++i)
        add(QString(40, u'x'));
    connection.Close();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(3 * 4096) &&
                file.write(QByteArray(20 * 4096, 'x')) > 0);
    file.close();
    connection.Open(text(u"geheim"_s));
    EXPECT_EQ(errorOf([&] { names(u"WHERE lng_Rang = 3"_s); }), common::kStoreFailure);
    EXPECT_EQ(told.sentence(), u"Die Datenbank \"Test.mdb\" ist beschädigt."_s);
}

TEST_P(SeamTest, AFailedStatementTellsNoValues) {
    for (const char16_t* sql :
         {u"UPDATE tbl_Dinge SET txt_Name = 'geheim', dbl_Preis = 791234567 WHERE x = 1",
          u"UPDATE tbl_Dinge SET txt_Name = \"ge\"\"heim\" WHERE lng_Rang = 791234567 7912",
          u"DELETE FROM tbl_Dinge WHERE lng_Rang = 791234567 AND txt_Name = 'geheim",
          u"SELECT lng_ID FROM tbl_Dinge WHERE 791234567 IS x LIMIT 791234567"}) {
        EXPECT_EQ(errorOf([&] { connection.Execute(QString::fromUtf16(sql)); }), common::kSqlFailure);
        EXPECT_TRUE(told.detail().contains(u"tbl_Dinge"_s)) << told.what();
        EXPECT_FALSE(told.detail().contains(u"heim"_s) || told.detail().contains(u"7912"_s)) << told.what();
    }
    recordset.Open(u"SELECT * FROM tbl_Dinge WHERE txt_Name = 'geheim'"_s, connection);
    EXPECT_EQ(errorOf([&] { recordset.Fields(u"txt_Name"); }), 0);
    EXPECT_EQ(errorOf([&] { recordset.Fields(u"txt_Name").text(); }), common::kNoCurrentRow);
    EXPECT_FALSE(told.detail().contains(u"geheim"_s)) << told.what();
    EXPECT_EQ(errorOf([&] { Value(u"079 geheim"_s).toDouble(); }), common::kTypeMismatch);
    EXPECT_FALSE(told.detail().contains(u"geheim"_s));
}

TEST_F(StoreTest, FilesAreTheirOwnersOnly) {
    const auto others = [](const QString& file) {
        return QFile::permissions(file) &
               (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther);
    };
    add(u"Eins"_s);
    EXPECT_FALSE(others(path)) << "as it was created";
    EXPECT_FALSE(others(path + u"-wal"_s));
    connection.Close();
    QFile::setPermissions(path, QFile::permissions(path) | QFile::ReadGroup | QFile::ReadOther);
    connection.Open(text(u"geheim"_s));
    EXPECT_FALSE(others(path)) << "as an earlier program left it";
    const QString copy = folder.filePath(u"Kopie.mdb"_s);
    store::CompactDatabase(text(u"geheim"_s), u"Data Source="_s + copy + u";"_s);
    EXPECT_FALSE(others(copy));
}

TEST_F(StoreTest, AFoldersNameMayHoldASemicolon) {
    const QString odd = folder.filePath(u"Meier; Söhne;x"_s);
    QDir().mkpath(odd);
    store::createDatabase(odd + u"/Test.mdb"_s, u"ge;heim"_s);
    Connection other;
    other.Open(
        u"Provider=x;Data Source="_s + odd +
        u"\\Test.mdb ;Mode=Read|Write;Persist Security Info=False;Jet OLEDB:Database Password=ge;heim;"_s);
    EXPECT_TRUE(other.engine().isWritable());
    other.Close();
    other.Open(u"Jet OLEDB:Database Password=ge;heim;Data Source="_s + odd + u"/Test.mdb;"_s);
}

TEST_F(StoreTest, ClosedStoreIsOneFile) {
    add(u"Eins"_s);
    recordset.Open(u"SELECT * FROM tbl_Dinge"_s, connection, store::adOpenForwardOnly, store::adLockReadOnly);
    connection.Close();
    EXPECT_FALSE(recordset.IsOpen());
    EXPECT_EQ(QDir(folder.filePath(u"Data"_s)).entryList(QDir::Files), QStringList{u"Test.mdb"_s});
}

TEST_P(SeamTest, TextComparesWithoutCaseAndUmlautsIncluded) {
    for (const char16_t* name : {u"Zürcher", u"Übersax", u"Ulmer", u"müller", u"Muller", u"Mullis", u"ÄPFEL"})
        add(QString::fromUtf16(name));
    EXPECT_EQ(names(u"ORDER BY txt_Name"_s), QStringList({u"ÄPFEL"_s, u"Muller"_s, u"müller"_s, u"Mullis"_s,
                                                          u"Übersax"_s, u"Ulmer"_s, u"Zürcher"_s}));
    EXPECT_EQ(names(u"WHERE txt_Name = 'MÜLLER'"_s), QStringList{u"müller"_s});
    EXPECT_EQ(names(u"WHERE txt_Name LIKE 'MÜ%'"_s), QStringList{u"müller"_s});
    EXPECT_EQ(names(u"WHERE txt_Name LIKE 'm_ll__'"_s).size(), 3);
    EXPECT_EQ(names(u"WHERE txt_Name LIKE '%l%r' ORDER BY txt_Name DESC"_s),
              QStringList({u"Ulmer"_s, u"müller"_s, u"Muller"_s}));
    EXPECT_EQ(names(u"WHERE txt_Name LIKE 'äpfel'"_s), QStringList{u"ÄPFEL"_s});
    EXPECT_EQ(names(u"WHERE NOT txt_Name LIKE 'm%' AND txt_Name LIKE '%'"_s).size(), 4);
}

TEST_P(SeamTest, APatternFindsWhateverFollowsItsBeginning) {
    for (const char16_t* name : {u"Mü", u"Müller", u"Mÿ", u"mü😀"})
        add(QString::fromUtf16(name));
    if (!isOnServer()) // which sorts what is no character behind all that begin so
        for (const char16_t* name : {u"MÜ\uFFFD", u"Mü\U0010FFFF"})
            add(QString::fromUtf16(name));
    EXPECT_EQ(names(u"WHERE txt_Name LIKE 'mü%'"_s).size(), isOnServer() ? 3 : 5);
}

TEST_P(SeamTest, QuotesAreData) {
    const QString nasty = u"O'Neill\"; DELETE FROM tbl_Dinge; --"_s;
    add(nasty);
    add(u"100%"_s);
    EXPECT_EQ(names(u"WHERE txt_Name = "_s + store::sqlText(nasty)), QStringList{nasty});
    EXPECT_EQ(names(u"WHERE txt_Name LIKE 'O' & CHR(39) & 'neill%'"_s), QStringList{nasty});
    EXPECT_EQ(names(u"WHERE txt_Name = '' OR '1' = '1'"_s).size(), 2);
    EXPECT_EQ(errorOf([&] { names(u"WHERE txt_Name = 'offen"_s); }), common::kSqlFailure);
    EXPECT_EQ(errorOf([&] { names(u"WHERE txt_Fehlt = 1"_s); }), common::kSqlFailure);
    EXPECT_FALSE(recordset.IsOpen());
}

/// Statements that differ in their values share a translation: none may answer with the values of another.
TEST_P(SeamTest, StatementsOfOneShapeKeepTheirOwnValues) {
    add(u"Ab"_s, 3, true, 1);
    add(u"Abend"_s, 3.5, false, 2);
    add(u"A'b"_s, -3, true, 2);
    add(u"Tab"_s, 300, false, 3);

    const std::tuple<const char16_t*, QStringList> cases[] = {
        {u"WHERE txt_Name LIKE 'ab'", {u"Ab"_s}},
        {u"WHERE txt_Name LIKE 'ab%'", {u"Ab"_s, u"Abend"_s}},
        {u"WHERE txt_Name LIKE 'ab_nd'", {u"Abend"_s}},
        {u"WHERE txt_Name LIKE '%ab'", {u"Ab"_s, u"Tab"_s}},
        {u"WHERE txt_Name LIKE 'a''%'", {u"A'b"_s}},
        {u"WHERE txt_Name LIKE \"a'b\"", {u"A'b"_s}},
        {u"WHERE txt_Name LIKE 'a' & CHR(39) & 'b'", {u"A'b"_s}},
        {u"WHERE txt_Name LIKE 't' & CHR(97) & 'b'", {u"Tab"_s}},
        {u"WHERE dbl_Preis = 3", {u"Ab"_s}},
        {u"WHERE dbl_Preis = 3.5", {u"Abend"_s}},
        {u"WHERE dbl_Preis = 3e2", {u"Tab"_s}},
        {u"WHERE dbl_Preis = -3", {u"A'b"_s}},
        {u"WHERE dbl_Preis < 99999999999999999999 AND lng_Rang = 1", {u"Ab"_s}},
        {u"WHERE flag_Status = 1 AND lng_Rang = 2", {u"A'b"_s}},
        {u"WHERE flag_Status = 0 AND lng_Rang = 2", {u"Abend"_s}},
        {u"WHERE flag_Status = 0 AND lng_Rang = 3", {u"Tab"_s}},
        {u"WHERE 1 = 1 AND lng_Rang = 3", {u"Tab"_s}},
        {u"WHERE 1 = 0 AND lng_Rang = 3", {}},
        {u"WHERE lng_Rang + 1 = 2", {u"Ab"_s}},
        {u"WHERE lng_Rang + 2 = 5", {u"Tab"_s}},
        {u"ORDER BY lng_ID LIMIT 1", {u"Ab"_s}},
        {u"ORDER BY lng_ID LIMIT 2", {u"Ab"_s, u"Abend"_s}},
    };
    for (int round = 0; round < 2; ++round)
        for (const auto& [condition, found] : cases)
            EXPECT_EQ(names(QString::fromUtf16(condition)), found)
                << QString::fromUtf16(condition).toStdString();
}

TEST_P(SeamTest, YesNoColumnsMatchTrueAndNumbers) {
    add(u"an"_s, 0, true);
    add(u"aus"_s, 0, false);
    for (const char16_t* condition :
         {u"flag_Status = True", u"flag_Status = 1", u"flag_Status = -1", u"flag_Status <> False",
          u"flag_Status <> 0", u"tbl_Dinge.flag_Status = true"})
        EXPECT_EQ(names(u"WHERE "_s + QString::fromUtf16(condition)), QStringList{u"an"_s})
            << QString::fromUtf16(condition).toStdString();
    EXPECT_EQ(names(u"WHERE flag_Status <> True"_s), QStringList{u"aus"_s});
    connection.Execute(u"UPDATE tbl_Dinge SET flag_Status = 1, flag_Zahl = 1 WHERE flag_Status = 0"_s);
    const OpenRecordset rows(recordset, u"SELECT * FROM tbl_Dinge WHERE txt_Name = 'aus'"_s, connection);
    EXPECT_EQ(rows->Fields(u"flag_Status").Value(), Value(-1));
    EXPECT_EQ(rows->Fields(u"FLAG_ZAHL").Value(), Value(1));
}

TEST_P(SeamTest, TopKeepsTies) {
    int rank = 1;
    for (const char16_t* name : {u"a", u"b", u"c", u"d"})
        add(QString::fromUtf16(name), 0, false, rank++ / 2);

    const std::tuple<const char16_t*, int> cases[] = {
        {u"SELECT TOP 1 txt_Name FROM tbl_Dinge ORDER BY lng_Rang ASC", 1},
        {u"SELECT TOP 2 txt_Name FROM tbl_Dinge ORDER BY lng_Rang ASC ;", 3},
        {u"SELECT TOP 2 lng_Rang AS R FROM tbl_Dinge ORDER BY lng_Rang DESC", 3},
        {u"SELECT TOP 2 txt_Name FROM tbl_Dinge", 2},
        {u"SELECT TOP 100 * FROM tbl_Dinge ORDER BY lng_Rang, txt_Name DESC", 4},
        {u"SELECT TOP 2 * FROM tbl_Dinge ORDER BY lng_Rang, txt_Name", 2}};
    for (const auto& [sql, count] : cases) {
        Recordset rows;
        rows.Open(QString::fromUtf16(sql), connection, store::adOpenStatic, store::adLockReadOnly);
        EXPECT_EQ(rows.RecordCount(), count) << QString::fromUtf16(sql).toStdString();
        EXPECT_LE(rows.Columns().size(), 8u) << "no helper column shows";
    }
}

TEST_P(SeamTest, AddsChangesAndReadsBackByName) {
    {
        const WriteRecordset rows(recordset, u"tbl_Dinge"_s, connection);
        rows->AddNew();
        const qint64 key = rows->Fields(u"lng_ID").toLong();
        rows->Fields(u"txt_Name") = Value(key);
        rows->Fields(u"txt_Stückelung") = u"Paar";
        rows->Fields(u"dbl_Preis") = u"12.50";
        rows->Fields(u"date_Tag") = u"24/12/2026";
        rows->Fields(u"lng_Rang") = u"";
        rows->Update();
        EXPECT_EQ(errorOf([&] { rows->Fields(u"txt_Fehlt") = 1; }), common::kFieldNotFound);
    }
    {
        const WriteRecordset rows(recordset, u"SELECT * FROM tbl_Dinge WHERE lng_ID = 1"_s, connection);
        EXPECT_EQ(rows->Fields(u"txt_Name").text(), u"1"_s);
        EXPECT_EQ(rows->Fields(u"dbl_Preis").Value(), Value(12.5));
        EXPECT_EQ(rows->Fields(u"date_Tag").Value(), Value(common::Serial{46380}));
        EXPECT_TRUE(rows->Fields(u"lng_Rang").isNull());
        rows->Fields(u"txt_Name") = u"neu";
        rows->Update();
        EXPECT_EQ(errorOf([&] { recordset.Open(u"tbl_Dinge"_s, connection); }), common::kObjectOpen);
    }
    EXPECT_EQ(names(u""_s), QStringList{u"neu"_s});
    {
        // The key of a new row is known as well after a look for the old one.
        const WriteRecordset rows(recordset, u"SELECT * FROM tbl_Dinge WHERE lng_ID = -1"_s, connection);
        ASSERT_TRUE(rows->Eof());
        rows->AddNew();
        EXPECT_EQ(rows->Fields(u"lng_ID").toLong(), 2);
    }
    EXPECT_EQ(errorOf([&] { recordset.Close(); }), common::kObjectClosed);
    EXPECT_EQ(errorOf([&] {
                  const WriteRecordset rows(recordset, u"tbl_Dinge"_s, connection);
                  rows->AddNew();
                  rows->Fields(u"dbl_Preis") = u"abc";
                  rows->Update();
              }),
              common::kTypeMismatch);
    EXPECT_FALSE(recordset.IsOpen());
}

TEST_P(SeamTest, AKeyIsGivenOnce) {
    add(u"Eins"_s);
    Connection station;
    station.Open(again());
    Recordset other, ofStation;
    QSet<qint64> keys;
    const auto reserve = [&](Recordset& rows, Connection& by) {
        const WriteRecordset row(rows, u"TBL_Dinge"_s, by);
        row->AddNew();
        keys.insert(row->Fields(u"lng_ID").toLong());
        EXPECT_EQ(row->Fields(u"lng_ID").toLong(), *std::max_element(keys.begin(), keys.end()));
    };
    const WriteRecordset rows(recordset, u"tbl_Dinge"_s, connection);
    rows->AddNew();
    keys.insert(rows->Fields(u"lng_ID").toLong());
    reserve(other, connection);
    reserve(ofStation, station);
    {
        const store::Transaction rolledBack(connection);
        reserve(other, connection);
    }
    reserve(other, connection);
    EXPECT_EQ(keys, QSet<qint64>({2, 3, 4, 5, 6}));
    // Who asks for no key gets none of those either.
    connection.Execute(u"INSERT INTO tbl_Dinge (txt_Name) VALUES ('Sieben')"_s);
    EXPECT_EQ(rows->Fields(u"lng_ID").toLong(), 2);
    rows->Update();
    rows->Close();
    EXPECT_EQ(names(u"WHERE lng_ID = 7"_s), QStringList{u"Sieben"_s});
}

TEST_P(SeamTest, TransactionLeftByAnErrorIsRolledBack) {
    EXPECT_EQ(errorOf([&] {
                  const store::Transaction transaction(connection);
                  add(u"weg"_s);
                  throw RunTimeError(1, u"x"_s);
              }),
              1);
    EXPECT_FALSE(connection.InTransaction());
    store::Transaction transaction(connection);
    add(u"da"_s);
    transaction.commit();
    EXPECT_EQ(names(u""_s), QStringList{u"da"_s});
}

/// What a list shows, each row's first two columns.
QString shownBy(Recordset& rows) {
    QStringList list;
    for (int row = 0; row < rows.RecordCount(); ++row)
        list << rows.valueAt(row, 0).toText() + u':' + rows.valueAt(row, 1).toText();
    return list.join(u' ');
}

TEST_P(SeamTest, ListsAreSortedAndFilteredWhicheverKindTheirRowsAre) {
    add(u"Öl"_s, 3, true, 1);
    add(u"apfel"_s, 1, false, 2);
    add(u"Zimt"_s, 2, true, 2);
    connection.Execute(u"CREATE VIEW view_Dinge AS SELECT * FROM tbl_Dinge"_s);
    // By keys, and fetched.
    for (const char16_t* table : {u"tbl_Dinge", u"view_Dinge"}) {
        Recordset rows;
        rows.Open(u"SELECT lng_ID, txt_Name, dbl_Preis FROM "_s + QString::fromUtf16(table) +
                      u" WHERE lng_Rang < 3 OR lng_Rang > 8 ORDER BY lng_ID DESC;"_s,
                  connection, store::adOpenStatic, store::adLockReadOnly);
        EXPECT_EQ(shownBy(rows), u"3:Zimt 2:apfel 1:Öl"_s);
        rows.Sort(u"txt_Name ASC"_s);
        EXPECT_EQ(shownBy(rows), u"2:apfel 1:Öl 3:Zimt"_s);
        rows.MoveNext();
        rows.Sort(u"dbl_Preis DESC"_s);
        EXPECT_EQ(shownBy(rows), u"1:Öl 3:Zimt 2:apfel"_s);
        EXPECT_EQ(rows.AbsolutePosition(), 1);
        rows.Sort(u""_s);
        EXPECT_EQ(rows.valueAt(0, 0).toLong(), 3);
        rows.Filter(u"flag_Status = 1 AND txt_Name LIKE 'z%' OR txt_Name = 'ÖL'"_s);
        EXPECT_EQ(shownBy(rows), u"3:Zimt 1:Öl"_s);
        rows.Filter(u""_s);
        EXPECT_EQ(rows.RecordCount(), 3);
        EXPECT_EQ(errorOf([&] { rows.Sort(u"txt_Fehlt"_s); }), common::kFieldNotFound);
        EXPECT_EQ(errorOf([&] { rows.Fields(u"dbl_Preis") = 5; }), common::kStoreFailure);
        EXPECT_EQ(errorOf([&] { rows.valueAt(3, 0); }), common::kNoCurrentRow);
    }
    Recordset sums;
    sums.Open(u"SELECT lng_Rang, Count(*) AS N FROM tbl_Dinge GROUP BY lng_Rang"_s, connection);
    EXPECT_EQ(shownBy(sums), u"1:1 2:2"_s);
    EXPECT_EQ(errorOf([&] { sums.Filter(u"N = 1"_s); }), common::kSqlFailure);
    EXPECT_EQ(errorOf([&] { sums.AddNew(); }), common::kStoreFailure);
}

/// Which rows there are is settled first, their values when they are looked at.
TEST_P(SeamTest, RowsLookedAtLaterAreThoseOfTheQuery) {
    for (const char16_t* name : {u"Öl", u"apfel", u"Zimt", u"Brot", u"Salz; ORDER BY x"})
        add(QString::fromUtf16(name), name[0] == u'Z' ? 1 : 2);
    Recordset rows;
    rows.Open(u"SELECT lng_ID, txt_Name, dbl_Preis FROM tbl_Dinge WHERE txt_Name <> 'brot'  ORDER BY "
              u"txt_Name ASC ;"_s,
              connection, store::adOpenStatic, store::adLockReadOnly);
    EXPECT_EQ(rows.RecordCount(), 4);
    // One goes, one comes and one changes.
    connection.Execute(u"DELETE FROM tbl_Dinge WHERE lng_ID = 2"_s);
    add(u"neu"_s);
    connection.Execute(u"UPDATE tbl_Dinge SET txt_Name = 'Anis' WHERE lng_ID = 3"_s);
    EXPECT_FALSE(rows.held(0, 0));
    EXPECT_EQ(shownBy(rows), u"2: 1:Öl 5:Salz; ORDER BY x 3:Anis"_s);
    EXPECT_TRUE(rows.held(0, 0));
    rows.Sort(u"lng_ID DESC"_s);
    EXPECT_EQ(shownBy(rows), u"5:Salz; ORDER BY x 3:Anis 1:Öl 2:"_s);
    rows.Filter(u"dbl_Preis = 2"_s);
    EXPECT_EQ(shownBy(rows), u"1:Öl 5:Salz; ORDER BY x"_s);
    rows.Close();
    EXPECT_EQ(errorOf([&] { rows.valueAt(0, 0); }), common::kObjectClosed);
}

TEST_P(SeamTest, AWholeTableKeepsItsNumberOfRowsAndTheirOrder) {
    {
        store::Transaction transaction(connection);
        for (int i = 1; i <= 300; ++i)
            add(QString::number(1000 + i), i % 2);
        transaction.commit();
    }
    Recordset rows;
    rows.Open(u"SELECT lng_ID, txt_Name FROM tbl_Dinge ORDER BY lng_ID DESC;"_s, connection,
              store::adOpenStatic, store::adLockReadOnly);
    EXPECT_EQ(rows.RecordCount(), 300);
    connection.Execute(u"DELETE FROM tbl_Dinge WHERE lng_ID = 5"_s);
    add(u"neu"_s);
    for (const auto& [row, text] : {std::pair{0, u"1300"}, {260, u"1040"}, {298, u"1001"}, {299, u""}})
        EXPECT_EQ(rows.valueAt(row, 1).toText(), QString::fromUtf16(text)) << row;
    rows.Sort(u"txt_Name ASC"_s);
    EXPECT_EQ(rows.valueAt(4, 0).toLong(), 6);
    rows.prefetch(250, 280);
    EXPECT_TRUE(rows.held(280, 1));
    EXPECT_FALSE(rows.held(5, 1) || rows.held(300, 1) || rows.held(280, 2));
    rows.Filter(u"txt_Name > '1290' AND lng_ID <> 300"_s);
    EXPECT_EQ(rows.RecordCount(), 10);
    EXPECT_EQ(rows.valueAt(0, 1).toText(), u"neu"_s);
    rows.Filter(u""_s);
    EXPECT_EQ(rows.RecordCount(), 300);
}

/// As a list over the bookings, whose texts are looked up; the index would give the keys in an order of its
/// own.
TEST_P(SeamTest, AViewWithAKeyHasTheRowsOfItsQuery) {
    for (const char16_t* name : {u"Öl", u"apfel", u"Zimt"})
        add(QString::fromUtf16(name));
    connection.Execute(
        u"CREATE TABLE tbl_Kauf (lng_Nr INTEGER PRIMARY KEY, lng_Ding INTEGER, dbl_Total DOUBLE)"_s);
    connection.Execute(u"CREATE INDEX idx_Kauf ON tbl_Kauf (lng_Ding, lng_Nr)"_s);
    connection.Execute(
        u"CREATE VIEW view_Kauf AS SELECT b.lng_Nr, (SELECT d.txt_Name FROM tbl_Dinge AS d "
        "WHERE d.lng_ID = b.lng_Ding) AS txt_Ding, b.dbl_Total, b.lng_Ding FROM tbl_Kauf AS b"_s);
    QStringList values;
    for (int i = 1; i <= 700; ++i)
        values << u"(%1, %2, %3)"_s.arg(i * 2).arg(i % 3 + 1).arg(i * 37 % 11);
    connection.Execute(u"INSERT INTO tbl_Kauf VALUES "_s + values.join(u", "_s));
    const auto plain = [&](const QString& sql) {
        QString result;
        for (const auto& row : store::readAll(connection.engine(), sql).rows)
            result += row[0].toText() + u':' + row[1].toText() + u' ';
        return result.trimmed();
    };
    const QString select = u"SELECT lng_Nr, txt_Ding, dbl_Total FROM view_Kauf"_s;
    Recordset rows;
    rows.SetKey(u"lng_Nr"_s);
    for (const QString& clause :
         {u""_s, u" WHERE lng_Ding = 2 "_s, u" WHERE dbl_Total > 4 ORDER BY lng_Nr DESC"_s}) {
        rows.Open(select + clause, connection, store::adOpenStatic, store::adLockReadOnly);
        EXPECT_EQ(rows.RecordCount(), plain(select + clause).count(u' ') + 1);
        EXPECT_FALSE(rows.held(0, 1)) << "by their keys";
        EXPECT_EQ(shownBy(rows), plain(select + clause)) << clause.toStdString();
        rows.Sort(u"txt_Ding DESC"_s);
        EXPECT_EQ(rows.valueAt(0, 1).toText() + rows.valueAt(rows.RecordCount() - 1, 1).toText(),
                  clause.contains(u'2') ? u"apfelapfel"_s : u"Zimtapfel"_s);
        rows.Sort(u""_s);
        EXPECT_EQ(shownBy(rows), plain(select + clause)) << clause.toStdString();
        rows.Close();
    }
    rows.Open(select, connection, store::adOpenStatic, store::adLockReadOnly);
    EXPECT_EQ(rows.RecordCount(), 700);
    connection.Execute(u"DELETE FROM tbl_Kauf WHERE lng_Nr = 4"_s);
    connection.Execute(u"UPDATE tbl_Kauf SET lng_Ding = 3 WHERE lng_Nr = 6"_s);
    connection.Execute(u"INSERT INTO tbl_Kauf VALUES (5000, 1, 1)"_s);
    EXPECT_EQ(rows.RecordCount(), 700);
    EXPECT_EQ(shownBy(rows).left(24), u"2:apfel 4: 6:Zimt 8:apfe"_s);
    EXPECT_EQ(rows.valueAt(699, 0).toLong(), 1400);
}

/// Nobody waits for its end.
QString endless() {
    QStringList tables, values;
    for (const char16_t name : u"abcdefgh"_s.toStdU16String()) {
        tables << u"tbl_Viel AS %1"_s.arg(QChar(name));
        values << u"%1.lng_Zahl"_s.arg(QChar(name));
    }
    return u"SELECT a.lng_Zahl FROM %1 WHERE %2 < 0"_s.arg(tables.join(u", "_s), values.join(u" + "_s));
}

TEST_P(SeamTest, WorkThatIsWaitedForRunsBesideAndIsGivenUp) {
    connection.Execute(u"CREATE TABLE tbl_Viel (lng_Zahl INTEGER)"_s);
    connection.Execute(u"INSERT INTO tbl_Viel VALUES "_s + QStringList(100, u"(1)"_s).join(u", "_s));
    add(u"Öl"_s);
    int words = 0;
    const auto count = [&](const QString& sql, const store::Waiting& waiting) {
        size_t found = 0;
        connection.Read([&](store::Engine& engine) { found = store::readAll(engine, sql).rows.size(); },
                        waiting);
        return found;
    };
    // Meanwhile others write and wait, too.
    const store::Waiting givingUp = [&] {
        if (++words == 2) {
            add(u"Brot"_s);
            EXPECT_EQ(count(u"SELECT * FROM tbl_Dinge WHERE txt_Name LIKE 'BR%' ORDER BY txt_Name"_s, [] {}),
                      1u);
        }
        if (words == 4)
            throw words;
    };
    QElapsedTimer time;
    time.start();
    EXPECT_THROW(count(endless(), givingUp), int);
    EXPECT_LT(time.elapsed(), 2000);
    EXPECT_EQ(count(u"SELECT * FROM tbl_Dinge"_s, [] {}), 2u) << "the next one";
    EXPECT_EQ(errorOf([&] { count(u"SELECT x FROM tbl_Fehlt WHERE y = 'geheim'"_s, [] {}); }),
              common::kSqlFailure);
    EXPECT_FALSE(told.detail().contains(u"geheim"_s));
    EXPECT_NE(errorOf([&] { count(u"DELETE FROM tbl_Dinge"_s, [] {}); }), 0) << "it only reads";
    Recordset rows;
    rows.Open(u"SELECT lng_ID, txt_Name FROM tbl_Dinge WHERE lng_ID = 2"_s, connection, store::adOpenStatic,
              store::adLockReadOnly);
    rows.Fetch([] {});
    {
        store::Transaction transaction(connection);
        add(u"Salz"_s);
        EXPECT_EQ(count(u"SELECT * FROM tbl_Dinge"_s, [] {}), 3u) << "what the caller has written is there";
        connection.Execute(u"UPDATE tbl_Dinge SET txt_Name = 'Mehl' WHERE lng_ID = 2"_s);
        EXPECT_FALSE(rows.held(0, 1));
        EXPECT_EQ(shownBy(rows), u"2:Mehl"_s) << "rows looked at later are read by the caller's own hand";
    }
    EXPECT_EQ(errorOf([&] { count(endless(), [&] { connection.Close(); }); }), common::kObjectClosed);
    EXPECT_TRUE(isOnServer() ||
                QDir(folder.filePath(u"Data"_s)).entryList(QDir::Files) == QStringList(u"Test.mdb"_s));
}

TEST_F(StoreTest, PlainQueriesAreToldApart) {
    for (const auto& [source, parts] :
         {std::pair{u"tbl_Dinge", u"tbl_Dinge|*||"},
          {u"[Preis Liste];", u"Preis Liste|*||"},
          {u" select * from T", u"T|*||"},
          {u"SELECT a, [b c] FROM [T x] WHERE a = 'ORDER BY ; x' ORDER  BY a DESC, b ;",
           u"T x|a, [b c]|a = 'ORDER BY ; x'|a DESC, b"},
          {u"SELECT a FROM T WHERE a IN (SELECT TOP 1 b FROM U GROUP BY b ORDER BY b)",
           u"T|a|a IN (SELECT TOP 1 b FROM U GROUP BY b ORDER BY b)|"},
          {u"SELECT a FROM T ORDER BY b", u"T|a||b"}}) {
        const auto query = store::plainQuery(QString::fromUtf16(source));
        ASSERT_TRUE(query) << QString::fromUtf16(source).toStdString();
        EXPECT_EQ((QStringList{query->table, query->columns, query->condition, query->order}.join(u'|')),
                  QString::fromUtf16(parts));
    }
    for (const char16_t* source :
         {u"SELECT TOP 5 a FROM T", u"SELECT DISTINCT a FROM T", u"SELECT a AS b FROM T",
          u"SELECT Count(*) FROM T", u"SELECT T.a FROM T", u"SELECT a FROM T, U WHERE 1 = 1",
          u"SELECT a FROM T AS U", u"SELECT a FROM T INNER JOIN U ON a = b",
          u"SELECT a FROM T WHERE a = 1 GROUP BY a", u"SELECT a FROM T ORDER BY a LIMIT 1",
          u"SELECT a FROM T UNION SELECT a FROM U", u"SELECT a", u""})
        EXPECT_FALSE(store::plainQuery(QString::fromUtf16(source)))
            << QString::fromUtf16(source).toStdString();
}

TEST_F(StoreTest, CompactsIntoANewFileOnly) {
    add(u"bleibt"_s);
    const QString target =
        u"Provider=x;Data Source="_s + folder.path() +
        u"\\Data\\Test_CLEAN.mdb;Jet OLEDB:Engine Type=5; Jet OLEDB:Database Password=neu;"_s;
    store::CompactDatabase(text(u"geheim"_s), target);
    EXPECT_EQ(errorOf([&] { store::CompactDatabase(text(u"geheim"_s), target); }), common::kTargetExists);
    Connection copy;
    EXPECT_EQ(errorOf([&] { copy.Open(QString(target).replace(u"neu"_s, u"geheim"_s)); }),
              common::kPasswordRefused);
    copy.Open(target);
    Recordset rows;
    rows.Open(u"SELECT * FROM tbl_Dinge"_s, copy);
    EXPECT_EQ(rows.Fields(u"txt_Name").text(), u"bleibt"_s);
}

/// tbl_a has a column of every type, named after it; tbl_b has a number where tbl_a has a flag.
struct SomeNames : store::Names {
    store::ColumnType typeOf(const QString& table, const QString& column) const override {
        using enum store::ColumnType;
        const QHash<QString, store::ColumnType> types{{u"flag"_s, table.endsWith(u'a') ? YesNo : Long},
                                                      {u"lng"_s, Long},
                                                      {u"dbl"_s, Double},
                                                      {u"txt"_s, Text},
                                                      {u"tag"_s, Date}};
        return types.value(column.toLower(), Any);
    }

    QString rowKey(const QString&) const override { return u"lng_ID"_s; }
};

TEST(Dialect, StatementsThatDifferInValuesShareOnePreparedStatement) {
    const auto sql = [](const char16_t* text) {
        return store::translate(QString::fromUtf16(text), SomeNames(), store::Speech::Sqlite).prepared();
    };
    EXPECT_EQ(sql(u"SELECT * FROM t WHERE a = 5 AND b = 'x'"),
              sql(u"SELECT * FROM t WHERE a = -7.5 AND b = 'y''z'"));
    EXPECT_EQ(sql(u"INSERT INTO t(a, b) VALUES(1, 'x')"), sql(u"INSERT INTO t(a, b) VALUES(-2, 'y')"));
    EXPECT_EQ(sql(u"DELETE * FROM BestellReport"), QByteArray("DELETE FROM BestellReport"));
    EXPECT_EQ(sql(u"SELECT [Preis/Stk] FROM t"), QByteArray("SELECT \"Preis/Stk\" FROM t"));
}

QString filled(const QString& sql, bool keyed = false) {
    store::Shape shape;
    readShape(sql, shape);
    return QString::fromUtf8(
        store::translate(sql, SomeNames(), store::Speech::MariaDb, keyed).filled(shape.literals));
}

TEST(Dialect, FlagsAreKnownByTheirTable) {
    const auto condition = [](const char16_t* from) {
        const QString sql = u"SELECT x FROM "_s + QString::fromUtf16(from);
        return store::translate(sql, SomeNames(), store::Speech::Sqlite).prepared().endsWith("<> 0");
    };
    for (const char16_t* from :
         {u"tbl_a WHERE flag = 1", u"tbl_a AS b WHERE b.flag = -1", u"tbl_b, tbl_a WHERE tbl_a.flag = True",
          u"(SELECT txt, flag FROM tbl_a) AS z WHERE z.flag = 1", u"tbl_a WHERE 1 = FLAG"})
        EXPECT_TRUE(condition(from)) << QString::fromUtf16(from).toStdString();
    for (const char16_t* from : {u"tbl_b WHERE flag = 1", u"tbl_b AS a, tbl_a AS b WHERE a.flag = 1"})
        EXPECT_FALSE(condition(from)) << QString::fromUtf16(from).toStdString();
}

TEST(Dialect, MariaDbReadsWhatItWouldReadOtherwise) {
    for (const auto& [condition, expected] :
         {std::pair{u"txt = 'a\\''b'", u"`txt` = 'a\\\\''b'"},
          {u"txt LIKE 'a\\%'", u"`txt` LIKE 'a\\\\\\\\%'"},
          {u"dbl = 0.1", u"`dbl` = 0.1e0"},
          {u"dbl < -99999999999999999999", u"`dbl` < -99999999999999999999e0"},
          {u"txt = 8001 OR txt = -1.50", u"`txt` = '8001' OR `txt` = '-1.5'"},
          {u"lng = ' 5' AND dbl <> 'x'", u"`lng` = 5 AND `dbl` <> 1.7976931348623157e308"},
          {u"lng IN () OR lng NOT IN ()", u"(1 = 0) OR (1 = 1)"},
          {u"txt & '!' <> 'x' = lng", u"concat(`txt`, '!') <> 'x' = `lng`"},
          {u"CAST(dbl * 24 AS INTEGER) = 1", u"CAST(truncate(`dbl` * 24, 0) AS SIGNED) = 1"},
          {u"lng / 2 > max(lng, 3)", u"`lng` DIV 2 > greatest(`lng`, 3)"},
          {u"dbl / 2 = 1 AND lng IS NOT 3", u"`dbl` / 2 = 1 AND NOT (`lng` <=> 3)"}})
        EXPECT_EQ(filled(u"SELECT txt FROM tbl_a WHERE "_s + QString::fromUtf16(condition)),
                  u"SELECT `txt` FROM `tbl_a` WHERE "_s + QString::fromUtf16(expected));
}

TEST(Dialect, MariaDbKeepsTiesWhereThereCanBeAny) {
    EXPECT_TRUE(filled(u"SELECT TOP 3 txt FROM tbl_a ORDER BY txt DESC"_s)
                    .endsWith(u"DESC FETCH FIRST 3 ROWS WITH TIES"_s));
    EXPECT_TRUE(filled(u"SELECT TOP 3 txt FROM tbl_a ORDER BY txt, LNG_ID"_s).endsWith(u"LIMIT 3"_s));
    EXPECT_TRUE(filled(u"SELECT TOP 3 txt FROM tbl_a, tbl_b ORDER BY lng_ID"_s).endsWith(u"TIES"_s));
    EXPECT_EQ(filled(u"SELECT * FROM tbl_a ORDER BY rowid"_s, true),
              u"SELECT `tbl_a`.*, `tbl_a`.`lng_ID` FROM `tbl_a` ORDER BY `lng_ID`"_s);
}

TEST(Dialect, MariaDbTablesTellWhatTheirColumnsAre) {
    const QStringList script = store::translateDefinitions(
        u"-- One; comment.\nCREATE TABLE t (a TEXT COLLATE GERMAN_CI, b TEXT, c YESNO NOT NULL DEFAULT 0);\n"
        u"CREATE TABLE u (d INTEGER PRIMARY KEY AUTOINCREMENT, e DATE); CREATE UNIQUE INDEX i ON t (a, c);"
        u"CREATE VIEW v AS SELECT a || ';' AS x FROM t WHERE c = True"_s,
        store::Speech::MariaDb);
    ASSERT_EQ(script.size(), 4);
    EXPECT_TRUE(script[0].startsWith(
        u"CREATE TABLE `t` (`a` VARCHAR(255), `b` MEDIUMTEXT COLLATE "
        u"utf8mb4_nopad_bin, `c` TINYINT NOT NULL DEFAULT 0 COMMENT 'YESNO', `rowid` "_s));
    EXPECT_TRUE(script[1].contains(u"KEY COMMENT 'COUNTER', `e` DOUBLE COMMENT 'DATE')"_s));
    EXPECT_EQ(script[2], u"CREATE UNIQUE INDEX `i` ON `t` (`a`, `c`)"_s);
    EXPECT_EQ(script[3], u"CREATE VIEW `v` AS SELECT concat(`a`, ';') AS `x` FROM `t` WHERE `c` <> 0"_s);
}

TEST(Collation, IsAnOrder) {
    const QStringList texts = {u""_s,  u"a"_s,  u"A"_s, u"ä"_s, u"Äa"_s,       u"ab"_s, u"z"_s,
                               u"ß"_s, u"ss"_s, u"é"_s, u"😀"_s, u"m\u0000x"_s, u"-"_s,  u"1"_s};
    for (const QString& a : texts) {
        for (const QString& b : texts) {
            EXPECT_EQ(store::compareTexts(a, b) < 0, store::compareTexts(b, a) > 0);
            for (const QString& c : texts) {
                const bool ascending = store::compareTexts(a, b) <= 0 && store::compareTexts(b, c) <= 0;
                EXPECT_TRUE(!ascending || store::compareTexts(a, c) <= 0);
            }
        }
    }
}

} // namespace
