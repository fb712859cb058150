#include "Firms.h"
#include "RawStore.h"
#include "install/Installer.h"
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <cstdio>

namespace bench {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPreOrders = 5000;
constexpr int kCallers = 100'000;

/// What waits: pre-orders, none of them due, made from the last booked orders, and missed calls.
const char* const kWaiting[] = {
    "INSERT INTO tbl_Auftragswesen_Vorbestellungen_Master (lng_KundenID, lng_KurierID, lng_BestellDatum, "
    "date_BestellDatum, time_BestellZeit, dbl_BestellDatumNow, time_Lieferzeit, txt_Konditionen, "
    "lng_LieferDatum, "
    "txt_LieferDatum, dbl_SummeOhneMWSt, dbl_MWStBetrag, dbl_TotalMitMWSt) SELECT lng_KundenID, "
    "lng_KurierID, "
    "lng_BestellDatum, date_BestellDatum, time_BestellZeit, dbl_BestellDatumNow, time_Lieferzeit, "
    "txt_Konditionen, "
    "lng_LieferDatum + 20000, txt_LieferDatum, dbl_SummeOhneMWSt, dbl_MWStBetrag, dbl_TotalMitMWSt FROM "
    "tbl_Auftragswesen_Bestellungen_Master ORDER BY lng_TrxNr DESC LIMIT %1",
    "INSERT INTO tbl_Auftragswesen_Vorbestellungen_Details SELECT m.lng_TrxNr + d.dbl_TrxNr - "
    "d.lng_TrxNrMaster, "
    "m.lng_TrxNr, lng_ProduktID, flag_IsProdukt, lng_ExtraID, dbl_Menge, dbl_MengeIntern, txt_Stückelung, "
    "lng_Einheit, "
    "txt_Ccy, dbl_PreisMitMWSt, dbl_Rabatt, dbl_MWStSatz, dbl_PreisOhneMWSt, dbl_BestellZeitDouble FROM "
    "tbl_Auftragswesen_Vorbestellungen_Master AS m JOIN tbl_Auftragswesen_Bestellungen_Details AS d ON "
    "d.lng_TrxNrMaster = (SELECT max(lng_TrxNr) FROM tbl_Auftragswesen_Bestellungen_Master) + 1 - "
    "m.lng_TrxNr",
    "INSERT INTO tbl_Verwaltung_AnruferListe (txt_Telefon, txt_Zeit, txt_Datum, lng_Datum, flag_Kunde) "
    "SELECT "
    "txt_Telefon, strftime('%H:%M', 0.5 + lng_ID / 100.0), strftime('%d/%m/%Y', 2460000.5 + lng_ID / 100), "
    "40000 + "
    "lng_ID / 100.0, -(lng_ID % 3 = 0) FROM tbl_Verwaltung_Kunden ORDER BY lng_ID LIMIT %2"};

void addWaiting(const QString& database, double scale) {
    RawStore store(database);
    for (const char* sql : kWaiting)
        store.run(QString::fromUtf8(sql)
                      .replace(u"%1"_s, QString::number(int(kPreOrders * scale)))
                      .replace(u"%2"_s, QString::number(int(kCallers * scale)))
                      .toUtf8()
                      .constData());
}

} // namespace

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
        addWaiting(database, scale);
        QFile::remove(firm.copy);
        std::printf("%s: made in %.0f s\n", qPrintable(title), double(clock.elapsed()) / 1000);
    }
    if (!QFile::exists(firm.copy) && !QFile::copy(database, firm.copy))
        qFatal("%s cannot be copied", qPrintable(database));
    return firm;
}

} // namespace bench
