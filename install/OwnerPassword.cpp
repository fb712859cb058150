#include "install/OwnerPassword.h"
#include "common/AtomicFile.h"
#include "common/RunTimeError.h"
#include "store/PasswordGate.h"
#include <QDir>
#include <QRandomGenerator>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace install {
namespace {

/// About half a second for each try.
constexpr int kRounds = 600000;
constexpr int kPasswordLength = 12;

QString iniFile(const QString& appFolder) {
    return QDir(appFolder).filePath(u"tavolino.ini"_s);
}

[[noreturn]] void failOn(const QString& sentence, const QString& path) {
    throw common::RunTimeError(common::kPlatformFailure, sentence.arg(QDir::toNativeSeparators(path)), path);
}

QByteArray read(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        failOn(u"Die Datei \"%1\" kann nicht gelesen werden."_s, path);
    return file.readAll();
}

/// Line by line, since the settings class would drop the explanations in the file.
QByteArray withPassword(const QByteArray& content, const QByteArray& verifier) {
    QList<QByteArray> lines = content.split('\n');
    qsizetype section = -1;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QByteArray line = lines[i].trimmed();
        if (section >= 0 && line.startsWith('['))
            break;
        if (line == "[Inhaber]")
            section = i;
        else if (section >= 0 && line.startsWith("Passwort=")) {
            lines[i] = "Passwort=" + verifier;
            return lines.join('\n');
        }
    }
    if (section < 0)
        return "[Inhaber]\nName=Inhaber\nPasswort=" + verifier + "\n\n" + content;
    lines.insert(section + 1, "Passwort=" + verifier);
    return lines.join('\n');
}

} // namespace

bool hasOwnerPassword(const QString& appFolder) {
    const QSettings file(iniFile(appFolder), QSettings::IniFormat);
    return file.value(u"Inhaber/Passwort"_s).toString().count(u'$') == 2;
}

void setOwnerPassword(const QString& appFolder, const QString& password) {
    if (password.isEmpty())
        throw common::RunTimeError(common::kPlatformFailure, u"Das Passwort des Inhabers fehlt."_s);
    const QString path = iniFile(appFolder);
    common::writeFileAtomically(path, withPassword(read(path), store::makeVerifier(password, kRounds)),
                                QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

QString randomPassword() {
    static constexpr char signs[] = "abcdefghjkmnpqrstuvwxyz23456789";
    QString password;
    for (int i = 0; i < kPasswordLength; ++i)
        password += QLatin1Char(signs[QRandomGenerator::system()->bounded(int(sizeof signs) - 1)]);
    return password;
}

} // namespace install
