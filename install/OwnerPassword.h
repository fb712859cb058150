#pragma once
#include <QString>

namespace install {

/// The password of the owner's account in tavolino.ini. The file keeps a verifier alone: salted, and slow to
/// try on purpose, so that a copy of the file gives the password away to nobody.

/// Whether the installation in `appFolder` has one yet; a plain text in its place is none.
bool hasOwnerPassword(const QString& appFolder);
/// Sets it; the rest of the file stays as it is, readable by its owner only. Throws common::RunTimeError
/// where the file is missing or cannot be written, and for an empty password.
void setOwnerPassword(const QString& appFolder, const QString& password);
/// Of signs that do not look alike.
QString randomPassword();

} // namespace install
