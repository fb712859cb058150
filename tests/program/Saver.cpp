#include "program/Saver.h"
#include "maintenance/modDatenBackup.h"
#include "maintenance/modDatenRestore.h"
#include "maintenance/modTagessicherung.h"
#include "platform/Progress.h"
#include "store/StoreGlobals.h"
#include "support/TestFirm.h"
#include <QDate>
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

int saveUntilKilled(const QString& installation) {
    store::setAppPath(installation);
    for (int round = 0;; ++round) {
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
