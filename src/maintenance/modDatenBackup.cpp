#include "maintenance/modDatenBackup.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "maintenance/CheckedCopy.h"
#include "maintenance/WorkApart.h"
#include "store/CompactedMain.h"
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using maintenance::stretch;

namespace modDatenBackup {
QString ProposedName() {
    return u"Backup_TavolinoNET_"_s + common::formatDate(common::clock::today(), u"DDMMMYYYY");
}

QString Refusal(const QString& path) {
    const QFileInfo target(path);
    if (maintenance::isOwnDataFile(path))
        return u"Die Datei \"%1\" gehört zu den Daten, mit denen Tavolino arbeitet. Wählen Sie einen anderen Namen oder Ordner."_s
            .arg(target.fileName());
    if (!target.absoluteDir().exists())
        return u"Der Ordner \"%1\" ist nicht vorhanden."_s.arg(
            QDir::toNativeSeparators(target.absolutePath()));
    if (target.isDir())
        return u"\"%1\" ist ein Ordner. Geben Sie auch den Namen der Datei an."_s.arg(
            QDir::toNativeSeparators(path));
    // A log of the former file would be taken for the new one's.
    for (const char16_t* log : {u"-wal", u"-journal"})
        if (QFileInfo(path + QString::fromUtf16(log)).size() > 0)
            return u"Die Datei \"%1\" ist noch in einem anderen Programm geöffnet oder wurde nicht richtig geschlossen."_s
                .arg(target.fileName());
    return {};
}

void CreateBackup(const QString& path, const platform::Progress& progress) {
    progress(10, 100);
    const store::CompactedMain main(stretch(progress, 10, 60));
    maintenance::copyChecked(main.file(), path, stretch(progress, 60, 100));
    progress(100, 100);
}

} // namespace modDatenBackup
