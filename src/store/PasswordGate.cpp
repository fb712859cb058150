#include "store/PasswordGate.h"
#include <QCryptographicHash>
#include <QPasswordDigestor>
#include <QRandomGenerator>

namespace store {
namespace {

constexpr int kRounds = 10000;
constexpr int kKeyBytes = 32;

QByteArray derive(const QString& password, const QByteArray& salt, int rounds) {
    return QPasswordDigestor::deriveKeyPbkdf2(QCryptographicHash::Sha256, password.toUtf8(), salt, rounds,
                                              kKeyBytes);
}

} // namespace

QByteArray makeVerifier(const QString& password) {
    QByteArray salt(16, Qt::Uninitialized);
    QRandomGenerator::system()->generate(salt.begin(), salt.end());
    return QByteArray::number(kRounds) + '$' + salt.toBase64() + '$' +
           derive(password, salt, kRounds).toBase64();
}

bool fitsVerifier(const QByteArray& verifier, const QString& password) {
    const QList<QByteArray> parts = verifier.split('$');
    if (parts.size() != 3)
        return false;
    const QByteArray salt = QByteArray::fromBase64(parts[1]);
    return derive(password, salt, parts[0].toInt()) == QByteArray::fromBase64(parts[2]);
}

} // namespace store
