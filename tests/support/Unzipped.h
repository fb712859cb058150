#pragma once
#include <QProcess>
#include <QString>

namespace test {

/// A part of a spreadsheet file.
inline QString unzipped(const QString& file, const QString& part) {
    QProcess unzip;
    unzip.start(QStringLiteral("unzip"), {QStringLiteral("-p"), file, part});
    unzip.waitForFinished();
    return QString::fromUtf8(unzip.readAllStandardOutput());
}

} // namespace test
