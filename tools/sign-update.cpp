// For the publisher of updates: makes the pair of keys, signs what the server offers, and checks it.
#include "common/OwnerFile.h"
#include "common/Version.h"
#include "platform/net/Signature.h"
#include <QCoreApplication>
#include <QFile>
#include <QTextStream>
#include <cstdlib>

namespace {

constexpr auto kUsage =
    "sign-update keys SECRET-FILE                 makes a pair of keys; prints the public one, which\n"
    "                                             the program is built with (TAVOLINO_UPDATE_KEY)\n"
    "sign-update sign SECRET-FILE FILE KIND VERSION\n"
    "                                             writes FILE.sig; KIND is Update.exe or\n"
    "                                             DBTavolinoPhone.exe, VERSION 1.0.5 or 202611\n"
    "sign-update verify PUBLIC-KEY FILE KIND      tells the version that FILE.sig vouches for\n";

int fail(const QString& reason) {
    QTextStream(stderr) << reason << '\n';
    return EXIT_FAILURE;
}

QByteArray read(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool write(const QString& name, const QByteArray& bytes) {
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

bool isVersion(const QString& kind, const QString& version) {
    if (kind == u"Update.exe")
        return common::Version::parse(version).has_value();
    return kind == u"DBTavolinoPhone.exe" &&
           common::parseDigits(version, common::kPhoneBookVersions).has_value();
}

int keys(const QStringList& words) {
    const platform::SigningKeys made = platform::makeSigningKeys();
    // Never over another one: what was signed with it could not be told any more.
    if (!common::createForOwner(words[2]) || !write(words[2], made.secretKey.toBase64() + '\n'))
        return fail(QStringLiteral("%1 is there already or cannot be written.").arg(words[2]));
    QTextStream(stdout) << made.publicKey.toBase64() << '\n';
    return EXIT_SUCCESS;
}

int sign(const QStringList& words) {
    if (!isVersion(words[4], words[5]))
        return fail(QStringLiteral("This is no version of such a file: %1 %2").arg(words[4], words[5]));
    const QByteArray key = QByteArray::fromBase64(read(words[2]).trimmed());
    const auto signature = platform::signFile(words[3], words[4], words[5], key);
    if (!signature)
        return fail(QStringLiteral("The file or the key cannot be read."));
    return write(words[3] + QStringLiteral(".sig"), *signature)
               ? EXIT_SUCCESS
               : fail(QStringLiteral("The signature cannot be written."));
}

int verify(const QStringList& words) {
    const QByteArray key = QByteArray::fromBase64(words[2].toLatin1());
    const auto version =
        platform::signedVersion(words[3], read(words[3] + QStringLiteral(".sig")), words[4], key);
    if (!version)
        return fail(QStringLiteral("Not validly signed."));
    QTextStream(stdout) << words[4] << ' ' << *version << '\n';
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication qt(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    const QString command = words.value(1);
    if (command == u"keys" && words.size() == 3)
        return keys(words);
    if (command == u"sign" && words.size() == 6)
        return sign(words);
    if (command == u"verify" && words.size() == 5)
        return verify(words);
    return fail(QString::fromLatin1(kUsage));
}
