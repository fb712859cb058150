#include "orders/WebOrderMemory.h"
#include "common/Clock.h"
#include "common/Convert.h"
#include "store/Stations.h"
#include "store/StoreGlobals.h"

using namespace Qt::StringLiterals;

namespace orders {
namespace {

QString isOf(const WebBooking& booking) {
    return u" WHERE lng_TrxNr = %1 AND flag_Vorbestellung = %2"_s.arg(booking.trxNr)
        .arg(booking.isPreOrder ? 1 : 0);
}

/// Bookings of an earlier program bear none.
QString bearsMark(const desks::WebOrderId& web) {
    if (web.merkmal.isEmpty())
        return {};
    return u" AND (txt_Merkmal IS NULL OR txt_Merkmal = '' OR txt_Merkmal = "_s +
           store::sqlText(web.merkmal) + u')';
}

} // namespace

std::optional<WebBooking> BookedWebOrder(const desks::WebOrderId& web) {
    const store::OpenRecordset rows(
        RsMain,
        u"SELECT TOP 1 lng_TrxNr, flag_Vorbestellung FROM tbl_WebShop_Bestellungen_Verbucht WHERE "
        u"lng_WebShopID = %1%2 ORDER BY flag_Vorbestellung ASC, lng_TrxNr DESC"_s.arg(
            QString::number(web.number), bearsMark(web)),
        ConnMain);
    if (rows->Eof())
        return std::nullopt;
    return WebBooking{rows->Fields(u"lng_TrxNr").toLong(), rows->Fields(u"flag_Vorbestellung").toLong() != 0};
}

std::optional<desks::WebOrderId> WebOrderOf(const WebBooking& booking) {
    const store::OpenRecordset rows(
        RsMain, u"SELECT lng_WebShopID, txt_Merkmal FROM tbl_WebShop_Bestellungen_Verbucht"_s + isOf(booking),
        ConnMain);
    if (rows->Eof())
        return std::nullopt;
    return desks::WebOrderId{rows->Fields(u"lng_WebShopID").toLong(), rows->Fields(u"txt_Merkmal").text()};
}

void RememberWebOrder(const desks::WebOrderId& web, const WebBooking& booking) {
    ForgetWebOrder(booking);
    ConnMain.Execute(
        u"INSERT INTO tbl_WebShop_Bestellungen_Verbucht(lng_WebShopID, lng_TrxNr, flag_Vorbestellung, dbl_VerbuchtNow, txt_Merkmal) VALUES(%1, %2, %3, %4, %5)"_s
            .arg(QString::number(web.number), QString::number(booking.trxNr),
                 QString::number(booking.isPreOrder ? 1 : 0), common::numberToText(common::clock::now()),
                 store::sqlText(web.merkmal)));
    store::tellNews(store::Topic::WebOrders);
}

void ForgetWebOrder(const WebBooking& booking) {
    if (ConnMain.Execute(u"DELETE FROM tbl_WebShop_Bestellungen_Verbucht"_s + isOf(booking)) > 0)
        store::tellNews(store::Topic::WebOrders);
}

} // namespace orders
