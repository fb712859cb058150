#pragma once
#include "common/Version.h"
#include <QString>
#include <QStringList>
#include <stdexcept>

namespace shop {

struct SystemError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct SystemOffer {
    common::Version newest, mayRun;
    qint64 mayRunUntil = 0; ///< whole days since 30 December 1899
    int phoneBook = 0;
};

/// The folder in which a publisher lays what he offers to all installations. Looked at anew each time, so
/// that a change needs no restart:
///
///     system.json                 {"version": "1.0.5", "mayRun": "1.0.4", "mayRunUntil": "2026-12-15",
///                                  "phoneBook": 202611}
///     Update.exe, DBTavolinoPhone.exe, their .sig
///     message.txt                 a message for all
///     messages/pizzeria.txt       one for that installation
class SystemFolder {
  public:
    explicit SystemFolder(QString path) : m_path(std::move(path)) {}

    /// SystemError when `system.json` lacks or does not hold all of it.
    SystemOffer offer() const;
    /// An installation's own, then the one for all; those that are empty are left out. The name is data: it
    /// is looked for among the files that are there, and never becomes a path.
    QStringList messages(const QString& installation) const;

    QString file(const QString& name) const { return m_path + u'/' + name; }

  private:
    QString m_path;
};

/// The texts that the desk reads: values between "=/01=" and "=01/=", numbered in their order.
QByteArray softwareAnswer(const SystemOffer& offer);
QByteArray phoneBookAnswer(const SystemOffer& offer);
/// A text in which a tag stands loses it.
QByteArray startAnswer(const SystemOffer& offer, const QString& message);

} // namespace shop
