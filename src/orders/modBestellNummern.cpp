#include "orders/modBestellNummern.h"
#include "desks/MainDesks.h"
#include "store/StoreGlobals.h"
#include "store/SystemSettings.h"

using store::OpenRecordset;

namespace modBestellNummern {
namespace {

/// The query's first row's number; nothing without a row.
std::optional<qint64> readNumber(const QString& sql, QStringView column) {
    OpenRecordset rows(RsMain, sql, ConnMain);
    if (rows->Eof())
        return std::nullopt;
    return rows->Fields(column).toLong();
}

} // namespace

std::optional<qint64> FindNextTrxNr() {
    const std::optional<qint64> last =
        readNumber(QStringLiteral("SELECT TOP 1 lng_TrxNr FROM tbl_Auftragswesen_Bestellungen_Master "
                                  "ORDER BY lng_TrxNr DESC;"),
                   u"lng_TrxNr");
    if (last)
        return *last + 1;
    return readNumber(QStringLiteral("SELECT lng_InitTrxNr FROM tbl_Einstellungen_System;"),
                      u"lng_InitTrxNr");
}

void ShowTrxNr(std::optional<qint64> trxNr, platform::Dialogs& dialogs, platform::Navigation& navigation) {
    if (!trxNr) {
        dialogs.MsgBox(
            QStringLiteral("Es konnte keine Trx-Nr gefunden werden. Das Program wird darum beendet."),
            platform::kStop, QStringLiteral("Schwerer Fehler"));
        navigation.endProgram();
    } else if (auto* box = platform::mainDesk<desks::StatusBox>(navigation)) {
        box->showAuftragsNummer(QString::number(*trxNr));
    }
}

std::optional<qint64> GetNextTrxNr(platform::Dialogs& dialogs, platform::Navigation& navigation) {
    const std::optional<qint64> next = FindNextTrxNr();
    ShowTrxNr(next, dialogs, navigation);
    return next;
}

qint64 GetLastTrxNr() {
    return readNumber(QStringLiteral("SELECT TOP 1 lng_TrxNr AS LastTrxNr FROM "
                                     "tbl_Auftragswesen_Bestellungen_Master ORDER BY lng_TrxNr DESC"),
                      u"LastTrxNr")
        .value_or(SysInitTrxNr);
}

QString GetFirstTrxNr() {
    return QString::number(
        readNumber(QStringLiteral("SELECT TOP 1 lng_TrxNr AS FirstTrxNr FROM "
                                  "tbl_Auftragswesen_Bestellungen_Master ORDER BY lng_TrxNr ASC"),
                   u"FirstTrxNr")
            .value_or(SysInitTrxNr));
}

qint64 GetFollowingTrxNr(qint64 trxNr) {
    return readNumber(QStringLiteral("SELECT TOP 1 lng_TrxNr FROM tbl_Auftragswesen_Bestellungen_Master "
                                     "WHERE lng_TrxNr > ") +
                          QString::number(trxNr) + QStringLiteral(" ORDER BY lng_TrxNr ;"),
                      u"lng_TrxNr")
        .value_or(-1);
}

qint64 GetPrecedingTrxNr(qint64 trxNr) {
    return readNumber(QStringLiteral("SELECT TOP 1 lng_TrxNr FROM tbl_Auftragswesen_Bestellungen_Master "
                                     "WHERE lng_TrxNr < ") +
                          QString::number(trxNr) + QStringLiteral(" ORDER BY lng_TrxNr DESC ;"),
                      u"lng_TrxNr")
        .value_or(-1);
}

} // namespace modBestellNummern
