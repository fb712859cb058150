#include "support/TestFirm.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "install/Installer.h"
#include "store/SystemSettings.h"
#include "support/ServerFirm.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace test {
namespace {

void addFirm() {
    QFile script(QStringLiteral(TAVOLINO_SOURCE_DIR "/tests/support/firm.sql"));
    if (!script.open(QIODevice::ReadOnly))
        qFatal("no firm.sql");
    // Without its first line, a comment.
    const QString statements = QString::fromUtf8(script.readAll()).section(u'\n', 1);
    for (const QString& statement : statements.split(u";\n"_s, Qt::SkipEmptyParts))
        ConnMain.Execute(statement);
    for (int gruppe = 2; gruppe <= 10; ++gruppe)
        for (const auto& [table, key] :
             {std::pair{u"Produkte"_s, u"lng_ProduktID"_s}, {u"ProdukteExtras"_s, u"lng_ExtraID"_s}})
            ConnMain.Execute(
                u"INSERT INTO tbl_Verwaltung_%1_Preise(%2, lng_Gruppe, dbl_Preis, lng_MWSt) SELECT %2, %3, "
                u"CASE WHEN dbl_Preis = 0 THEN 0 ELSE dbl_Preis + %3 - 1 END, lng_MWSt FROM "
                u"tbl_Verwaltung_%1_Preise WHERE lng_Gruppe = 1"_s.arg(table, key)
                    .arg(gruppe));
}

/// In memory where the system has such a folder: what a test does to the store would otherwise wait for the
/// disk.
QString folderTemplate() {
    const QString memory = u"/dev/shm"_s;
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + u"/tavolino-test-XXXXXX"_s;
}

} // namespace

TestFirm::TestFirm() : m_folder(folderTemplate()) {
    setTime(18, 0);
    install::installDatabases(folder());
    store::setAppPath(folder());
    if (stand() != Stand::File)
        m_onServer = std::make_unique<ServerFirm>(*DatabaseServer::shared());
    store::OpenDatabases();
    store::Transaction seed(ConnMain);
    addFirm();
    seed.commit();
    store::LoadSystemSettings();
}

TestFirm::~TestFirm() {
    store::CloseDatabases();
    common::clock::release();
}

double TestFirm::day() {
    return common::dateSerial(2026, 5, 15);
}

void TestFirm::setTime(int hour, int minute) {
    common::clock::set(day() + common::timeSerial(hour, minute));
}

QStringList TestFirm::rows(const QString& sql, store::Connection& connection) {
    QStringList all;
    store::Recordset rows;
    for (rows.Open(sql, connection, store::adOpenForwardOnly, store::adLockReadOnly); !rows.Eof();
         rows.MoveNext()) {
        QStringList texts;
        for (const store::Column& column : rows.Columns())
            texts << rows.Fields(column.name).text();
        all << texts.join(u'|');
    }
    return all;
}

QString TestFirm::value(const QString& sql, store::Connection& connection) {
    return rows(sql, connection).value(0);
}

} // namespace test
