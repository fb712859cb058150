#pragma once
#include <QString>
#include <QStringList>

namespace platform {

/// The folder of the operating system itself ("C:\Windows"); the root folder where there is none such.
QString systemFolder();

/// The operating system's own program that shows what the computer consists of, with its arguments; empty
/// where there is none.
QStringList systemInformation();

/// Whether a living process, whoever's, holds the file as a QLockFile does. Only of a file that can be read
/// is it known; false otherwise.
bool isHeldByAProcess(const QString& lockFile);

/// Starts the file, which becomes executable for its owner, in its folder as a program that outlives this
/// one. False when it could not be started.
bool startProgram(const QString& file);

} // namespace platform
