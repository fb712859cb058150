#pragma once
#include "store/Connection.h"
#include "store/ConnectionString.h"
#include <QHash>
#include <QProcess>
#include <QTemporaryDir>
#include <memory>
#include <vector>

namespace test {

/// Stations, each a process and an installation of its own, that book on one server's database without a
/// pause, and what they have told (Station.h).
class Shift {
  public:
    /// The database has the rows of the test firm.
    Shift(const store::ConnectionString& server, int stations);
    ~Shift();
    Shift(const Shift&) = delete;
    Shift& operator=(const Shift&) = delete;

    int size() const { return int(m_stations.size()); }

    void start(int station);
    void startAll();
    void kill(int station);
    void killAll();

    /// Orders that one station, or all, had acknowledged until now.
    qint64 acknowledged(int station) const;
    qint64 acknowledged() const;
    /// Waits until each station that runs has so many acknowledged more.
    bool waitForMore(int orders, int seconds);

    /// The end of what each station has told, and of its errors.
    std::string lastWords() const;

    /// Every acknowledged order stands there once, whole and under its number; nothing stands there that was
    /// never keyed; the numbers have no gap.
    void expectAllThereOnce(store::Connection& main) const;
    /// "repeats" and "waits" of all.
    std::pair<qint64, qint64> repeatsAndWaits() const;

  private:
    struct Station {
        QTemporaryDir folder;
        std::unique_ptr<QProcess> process;
        int runs = 0;
    };

    /// What a run has told; a line cut off by a kill was not told.
    QList<QByteArrayList> told(const Station& station, int run) const;
    QString outputOf(const Station& station, int run) const;
    template <typename Take> void eachLine(Take take) const;

    std::vector<std::unique_ptr<Station>> m_stations;
};

} // namespace test
