#pragma once
#include <QString>

namespace bench {

/// Milliseconds from starting a process to the main window on `folder` being painted and waiting for a key,
/// and on to the order screen being so.
struct StartTime {
    double window = 0;
    double orderScreen = 0;
};

/// Starts this program again and again as showProgram and takes the medians.
StartTime measureStart(const QString& folder, int times);

/// What the started process does: the program's own start, told line by line on standard output. Gives the
/// exit code.
int showProgram(int argc, char** argv, const QString& folder);

} // namespace bench
