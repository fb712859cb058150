#include "store/Stations.h"
#include "store/StoreGlobals.h"
#include <QHash>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace store {
namespace {

constexpr double kSecondsOfADay = 86'400;

QString theStation;

/// Of this run of the program: two runs on one computer are two stations.
const QString& identity() {
    static const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    return id;
}

QString isTask(const QString& task) {
    return u" WHERE txt_Aufgabe = "_s + sqlText(task);
}

QString moment(double serial) {
    return QString::number(serial, 'g', 17);
}

constexpr const char16_t* kTopics[] = {u"Einstellungen",   u"Katalog",         u"Benutzer",
                                       u"WebBestellungen", u"Vorbestellungen", u"Anrufe"};

QString topicName(Topic topic) {
    return QString::fromUtf16(kTopics[int(topic)]);
}

/// By topic, as it was seen last. All are read at once, and as often as somebody asks again.
QHash<QString, qint64> seen;

QHash<QString, qint64> readNews() {
    QHash<QString, qint64> news;
    const OpenRecordset rows(RsMain, u"SELECT txt_Thema, lng_Stand FROM tbl_Stationen_Neues"_s, ConnMain);
    for (; !rows->Eof(); rows->MoveNext())
        news.insert(rows->Fields(u"txt_Thema").text(), rows->Fields(u"lng_Stand").toLong());
    return news;
}

} // namespace

void setStation(const QString& name) {
    theStation = name;
}

const QString& stationName() {
    return theStation;
}

bool claim(const QString& task, int seconds) {
    Engine& engine = ConnMain.engine();
    if (!engine.isShared())
        return true;
    bool mine = false;
    transact(ConnMain, [&] {
        const double now = engine.now();
        const WriteRecordset rows(RsMain, u"SELECT * FROM tbl_Stationen_Pacht"_s + isTask(task), ConnMain);
        mine = rows->Eof() || rows->Fields(u"txt_Kennung").text() == identity() ||
               rows->Fields(u"dbl_Bis").toDouble() < now;
        if (!mine)
            return;
        if (rows->Eof())
            rows->AddNew();
        rows->Fields(u"txt_Aufgabe") = task;
        rows->Fields(u"txt_Kennung") = identity();
        rows->Fields(u"txt_Station") = theStation;
        rows->Fields(u"dbl_Bis") = now + seconds / kSecondsOfADay;
        rows->Update();
    });
    return mine;
}

void release(const QString& task) {
    if (ConnMain.engine().isShared())
        ConnMain.Execute(u"DELETE FROM tbl_Stationen_Pacht"_s + isTask(task) + u" AND txt_Kennung = "_s +
                         sqlText(identity()));
}

QString holderOf(const QString& task) {
    Engine& engine = ConnMain.engine();
    if (!engine.isShared())
        return {};
    const OpenRecordset rows(RsMain,
                             u"SELECT txt_Station FROM tbl_Stationen_Pacht"_s + isTask(task) +
                                 u" AND txt_Kennung <> "_s + sqlText(identity()) + u" AND dbl_Bis >= "_s +
                                 moment(engine.now()),
                             ConnMain);
    return rows->Eof() ? QString() : rows->Fields(u"txt_Station").text();
}

QStringList topicNames() {
    QStringList names;
    for (const char16_t* const name : kTopics)
        names.append(QString::fromUtf16(name));
    return names;
}

void tellNews(Topic topic) {
    if (!ConnMain.engine().isShared())
        return;
    const QString name = sqlText(topicName(topic));
    if (ConnMain.Execute(u"UPDATE tbl_Stationen_Neues SET lng_Stand = lng_Stand + 1 WHERE txt_Thema = "_s +
                         name) == 0)
        ConnMain.Execute(u"INSERT INTO tbl_Stationen_Neues(txt_Thema, lng_Stand) VALUES("_s + name +
                         u", 1)"_s);
}

bool hasNews(Topic topic) {
    if (!ConnMain.engine().isShared())
        return false;
    const QString name = topicName(topic);
    const qint64 now = readNews().value(name);
    const bool news = seen.contains(name) && seen.value(name) != now;
    seen.insert(name, now);
    return news;
}

} // namespace store
