#include "Table.h"
#include <QFile>
#include <QTextStream>

namespace bench {

using namespace Qt::StringLiterals;

namespace {

const QString kFrom = u"<!-- figures -->"_s;
const QString kTo = u"<!-- end of the figures -->"_s;

QString micro(double nanoseconds) {
    return QString::number(nanoseconds / 1000, 'f', nanoseconds < 100'000 ? 1 : 0);
}

QString ratio(double a, double b) {
    return b > 0 ? QString::number(a / b, 'f', 2) : u"–"_s;
}

QString row(const QStringList& cells) {
    QString line = u"|"_s;
    const int widths[] = {46, 11, 11, 6, 6, 15, 16};
    for (qsizetype i = 0; i < cells.size(); ++i)
        line += u' ' + (i == 0 ? cells[i].leftJustified(widths[i]) : cells[i].rightJustified(widths[i])) +
                u" |"_s;
    return line + u'\n';
}

QString rowOf(const Title& title, const Results& results) {
    const Samples& large = results.large.at(title.road);
    const Samples& tenth = results.tenth.at(title.road);
    const double ours = median(large.ours);
    const double raw = median(large.raw);
    return row({QString::fromStdString(title.road), micro(ours), title.compared ? micro(raw) : u"–"_s,
                ratio(ours, raw), title.aim > 0 ? QString::number(title.aim) : u"–"_s,
                ratio(ours, median(tenth.ours)), ratio(raw, median(tenth.raw))});
}

QString startRow(const QString& what, double large, double tenth) {
    return row({what, QString::number(large, 'f', 0) + u" ms"_s, u"–"_s, u"–"_s, u"1000 ms"_s,
                ratio(large, tenth), u"–"_s});
}

QString backupRow(const QString& what, double ours, double other, double aim) {
    const auto inMs = [](double time) { return QString::number(time, 'f', time < 100 ? 2 : 0) + u" ms"_s; };
    return row({what, inMs(ours), inMs(other), ratio(ours, other), QString::number(aim), u"–"_s, u"–"_s});
}

} // namespace

QString table(const Results& results) {
    QString text = row({u"Road"_s, u"Tavolino µs"_s, u"engine µs"_s, u"ratio"_s, u"aim"_s,
                        u"ten times size"_s, u"engine's growth"_s});
    text += u"|---|---:|---:|---:|---:|---:|---:|\n"_s;
    for (const Title& title : results.titles)
        text += rowOf(title, results);
    text += startRow(u"Start to usable window"_s, results.startLarge.window, results.startTenth.window);
    text +=
        startRow(u"Start to order screen"_s, results.startLarge.orderScreen, results.startTenth.orderScreen);
    if (const auto& backup = results.backup) {
        text += backupRow(u"Backup, beside bare VACUUM INTO and a copy"_s, backup->backup, backup->bare, 1.3);
        text += backupRow(u"Booking while the day's copy is made, beside none"_s, backup->bookingMeanwhile,
                          backup->booking, 1.3);
    }
    return text;
}

bool writeInto(const QString& document, const QString& table) {
    QFile file(document);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QString text = QString::fromUtf8(file.readAll());
    file.close();
    const qsizetype from = text.indexOf(kFrom);
    const qsizetype to = text.indexOf(kTo);
    if (from < 0 || to < from || !file.open(QIODevice::WriteOnly))
        return false;
    text.replace(from, to - from, kFrom + u"\n\n"_s + table + u'\n');
    return file.write(text.toUtf8()) >= 0;
}

} // namespace bench
