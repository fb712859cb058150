#include "BackupTime.h"
#include "Measure.h"
#include "OurRoads.h"
#include "Quiet.h"
#include "RawStore.h"
#include "Workload.h"
#include "common/Clock.h"
#include "maintenance/DailyCopy.h"
#include "maintenance/modDatenBackup.h"
#include "maintenance/modTagessicherung.h"
#include "orders/modBestellNummern.h"
#include "platform/Progress.h"
#include "store/StoreGlobals.h"
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <cstdio>
#include <unistd.h>

namespace bench {

using namespace Qt::StringLiterals;

namespace {

constexpr int kBookingsBefore = 400;

double milliseconds(const std::function<void()>& work) {
    QElapsedTimer clock;
    clock.start();
    work();
    return double(clock.nsecsElapsed()) / 1e6;
}

void sync(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || ::fsync(file.handle()) != 0)
        qFatal("%s cannot be synced", qPrintable(path));
}

void bareBackup(const QString& database, const QString& target) {
    const QString clean = database + u".clean"_s;
    QFile::remove(clean);
    QFile::remove(target);
    {
        RawStore store(database);
        store.run((u"VACUUM INTO '"_s + clean + u'\'').toUtf8().constData());
    }
    sync(clean);
    if (std::rename(QFile::encodeName(clean).constData(), QFile::encodeName(database).constData()) != 0 ||
        !QFile::copy(database, target))
        qFatal("%s cannot be copied", qPrintable(database));
    sync(target);
}

void deleteTodaysCopy() {
    for (const modTagessicherung::Copy& copy : modTagessicherung::Copies())
        if (copy.time.date() == QDate::currentDate())
            QFile::remove(copy.file);
}

/// Microseconds of a booking, each one a value, while `going` gives true.
double bookings(OrderRoads& order, const std::function<bool()>& going) {
    std::vector<double> times;
    while (going()) {
        times.push_back(milliseconds([&] { order.book(); }));
        // As somebody who books one order after the other as fast as a desk full of people.
        QCoreApplication::processEvents();
        ::usleep(20'000);
    }
    return times.empty() ? 0 : median(times);
}

/// Takes the orders back that were booked since.
class Bookings {
  public:
    ~Bookings() {
        for (const char16_t* rows : {u"Details WHERE lng_TrxNrMaster", u"Master WHERE lng_TrxNr"})
            ConnMain.Execute(u"DELETE FROM tbl_Auftragswesen_Bestellungen_"_s + QString::fromUtf16(rows) +
                             u" >= "_s + QString::number(m_first));
    }

  private:
    const qint64 m_first = modBestellNummern::GetLastTrxNr() + 1;
};

void measureBookings(const QString& folder, const QString& copy, BackupTime& result) {
    const OpenInstallation installation(folder);
    const Bookings takenBack;
    OrderRoads order;
    {
        RawStore store(copy);
        order.prepare(drawWorkload(store));
    }
    int left = kBookingsBefore;
    result.booking = bookings(order, [&] { return left-- > 0; });
    deleteTodaysCopy();
    QuietServices services;
    maintenance::DailyCopy daily(services.services());
    bool isMaking = true;
    QObject::connect(&daily, &maintenance::DailyCopy::done, [&] { isMaking = false; });
    result.dailyCopy = milliseconds([&] {
        daily.startLater(std::chrono::milliseconds(0));
        result.bookingMeanwhile = bookings(order, [&] { return isMaking; });
    });
}

} // namespace

BackupTime measureBackup(const QString& folder, const QString& copy, int times) {
    store::setAppPath(folder);
    const QString target = folder + u"/measured-backup.mdb"_s;
    std::vector<double> ours, bare;
    for (int i = 0; i < times; ++i) {
        ours.push_back(milliseconds([&] { modDatenBackup::CreateBackup(target, platform::unwatched); }));
        bare.push_back(milliseconds([&] { bareBackup(copy, target); }));
    }
    QFile::remove(target);
    BackupTime result{median(ours), median(bare)};
    measureBookings(folder, copy, result);
    return result;
}

} // namespace bench
