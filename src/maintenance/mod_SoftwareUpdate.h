#pragma once
#include "common/Version.h"
#include "platform/Services.h"
#include <QString>

namespace platform {
struct Endpoints;
}

/// Whether a newer program or phone book is there, and what follows from it.
namespace mod_SoftwareUpdate {

inline const QString kSoftwareScreen = QStringLiteral("frmSystemSoftwareUpdate");
inline const QString kPhoneBookScreen = QStringLiteral("frmSystemTelefonbuchUpdate");
/// The screen of the software as a modal one.
inline const QString kForcedScreen = QStringLiteral("frmSystemSoftwareUpdate modal");

/// Asks the server for the newest versions, and leads to the updates.
void CheckForUpdates(const platform::Services& services);

/// Whether the running program is behind the given version.
bool isBehind(const common::Version& newest);
/// Whether it is held to an update: it is behind, and its version or this day is not one that may still run.
/// A deadline that the server never told forces nobody.
bool mustUpdate(const common::Version& newest);
/// True when the running program is current. Otherwise the user has been told how long it may still run; or
/// he had to update it, which has ended the program either way.
bool CheckSoftwareUpdate(const platform::Services& services, const common::Version& newest);
/// The same, and offers the update where none is forced.
bool OfferSoftwareUpdate(const platform::Services& services, const common::Version& newest);

/// Both ask, and open the screen on Yes. Nothing at all for who is not entitled.
void ShowSoftwareUpdate(const platform::Services& services);
void ShowPhoneBookUpdate(const platform::Services& services);

qint64 phoneBookVersion();
bool IsPhoneBookCurrent(qint64 version);

/// Where the program asks at its start what is new.
QString startAddress(const platform::Endpoints& ends);

} // namespace mod_SoftwareUpdate
