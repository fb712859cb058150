// The lines of an order: quantity, discount, VAT, totals, picking and removing.
#include "common/Bounds.h"
#include "common/Convert.h"
#include "orders/WorkingOrder.h"
#include "store/SystemSettings.h"
#include <algorithm>
#include <map>

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

LineMoney WorkingOrder::money(int row) const {
    const auto number = [&](int col) { return BestellungGrid.number(row, col); };
    return {number(Col::Preis), number(Col::Rabatt), number(Col::MWSt), number(Col::PreisOhneMWSt)};
}

void WorkingOrder::setMoney(int row, const LineMoney& money) {
    BestellungGrid.setCell(row, Col::Preis, money.price);
    BestellungGrid.setCell(row, Col::Rabatt, money.discount);
    BestellungGrid.setCell(row, Col::MWSt, money.rate);
    BestellungGrid.setCell(row, Col::PreisOhneMWSt, money.net);
}

int WorkingOrder::PickProdukt(qint64 produktId, const QString& kurzzeichen, double anzahl) {
    const int row = FirstEmptyRow();
    if (row >= 0)
        PutProdukt(row, produktId, kurzzeichen, anzahl);
    return row;
}

void WorkingOrder::PutProdukt(int row, qint64 produktId, const QString& kurzzeichen, double anzahl) {
    PutProdukt(row, produktId, kurzzeichen);
    BestellungGrid.endEdit(row, Col::Anzahl, common::numberToText(anzahl));
}

void WorkingOrder::PutProdukt(int row, qint64 produktId, const QString& kurzzeichen) {
    const Attempt attempt(*this);
    suche = SucheModus::Produkt;
    SetProduktKeys(row, produktId);
    BestellungGrid.setCell(row, Col::Kurzzeichen, kurzzeichen);
    BestellungGrid_Change(row, Col::ProduktID);
}

void WorkingOrder::SetProduktKeys(int row, qint64 produktId) {
    BestellungGrid.setCell(row, Col::ProduktID, produktId);
    BestellungGrid.setCell(row, Col::IsProdukt, 1);
    BestellungGrid.setCell(row, Col::ExtraID, -1);
}

int WorkingOrder::PickExtra(qint64 extraId, const QString& extra, double anzahl) {
    const int row = FirstEmptyRow();
    if (row <= 0)
        return -1;
    PutExtra(row, extraId, extra, anzahl);
    return row;
}

void WorkingOrder::PutExtra(int row, qint64 extraId, const QString& extra, double anzahl) {
    PutExtra(row, extraId, extra);
    BestellungGrid.endEdit(row, Col::Anzahl, common::numberToText(anzahl));
}

void WorkingOrder::PutExtra(int row, qint64 extraId, const QString& extra) {
    const Attempt attempt(*this);
    suche = SucheModus::Extra;
    HangUnderLineAbove(row, extraId);
    BestellungGrid.setCell(row, Col::Bezeichnung, extra);
    BestellungGrid_Change(row, Col::Bezeichnung);
}

void WorkingOrder::PutExtraByKey(int row, qint64 produktId, qint64 extraId, const QString& extra) {
    const Attempt attempt(*this);
    suche = SucheModus::Extra;
    SetExtraKeys(row, produktId, extraId);
    BestellungGrid.setCell(row, Col::Bezeichnung, extra);
    BestellungGrid_Change(row, Col::ProduktID);
}

void WorkingOrder::PutAngebot(int row, const Artikel& angebot) {
    if (angebot.isProdukt)
        PutProdukt(row, angebot.lng_ID, angebot.kurzzeichen);
    else
        PutExtra(row, angebot.lng_ID, angebot.name);
}

void WorkingOrder::HangUnderLineAbove(int row, qint64 extraId) {
    SetExtraKeys(row, BestellungGrid.cell(row - 1, Col::ProduktID).toLong(), extraId);
}

void WorkingOrder::SetExtraKeys(int row, qint64 produktId, qint64 extraId) {
    BestellungGrid.setCell(row, Col::ProduktID, produktId);
    BestellungGrid.setCell(row, Col::IsProdukt, 0);
    BestellungGrid.setCell(row, Col::ExtraID, extraId);
    BestellungGrid.setCell(row, Col::Kurzzeichen, QString());
    BestellungGrid.setCell(row, Col::Rabatt, 0);
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

/// Amounts need a line that is stored: in a row without a name they would count in the total alone.
bool WorkingOrder::LinesMayEdit(int row, int col) const {
    const bool isMoney = col == Col::Preis || col == Col::Rabatt || col == Col::MWSt;
    return !isMoney || !BestellungGrid.text(row, Col::Bezeichnung).isEmpty();
}

bool WorkingOrder::IsFilled(int row) const {
    return !BestellungGrid.text(row, Col::Ccy).isEmpty() || money(row) != LineMoney{.rate = money(row).rate};
}

void WorkingOrder::BestellungGrid_BeforeEndEdit(int row, int col, Value& editor, bool& cancel) {
    switch (col) {
    case Col::Kurzzeichen:
    case Col::Bezeichnung:
        cancel =
            IsFilled(row) && editor.toText().trimmed().isEmpty() && !BestellungGrid.text(row, col).isEmpty();
        break;
    case Col::Anzahl:
        TakeAnzahl(row, editor, cancel);
        break;
    case Col::Preis:
    case Col::Rabatt:
        cancel = !common::isAmount(editor.toDouble());
        break;
    case Col::MWSt:
        cancel = !common::isRate(editor.toDouble());
        break;
    default:
        break;
    }
}

void WorkingOrder::TakeAnzahl(int row, Value& editor, bool& cancel) {
    const double before = BestellungGrid.number(row, Col::Anzahl);
    if (editor.isNull()) {
        editor = before;
        return;
    }
    const double anzahl = editor.toDouble();
    const LineMoney scaled = atQuantity(money(row), before, anzahl);
    cancel = !common::isQuantity(anzahl) || !common::isAmount(scaled.price);
    if (!cancel)
        setMoney(row, scaled);
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
    setMoney(row, rederived(money(row)));
}

void WorkingOrder::CalculateTotalBestellung() {
    OrderSums sums;
    for (int row = 0; row < BestellungGrid.rows(); ++row)
        // Most of the hundred rows.
        if (!BestellungGrid.isUntouched(row))
            sums.add(money(row), SysMWStSatz1, SysMWStSatz3);
    BestellungTotalGrid.setCell(TotalRow::Summe, kTotalAmount, sums.net);
    BestellungTotalGrid.setCell(TotalRow::MWSt1, kTotalAmount, sums.vat1);
    BestellungTotalGrid.setCell(TotalRow::MWSt3, kTotalAmount, sums.vat3);
    BestellungTotalGrid.setCell(TotalRow::Total, kTotalAmount, sums.total);
}

bool WorkingOrder::SetRabattBestellung(double prozent) {
    std::map<int, double> discounts;
    for (int row = 0; row < BestellungGrid.rows(); ++row)
        if (const double preis = BestellungGrid.number(row, Col::Preis); preis != 0)
            discounts[row] = discountOf(preis, prozent);
    if (!std::all_of(discounts.begin(), discounts.end(),
                     [](const auto& line) { return common::isAmount(line.second); }))
        return false;
    for (const auto& [row, discount] : discounts) {
        BestellungGrid.setCell(row, Col::Rabatt, discount);
        BestellungGrid_Change(row, Col::Rabatt);
    }
    return true;
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
