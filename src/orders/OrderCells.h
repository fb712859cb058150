#pragma once

/// Where what stands in the three cell tables of an order.
namespace orders {

constexpr int kOrderRows = 100;

/// Columns of BestellungGrid.
struct Col {
    enum : int {
        Kurzzeichen,   ///< product short code; "" on an extra line
        Anzahl,        ///< quantity shown and edited
        AnzahlIntern,  ///< quantity counted for statistics: that of a product line, 0 on an extra line
        Einheit,       ///< packaging word
        EinheitAnzahl, ///< quantity that one ordering unit stands for; 1 in an empty row
        Bezeichnung,   ///< product or extra name
        Ccy,           ///< currency; "" marks the row as empty
        Preis,         ///< line total including VAT, not a unit price
        Rabatt,        ///< discount of the line as an amount
        MWSt,          ///< VAT rate of the line in percent
        PreisOhneMWSt, ///< line total net of VAT after discount
        ProduktID,     ///< key of the product; on an extra line of the product that it belongs to
        IsProdukt,     ///< 1 product line, 0 extra line, -1 row marked as removed
        ExtraID,       ///< key of the extra; -1 on a product line
        Count
    };
};

/// A cell of BestellungDetailsGrid (3 rows, 6 columns; columns 0, 2, 4 are labels).
struct DetailCell {
    int row, column;
};

namespace Detail {
constexpr DetailCell AuftragsNr{0, 1}; ///< transaction number
constexpr DetailCell KundenNr{1, 1}; ///< customer key, "" without a customer, "gelöscht" for a deleted order
constexpr DetailCell Kurier{2, 1};   ///< courier's short code
constexpr DetailCell Datum{0, 3};    ///< order date
constexpr DetailCell Bestellzeit{1, 3}; ///< order time
constexpr DetailCell Lieferzeit{2, 3};  ///< delivery time
constexpr DetailCell MWStNr{0, 5};      ///< VAT number of the firm
constexpr DetailCell Konditionen{1, 5}; ///< conditions
constexpr DetailCell Lieferung{2, 5};   ///< delivery date
} // namespace Detail

/// Rows of BestellungTotalGrid; column 0 label, 1 currency, 2 amount.
struct TotalRow {
    enum : int { Summe, MWSt1, MWSt3, Total, Count };
};

constexpr int kTotalAmount = 2;

} // namespace orders
