#include "store/SchemaSteps.h"
#include "common/RunTimeError.h"
#include "install/Installer.h"
#include "store/CreateDatabase.h"
#include "store/SqliteEngine.h"
#include "store/StoreGlobals.h"
#include "support/FirstSchema.h"
#include "support/TestFirm.h"
#include <QDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace Qt::StringLiterals;
using test::TestFirm;

namespace {

/// What programs of the first version made by themselves, from some day on.
constexpr const char* kMadeByLaterPrograms =
    "CREATE TABLE tbl_Auftragswesen_Erledigt (lng_ID INTEGER PRIMARY KEY, txt_Kennung TEXT);"
    "CREATE TABLE tbl_Auswertungen_Barkonditionen (lng_ID INTEGER PRIMARY KEY AUTOINCREMENT, "
    "txt_Konditionen TEXT COLLATE GERMAN_CI, lng_Bar INTEGER);"
    "INSERT INTO tbl_Auswertungen_Barkonditionen VALUES (1, 'Bar', 1), (2, 'Gutschein', 1);"
    "CREATE TABLE tbl_WebShop_Bestellungen_Verbucht (lng_WebShopID INTEGER, lng_TrxNr INTEGER, "
    "flag_Vorbestellung INTEGER, dbl_VerbuchtNow DOUBLE);"
    "INSERT INTO tbl_WebShop_Bestellungen_Verbucht VALUES (7, 1000, 0, 46000);"
    "CREATE INDEX idx_WebShop_Verbucht ON tbl_WebShop_Bestellungen_Verbucht "
    "(lng_WebShopID, flag_Vorbestellung, lng_TrxNr);"
    "DROP INDEX idx_Bestellungen_Kunde;"
    "CREATE INDEX idx_Bestellungen_Kunde_Nummer ON tbl_Auftragswesen_Bestellungen_Master "
    "(lng_KundenID, lng_TrxNr, lng_LieferDatum, dbl_TotalMitMWSt);";

/// Columns with their types, indexes and views, in a form that tells nothing of how they were written.
QStringList schemaOf(store::Connection& connection) {
    QStringList schema = TestFirm::rows(u"SELECT m.name, c.name AS Spalte, c.type, c.pk FROM sqlite_schema "
                                        u"AS m, pragma_table_info(m.name) AS c "
                                        u"WHERE m.type IN ('table', 'view') ORDER BY m.name, c.name"_s,
                                        connection);
    for (QString row : TestFirm::rows(
             u"SELECT name, sql FROM sqlite_schema WHERE type IN ('index', 'view') ORDER BY name"_s,
             connection))
        schema << row.remove(u"IF NOT EXISTS "_s).simplified();
    return schema;
}

class SchemaSteps : public testing::Test {
  protected:
    void open(const char* madeLater = "") {
        QDir(m_folder.path()).mkpath(u"Data"_s);
        store::setAppPath(m_folder.path());
        test::createFirstSchema(m_folder.filePath(u"Data/DBTavolino.mdb"_s), madeLater);
        m_old.Open(store::mainConnectionString());
    }

    QTemporaryDir m_folder;
    store::Connection m_old;
};

TEST_F(SchemaSteps, LeadFromTheFirstSchemaToTodays) {
    QStringList today;
    {
        const TestFirm firm;
        today = schemaOf(ConnMain);
    }
    for (const char* madeLater : {"", kMadeByLaterPrograms}) {
        open(madeLater);
        ASSERT_NE(schemaOf(m_old), today);
        int copies = 0, commits = 0;
        sqlite3_commit_hook(
            dynamic_cast<store::SqliteEngine&>(m_old.engine()).handle(),
            [](void* count) { return 0 * ++*static_cast<int*>(count); }, &commits);
        for (int start = 0; start < 2; ++start)
            store::BringUpToDate(m_old, [&] { ++copies; });
        EXPECT_EQ(commits, 1) << "the version with the steps, or neither";
        EXPECT_EQ(copies, 1) << "one before the steps, none where there are none";
        EXPECT_EQ(schemaOf(m_old), today) << madeLater;
        EXPECT_EQ(TestFirm::value(u"SELECT txt_Buchungstext FROM view_Auswertungen_Buchungsjournal"_s, m_old),
                  u"Muster Anna"_s);
        const bool hadSome = *madeLater != '\0';
        EXPECT_EQ(TestFirm::rows(u"SELECT txt_Konditionen FROM tbl_Auswertungen_Barkonditionen"_s, m_old),
                  hadSome ? QStringList({u"Bar"_s, u"Gutschein"_s}) : QStringList({u"Bar"_s, u"Cash"_s}));
        EXPECT_EQ(TestFirm::value(u"SELECT lng_TrxNr FROM tbl_WebShop_Bestellungen_Verbucht"_s, m_old),
                  hadSome ? u"1000"_s : QString());
        m_old.Close();
    }
}

TEST_F(SchemaSteps, LeaveTheOldDatabaseWhereTheyCannotBeTaken) {
    open();
    const QStringList before = schemaOf(m_old);

    struct Unwilling {};

    const auto refuse = [] { throw Unwilling(); };
    EXPECT_THROW(store::BringUpToDate(m_old, refuse), Unwilling);
    // There are too few rows for the engine to ask by itself.
    m_old.Execute(u"INSERT INTO tbl_Verwaltung_Kunden (txt_Name) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
                  u"SELECT i + 1 FROM n WHERE i < 20000) SELECT i FROM n"_s);
    EXPECT_THROW(store::BringUpToDate(m_old, {}, refuse), Unwilling);
    EXPECT_FALSE(m_old.InTransaction());
    EXPECT_EQ(m_old.engine().schemaVersion(), store::kFirstSchemaVersion);
    EXPECT_EQ(schemaOf(m_old), before);
    m_old.Execute(u"DROP TABLE tbl_Verwaltung_Kunden"_s);
    EXPECT_THROW(store::BringUpToDate(m_old), common::RunTimeError);
    EXPECT_EQ(m_old.engine().schemaVersion(), store::kFirstSchemaVersion);
    EXPECT_EQ(TestFirm::value(u"SELECT Count(*) AS N FROM tbl_Auftragswesen_Bestellungen_Master"_s, m_old),
              u"1"_s);
}

} // namespace
