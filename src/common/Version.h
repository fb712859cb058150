#pragma once
#include <QString>
#include <QStringView>
#include <optional>

namespace common {

/// The number that a text of digits alone tells; nothing for anything else, and from `bound` on.
std::optional<qint64> parseDigits(QStringView text, qint64 bound);

/// Versions of the phone book stay below.
constexpr qint64 kPhoneBookVersions = 1'000'000'000;

/// A version of the program.
struct Version {
    qint64 major = 0;
    qint64 minor = 0;
    qint64 revision = 0;

    /// What versions are compared by. Above these bounds the parts would overlap.
    double asNumber() const { return double(major) * 1000 + double(minor) + double(revision) * 0.0001; }

    static constexpr qint64 kMajors = 1'000'000;
    static constexpr qint64 kMinors = 1000;
    static constexpr qint64 kRevisions = 10'000;

    /// "1.0.5"
    QString text() const;
    static std::optional<Version> parse(QStringView text);
    /// Of three texts of digits.
    static std::optional<Version> parse(QStringView major, QStringView minor, QStringView revision);
};

/// The one that runs.
inline constexpr Version kProgramVersion{TAVOLINO_VERSION_MAJOR, TAVOLINO_VERSION_MINOR,
                                         TAVOLINO_VERSION_REVISION};

/// Whether the running program's version is not above the given one.
inline bool IsVersionCurrent(const Version& given) {
    return given.asNumber() >= kProgramVersion.asNumber();
}

} // namespace common
