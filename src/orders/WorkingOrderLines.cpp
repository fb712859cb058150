// The lines of an order: quantity, discount, VAT, totals, picking and removing.
#include "common/Convert.h"
#include "common/modFunctions.h"
#include "orders/WorkingOrder.h"
#include "store/SystemSettings.h"

using common::Value;

namespace orders {

int WorkingOrder::FirstEmptyRow() const {
    for (int row = 0; row < BestellungGrid.rows(); ++row)
        if (BestellungGrid.text(row, Col::Ccy).isEmpty())
            return row;
    return -1;
}

int WorkingOrder::LastFilledRow() const {
    int row = BestellungGrid.rows() - 1;
    while (row >= 0 && BestellungGrid.text(row, Col::Bezeichnung).isEmpty())
        --row;
    return row;
}

void WorkingOrder::PickProdukt(qint64 produktId, const QString& kurzzeichen, double anzahl) {
    if (const int row = FirstEmptyRow(); row >= 0)
        PutProdukt(row, produktId, kurzzeichen, anzahl);
}

void WorkingOrder::PutProdukt(int row, qint64 produktId, const QString& kurzzeichen, double anzahl) {
    suche = SucheModus::Produkt;
    BestellungGrid.setCell(row, Col::ProduktID, produktId);
    BestellungGrid.setCell(row, Col::IsProdukt, 1);
    BestellungGrid.setCell(row, Col::ExtraID, -1);
    BestellungGrid.setCell(row, Col::Kurzzeichen, kurzzeichen);
    BestellungGrid_Change(row, Col::ProduktID);
    BestellungGrid.endEdit(row, Col::Anzahl, common::numberToText(anzahl));
    BestellungGrid.setCell(row, Col::AnzahlIntern, anzahl);
}

void WorkingOrder::PickExtra(qint64 extraId, const QString& extra, double anzahl) {
    if (const int row = FirstEmptyRow(); row > 0)
        PutExtra(row, extraId, extra, anzahl);
}

void WorkingOrder::PutExtra(int row, qint64 extraId, const QString& extra, double anzahl) {
    suche = SucheModus::Extra;
    BestellungGrid.setCell(row, Col::ProduktID, BestellungGrid.cell(row - 1, Col::ProduktID));
    BestellungGrid.setCell(row, Col::IsProdukt, 0);
    BestellungGrid.setCell(row, Col::ExtraID, extraId);
    BestellungGrid.setCell(row, Col::Kurzzeichen, QString());
    BestellungGrid.setCell(row, Col::Bezeichnung, extra);
    BestellungGrid_Change(row, Col::Bezeichnung);
    BestellungGrid.endEdit(row, Col::Anzahl, common::numberToText(anzahl));
    BestellungGrid.setCell(row, Col::AnzahlIntern, 0);
}

void WorkingOrder::RemoveLine(int row) {
    if (m_ZeileLoeschen || row < 0 || row >= BestellungGrid.rows())
        return;
    const bool isProdukt = BestellungGrid.number(row, Col::IsProdukt) == 1;
    const auto mark = [this](int marked) {
        BestellungGrid.clearRow(marked);
        BestellungGrid.setCell(marked, Col::IsProdukt, -1);
    };
    mark(row);
    if (isProdukt)
        for (int below = row + 1;
             below < BestellungGrid.rows() && BestellungGrid.number(below, Col::IsProdukt) == 0; ++below)
            mark(below);

    m_ZeileLoeschen = true;
    for (int marked = BestellungGrid.rows() - 1; marked >= 0; --marked)
        if (BestellungGrid.number(marked, Col::IsProdukt) == -1)
            BestellungGrid.removeRow(marked);
    BestellungGrid.setRows(kOrderRows);
    m_ZeileLoeschen = false;
    CalculateTotalBestellung();
    SettingUpBestellungDetailGrid();
}

void WorkingOrder::BestellungGrid_BeforeEndEdit(int row, int col, Value& editor, bool&) {
    if (col != Col::Anzahl)
        return;
    const double before = BestellungGrid.number(row, Col::Anzahl);
    if (editor.isNull()) {
        editor = before;
        return;
    }
    const double anzahl = editor.toDouble();
    const double preis = BestellungGrid.number(row, Col::Preis);
    if (anzahl == 0) {
        // The price of a line at quantity 0 is gone until one is typed: meant so.
        for (const int amount : {Col::Preis, Col::Rabatt, Col::PreisOhneMWSt})
            BestellungGrid.setCell(row, amount, 0);
    } else if (preis == 0) {
        BestellungGrid.setCell(row, Col::PreisOhneMWSt, 0);
    } else {
        // A line cannot have a price and no quantity but by damaged data; then there is nothing to scale by.
        const double scaled = before == 0 ? preis : preis * anzahl / before;
        BestellungGrid.setCell(row, Col::Preis, scaled);
        BestellungGrid.setCell(row, Col::PreisOhneMWSt,
                               (scaled - BestellungGrid.number(row, Col::Rabatt)) /
                                   (BestellungGrid.number(row, Col::MWSt) / 100 + 1));
    }
}

void WorkingOrder::BestellungGrid_Change(int row, int col) {
    switch (col) {
    case Col::Anzahl: {
        const bool isProdukt = BestellungGrid.number(row, Col::IsProdukt) == 1;
        BestellungGrid.setCell(row, Col::AnzahlIntern,
                               isProdukt ? BestellungGrid.number(row, Col::Anzahl) : 0.0);
        break;
    }
    case Col::ProduktID:
    case Col::Kurzzeichen:
    case Col::Bezeichnung:
        FindArtikelForBestellung(row, col);
        suche = SucheModus::Keyed;
        break;
    case Col::ExtraID:
        FindExtraForBestellung(row, col);
        suche = SucheModus::Keyed;
        break;
    case Col::Preis:
    case Col::MWSt:
    case Col::Rabatt:
        RederiveLine(row);
        break;
    default:
        break;
    }
    CalculateTotalBestellung();
}

void WorkingOrder::RederiveLine(int row) {
    if (BestellungGrid.number(row, Col::Anzahl) == 0)
        BestellungGrid.setCell(row, Col::Anzahl, BestellungGrid.cell(row, Col::EinheitAnzahl));
    for (const int col : {Col::Preis, Col::Rabatt}) {
        double amount = BestellungGrid.number(row, col);
        // The text and not the amount, which carries the trace of the rounding's constants.
        BestellungGrid.setCell(row, col, modFunctions::RoundRappen(amount));
    }
    const double netto = (BestellungGrid.number(row, Col::Preis) - BestellungGrid.number(row, Col::Rabatt)) /
                         (BestellungGrid.number(row, Col::MWSt) / 100 + 1);
    BestellungGrid.setCell(row, Col::PreisOhneMWSt, common::formatNumber(netto, u"0.00"));
}

void WorkingOrder::CalculateTotalBestellung() {
    double total = 0, mwst1 = 0, mwst3 = 0, netto = 0;
    for (int row = 0; row < BestellungGrid.rows(); ++row) {
        // Most of the hundred rows.
        if (BestellungGrid.isUntouched(row))
            continue;
        const double brutto =
            BestellungGrid.number(row, Col::Preis) - BestellungGrid.number(row, Col::Rabatt);
        const double ohne = BestellungGrid.number(row, Col::PreisOhneMWSt);
        const double satz = BestellungGrid.number(row, Col::MWSt);
        total += brutto;
        // With equal rates a line's VAT stands in both rows; the total counts it once.
        if (satz == SysMWStSatz1)
            mwst1 += brutto - ohne;
        if (satz == SysMWStSatz3)
            mwst3 += brutto - ohne;
        netto += ohne;
    }
    BestellungTotalGrid.setCell(TotalRow::Summe, kTotalAmount, netto);
    BestellungTotalGrid.setCell(TotalRow::MWSt1, kTotalAmount, mwst1);
    BestellungTotalGrid.setCell(TotalRow::MWSt3, kTotalAmount, mwst3);
    BestellungTotalGrid.setCell(TotalRow::Total, kTotalAmount, total);
}

void WorkingOrder::SetRabattBestellung(double prozent) {
    for (int row = 0; row < BestellungGrid.rows(); ++row) {
        const double preis = BestellungGrid.number(row, Col::Preis);
        if (preis == 0)
            continue;
        double rabatt = preis * (prozent * 0.01);
        BestellungGrid.setCell(row, Col::Rabatt, modFunctions::RoundRappen(rabatt));
        BestellungGrid_Change(row, Col::Rabatt);
    }
}

void WorkingOrder::SetMWStSatzBestellung(double satz) {
    for (int row = 0; row < BestellungGrid.rows(); ++row) {
        if (BestellungGrid.text(row, Col::Ccy).isEmpty())
            continue;
        BestellungGrid.setCell(row, Col::MWSt, satz);
        BestellungGrid_Change(row, Col::MWSt);
    }
}

} // namespace orders
