#pragma once
#include <QString>
#include <QStringList>
#include <vector>

namespace store {
struct Setting;
}

/// The settings of the firm: their way from memory into the store (store::LoadSystemSettings is the way
/// back).
namespace modEinstellungenSystem {

/// A setting as it was shown, and what the user has made of it.
struct Change {
    const store::Setting& setting;
    QString before, text;
};

/// Takes over what was changed, into the globals and the settings row, and nothing else. Two stations that
/// change different settings both win; what another one has changed to something else meanwhile keeps its
/// value, and its names are given.
QStringList SaveSystemSettings(const std::vector<Change>& changes);

} // namespace modEinstellungenSystem
