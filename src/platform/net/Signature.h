#pragma once
#include <QByteArray>
#include <QString>
#include <atomic>
#include <optional>

/// Signatures of the files that come from the net and are started: Ed25519 over what the file is, its version
/// and the BLAKE2b hash of its bytes, so that none of them can be exchanged. The signature is a text beside
/// the file:
///
///     Tavolino-Signatur 1
///     Datei: Update.exe
///     Version: 1.0.5
///     Signatur: <base64>
namespace platform {

struct SigningKeys {
    QByteArray publicKey;
    QByteArray secretKey;
};

constexpr qsizetype kPublicKeySize = 32;

SigningKeys makeSigningKeys();

/// The signature's text; nothing where the file cannot be read or the key is none. `kind` is the name under
/// which the server has the file.
std::optional<QByteArray> signFile(const QString& file, const QString& kind, const QString& version,
                                   const QByteArray& secretKey);

/// The version that the signature tells; nothing when it is not a valid one of this file as that kind. Reads
/// the file piece by piece, and gives it up once `givenUp` says so.
std::optional<QString> signedVersion(const QString& file, const QByteArray& signature, const QString& kind,
                                     const QByteArray& publicKey, const std::atomic<bool>* givenUp = nullptr);

} // namespace platform
