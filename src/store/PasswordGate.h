#pragma once
#include <QByteArray>
#include <QString>

namespace store {

/// What a database file keeps of its password: "rounds$salt$key", base64, derived by PBKDF2 with SHA-256.
QByteArray makeVerifier(const QString& password);
bool fitsVerifier(const QByteArray& verifier, const QString& password);

} // namespace store
