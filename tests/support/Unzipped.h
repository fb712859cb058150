#pragma once
#include <QProcess>
#include <QRegularExpression>
#include <QStringList>

namespace test {

/// A part of a spreadsheet file.
inline QString unzipped(const QString& file, const QString& part) {
    QProcess unzip;
    unzip.start(QStringLiteral("unzip"), {QStringLiteral("-p"), file, part});
    unzip.waitForFinished();
    return QString::fromUtf8(unzip.readAllStandardOutput());
}

/// What the first groups of all matches hold.
inline QStringList allOf(const QString& text, const QString& pattern) {
    QStringList found;
    for (const auto& match : QRegularExpression(pattern).globalMatch(text))
        found << match.captured(1);
    return found;
}

/// The rows of one sheet as "A1=text B1=…"; a number has its form behind it.
inline QStringList sheetRows(const QString& file, int number) {
    const QStringList texts =
        allOf(unzipped(file, QStringLiteral("xl/sharedStrings.xml")), QStringLiteral("<t[^>]*>([^<]*)</t>"));
    const QString styles = unzipped(file, QStringLiteral("xl/styles.xml"));
    const QStringList forms =
        allOf(styles.section(QStringLiteral("<cellXfs"), 1), QStringLiteral("<xf numFmtId=\"(\\d+)\""));
    QStringList rows;
    for (const QString& row : allOf(unzipped(file, QStringLiteral("xl/worksheets/sheet%1.xml").arg(number)),
                                    QStringLiteral("<row [^>]*>(.*?)</row>"))) {
        static const QRegularExpression cell(
            QStringLiteral("<c r=\"(\\w+)\"(?: s=\"(\\d+)\")?( t=\"s\")?>(?:<f>(.*?)</f>)?<v>(.*?)</v>"));
        QStringList cells;
        for (const auto& match : cell.globalMatch(row)) {
            const QString value = match.captured(5);
            const QString code =
                QStringLiteral("numFmtId=\"%1\" formatCode=\"").arg(forms.value(match.captured(2).toInt()));
            cells << match.captured(1) + QLatin1Char('=') + match.captured(4) +
                         (match.captured(3).isEmpty()
                              ? value + QLatin1Char('~') +
                                    styles.section(code, 1).section(QLatin1Char('"'), 0, 0)
                              : texts.value(value.toInt()));
        }
        rows << cells.join(QLatin1Char(' '));
    }
    return rows;
}

} // namespace test
