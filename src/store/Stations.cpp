#include "store/Stations.h"
#include "store/StoreGlobals.h"
#include <QUuid>

using namespace Qt::StringLiterals;

namespace store {
namespace {

constexpr double kSecondsOfADay = 86'400;

QString theStation;
bool filesAreShared = false;

bool isShared(const Engine& engine) {
    return filesAreShared || engine.isShared();
}

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

QHash<QString, qint64> readNews() {
    QHash<QString, qint64> news;
    const OpenRecordset rows(RsMain, u"SELECT txt_Thema, lng_Stand FROM tbl_Stationen_Neues"_s, ConnMain);
    for (; !rows->Eof(); rows->MoveNext())
        news.insert(rows->Fields(u"txt_Thema").text(), rows->Fields(u"lng_Stand").toLong());
    return news;
}

QString isOfOthers(Engine& engine) {
    return u" txt_Kennung <> "_s + sqlText(identity()) + u" AND dbl_Bis >= "_s + moment(engine.now());
}

} // namespace

void setStation(const QString& name) {
    theStation = name;
}

const QString& stationName() {
    return theStation;
}

void shareFiles(bool on) {
    filesAreShared = on;
}

bool claim(const QString& task, int seconds) {
    Engine& engine = ConnMain.engine();
    if (!isShared(engine))
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
    if (isShared(ConnMain.engine()))
        ConnMain.Execute(u"DELETE FROM tbl_Stationen_Pacht"_s + isTask(task) + u" AND txt_Kennung = "_s +
                         sqlText(identity()));
}

void releaseAll() {
    if (isShared(ConnMain.engine()) && !ConnMain.InTransaction())
        ConnMain.Execute(u"DELETE FROM tbl_Stationen_Pacht WHERE txt_Kennung = "_s + sqlText(identity()));
}

QString holderOf(const QString& task) {
    Engine& engine = ConnMain.engine();
    if (!isShared(engine))
        return {};
    const OpenRecordset rows(RsMain,
                             u"SELECT txt_Station FROM tbl_Stationen_Pacht"_s + isTask(task) + u" AND"_s +
                                 isOfOthers(engine),
                             ConnMain);
    return rows->Eof() ? QString() : rows->Fields(u"txt_Station").text();
}

QStringList topicNames() {
    QStringList names;
    for (const char16_t* const name : kTopics)
        names.append(QString::fromUtf16(name));
    return names;
}

QHash<QString, QString> tasksOfOthers() {
    Engine& engine = ConnMain.engine();
    QHash<QString, QString> tasks;
    if (!isShared(engine))
        return tasks;
    const OpenRecordset rows(
        RsMain, u"SELECT txt_Aufgabe, txt_Station FROM tbl_Stationen_Pacht WHERE"_s + isOfOthers(engine),
        ConnMain);
    for (; !rows->Eof(); rows->MoveNext())
        tasks.insert(rows->Fields(u"txt_Aufgabe").text(), rows->Fields(u"txt_Station").text());
    return tasks;
}

void tellNews(Topic topic) {
    if (!isShared(ConnMain.engine()))
        return;
    const QString name = sqlText(topicName(topic));
    if (ConnMain.Execute(u"UPDATE tbl_Stationen_Neues SET lng_Stand = lng_Stand + 1 WHERE txt_Thema = "_s +
                         name) == 0)
        ConnMain.Execute(u"INSERT INTO tbl_Stationen_Neues(txt_Thema, lng_Stand) VALUES("_s + name +
                         u", 1)"_s);
}

StationNews& stationNews() {
    static StationNews news;
    return news;
}

void StationNews::start() {
    m_seen.clear();
    m_unshown.clear();
    Engine& engine = ConnMain.engine();
    if (!isShared(engine))
        return;
    m_seen = readNews();
    // Nobody's any more.
    ConnMain.Execute(u"DELETE FROM tbl_Stationen_Pacht WHERE dbl_Bis < "_s + moment(engine.now()));
}

void StationNews::look() {
    if (!isShared(ConnMain.engine()))
        return;
    const QHash<QString, qint64> news = readNews();
    for (int i = 0; i < int(std::size(kTopics)); ++i) {
        const Topic topic{i};
        const QString name = topicName(topic);
        if (m_seen.value(name) == news.value(name))
            continue;
        m_unshown.insert(topic);
        Q_EMIT heard(topic);
        // Where that has failed it is told again.
        m_seen.insert(name, news.value(name));
    }
}

void StationNews::show() {
    for (const Topic topic : m_unshown.values()) {
        Q_EMIT shown(topic);
        m_unshown.remove(topic);
    }
}

} // namespace store
