#pragma once
#include "store/Stations.h"
#include "store/StoreGlobals.h"

namespace test {

/// Another station, "Küche", on the main database that is open, over a connection of its own. While it lives
/// the database is a shared one.
class OtherStation {
  public:
    OtherStation() { store::shareFiles(true); }

    ~OtherStation() { store::shareFiles(false); }

    OtherStation(const OtherStation&) = delete;
    OtherStation& operator=(const OtherStation&) = delete;

    /// It takes the task, for a while or for one that is over.
    void has(const QString& task, double seconds = 60) {
        run(QStringLiteral("DELETE FROM tbl_Stationen_Pacht WHERE txt_Aufgabe = ") + store::sqlText(task));
        run(QStringLiteral("INSERT INTO tbl_Stationen_Pacht(txt_Aufgabe, txt_Kennung, txt_Station, dbl_Bis) "
                           "VALUES(%1, 'other', 'Küche', %2)")
                .arg(store::sqlText(task),
                     QString::number(ConnMain.engine().now() + seconds / 86'400, 'g', 17)));
    }

    void isGone() { run(QStringLiteral("UPDATE tbl_Stationen_Pacht SET dbl_Bis = 0")); }

    void tells(const QString& topic) {
        const QString name = store::sqlText(topic);
        run(QStringLiteral("DELETE FROM tbl_Stationen_Neues WHERE txt_Thema = ") + name);
        run(QStringLiteral("INSERT INTO tbl_Stationen_Neues(txt_Thema, lng_Stand) VALUES(%1, %2)")
                .arg(name)
                .arg(++m_told));
    }

    void run(const QString& sql) {
        if (!m_connection.IsOpen())
            m_connection.Open(store::mainConnectionString());
        m_connection.Execute(sql);
    }

  private:
    store::Connection m_connection;
    int m_told = 1'000'000;
};

} // namespace test
