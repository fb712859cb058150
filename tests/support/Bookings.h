#pragma once
#include "common/Convert.h"
#include "support/TestFirm.h"
#include <cmath>
#include <vector>

namespace test {

/// A line of a booked order.
struct BookedLine {
    qint64 product = TestFirm::kMargherita;
    double quantity = 1;
    double price = 0, discount = 0; ///< with VAT, before the discount
    double rate = 2.6;
};

struct Booked {
    qint64 number = 0;
    double moment = 0; ///< day serial and time
    std::vector<BookedLine> lines{};
    qint64 customer = TestFirm::kAnna;
    qint64 courier = TestFirm::kKurierAB;
    QString terms = QStringLiteral("Bar");
};

/// Writes an order's rows as the order screen does. A cancelled one has the customer -1 and no lines.
inline void book(const Booked& order) {
    const auto text = [](double number) { return QString::number(number, 'g', 17); };
    double net = 0, gross = 0;
    for (const BookedLine& line : order.lines) {
        const double paid = line.price - line.discount;
        const double withoutTax = paid / (1 + line.rate / 100);
        net += withoutTax;
        gross += paid;
        ConnMain.Execute(
            QStringLiteral("INSERT INTO tbl_Auftragswesen_Bestellungen_Details(lng_TrxNrMaster, "
                           "lng_ProduktID, dbl_MengeIntern, dbl_PreisMitMWSt, dbl_Rabatt, dbl_MWStSatz, "
                           "dbl_PreisOhneMWSt) VALUES(%1, %2, %3, %4, %5, %6, %7)")
                .arg(order.number)
                .arg(line.product)
                .arg(text(line.quantity), text(line.price), text(line.discount), text(line.rate),
                     text(withoutTax)));
    }
    const double day = std::floor(order.moment);
    ConnMain.Execute(
        QStringLiteral(
            "INSERT INTO tbl_Auftragswesen_Bestellungen_Master(lng_TrxNr, lng_KundenID, lng_KurierID, "
            "lng_BestellDatum, date_BestellDatum, dbl_BestellDatumNow, txt_Konditionen, lng_LieferDatum, "
            "txt_LieferDatum, dbl_SummeOhneMWSt, dbl_MWStBetrag, dbl_TotalMitMWSt) "
            "VALUES(%1, %2, %3, %4, %4, %5, %6, %4, '%7', %8, %9, %10)")
            .arg(order.number)
            .arg(order.customer)
            .arg(order.courier)
            .arg(qint64(day))
            .arg(text(order.moment), store::sqlText(order.terms), common::formatDate(day, u"DD/MM/YYYY"),
                 text(net), text(gross - net), text(gross)));
}

} // namespace test
