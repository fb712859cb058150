#pragma once
#include <QString>
#include <QStringList>

/// What the stations on one database have to agree on. Of a database that is not shared everything is granted
/// at once, without a look at the store. They use RsMain, and no claim is made inside a transaction.
namespace store {

/// Name of this station, as the others show it; set once at start.
void setStation(const QString& name);
const QString& stationName();

/// Takes a task that one station alone does, or takes it for longer: it is this run's for so many seconds.
/// False while another one has it. A station that goes away loses it by itself.
bool claim(const QString& task, int seconds);
/// Gives up what this run has claimed; nothing happens where it has not.
void release(const QString& task);
/// Name of the other station that has the task; "" where none has.
QString holderOf(const QString& task);

/// What stations keep in memory and read again once it has changed elsewhere.
enum class Topic { Settings, Catalogue, Users, WebOrders, PreOrders, Calls };

/// Their names in the store.
QStringList topicNames();

/// Tells the others that it has changed; inside the transaction that changes it, or behind the change.
void tellNews(Topic topic);
/// What was told by others since the last time that this was asked.
bool hasNews(Topic topic);

} // namespace store
