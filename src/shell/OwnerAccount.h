#pragma once
#include <QByteArray>
#include <QString>

namespace shell {

/// The owner's account of the installation. It stands in tavolino.ini, section [Inhaber], outside the
/// databases, so that the owner gets in whatever the table of users holds. The file keeps a verifier of the
/// password (store/PasswordGate.h); `tavolino-install <folder> --owner-password` sets it.
class OwnerAccount {
  public:
    /// Of the installation in that folder.
    static OwnerAccount read(const QString& folder);

    const QString& name() const { return m_name; }

    /// Both must equal exactly. Never true for an account without a name or a verifier. Takes a noticeable
    /// part of a second, on purpose, when the name is right.
    bool admits(const QString& name, const QString& password) const;

  private:
    QString m_name;
    QByteArray m_verifier;
};

} // namespace shell
