#include "platform/net/Signature.h"
#include <QFile>
#include <QList>
#include <sodium.h>

namespace platform {
namespace {

static_assert(kPublicKeySize == crypto_sign_PUBLICKEYBYTES);

bool isReady() {
    static const bool ready = sodium_init() >= 0;
    return ready;
}

unsigned char* bytes(QByteArray& text) {
    return reinterpret_cast<unsigned char*>(text.data());
}

const unsigned char* bytes(const QByteArray& text) {
    return reinterpret_cast<const unsigned char*>(text.constData());
}

/// Empty when the file cannot be read to its end, or is given up before.
QByteArray hashOf(const QString& name, const std::atomic<bool>* givenUp = nullptr) {
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {};
    crypto_generichash_state state;
    crypto_generichash_init(&state, nullptr, 0, crypto_generichash_BYTES_MAX);
    QByteArray block(1 << 20, Qt::Uninitialized);
    qint64 size = 0;
    while ((size = file.read(block.data(), block.size())) > 0) {
        if (givenUp && *givenUp)
            return {};
        crypto_generichash_update(&state, bytes(block), static_cast<unsigned long long>(size));
    }
    if (size < 0)
        return {};
    QByteArray hash(crypto_generichash_BYTES_MAX, Qt::Uninitialized);
    crypto_generichash_final(&state, bytes(hash), crypto_generichash_BYTES_MAX);
    return hash;
}

QByteArray headOf(const QByteArray& kind, const QByteArray& version) {
    return "Tavolino-Signatur 1\nDatei: " + kind + "\nVersion: " + version + '\n';
}

const QByteArray kVersionLine = "\nVersion: ";
const QByteArray kSignatureLine = "Signatur: ";

/// What stands behind the word up to the end of its line.
QByteArray restOfLine(const QByteArray& text, const QByteArray& word) {
    const qsizetype start = text.indexOf(word);
    return start < 0 ? QByteArray() : text.mid(start + word.size()).split('\n').first();
}

} // namespace

SigningKeys makeSigningKeys() {
    SigningKeys keys{QByteArray(crypto_sign_PUBLICKEYBYTES, 0), QByteArray(crypto_sign_SECRETKEYBYTES, 0)};
    if (!isReady() || crypto_sign_keypair(bytes(keys.publicKey), bytes(keys.secretKey)) != 0)
        return {};
    return keys;
}

std::optional<QByteArray> signFile(const QString& file, const QString& kind, const QString& version,
                                   const QByteArray& secretKey) {
    if (!isReady() || secretKey.size() != crypto_sign_SECRETKEYBYTES)
        return {};
    const QByteArray hash = hashOf(file);
    if (hash.isEmpty())
        return {};
    const QByteArray head = headOf(kind.toUtf8(), version.toUtf8());
    const QByteArray text = head + hash;
    QByteArray signature(crypto_sign_BYTES, 0);
    crypto_sign_detached(bytes(signature), nullptr, bytes(text), static_cast<unsigned long long>(text.size()),
                         bytes(secretKey));
    return head + kSignatureLine + signature.toBase64() + '\n';
}

std::optional<QString> signedVersion(const QString& file, const QByteArray& text, const QString& kind,
                                     const QByteArray& publicKey, const std::atomic<bool>* givenUp) {
    const QByteArray version = restOfLine(text, kVersionLine);
    const QByteArray encoded = restOfLine(text, '\n' + kSignatureLine);
    const QByteArray head = headOf(kind.toUtf8(), version);
    // Nothing but these four lines.
    const bool isForm = text == head + kSignatureLine + encoded + '\n';
    const auto signature = QByteArray::fromBase64Encoding(encoded, QByteArray::AbortOnBase64DecodingErrors);
    if (!isReady() || publicKey.size() != kPublicKeySize || !isForm || version.isEmpty() || !signature ||
        signature.decoded.size() != crypto_sign_BYTES)
        return {};
    const QByteArray hash = hashOf(file, givenUp);
    const QByteArray told = head + hash;
    if (hash.isEmpty() ||
        crypto_sign_verify_detached(bytes(signature.decoded), bytes(told),
                                    static_cast<unsigned long long>(told.size()), bytes(publicKey)) != 0)
        return {};
    return QString::fromUtf8(version);
}

} // namespace platform
