#include "install/OwnerPassword.h"
#include "common/RunTimeError.h"
#include "install/IniFile.h"
#include "store/PasswordGate.h"
#include <QRandomGenerator>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace install {
namespace {

/// About half a second for each try.
constexpr int kRounds = 600000;
constexpr int kPasswordLength = 12;

} // namespace

bool hasOwnerPassword(const QString& appFolder) {
    const QSettings file(iniFile(appFolder), QSettings::IniFormat);
    return file.value(u"Inhaber/Passwort"_s).toString().count(u'$') == 2;
}

void setOwnerPassword(const QString& appFolder, const QString& password) {
    if (password.isEmpty())
        throw common::RunTimeError(common::kPlatformFailure, u"Das Passwort des Inhabers fehlt."_s);
    setIniValue(appFolder, "Inhaber", "Passwort", store::makeVerifier(password, kRounds));
}

QString randomPassword() {
    static constexpr char signs[] = "abcdefghjkmnpqrstuvwxyz23456789";
    QString password;
    for (int i = 0; i < kPasswordLength; ++i)
        password += QLatin1Char(signs[QRandomGenerator::system()->bounded(int(sizeof signs) - 1)]);
    return password;
}

} // namespace install
