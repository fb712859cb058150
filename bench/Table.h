#pragma once
#include "BackupTime.h"
#include "Measure.h"
#include "StartTime.h"
#include <QString>
#include <optional>

namespace bench {

/// A line of the table.
struct Title {
    std::string road;
    double aim = 0;
    /// Whether there is another side.
    bool compared = true;
};

struct Results {
    Figures large, tenth;
    StartTime startLarge, startTenth;
    std::optional<BackupTime> backup;
    std::vector<Title> titles;
};

/// The figures as a table of Markdown, which reads as well on a terminal.
QString table(const Results& results);

/// Puts the table between the marks of a document; the rest of it stays. False when it cannot be written.
bool writeInto(const QString& document, const QString& table);

} // namespace bench
