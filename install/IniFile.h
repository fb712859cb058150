#pragma once
#include <QByteArray>
#include <QString>

namespace install {

/// tavolino.ini of the installation.
QString iniFile(const QString& appFolder);
/// Sets one value and leaves all other lines as they are, the explanations among them; the file is replaced
/// in one step. A section that is missing comes first. Throws common::RunTimeError.
void setIniValue(const QString& appFolder, const QByteArray& section, const QByteArray& key,
                 const QByteArray& value);

} // namespace install
