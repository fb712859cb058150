#include "program/Shift.h"
#include "install/Installer.h"
#include "support/TestFirm.h"
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace test {
namespace {

constexpr int kSecondsToEnd = 20;

void writeSettings(const QString& folder, const store::ConnectionString& server, int station) {
    QFile file(folder + u"/tavolino.ini"_s);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const QString text =
        QString::fromUtf8(file.readAll())
            .replace(u"Motor=datei"_s,
                     u"Motor=mariadb\nServer=%1\nDatenbank=%2\nBenutzer=%3\nPasswort=\"%4\"\n"
                     "Zertifikat=%5\nStation=Station %6"_s
                         .arg(server.servers.join(u", "_s), server.database, server.user, server.password,
                              server.authority)
                         .arg(station));
    file.resize(0);
    file.write(text.toUtf8());
}

} // namespace

Shift::Shift(const store::ConnectionString& server, int stations) {
    for (int station = 0; station < stations; ++station) {
        m_stations.push_back(std::make_unique<Station>());
        const QString folder = m_stations.back()->folder.path();
        install::installDatabases(folder);
        writeSettings(folder, server, station + 1);
    }
}

Shift::~Shift() {
    killAll();
}

QString Shift::outputOf(const Station& station, int run) const {
    return station.folder.filePath(u"told.%1"_s.arg(run));
}

void Shift::start(int station) {
    Station& it = *m_stations.at(size_t(station));
    it.process = std::make_unique<QProcess>();
    it.process->setStandardOutputFile(outputOf(it, it.runs));
    it.process->setStandardErrorFile(it.folder.filePath(u"errors"_s), QIODevice::Append);
    ++it.runs;
    it.process->start(QCoreApplication::applicationFilePath(), {u"--station"_s, it.folder.path()});
}

void Shift::startAll() {
    for (int station = 0; station < size(); ++station)
        start(station);
}

void Shift::kill(int station) {
    const std::unique_ptr<QProcess> process = std::move(m_stations.at(size_t(station))->process);
    if (!process)
        return;
    EXPECT_NE(process->state(), QProcess::NotRunning)
        << "station " << station << " has ended by itself, " << process->exitCode();
    process->kill();
    process->waitForFinished(kSecondsToEnd * 1000);
}

void Shift::killAll() {
    for (int station = 0; station < size(); ++station)
        kill(station);
}

QList<QByteArrayList> Shift::told(const Station& station, int run) const {
    QFile file(outputOf(station, run));
    QList<QByteArrayList> lines;
    if (!file.open(QIODevice::ReadOnly))
        return lines;
    const QByteArray all = file.readAll();
    for (const QByteArray& line : all.left(all.lastIndexOf('\n') + 1).split('\n'))
        if (!line.isEmpty())
            lines << line.split(' ');
    return lines;
}

template <typename Take> void Shift::eachLine(Take take) const {
    for (const auto& station : m_stations)
        for (int run = 0; run < station->runs; ++run)
            for (const QByteArrayList& line : told(*station, run))
                take(line);
}

qint64 Shift::acknowledged(int station) const {
    const Station& it = *m_stations.at(size_t(station));
    qint64 count = 0;
    for (int run = 0; run < it.runs; ++run)
        for (const QByteArrayList& line : told(it, run))
            count += line[0] == "B" ? 1 : 0;
    return count;
}

qint64 Shift::acknowledged() const {
    qint64 count = 0;
    for (int station = 0; station < size(); ++station)
        count += acknowledged(station);
    return count;
}

bool Shift::waitForMore(int orders, int seconds) {
    QElapsedTimer time;
    time.start();
    for (int station = 0; station < size(); ++station) {
        if (!m_stations[size_t(station)]->process)
            continue;
        const qint64 enough = acknowledged(station) + orders;
        while (acknowledged(station) < enough) {
            if (time.hasExpired(seconds * 1000))
                return false;
            QThread::msleep(20);
        }
    }
    return true;
}

std::string Shift::lastWords() const {
    constexpr qsizetype kLast = 1500;
    QByteArray words;
    for (const auto& station : m_stations) {
        QFile errors(station->folder.filePath(u"errors"_s)), out(outputOf(*station, station->runs - 1));
        for (QFile* file : {&errors, &out})
            if (file->open(QIODevice::ReadOnly))
                words += "\n[" + station->folder.path().toUtf8() + "]\n" + file->readAll().right(kLast);
    }
    return words.toStdString();
}

void Shift::expectAllThereOnce(store::Connection& main) const {
    struct Stored {
        QString number;
        int lines;
    };

    QHash<QString, Stored> stored;
    for (const QString& row : TestFirm::rows(
             u"SELECT m.txt_Konditionen, m.lng_TrxNr, (SELECT Count(*) FROM "
             u"tbl_Auftragswesen_Bestellungen_Details AS d WHERE d.lng_TrxNrMaster = m.lng_TrxNr) AS Zeilen "
             u"FROM tbl_Auftragswesen_Bestellungen_Master AS m"_s,
             main)) {
        const QStringList cells = row.split(u'|');
        EXPECT_FALSE(stored.contains(cells[0])) << "twice: " << row.toStdString();
        stored.insert(cells[0], {cells[1], cells[2].toInt()});
    }
    QHash<QString, int> keyed;
    eachLine([&](const QByteArrayList& line) {
        const auto word = [&](int at) { return QString::fromUtf8(line.value(at)); };
        if (line[0] == "K")
            keyed[word(1)] = line.value(2).toInt();
        else if (line[0] == "B")
            EXPECT_EQ(stored.value(word(2)).number, word(1)) << "acknowledged: " << word(2).toStdString();
        else
            ADD_FAILURE() << line.join(' ').toStdString();
    });
    for (auto order = stored.cbegin(); order != stored.cend(); ++order)
        EXPECT_EQ(order->lines, keyed.value(order.key(), -1)) << order->number.toStdString();
    EXPECT_EQ(TestFirm::value(u"SELECT max(lng_TrxNr) - min(lng_TrxNr) + 1 - Count(*) AS N FROM "
                              u"tbl_Auftragswesen_Bestellungen_Master"_s,
                              main),
              u"0"_s);
    EXPECT_EQ(TestFirm::value(u"SELECT Count(*) AS N FROM tbl_Auftragswesen_Bestellungen_Details WHERE "
                              u"lng_TrxNrMaster NOT IN (SELECT lng_TrxNr FROM "
                              u"tbl_Auftragswesen_Bestellungen_Master)"_s,
                              main),
              u"0"_s);
}

std::pair<qint64, qint64> Shift::repeatsAndWaits() const {
    qint64 repeats = 0, waits = 0;
    for (const auto& station : m_stations)
        for (int run = 0; run < station->runs; ++run) {
            QByteArrayList last;
            for (const QByteArrayList& line : told(*station, run))
                if (line[0] == "B")
                    last = line;
            repeats += last.value(3).toLongLong();
            waits += last.value(4).toLongLong();
        }
    return {repeats, waits};
}

} // namespace test
