// What is done to whole database files: looking at them, checking, compacting, replacing.
#include "common/FileCopy.h"
#include "common/RunTimeError.h"
#include "store/CheckDatabase.h"
#include "store/CreateDatabase.h"
#include "store/Recordset.h"
#include "store/SoleHold.h"
#include "store/SqliteEngine.h"
#include "support/FullDisk.h"
#include "support/Outcome.h"
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <future>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using test::bytes;
using test::errorOf;

namespace {

class Copies : public testing::Test {
  protected:
    Copies() {
        store::createDatabase(path, u"geheim"_s);
        store::SqliteEngine engine(path, u"geheim"_s);
        engine.execute(
            u"CREATE TABLE tbl_Dinge (lng_ID INTEGER PRIMARY KEY, txt_Name TEXT COLLATE GERMAN_CI)"_s);
        engine.execute(u"CREATE INDEX idx_Dinge ON tbl_Dinge (txt_Name)"_s);
        engine.begin();
        for (int i = 0; i < 3000; ++i)
            engine.execute(u"INSERT INTO tbl_Dinge (txt_Name) VALUES ('Ding %1 %2')"_s.arg(i * 7919 % 3000)
                               .arg(QString(40, u'x')));
        engine.commit();
    }

    QString text(const QString& file, const QString& password = u"geheim"_s) const {
        return u"Data Source=%1;Jet OLEDB:Database Password=%2;"_s.arg(file, password);
    }

    void check(const QString& file) const { store::CheckDatabase(file, u"geheim"_s, {u"tbl_Dinge"_s}); }

    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files, QDir::Name); }

    static void overwrite(const QString& file, qint64 at, const QByteArray& with) {
        QFile open(file);
        ASSERT_TRUE(open.open(QIODevice::ReadWrite) && open.seek(at));
        open.write(with);
    }

    QTemporaryDir folder;
    QString path = folder.filePath(u"Test 100%.mdb"_s);
    QString copy = folder.filePath(u"Kopie.mdb"_s);
};

TEST_F(Copies, LookingAtAFileLeavesItAndItsFolderAsTheyAre) {
    store::CompactDatabase(text(path), text(copy));
    QFile::setPermissions(copy, QFile::ReadOwner | QFile::ReadGroup);
    for (const QString& file : {path, copy}) {
        const QByteArray before = bytes(file);
        store::Connection look;
        look.Open(text(file) + u"Mode=Read|Write;Mode=Read"_s);
        store::Recordset rows;
        rows.Open(u"SELECT * FROM tbl_Dinge"_s, look, store::adOpenForwardOnly, store::adLockReadOnly);
        EXPECT_EQ(rows.Fields(u"lng_ID").text(), u"1"_s);
        EXPECT_EQ(files(), (QStringList{u"Kopie.mdb"_s, u"Test 100%.mdb"_s}));
        EXPECT_NE(errorOf([&] { look.Execute(u"DELETE FROM tbl_Dinge"_s); }), 0);
        look.Close();
        EXPECT_EQ(bytes(file), before);
    }
    EXPECT_TRUE(QFile::permissions(copy) & QFile::ReadGroup);
    // What stands in the log of an open file would be missed.
    store::SqliteEngine open(path, u"geheim"_s);
    open.execute(u"DELETE FROM tbl_Dinge"_s);
    EXPECT_EQ(errorOf([&] { check(path); }), common::kStoreFailure);
}

