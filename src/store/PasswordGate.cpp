#include "store/PasswordGate.h"
#include <QCryptographicHash>
#include <QPasswordDigestor>
#include <QRandomGenerator>

namespace store {
namespace {

constexpr int kKeyBytes = 32;

QByteArray derive(const QString& password, const QByteArray& salt, int rounds) {
    return QPasswordDigestor::deriveKeyPbkdf2(QCryptographicHash::Sha256, password.toUtf8(), salt, rounds,
                                              kKeyBytes);
}

} // namespace

QByteArray makeVerifier(const QString& password, int rounds) {
    QByteArray salt(16, Qt::Uninitialized);
    QRandomGenerator::system()->generate(salt.begin(), salt.end());
    return QByteArray::number(rounds) + '$' + salt.toBase64() + '$' +
           derive(password, salt, rounds).toBase64();
}

bool fitsVerifier(const QByteArray& verifier, const QString& password) {
    const QList<QByteArray> parts = verifier.split('$');
    if (parts.size() != 3)
        return false;
    const int rounds = parts[0].toInt();
    const QByteArray salt = QByteArray::fromBase64(parts[1]);
    const QByteArray key = QByteArray::fromBase64(parts[2]);
    // An empty key would fit what nobody derived.
    return rounds > 0 && key.size() == kKeyBytes && derive(password, salt, rounds) == key;
}

} // namespace store
