#pragma once
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

/// What the stations on one database have to agree on. Of a database that is not shared everything is granted
/// at once, without a look at the store. They use RsMain, and no claim is made inside a transaction.
namespace store {

/// Name of this station, as the others show it; set once at start.
void setStation(const QString& name);
const QString& stationName();
/// Whether a file counts as shared too; for tests, where several programs have one open.
void shareFiles(bool on);

/// Takes a task that one station alone does, or takes it for longer: it is this run's for so many seconds.
/// False while another one has it. A station that goes away loses it by itself.
bool claim(const QString& task, int seconds);
/// Gives up what this run has claimed; nothing happens where it has not.
void release(const QString& task);
/// The same with all that this run has claimed, at its end.
void releaseAll();
/// Name of the other station that has the task; "" where none has.
QString holderOf(const QString& task);
/// What the others have, by task, each with the station's name.
QHash<QString, QString> tasksOfOthers();

/// What stations keep in memory and read again once it has changed elsewhere.
enum class Topic { Settings, Catalogue, Users, WebOrders, PreOrders, Calls };

/// Their names in the store.
QStringList topicNames();

/// Tells the stations that it has changed, this one too; inside the transaction that changes it, or behind
/// the change.
void tellNews(Topic topic);

/// What the stations have told, as it is heard here. It is told in two steps: at once, to what only sets
/// memory right, and as soon as nobody is disturbed by it, to what stands on the screen.
class StationNews : public QObject {
    Q_OBJECT
  public:
    /// From now on; what was told before is known.
    void start();
    /// One look at the store, which raises heard().
    void look();
    /// Raises shown() for what was heard since.
    void show();

    /// Whether it was heard and not shown yet.
    bool waits(Topic topic) const { return m_unshown.contains(topic); }

  Q_SIGNALS:
    void heard(store::Topic topic);
    void shown(store::Topic topic);

  private:
    /// By topic, as it was seen last.
    QHash<QString, qint64> m_seen;
    QSet<Topic> m_unshown;
};

StationNews& stationNews();

} // namespace store
