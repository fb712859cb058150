#pragma once
#include "orders/rules/LineMoney.h"
#include <QStringView>

namespace orders {

/// A line of an order as its table holds it. `Text` is what is bound or read, such as QString.
template <typename Text> struct StoredLine {
    double number = 0; ///< see lineNumber
    qint64 trxNr = 0;
    qint64 produktId = 0;
    qint64 isProdukt = 0;
    qint64 extraId = 0;
    double menge = 0;
    double mengeIntern = 0;
    Text stueckelung;
    qint64 einheit = 0;
    Text ccy;
    LineMoney money;
    double moment = 0; ///< date and time of the order on one number line
};

/// Calls `act` with each column's name and member, in the order in which a line is written.
template <typename Line, typename Action> void forEachColumn(Line& line, Action act) {
    act(QStringView(u"dbl_TrxNr"), line.number);
    act(QStringView(u"lng_TrxNrMaster"), line.trxNr);
    act(QStringView(u"lng_ProduktID"), line.produktId);
    act(QStringView(u"flag_IsProdukt"), line.isProdukt);
    act(QStringView(u"lng_ExtraID"), line.extraId);
    act(QStringView(u"dbl_Menge"), line.menge);
    act(QStringView(u"dbl_MengeIntern"), line.mengeIntern);
    act(QStringView(u"txt_Stückelung"), line.stueckelung);
    act(QStringView(u"lng_Einheit"), line.einheit);
    act(QStringView(u"txt_Ccy"), line.ccy);
    act(QStringView(u"dbl_PreisMitMWSt"), line.money.price);
    act(QStringView(u"dbl_Rabatt"), line.money.discount);
    act(QStringView(u"dbl_MWStSatz"), line.money.rate);
    act(QStringView(u"dbl_PreisOhneMWSt"), line.money.net);
    act(QStringView(u"dbl_BestellZeitDouble"), line.moment);
}

} // namespace orders
