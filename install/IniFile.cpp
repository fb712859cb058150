#include "install/IniFile.h"
#include "common/AtomicFile.h"
#include "common/RunTimeError.h"
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace install {
namespace {

QByteArray read(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw common::RunTimeError(
            common::kPlatformFailure,
            u"Die Datei \"%1\" kann nicht gelesen werden."_s.arg(QDir::toNativeSeparators(path)), path);
    return file.readAll();
}

/// Line by line, since the settings class would drop the explanations in the file.
QByteArray withValue(const QByteArray& content, const QByteArray& name, const QByteArray& key,
                     const QByteArray& value) {
    QList<QByteArray> lines = content.split('\n');
    qsizetype section = -1;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QByteArray line = lines[i].trimmed();
        if (section >= 0 && line.startsWith('['))
            break;
        if (line == '[' + name + ']')
            section = i;
        else if (section >= 0 && line.startsWith(key + '=')) {
            lines[i] = key + '=' + value;
            return lines.join('\n');
        }
    }
    if (section < 0)
        return '[' + name + "]\n" + key + '=' + value + "\n\n" + content;
    lines.insert(section + 1, key + '=' + value);
    return lines.join('\n');
}

} // namespace

QString iniFile(const QString& appFolder) {
    return QDir(appFolder).filePath(u"tavolino.ini"_s);
}

void setIniValue(const QString& appFolder, const QByteArray& section, const QByteArray& key,
                 const QByteArray& value) {
    const QString path = iniFile(appFolder);
    common::writeFileAtomically(path, withValue(read(path), section, key, value),
                                QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

} // namespace install
