#pragma once
#include "platform/Progress.h"
#include <QString>
#include <QStringList>

namespace platform {
struct Endpoints;
}

/// What the program tells about itself.
namespace modSystemAbout {

/// Major, minor and revision number, joined by ".".
QString Version();

/// What only the user interface knows, and what the installation is connected to.
struct Surroundings {
    QStringList libraries;
    /// Size of the screen and the like.
    QString display;
    const platform::Endpoints& ends;
    bool hasTelephone = false;
};

/// For whoever helps from afar: versions, sizes, counts, numbers of the last errors. No text of any row, no
/// name of a server, a folder, a computer or a person. Counting takes its time in a large database.
QString Diagnosis(const Surroundings& around, const platform::Progress& progress = platform::unwatched);

} // namespace modSystemAbout
