#pragma once
#include <QByteArray>
#include <QString>

namespace store {

/// What a database file keeps of its password: "rounds$salt$key", base64, derived by PBKDF2 with SHA-256.
/// More rounds make each try slower, for a password that guards more than a gate.
QByteArray makeVerifier(const QString& password, int rounds = 10000);
/// False for what is no verifier.
bool fitsVerifier(const QByteArray& verifier, const QString& password);

} // namespace store
