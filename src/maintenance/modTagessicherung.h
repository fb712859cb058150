#pragma once
#include "platform/Progress.h"
#include <QDateTime>
#include <QList>
#include <QString>

/// A copy of the main database for each day on which the program ran, and before it is replaced or changed.
namespace modTagessicherung {

/// What tavolino.ini says about it.
struct Settings {
    /// Where the copies go; "" for Data/Sicherungen.
    QString folder;
    /// What is wrong with the section; "" for nothing.
    QString problem;

    static Settings read(const QString& iniFile);
};

/// Where this installation's copies stand.
QString Folder();
/// Why no copy can stand there; "" where one can.
QString FolderProblem();

/// Why a copy was made: for the day, of the database that a restore replaced, or before a newer program
/// changed the schema.
enum class Occasion { Day, Restore, Update };

struct Copy {
    QString file;
    /// Of a daily one at midnight.
    QDateTime time;
    Occasion occasion = Occasion::Day;
};

/// The whole copies in the folder, the newest first; those made before a change also of Data/Sicherungen,
/// where they go while the folder is away. Other files do not count.
QList<Copy> Copies();
/// Those that nobody needs any more: the newest 14 stay, the newest one of each of the last 12 months that
/// have any, and the last three of each other occasion. A clock that was set wrong takes none away: those of
/// days to come count as the oldest, and nothing goes before 14 others stand beside them.
QList<Copy> Superfluous(QList<Copy> copies, QDate today);

QDate Today();
/// Whether the day has none yet.
bool IsDue(QDate today);
/// Makes the day's copy, and what is superfluous then goes. Reads the database on a connection of its own, so
/// that it may run in any thread while the program works. `progress` is told now and again; what it throws
/// gives the copy up, of which nothing is left then. Throws common::RunTimeError.
void MakeCopy(QDate today, const platform::Progress& progress);

/// The same before the schema is changed.
void MakeCopyBeforeUpdate(const platform::Progress& progress);

/// A file's name for the database that a restore is about to replace; its folder is there then.
QString NewNameBeforeRestore();
/// Gives the finished file, maintenance::kUnfinished behind its name so far, its name, and deletes what is
/// superfluous but `spared`.
void PutInPlace(const QString& file, const QString& spared = {});

} // namespace modTagessicherung
