#include "shell/OwnerAccount.h"
#include "store/PasswordGate.h"
#include <QSettings>

using namespace Qt::StringLiterals;

namespace shell {

OwnerAccount OwnerAccount::read(const QString& folder) {
    const QSettings file(folder + u"/tavolino.ini"_s, QSettings::IniFormat);
    OwnerAccount owner;
    owner.m_name = file.value(u"Inhaber/Name"_s).toString();
    owner.m_verifier = file.value(u"Inhaber/Passwort"_s).toString().toLatin1();
    return owner;
}

bool OwnerAccount::admits(const QString& name, const QString& password) const {
    return !m_name.isEmpty() && name == m_name && store::fitsVerifier(m_verifier, password);
}

} // namespace shell
