#pragma once
#include "store/Stations.h"
#include <QString>

namespace platform {

class Dialogs;

/// What one station at a time has in hand.
struct Task {
    QString name;
    /// For so long, unless it is taken on again or given up.
    int seconds;
    /// What changes by it at the other stations.
    store::Topic topic;
};

/// Takes the task on and tells the others. Where another station has it the user is asked: `who` tells which
/// one, as %1. False when he leaves it to that one.
bool takeOn(Dialogs& dialogs, const Task& task, const QString& who, const QString& question,
            const QString& title);

} // namespace platform