TEST_F(Copies, ACheckFindsWhatIsWrong) {
    store::CompactDatabase(text(path), text(copy));
    qint64 last = 0;
    store::CheckDatabase(copy, u"geheim"_s, {u"tbl_Dinge"_s}, [&](qint64 done, qint64 total) {
        EXPECT_TRUE(done >= last && total > 3000);
        last = done;
    });
    EXPECT_EQ(errorOf([&] { store::CheckDatabase(copy, u"x"_s, {}); }), common::kPasswordRefused);
    EXPECT_EQ(errorOf([&] { store::CheckDatabase(copy, u"geheim"_s, {u"tbl_Dingo"_s}); }),
              common::kStoreFailure);
    const QByteArray whole = bytes(copy);
    for (const qint64 at : {whole.size() / 2 - whole.size() / 2 % 4096, whole.size() - 4096}) {
        overwrite(copy, at, QByteArray(4096, 'x'));
        EXPECT_EQ(errorOf([&] { check(copy); }), common::kStoreFailure) << at;
        overwrite(copy, 0, whole);
        EXPECT_EQ(errorOf([&] { check(copy); }), 0);
    }
    QFile::resize(copy, whole.size() - 4096);
    EXPECT_EQ(errorOf([&] { check(copy); }), common::kStoreFailure);
    overwrite(copy, 0, whole);
    overwrite(copy, 60, QByteArray("\0\0\0\x7f", 4));
    EXPECT_EQ(errorOf([&] { check(copy); }), common::kSchemaTooNew);
    overwrite(copy, 0, "no database");
    EXPECT_EQ(errorOf([&] { check(copy); }), common::kStoreFailure);
}

TEST_F(Copies, WhatFailsOrIsGivenUpLeavesNoCopy) {
    struct GivenUp {};

    const auto giveUp = [](qint64 done, qint64 total) {
        EXPECT_TRUE(done >= 0 && done <= total && total > 0);
        throw GivenUp();
    };
    EXPECT_THROW(store::CompactDatabase(text(path), text(copy), giveUp), GivenUp);
    EXPECT_THROW(common::copyFile(path, copy, giveUp), GivenUp);
    common::copyFile(path, copy);
    EXPECT_TRUE(common::haveSameBytes(path, copy));
    overwrite(copy, QFile(copy).size() - 1, "!");
    EXPECT_FALSE(common::haveSameBytes(path, copy));
    QFile::remove(copy);
    const test::FullDisk full(100'000);
    EXPECT_NE(errorOf([&] { store::CompactDatabase(text(path), text(copy)); }), 0);
    EXPECT_EQ(errorOf([&] { common::copyFile(path, copy); }), common::kDiskFull);
    EXPECT_EQ(errorOf([&] { common::copyFile(path, folder.filePath(u"nirgends/Kopie.mdb"_s)); }),
              common::kPlatformFailure);
    EXPECT_EQ(files(), QStringList{u"Test 100%.mdb"_s});
}

TEST_F(Copies, OnlyASoleHolderReplacesADatabase) {
    {
        const store::SqliteEngine other(path, u"geheim"_s);
        EXPECT_EQ(errorOf([&] { store::SoleHold hold(text(path)); }), common::kStoreFailure);
    }
    auto hold = std::make_unique<store::SoleHold>(text(path));
    EXPECT_EQ(files(), QStringList{u"Test 100%.mdb"_s});
    hold->CompactDatabase(text(copy));
    check(copy);
    store::SqliteEngine(copy, u"geheim"_s).execute(u"DELETE FROM tbl_Dinge WHERE lng_ID > 7"_s);
    // Whoever reads it in this process takes the system's locks away.
    EXPECT_FALSE(bytes(path).isEmpty());
    hold->renew();
    std::future<void> waiting = std::async(std::launch::async, [this] {
        store::SqliteEngine(path, u"geheim"_s).execute(u"DELETE FROM tbl_Dinge WHERE lng_ID > 5"_s);
    });
    EXPECT_EQ(waiting.wait_for(std::chrono::seconds(1)), std::future_status::timeout);
    hold->replaceWith(copy);
    hold.reset();
    waiting.get();
    EXPECT_EQ(files(), QStringList{u"Test 100%.mdb"_s});
    store::Connection now;
    now.Open(text(path));
    store::Recordset rows;
    rows.Open(u"SELECT Count(*) AS N FROM tbl_Dinge"_s, now, store::adOpenForwardOnly, store::adLockReadOnly);
    EXPECT_EQ(rows.Fields(u"N").text(), u"5"_s) << "of the new file";
}

} // namespace
