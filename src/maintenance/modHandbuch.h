#pragma once
#include <QString>
#include <optional>

namespace platform {
class Dialogs;
}

/// The user's manual, and where in it each screen is told.
namespace modHandbuch {

/// A chapter by its heading, without its number, and the paragraph in it that begins so; "" for the
/// beginning.
struct Place {
    QString chapter{};
    QString paragraph{};
};

/// The manual of the installation.
QString file();
/// Whether it can be read; tells the user why not.
bool CheckManual(platform::Dialogs& dialogs);
/// Its text (Markdown); "" when it cannot be read.
QString load();

/// Nothing for a screen or window that has no place of its own. `screen` is the name of a screen, or the
/// class of another window.
std::optional<Place> placeOf(const QString& screen);

/// "5. Vorbestellungen" without its number.
QString withoutNumber(const QString& heading);
/// What a link within the manual calls a heading ("5-vorbestellungen").
QString anchorOf(const QString& heading);

} // namespace modHandbuch
