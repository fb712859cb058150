#include "orders/modLetzteBestellungen.h"
#include "common/Convert.h"
#include "orders/OrderStorage.h"
#include "store/Lookups.h"
#include "store/StoreGlobals.h"
#include <algorithm>

using namespace Qt::StringLiterals;
using orders::Ausgelassen;
using orders::Col;
using orders::WorkingOrder;
using platform::CellTable;
using store::OpenRecordset;

namespace modLetzteBestellungen {
namespace {

QString withQuantity(double anzahl, const QString& name) {
    return common::numberToText(anzahl) + u"x "_s + name;
}

std::vector<LetzteBestellung> readHeads(qint64 kundenId, int most) {
    std::vector<LetzteBestellung> heads;
    const OpenRecordset rows(
        RsMain,
        u"SELECT TOP %1 lng_TrxNr, dbl_BestellDatumNow, dbl_TotalMitMWSt FROM %2 WHERE lng_KundenID = %3 ORDER BY lng_TrxNr DESC"_s
            .arg(QString::number(most), orders::BookedOrders().master, QString::number(kundenId)),
        ConnMain);
    for (; !rows->Eof(); rows->MoveNext())
        heads.push_back({rows->Fields(u"lng_TrxNr").toLong(),
                         orders::ReadableSerial(rows->Fields(u"dbl_BestellDatumNow").Value()),
                         rows->Fields(u"dbl_TotalMitMWSt").toDouble(),
                         {}});
    return heads;
}

/// The lines of the customer's orders from that number on, with their names.
QString linesSql(qint64 kundenId, qint64 oldest) {
    return u"SELECT d.lng_TrxNrMaster, d.flag_IsProdukt, d.dbl_Menge, p.txt_Produkt, e.txt_Extra FROM %1 AS "
           u"m "
           u"JOIN %2 AS d ON d.lng_TrxNrMaster = m.lng_TrxNr "
           u"LEFT JOIN tbl_Verwaltung_Produkte AS p ON p.lng_ID = d.lng_ProduktID "
           u"LEFT JOIN tbl_Verwaltung_ProdukteExtras AS e ON e.lng_ID = d.lng_ExtraID "
           u"WHERE m.lng_KundenID = %3 AND m.lng_TrxNr >= %4 ORDER BY d.dbl_TrxNr"_s.arg(
               orders::BookedOrders().master, orders::BookedOrders().details, QString::number(kundenId),
               QString::number(oldest));
}

QString nameOf(store::Recordset& line, bool isProdukt) {
    const QString name = line.Fields(isProdukt ? u"txt_Produkt" : u"txt_Extra").text();
    return name.isEmpty() ? u"gelöscht"_s : name;
}

/// Whether an article of that key is on offer at a price of the group.
bool isOnOffer(const QString& view, qint64 key, int preisGruppe) {
    return store::rowExists(
        u"SELECT lng_ID FROM %1 WHERE lng_ID = %2 AND lng_Gruppe = %3 AND flag_Status = 0"_s.arg(
            view, QString::number(key), QString::number(preisGruppe)));
}

struct Position {
    bool isProdukt;
    /// Key of the product, or of the extra.
    qint64 key;
    QString kurzzeichen, bezeichnung;
    double anzahl;
};

Position positionAt(const CellTable& lines, int row) {
    const bool isProdukt = lines.number(row, Col::IsProdukt) == 1;
    return {isProdukt, lines.cell(row, isProdukt ? Col::ProduktID : Col::ExtraID).toLong(),
            lines.text(row, Col::Kurzzeichen), lines.text(row, Col::Bezeichnung),
            lines.number(row, Col::Anzahl)};
}

void put(WorkingOrder& order, int row, const Position& position) {
    // A code that was typed there and found nothing.
    order.BestellungGrid.clearRow(row);
    if (position.isProdukt)
        order.PutProdukt(row, position.key, position.kurzzeichen, position.anzahl);
    else
        order.PutExtra(row, position.key, position.bezeichnung, position.anzahl);
}

} // namespace

std::vector<LetzteBestellung> LoadLetzteBestellungen(qint64 kundenId, int most) {
    std::vector<LetzteBestellung> bestellungen = readHeads(kundenId, most);
    if (bestellungen.empty())
        return bestellungen;
    for (OpenRecordset line(RsMain, linesSql(kundenId, bestellungen.back().lng_TrxNr), ConnMain);
         !line->Eof(); line->MoveNext()) {
        const qint64 trxNr = line->Fields(u"lng_TrxNrMaster").toLong();
        const bool isProdukt = line->Fields(u"flag_IsProdukt").Value().isTrue();
        const QString name = nameOf(*line, isProdukt);
        QStringList& positionen = std::find_if(bestellungen.begin(), bestellungen.end(), [&](const auto& b) {
                                      return b.lng_TrxNr == trxNr;
                                  })->positionen;
        if (isProdukt || positionen.isEmpty())
            positionen << withQuantity(line->Fields(u"dbl_Menge").toDouble(), name);
        else
            positionen.last() += u" + "_s + name;
    }
    return bestellungen;
}

Ausgelassen UebernehmeBestellung(WorkingOrder& order, qint64 trxNr) {
    const WorkingOrder::Attempt attempt(order);
    WorkingOrder before;
    orders::LoadLines(before, orders::BookedOrders(), trxNr);
    const CellTable& lines = before.BestellungGrid;
    Ausgelassen out;
    // An extra goes where its product went.
    QStringList* withProdukt = &out.nichtImAngebot;
    int target = order.LastFilledRow() + 1;
    const auto leftOutAs = [&](const Position& position) -> QStringList* {
        const QString view =
            position.isProdukt ? u"view_Verwaltung_Produkte"_s : u"view_Verwaltung_ProdukteExtras"_s;
        if (!isOnOffer(view, position.key, order.PreisGruppe))
            return &out.nichtImAngebot;
        return target < order.BestellungGrid.rows() ? nullptr : &out.keinPlatz;
    };
    for (int row = 0; row <= before.LastFilledRow(); ++row) {
        if (lines.text(row, Col::Bezeichnung).isEmpty())
            continue;
        const Position position = positionAt(lines, row);
        QStringList* const leftOut = position.isProdukt || !withProdukt ? leftOutAs(position) : withProdukt;
        if (position.isProdukt)
            withProdukt = leftOut;
        if (leftOut)
            *leftOut << withQuantity(position.anzahl, position.bezeichnung);
        else
            put(order, target++, position);
    }
    return out;
}

} // namespace modLetzteBestellungen
