#include "program/Saver.h"
#include "maintenance/modDatenBackup.h"
#include "maintenance/modDatenRestore.h"
#include "maintenance/modTagessicherung.h"
#include "platform/Progress.h"
#include "store/MainCopies.h"
#include "store/SchemaSteps.h"
#include "store/StoreGlobals.h"
#include "support/TestFirm.h"
#include <QDate>
#include <QFile>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace test {
namespace {

void say(const QString& line) {
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

} // namespace

QString backupFile(const QString& installation) {
    return installation + u"/Ziel.mdb"_s;
}

QString firstDatabase(const QString& installation) {
    return installation + u"/Erste.mdb"_s;
}

QString olderDatabase(const QString& installation) {
    return installation + u"/Alt.mdb"_s;
}

int saveUntilKilled(const QString& installation) {
    store::setAppPath(installation);
    for (int round = 0;; ++round) {
        {
            for (const char16_t* suffix : {u"", u"-wal", u"-shm"})
                QFile::remove(olderDatabase(installation) + QString::fromUtf16(suffix));
            QFile::copy(firstDatabase(installation), olderDatabase(installation));
            store::Connection older;
            older.Open(store::backupConnectionString(olderDatabase(installation)));
            say(u"> Schritte"_s);
            store::BringUpToDate(older);
        }
        store::OpenDatabases();
        ConnMain.Execute(u"INSERT INTO tbl_Verwaltung_Kuriere(txt_Kurzzeichen) VALUES('x')"_s);
        const qint64 count = TestFirm::count(u"tbl_Verwaltung_Kuriere"_s);
        say(u"K %1"_s.arg(count));
        say(u"> Tagessicherung"_s);
        modTagessicherung::MakeCopy(QDate::currentDate().addDays(-round % 3), platform::unwatched);
        store::CloseDatabases();
        say(u"> Backup"_s);
        modDatenBackup::CreateBackup(backupFile(installation), platform::unwatched);
        say(u"B %1"_s.arg(count));
        say(u"> Einlesen"_s);
        modDatenRestore::RestoreBackup(backupFile(installation), platform::unwatched);
    }
}

} // namespace test
