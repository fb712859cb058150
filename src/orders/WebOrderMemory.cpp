#include "orders/WebOrderMemory.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "store/StoreGlobals.h"

using namespace Qt::StringLiterals;

namespace orders {
namespace {

QString isOf(const WebBooking& booking) {
    return u" WHERE lng_TrxNr = %1 AND flag_Vorbestellung = %2"_s.arg(booking.trxNr)
        .arg(booking.isPreOrder ? 1 : 0);
}

} // namespace

std::optional<WebBooking> BookedWebOrder(qint64 webId) {
    const store::OpenRecordset rows(
        RsMain,
        u"SELECT TOP 1 lng_TrxNr, flag_Vorbestellung FROM tbl_WebShop_Bestellungen_Verbucht WHERE "
        u"lng_WebShopID = %1 ORDER BY flag_Vorbestellung ASC, lng_TrxNr DESC"_s.arg(webId),
        ConnMain);
    if (rows->Eof())
        return std::nullopt;
    return WebBooking{rows->Fields(u"lng_TrxNr").toLong(), rows->Fields(u"flag_Vorbestellung").toLong() != 0};
}

std::optional<qint64> WebOrderOf(const WebBooking& booking) {
    const store::OpenRecordset rows(
        RsMain, u"SELECT lng_WebShopID FROM tbl_WebShop_Bestellungen_Verbucht"_s + isOf(booking), ConnMain);
    return rows->Eof() ? std::nullopt : std::optional(rows->Fields(u"lng_WebShopID").toLong());
}

void RememberWebOrder(qint64 webId, const WebBooking& booking) {
    ForgetWebOrder(booking);
    ConnMain.Execute(
        u"INSERT INTO tbl_WebShop_Bestellungen_Verbucht(lng_WebShopID, lng_TrxNr, flag_Vorbestellung, dbl_VerbuchtNow) VALUES(%1, %2, %3, %4)"_s
            .arg(webId)
            .arg(booking.trxNr)
            .arg(booking.isPreOrder ? 1 : 0)
            .arg(common::numberToText(common::clock::now())));
}

void ForgetWebOrder(const WebBooking& booking) {
    ConnMain.Execute(u"DELETE FROM tbl_WebShop_Bestellungen_Verbucht"_s + isOf(booking));
}

void PrepareWebOrderMemory() {
    ConnMain.Execute(u"CREATE TABLE IF NOT EXISTS tbl_WebShop_Bestellungen_Verbucht (lng_WebShopID INTEGER, "
                     u"lng_TrxNr INTEGER, flag_Vorbestellung INTEGER, dbl_VerbuchtNow DOUBLE)"_s);
    ConnMain.Execute(u"CREATE INDEX IF NOT EXISTS idx_WebShop_Verbucht ON tbl_WebShop_Bestellungen_Verbucht "
                     u"(lng_WebShopID, flag_Vorbestellung, lng_TrxNr)"_s);
    ConnMain.Execute(u"CREATE UNIQUE INDEX IF NOT EXISTS idx_WebShop_Verbucht_Bestellung ON "
                     u"tbl_WebShop_Bestellungen_Verbucht (lng_TrxNr, flag_Vorbestellung)"_s);
}

} // namespace orders
