#include "maintenance/modTagessicherung.h"
#include "common/AtomicFile.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "common/FileCopy.h"
#include "common/FileErrors.h"
#include "common/RunTimeError.h"
#include "maintenance/CheckedCopy.h"
#include "maintenance/WorkApart.h"
#include "platform/IniSection.h"
#include "store/CompactedMain.h"
#include "store/CreateDatabase.h"
#include "store/MainCopies.h"
#include "store/StoreGlobals.h"
#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QStorageInfo>
#include <algorithm>

using namespace Qt::StringLiterals;
using maintenance::stretch;

namespace modTagessicherung {

namespace {

constexpr int kDays = 14;
constexpr int kMonths = 12;
constexpr int kOfAnOccasion = 3;
const QString kDaily = u"Tagessicherung_"_s;
const QString kReplaced = u"Vor_dem_Einlesen_"_s;
const QString kMoment = u"yyyy-MM-dd_hhmmss"_s;
const QString kChanged = u"Vor_der_Aktualisierung_"_s;

QString defaultFolder() {
    return store::appPath() + u"/Data/Sicherungen"_s;
}

void requireFolder() {
    if (const QString problem = FolderProblem(); !problem.isEmpty())
        throw common::RunTimeError(common::kPlatformFailure, problem);
}

/// A copy that fills the disk would keep an order from being booked.
void requireRoom(const QString& folder) {
    const QStorageInfo disk(folder);
    const qint64 size = store::mainSize();
    if (disk.isValid() && disk.bytesAvailable() < size + size / 4 + 50'000'000)
        throw common::RunTimeError(common::kDiskFull,
                                   u"Auf dem Datenträger ist zu wenig Platz für eine Tagessicherung."_s,
                                   QDir::toNativeSeparators(folder));
}

/// A run that was cut off leaves one behind.
void removeUnfinished(const QDir& folder) {
    for (const QString& kind : {kDaily, kReplaced, kChanged})
        for (const QString& name :
             folder.entryList({kind + u"*.mdb"_s + maintenance::kUnfinished}, QDir::Files))
            store::removeDatabase(folder.filePath(name));
}

/// What stands in the way of a day's copy is no reason to go without one before a change.
QString folderBeforeChange() {
    if (FolderProblem().isEmpty())
        return Folder();
    QDir().mkpath(defaultFolder());
    return defaultFolder();
}

/// What is written goes to the disk as it comes: all at once it would keep a booking waiting.
platform::Progress bitByBit(const QString& file, const platform::Progress& progress) {
    constexpr qint64 kPiece = 4 << 20;
    return [file, progress, synced = qint64(0)](qint64 done, qint64 total) mutable {
        if (done - synced >= kPiece) {
            common::syncFile(file);
            synced = done;
        }
        progress(done, total);
    };
}

/// Nothing that is one of ours has no valid time.
Copy copyOf(const QFileInfo& file) {
    const auto timeBehind = [name = file.completeBaseName()](const QString& kind, const QString& form) {
        return name.startsWith(kind) ? QDateTime::fromString(name.mid(kind.size()), form) : QDateTime();
    };
    if (const QDateTime day = timeBehind(kDaily, u"yyyy-MM-dd"_s); day.isValid())
        return {file.filePath(), day, Occasion::Day};
    if (const QDateTime moment = timeBehind(kReplaced, kMoment); moment.isValid())
        return {file.filePath(), moment, Occasion::Restore};
    return {file.filePath(), timeBehind(kChanged, kMoment), Occasion::Update};
}

void deleteSuperfluous(const QString& spared = {}) {
    for (const Copy& copy : Superfluous(Copies(), Today()))
        if (QFileInfo(copy.file) != QFileInfo(spared))
            QFile::remove(copy.file);
}

QString now() {
    return common::formatDate(common::clock::now(), u"YYYY-MM-DD_HHMMSS");
}

void makeCopy(const QString& folder, const QString& name, const platform::Progress& progress) {
    removeUnfinished(folder);
    requireRoom(folder);
    const QString file = folder + u'/' + name + u".mdb"_s;
    const QString unfinished = file + maintenance::kUnfinished;
    try {
        store::CompactDatabase(store::mainConnectionString(), store::backupConnectionString(unfinished),
                               bitByBit(unfinished, stretch(progress, 0, 70)));
        maintenance::checkCopy(unfinished, stretch(progress, 70, 100));
        PutInPlace(file);
    } catch (...) {
        store::removeDatabase(unfinished);
        throw;
    }
}

} // namespace

Settings Settings::read(const QString& iniFile) {
    platform::IniSection section(iniFile, u"Sicherung"_s, platform::IniSection::Missing::Fine);
    Settings settings;
    settings.folder = QDir::fromNativeSeparators(section.text(u"Ordner"_s));
    if (!settings.folder.isEmpty() && QDir::isRelativePath(settings.folder)) {
        section.misunderstood(u"Ordner"_s);
        settings.folder.clear();
    }
    section.findUnknownKeys();
    settings.problem = section.problem();
    return settings;
}

QString Folder() {
    const QString folder = Settings::read(store::appPath() + u"/tavolino.ini"_s).folder;
    return folder.isEmpty() ? defaultFolder() : folder;
}

/// A folder of the owner's is not made: where it is missing, its disk is.
QString FolderProblem() {
    const QString folder = Folder();
    if (folder == defaultFolder())
        QDir().mkpath(folder);
    if (QFileInfo(folder).isDir())
        return {};
    return u"Der Ordner \"%1\" für die Tagessicherungen ist nicht erreichbar."_s.arg(
        QDir::toNativeSeparators(folder));
}

QList<Copy> Copies() {
    QList<Copy> copies;
    for (const QString& folder : QSet{Folder(), defaultFolder()})
        for (const QFileInfo& file : QDir(folder).entryInfoList({u"*.mdb"_s}, QDir::Files))
            if (const Copy copy = copyOf(file);
                copy.time.isValid() && (folder == Folder() || copy.occasion != Occasion::Day))
                copies.append(copy);
    std::sort(copies.begin(), copies.end(), [](const Copy& a, const Copy& b) { return a.time > b.time; });
    return copies;
}

QList<Copy> Superfluous(QList<Copy> copies, QDate today) {
    const auto isPast = [today](const Copy& copy) { return copy.time.date() <= today.addDays(1); };
    const auto isDaily = [](const Copy& copy) { return copy.occasion == Occasion::Day; };
    const auto ahead = std::stable_partition(copies.begin(), copies.end(), isPast);
    // The clock is behind now, or it was ahead once: it is trusted after two weeks.
    if (ahead != copies.end() && std::count_if(copies.begin(), ahead, isDaily) < kDays)
        return {};
    QList<Copy> gone;
    QSet<QPair<int, int>> months;
    QHash<Occasion, int> others;
    int days = 0;
    for (const Copy& copy : copies) {
        if (!isDaily(copy)) {
            if (++others[copy.occasion] > kOfAnOccasion)
                gone.append(copy);
            continue;
        }
        const QPair<int, int> month{copy.time.date().year(), copy.time.date().month()};
        const bool isNewestOfMonth = months.size() < kMonths && !months.contains(month);
        if (isNewestOfMonth)
            months.insert(month);
        if (++days > kDays && !isNewestOfMonth)
            gone.append(copy);
    }
    return gone;
}

QDate Today() {
    return QDate(1899, 12, 30).addDays(qint64(common::clock::today()));
}

bool IsDue(QDate today) {
    const QList<Copy> copies = Copies();
    return std::none_of(copies.begin(), copies.end(), [today](const Copy& copy) {
        return copy.occasion == Occasion::Day && copy.time.date() == today;
    });
}

void MakeCopy(QDate today, const platform::Progress& progress) {
    requireFolder();
    makeCopy(Folder(), kDaily + today.toString(u"yyyy-MM-dd"_s), progress);
}

void MakeCopyBeforeUpdate(const platform::Progress& progress) {
    makeCopy(folderBeforeChange(), kChanged + now(), progress);
}

QString NewNameBeforeRestore() {
    const QString folder = folderBeforeChange();
    removeUnfinished(folder);
    return folder + u'/' + kReplaced + now() + u".mdb"_s;
}

void PutInPlace(const QString& file, const QString& spared) {
    if (const std::error_code error = common::replaceFile(file, file + maintenance::kUnfinished))
        common::throwFileError(error, file);
    deleteSuperfluous(spared);
}

} // namespace modTagessicherung
