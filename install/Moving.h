#pragma once
#include "store/Progress.h"
#include <QStringList>

namespace install {

enum class MoveTo { Server, Files };

/// Copies the main database of an installation, and the phone book where tavolino.ini says so, from its files
/// to the server that the ini tells of, or back into new files, and sets `Motor` there. The copy is checked
/// by counts and sums; the source stays as it is. A target that is not empty is refused (kTargetExists). What
/// is cut off leaves no target that anybody takes for a whole one, and can be begun again.
///
/// Nobody may work meanwhile: of files that is made sure, and what a station writes to a server meanwhile
/// makes the move fail. Gives what was done as German sentences. Throws common::RunTimeError.
QStringList moveInstallation(const QString& appFolder, MoveTo target, const store::Progress& progress = {});

} // namespace install
