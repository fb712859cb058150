#pragma once
#include "common/Version.h"
#include <QString>
#include <optional>

namespace maintenance {

/// What the system's server told at the start of the program; nothing until it has answered.
struct SystemNews {
    /// The newest version of the program.
    std::optional<common::Version> newest{};
    /// The version that may still run, and the last day (a serial) on which it may.
    common::Version UpdateFrist{};
    qint64 UpdateFristDatum = 0;
    /// 1 when a message waits.
    int SystemMessageStatus = 0;
    QString SystemMessageText{};
};

/// Held in memory as long as the program runs.
SystemNews& systemNews();

/// Values stand between tags, such as "=/01=" and "=01/=". What is no version, with all that belongs to it,
/// or no status is left out.
SystemNews readSystemNews(const QString& answer);
/// The tags 01 to 03.
std::optional<common::Version> readVersion(const QString& answer);
/// The tag 01.
std::optional<qint64> readPhoneBookVersion(const QString& answer);

} // namespace maintenance
