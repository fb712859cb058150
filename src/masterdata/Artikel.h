#pragma once
#include "store/Recordset.h"
#include "store/RowMark.h"
#include <QStringList>
#include <array>

/// What products and extras share: packaging, position, flags, ten price groups with their VAT codes.
namespace masterdata {

constexpr int kPriceGroups = 10;

/// A price group has a VAT code of its own, so that one product may be taxed differently by group.
struct GruppenPreis {
    double dbl_Preis = 0;
    int lng_MWSt = 0;
};

/// Price group 1 first; it is the web shop's.
using GruppenPreise = std::array<GruppenPreis, kPriceGroups>;

struct Artikel {
    QString txt_Stückelung;
    qint64 lng_Einheit = 1;
    /// Position, never renumbered, not unique.
    qint64 lng_Reihenfolge = 1;
    /// Offered in the web shop at price group 1.
    bool flag_Internet = true;
    /// True: inactive.
    bool flag_Status = false;
    GruppenPreise Preise{};
};

/// Where a kind of article is kept.
struct ArtikelTabellen {
    QString kopf;
    /// Column of `kopf` that holds flag_Internet.
    QString internet;
    QString preise;
    /// Column of `preise` that holds the key of the row in `kopf`.
    QString schluessel;
};

/// All but the prices, from the current row of `kopf`.
Artikel readArtikel(store::Recordset& row, const ArtikelTabellen& tables);
/// All but the prices, into the current row of `kopf`, and its change mark.
void writeArtikel(store::Recordset& row, const ArtikelTabellen& tables, const Artikel& artikel);

/// A group without a row has the price 0.
GruppenPreise loadPrices(const ArtikelTabellen& tables, qint64 key);
/// Overwrites the rows in the order of their groups and adds those that are missing.
void savePrices(const ArtikelTabellen& tables, qint64 key, const GruppenPreise& prices);

/// Queries of head and prices, for the mark of a loaded record.
QStringList rowsOf(const ArtikelTabellen& tables, qint64 key);

/// Head and prices in one transaction, as long as they are as the mark tells.
void deleteArtikel(const ArtikelTabellen& tables, qint64 key, const store::RowMark& mark);

/// The three VAT codes with their present rates, such as "0 (8.10%)"; the index is the code. Code 2 has a
/// rate that no setting fills: it is the tax-free code.
QStringList mwstTexts();

QStringList packagingWords();

/// What the printed lists show for the two flags, as text literals.
QString printedInternet(const common::Value& flag);
QString printedStatus(const common::Value& inactive);

} // namespace masterdata
