#include "Firms.h"
#include "install/Installer.h"
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <cstdio>

namespace bench {

using namespace Qt::StringLiterals;

Firm prepareFirm(const QString& folder, const QString& title, double scale) {
    QDir().mkpath(folder);
    const QString database = folder + u"/Data/DBTavolino.mdb"_s;
    const Firm firm{title, folder, folder + u"/comparison.db"_s};
    if (!QFile::exists(database)) {
        QElapsedTimer clock;
        clock.start();
        install::InstallOptions options;
        options.large = scale;
        install::installDatabases(folder, options);
        QFile::remove(firm.copy);
        std::printf("%s: made in %.0f s\n", qPrintable(title), double(clock.elapsed()) / 1000);
    }
    if (!QFile::exists(firm.copy) && !QFile::copy(database, firm.copy))
        qFatal("%s cannot be copied", qPrintable(database));
    return firm;
}

} // namespace bench
