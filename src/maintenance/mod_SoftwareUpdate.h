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

/// Whether the user may update the program: the administrator, and everybody where nobody logs in.
bool isEntitled();

/// Asks the server for the newest versions, and leads to the updates. False when it did not tell them.
bool CheckForUpdates(const platform::Services& services);

/// Whether the running program is behind the given version.
bool isBehind(const common::Version& newest);

/// How the running program stands. Forced: its version or this day is not one that may still run. A deadline
/// that the server never told forces nobody.
enum class Standing { Current, Behind, Forced };

/// Tells a user who is behind how long the program may still run; or has him update it, which has ended the
/// program either way.
Standing CheckSoftwareUpdate(const platform::Services& services, const common::Version& newest);
/// The same, and offers the update where none is forced. True when the running program is current.
bool OfferSoftwareUpdate(const platform::Services& services, const common::Version& newest);

/// Both ask, and open the screen on Yes. Nothing at all for who is not entitled.
void ShowSoftwareUpdate(const platform::Services& services);
void ShowPhoneBookUpdate(const platform::Services& services);

qint64 phoneBookVersion();
bool IsPhoneBookCurrent(qint64 version);

/// Where the program asks at its start what is new.
QString startAddress(const platform::Endpoints& ends);

} // namespace mod_SoftwareUpdate
